#include "DeclarationHandler/interpreter.h"

#include <QDebug>
#include <QScopedPointer>
#include <QStringList>

#include <mutex>

#include "DeclarationHandler/Tokens/textview.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/parser.h"

namespace {

void PrintResult(const QString& statement, const IParsingResult& result)
{
    if (!result.HasSucceeded())
        qDebug() << "Failed to parse statement: \"" << statement << "\".\nError: " << result.GetErrorMessage();
    const QStringList warnings = result.GetWarningMessages();
    if (!warnings.isEmpty()) {
        qDebug() << "Warning while parsing statement: \"" << statement
                 << "\".\nWarning: " << warnings.join(QLatin1String("\n"));
    }
}

} // namespace

/// What the short operations take for granted.
class InterpreterPrivate
{
public:
    InterpreterPrivate(IDataPeer* dataPeer, IDataObserver* dataObserver, IParser* parser)
        : m_dataPeer(dataPeer), m_dataObserver(dataObserver), m_parser(parser)
    {
    }

    IDataPeer* const m_dataPeer;
    IDataObserver* const m_dataObserver;
    const QScopedPointer<IParser> m_parser; ///< Makes the parsers of all statements.
    std::recursive_mutex m_lock;            ///< Held by the short operations.

private:
    Q_DISABLE_COPY(InterpreterPrivate)
};

Interpreter::Interpreter(IDataPeer* dataPeer, IDataObserver* dataObserver, IParser* parser)
    : d(new InterpreterPrivate(dataPeer, dataObserver, parser ? parser : new Parser))
{
}

Interpreter::~Interpreter() {}

QVariant Interpreter::Evaluate(const QString& statement, IParsingResult** result)
{
    const std::lock_guard<std::recursive_mutex> locker(d->m_lock);
    return Evaluate(statement, d->m_dataPeer, d->m_dataObserver, QLatin1String(""), nullptr, nullptr, result);
}

QVariant Interpreter::Evaluate(const QString& statement, IDataPeer* dataPeer, IDataObserver* dataObserver,
                               const QString& defaultPackage, QObject* widget, QObject* topWidget,
                               IParsingResult** result) const
{
    const QScopedPointer<IExpression> expression(
        CreateStatement(statement, dataPeer, dataObserver, true, defaultPackage, widget, topWidget, result));
    return expression ? expression->Retrieve() : QVariant();
}

IExpression* Interpreter::CreateStatement(const QString& statement, bool readOnly, IParsingResult** result)
{
    const std::lock_guard<std::recursive_mutex> locker(d->m_lock);
    return CreateStatement(statement, d->m_dataPeer, d->m_dataObserver, readOnly, QLatin1String(""), nullptr, nullptr,
                           result);
}

IExpression* Interpreter::CreateStatement(const QString& statement, IDataPeer* dataPeer, IDataObserver* dataObserver,
                                          bool readOnly, const QString& defaultPackage, QObject* widget,
                                          QObject* topWidget, IParsingResult** result) const
{
    if (TextView::SkipSpace(statement, 0) == statement.length())
        return nullptr;
    const QScopedPointer<IParser> parser(d->m_parser->NewParser());
    parser->Tokenize(statement);
    IExpression* const expression = parser->Parse(dataPeer, dataObserver, widget, topWidget, defaultPackage, readOnly);
    if (result) {
        *result = parser->CopyResult();
    } else {
        const QScopedPointer<IParsingResult> record(parser->CopyResult());
        PrintResult(statement, *record);
    }
    return expression;
}
