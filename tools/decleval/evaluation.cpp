#include "decleval/evaluation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopedPointer>

#include <utility>

#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "common/jsondata.h"

namespace {

/// Takes what is written to the debug stream in the meantime.
class PrintedLines
{
public:
    PrintedLines() : m_previous(qInstallMessageHandler(Take)) { s_lines.clear(); }
    ~PrintedLines() { qInstallMessageHandler(m_previous); }

    QStringList Lines() const { return s_lines; }

private:
    static void Take(QtMsgType, const QMessageLogContext&, const QString& message) { s_lines.append(message); }

    static inline QStringList s_lines;
    const QtMessageHandler m_previous;
};

/// JSON has no infinite numbers and no "not a number".
bool IsJsonNumber(const QVariant& value)
{
    return value.userType() != QMetaType::Double || qIsFinite(value.toDouble());
}

QString Severity(bool isError)
{
    return isError ? "error" : "warning";
}

QJsonObject TokenToJson(const StatementToken& token)
{
    return {{"offset", token.place.offset}, {"kind", StatementTokens::KindName(token)}, {"text", token.lexeme}};
}

} // namespace

Evaluation::Evaluation(const QString& statement, IDataPeer* dataPeer, const QString& defaultPackage)
    : m_statement(statement),
      m_diagnosis(statement),
      m_messages(m_diagnosis.Messages()),
      m_parses(m_diagnosis.HasExpression() && !m_diagnosis.HasError())
{
    CheckPaths();
    const PrintedLines printed;
    const Interpreter interpreter(nullptr, nullptr, nullptr);
    IParsingResult* result = nullptr;
    m_value = interpreter.Evaluate(statement, dataPeer, nullptr, defaultPackage, nullptr, nullptr, &result);
    delete result;
    if (m_diagnosis.Tokens().Properties().isEmpty())
        m_printed = printed.Lines();
}

QByteArray Evaluation::ValueToText() const
{
    if (!m_value.isValid())
        return "(invalid)\n";
    const QByteArray text = IsJsonNumber(m_value) ? JsonData::ValueToJson(m_value) : m_value.toString().toUtf8();
    return text + "  " + TypeName().toUtf8() + '\n';
}

QByteArray Evaluation::TokensToText() const
{
    QString text;
    for (const StatementToken& token : m_diagnosis.Tokens().Tokens())
        text += QString("%1  %2  %3\n")
                    .arg(token.place.offset, 4)
                    .arg(StatementTokens::KindName(token), -15)
                    .arg(token.lexeme);
    return text.toUtf8();
}

QByteArray Evaluation::MessagesToText() const
{
    QString text;
    for (const Diagnosis::Message& message : m_messages)
        text += Severity(message.isError) + ": " + message.Whole() + '\n' + Excerpt(m_statement, message.place);
    for (const QString& line : m_printed)
        text += "warning: " + line + '\n';
    return text.toUtf8();
}

QByteArray Evaluation::ToJson(bool withTokens) const
{
    QJsonArray messages;
    for (const Diagnosis::Message& message : m_messages) {
        messages.append(QJsonObject{{"severity", Severity(message.isError)},
                                    {"message", message.Whole()},
                                    {"offset", message.place.offset},
                                    {"length", message.place.length}});
    }
    for (const QString& line : m_printed)
        messages.append(QJsonObject{{"severity", "warning"}, {"message", line}});

    const QVariant value = IsJsonNumber(m_value) ? m_value : m_value.toString();
    QJsonObject object{{"statement", m_statement},
                       {"value", QJsonValue::fromVariant(value)},
                       {"type", m_value.isValid() ? QJsonValue(TypeName()) : QJsonValue()},
                       {"parses", m_parses},
                       {"messages", messages}};
    if (withTokens) {
        QJsonArray tokens;
        for (const StatementToken& token : m_diagnosis.Tokens().Tokens())
            tokens.append(TokenToJson(token));
        object.insert("tokens", tokens);
    }
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

/// The diagnosis takes every widget path as good, and here is no form.
void Evaluation::CheckPaths()
{
    const QVector<Reference> properties = m_diagnosis.Tokens().Properties();
    for (const Reference& property : properties) {
        const TextPlace start = property.pathPlace.first();
        m_messages.append({"There is no form here, so that a widget path leads to no object.",
                           QString(),
                           {start.offset, property.namePlace.End() - start.offset},
                           true});
        m_parses = false;
    }
}

QString Evaluation::TypeName() const
{
    return m_value.typeName();
}
