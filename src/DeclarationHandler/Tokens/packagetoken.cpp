#include "DeclarationHandler/Tokens/packagetoken.h"

#include "DeclarationHandler/Tokens/identifiertoken.h"
#include "DeclarationHandler/Tokens/textview.h"

namespace {

const int ShortestPrefix = 3; ///< «@a:»

bool HasCharAt(const QString& text, int position, char character)
{
    return position < text.length() && text.at(position) == QLatin1Char(character);
}

} // namespace

PackageToken::PackageToken(const QString& lexeme, const QList<Token*>& identifiers)
    : Token(lexeme, TT_IDENTIFIER), m_identifiers(identifiers)
{
}

PackageToken::~PackageToken()
{
    qDeleteAll(m_identifiers);
}

Token* PackageToken::Parse(const QString& text)
{
    if (text.length() < ShortestPrefix || !HasCharAt(text, 0, '@'))
        return nullptr;

    QList<Token*> identifiers;
    int position = 0;
    Token* identifier = nullptr;
    do {
        ++position;
        while (HasCharAt(text, position, '\\'))
            ++position;
        identifier = IdentifierToken::Parse(TextView::From(text, position));
        if (identifier) {
            identifiers.append(identifier);
            position += identifier->GetLexemeLength();
        }
    } while (identifier && HasCharAt(text, position, '\\'));

    if (!identifiers.isEmpty() && HasCharAt(text, position, ':'))
        return new PackageToken(TextView::StartOf(text, position + 1), identifiers);
    qDeleteAll(identifiers);
    return nullptr;
}

QStringList PackageToken::GetPackages() const
{
    QStringList names;
    for (int i = 0; i < m_identifiers.count(); ++i)
        names.append(m_identifiers.at(i)->GetLexeme());
    return names;
}
