#ifndef IPARSINGRESULT_H
#define IPARSINGRESULT_H

#include <QStringList>

#include "DeclarationHandler/declarationhandler_export.h"

/// What became of a statement: how far the lexer and the parser got, and what they had to say.
class DECLARATIONHANDLER_EXPORT IParsingResult
{
public:
    virtual ~IParsingResult() {}

    /// Takes over everything that \a other holds.
    virtual IParsingResult& operator=(const IParsingResult& other) = 0;

    /// Whether no error was reported. Warnings do not count: with them alone the statement still has
    /// a tree.
    virtual bool HasSucceeded() const = 0;

    /// Where the lexer stopped at text that it does not know, in characters from the start of the
    /// statement; 0 otherwise.
    virtual int GetParsedCharacters() const = 0;

    /// The last error reported; empty when there is none.
    virtual QString GetErrorMessage() const = 0;

    /// All warnings and errors in the order in which they were reported.
    virtual QStringList GetWarningMessages() const = 0;
};

#endif
