#ifndef INTERPRETER_H
#define INTERPRETER_H

#include <QScopedPointer>

#include "DeclarationHandler/iinterpreter.h"

class InterpreterPrivate;
class IParser;

/// The interpreter of the statement language. It keeps nothing from one statement to the next.
class DECLARATIONHANDLER_EXPORT Interpreter : public IInterpreter
{
public:
    /// \a dataPeer and \a dataObserver serve the short operations and stay the caller's; either may be
    /// null, the peer as long as no statement names a variable. Takes ownership of \a parser, which is
    /// asked only for new parsers; null stands for the library's own.
    Interpreter(IDataPeer* dataPeer, IDataObserver* dataObserver, IParser* parser);
    ~Interpreter() override;

    QVariant Evaluate(const QString& statement, IParsingResult** result) override;
    QVariant Evaluate(const QString& statement, IDataPeer* dataPeer, IDataObserver* dataObserver,
                      const QString& defaultPackage, QObject* widget, QObject* topWidget,
                      IParsingResult** result) const override;
    IExpression* CreateStatement(const QString& statement, bool readOnly, IParsingResult** result) override;
    IExpression* CreateStatement(const QString& statement, IDataPeer* dataPeer, IDataObserver* dataObserver,
                                 bool readOnly, const QString& defaultPackage, QObject* widget, QObject* topWidget,
                                 IParsingResult** result) const override;

private:
    Q_DISABLE_COPY(Interpreter)

    QScopedPointer<InterpreterPrivate> d;
};

#endif
