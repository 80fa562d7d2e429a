#ifndef IPARSER_H
#define IPARSER_H

#include "DeclarationHandler/declarationhandler_export.h"

class IDataObserver;
class IDataPeer;
class IExpression;
class IParsingResult;
class QObject;
class QString;

/// Turns a statement into a tree: Tokenize(), Parse(), and then CopyResult() for what went wrong. A
/// parser serves one statement after another, in one thread at a time.
class DECLARATIONHANDLER_EXPORT IParser
{
public:
    virtual ~IParser() {}

    /// A new parser of the same kind, owned by the caller. May be called from any thread.
    virtual IParser* NewParser() const = 0;

    /// A copy of the record of the last statement, owned by the caller.
    virtual IParsingResult* CopyResult() const = 0;

    /// Forgets the last statement.
    virtual void Reset() = 0;

    /// Splits \a statement into tokens. Text that is no token ends this and is an error in the record;
    /// the tokens before it stay.
    virtual void Tokenize(const QString& statement) = 0;

    /// Builds the tree of the statement last given to Tokenize(); the caller owns it. Null when no tree
    /// can be built, with an error in the record. Tokens left behind a complete expression are a
    /// warning in the record.
    ///
    /// Variables are read and written through \a dataPeer, which may be null only where the statement
    /// names none, and watched by \a dataObserver, which may be null. Widget paths start from
    /// \a widget and \a topWidget. \a defaultPackage is the package of variables named without one.
    /// Nodes of a tree built with \a readOnly refuse to be written. All pointers stay the caller's.
    virtual IExpression* Parse(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                               const QString& defaultPackage, bool readOnly)
        = 0;
};

#endif
