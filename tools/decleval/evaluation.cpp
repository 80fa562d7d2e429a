#include "decleval/evaluation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopedPointer>

#include <algorithm>
#include <utility>

#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/iparsingresult.h"
#include "common/jsondata.h"
#include "common/statementchecks.h"

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

/// An excerpt with what is no line break or tab escaped.
QString EscapedExcerpt(const QString& statement, const TextPlace& place)
{
    QString text = statement;
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control && character != '\n' && character != '\t')
            character = QChar::ReplacementCharacter;
    }
    return Excerpt(text, place);
}

/// JSON has no infinite numbers and no "not a number".
bool IsJsonNumber(const QVariant& value)
{
    return value.userType() != QMetaType::Double || qIsFinite(value.toDouble());
}

QString SeverityOf(bool isError)
{
    return isError ? "error" : "warning";
}

QJsonObject TokenToJson(const StatementToken& token)
{
    return {{"offset", token.place.offset}, {"kind", StatementTokens::KindName(token)}, {"text", token.lexeme}};
}

} // namespace

QString Escaped(const QString& text)
{
    QString escaped;
    for (const QChar character : text) {
        const bool isControl = character.category() == QChar::Other_Control;
        escaped
            += isControl ? QString("\\u%1").arg(int(character.unicode()), 4, 16, QLatin1Char('0')) : QString(character);
    }
    return escaped;
}

Evaluation::Evaluation(const QString& statement, IDataPeer* dataPeer, const CheckOptions& options, int line)
    : m_statement(statement),
      m_diagnosis(statement),
      m_messages(m_diagnosis.Messages()),
      m_line(line),
      m_parses(m_diagnosis.HasExpression() && !m_diagnosis.HasError())
{
    CheckPaths();
    FindTraps(options);
    const PrintedLines printed;
    const Interpreter interpreter(nullptr, nullptr, nullptr);
    IParsingResult* result = nullptr;
    m_value = interpreter.Evaluate(statement, dataPeer, nullptr, options.package, nullptr, nullptr, &result);
    delete result;
    if (m_diagnosis.Tokens().Properties().isEmpty())
        m_printed = printed.Lines();
}

QByteArray Evaluation::ValueToText() const
{
    if (!m_value.isValid())
        return "(invalid)\n";
    const QByteArray text = IsJsonNumber(m_value) ? JsonData::ValueToJson(m_value) : m_value.toString().toUtf8();
    return Escaped(text).toUtf8() + "  " + TypeName().toUtf8() + '\n';
}

QByteArray Evaluation::TokensToText() const
{
    QString text;
    for (const StatementToken& token : m_diagnosis.Tokens().Tokens())
        text += QString("%1  %2  %3\n")
                    .arg(token.place.offset, 4)
                    .arg(StatementTokens::KindName(token), -15)
                    .arg(Escaped(token.lexeme));
    return text.toUtf8();
}

QByteArray Evaluation::MessagesToText() const
{
    const QString line = m_line > 0 ? QString("%1: ").arg(m_line) : QString();
    QString text;
    for (const Diagnosis::Message& message : m_messages)
        text += line + SeverityOf(message.isError) + ": " + Escaped(message.Whole()) + '\n'
            + EscapedExcerpt(m_statement, message.place);
    for (const StatementFinding& trap : m_traps)
        text += line + "help: " + Escaped(trap.message) + " [" + InfoOf(trap.check).name + "]\n"
            + EscapedExcerpt(m_statement, trap.place);
    for (const QString& printed : m_printed)
        text += line + "warning: " + Escaped(printed) + '\n';
    return text.toUtf8();
}

QByteArray Evaluation::ToJson(bool withTokens) const
{
    QJsonArray messages;
    for (const Diagnosis::Message& message : m_messages) {
        messages.append(QJsonObject{{"severity", SeverityOf(message.isError)},
                                    {"message", message.Whole()},
                                    {"offset", message.place.offset},
                                    {"length", message.place.length}});
    }
    for (const QString& line : m_printed)
        messages.append(QJsonObject{{"severity", "warning"}, {"message", line}});

    for (const StatementFinding& trap : m_traps) {
        messages.append(QJsonObject{{"severity", "help"},
                                    {"message", trap.message},
                                    {"check", InfoOf(trap.check).name},
                                    {"offset", trap.place.offset},
                                    {"length", trap.place.length}});
    }

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

/// All but what the parser says anyhow.
void Evaluation::FindTraps(const CheckOptions& options)
{
    const StatementTypes types(m_diagnosis.Tree(),
                               [&](const Reference& reference) { return TypeOfVariable(reference, options); });
    m_traps = StatementChecks(m_diagnosis, types, options).Run();
    const auto isParsers = [](const StatementFinding& finding) {
        return finding.check == Check::ParseError || finding.check == Check::LeftOver;
    };
    m_traps.erase(std::remove_if(m_traps.begin(), m_traps.end(), isParsers), m_traps.end());
}

QString Evaluation::TypeName() const
{
    return m_value.typeName();
}
