#ifndef PARSINGRESULT_H
#define PARSINGRESULT_H

#include "DeclarationHandler/iparsingresult.h"

/// The record that the parser writes. A plain value; copies are independent.
class DECLARATIONHANDLER_EXPORT ParsingResult : public IParsingResult
{
public:
    /// A successful record without messages.
    ParsingResult();
    /// An independent copy.
    ParsingResult(const ParsingResult& other);

    /// Takes over everything that \a other holds.
    ParsingResult& operator=(const ParsingResult& other);
    /// Leaves this record as it is when \a other is of a foreign class.
    ParsingResult& operator=(const IParsingResult& other) override;
    bool HasSucceeded() const override;
    int GetParsedCharacters() const override;
    QString GetErrorMessage() const override;
    QStringList GetWarningMessages() const override;

    /// Back to a successful record without messages.
    virtual void Reset();

    /// Makes \a message the error, in the place of an earlier one, and adds it to the warnings as
    /// well. The operation, source file and line that report it are not kept.
    virtual void SetError(QString operation, QString file, int line, QString message);

    /// Adds \a message to the warnings. The operation, source file and line are not kept.
    virtual void AddWarning(QString operation, QString file, int line, QString message);

    /// Notes where the lexer stopped, in characters from the start of the statement. Not checked.
    virtual void SetParsedCharacters(int count);

private:
    int m_parsedCharacters;
    QString m_errorMessage;
    QStringList m_warningMessages;
};

#endif
