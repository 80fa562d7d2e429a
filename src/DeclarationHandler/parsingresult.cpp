#include "DeclarationHandler/parsingresult.h"

ParsingResult::ParsingResult() : m_parsedCharacters(0) {}

ParsingResult::ParsingResult(const ParsingResult& other)
    : IParsingResult(),
      m_parsedCharacters(other.m_parsedCharacters),
      m_errorMessage(other.m_errorMessage),
      m_warningMessages(other.m_warningMessages)
{
}

ParsingResult& ParsingResult::operator=(const ParsingResult& other)
{
    m_errorMessage = other.m_errorMessage;
    m_parsedCharacters = other.m_parsedCharacters;
    m_warningMessages = other.m_warningMessages;
    return *this;
}

ParsingResult& ParsingResult::operator=(const IParsingResult& other)
{
    if (const ParsingResult* const result = dynamic_cast<const ParsingResult*>(&other))
        *this = *result;
    return *this;
}

bool ParsingResult::HasSucceeded() const
{
    return m_errorMessage.isEmpty();
}

int ParsingResult::GetParsedCharacters() const
{
    return m_parsedCharacters;
}

QString ParsingResult::GetErrorMessage() const
{
    return m_errorMessage;
}

QStringList ParsingResult::GetWarningMessages() const
{
    return m_warningMessages;
}

void ParsingResult::Reset()
{
    m_errorMessage = QLatin1String("");
    m_parsedCharacters = 0;
    m_warningMessages.clear();
}

void ParsingResult::SetError(QString, QString, int, QString message)
{
    m_errorMessage = message;
    m_warningMessages.append(message);
}

void ParsingResult::AddWarning(QString, QString, int, QString message)
{
    m_warningMessages.append(message);
}

void ParsingResult::SetParsedCharacters(int count)
{
    m_parsedCharacters = count;
}
