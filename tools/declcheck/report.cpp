#include "declcheck/report.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>

namespace {

const int MaxOriginal = 100;

// Colours of a terminal.
const char* const Bold = "1";
const char* const Faint = "2";
const char* const Green = "1;32";

const char* ColorOf(Severity severity)
{
    switch (severity) {
    case Severity::Note:
        return "1;36";
    case Severity::Warning:
        return "1;33";
    default:
        return "1;31";
    }
}

QString Where(const QString& file, const Position& position)
{
    return QString("%1:%2:%3: ").arg(file).arg(position.line).arg(position.column);
}

QJsonObject Message(const QString& text)
{
    return {{"text", text}};
}

QString Uri(const QString& file)
{
    if (QFileInfo(file).isAbsolute())
        return QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded);
    return QString::fromLatin1(QUrl::toPercentEncoding(file, "/"));
}

QJsonObject Rule(const CheckInfo& check)
{
    // The format's names for the severities are ours.
    return {{"id", check.name},
            {"shortDescription", Message(check.description)},
            {"defaultConfiguration", QJsonObject{{"level", SeverityName(check.severity)}}}};
}

QJsonObject Location(const Finding& finding)
{
    const QJsonObject region{{"startLine", finding.start.line},
                             {"startColumn", finding.start.column},
                             {"endLine", finding.end.line},
                             {"endColumn", finding.end.column}};
    const QJsonObject place{{"artifactLocation", QJsonObject{{"uri", Uri(finding.file)}}}, {"region", region}};
    return {{"physicalLocation", place}};
}

QJsonObject Result(const Finding& finding)
{
    return {{"ruleId", InfoOf(finding.check).name},
            {"ruleIndex", int(finding.check)},
            {"level", SeverityName(finding.severity)},
            {"message", Message(finding.message)},
            {"locations", QJsonArray{Location(finding)}}};
}

/// A line with what a translation is of.
QString Original(const Finding& finding)
{
    if (finding.original.isEmpty())
        return QString();
    QString line = finding.original;
    line.replace('\n', ' ');
    const bool isLong = line.size() > MaxOriginal;
    return QString(4, ' ') + "source  " + line.left(MaxOriginal) + (isLong ? "..." : "") + '\n';
}

QString Counted(int count, const QString& word)
{
    return QString("%1 %2%3").arg(count).arg(word, count == 1 ? "" : "s");
}

} // namespace

QByteArray Report::ToText(const QVector<Finding>& findings, bool isColored)
{
    const auto paint = [&](const char* color, const QString& text) {
        return isColored ? QString("\033[%1m%2\033[0m").arg(color, text) : text;
    };
    QString text;
    for (const Finding& finding : findings) {
        text += paint(Bold, Where(finding.file, finding.start))
            + paint(ColorOf(finding.severity), SeverityName(finding.severity) + ':') + ' ' + finding.message + ' '
            + paint(Faint, QString("[%1]").arg(InfoOf(finding.check).name)) + '\n' + finding.excerpt.section('\n', 0, 0)
            + '\n' + paint(Green, finding.excerpt.section('\n', 1, 1)) + '\n' + Original(finding);
    }
    return text.toUtf8();
}

QByteArray Report::CountsToText(const QVector<Finding>& findings, int formCount, int translationCount)
{
    QStringList counts;
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        const auto count = std::count_if(findings.begin(), findings.end(),
                                         [&](const Finding& finding) { return finding.severity == severity; });
        if (count > 0)
            counts.append(Counted(int(count), SeverityName(severity)));
    }
    const QString translations = translationCount > 0 ? " and " + Counted(translationCount, "translation") : QString();
    const QString text = counts.join(", ") + " in " + Counted(formCount, "form") + translations + '\n';
    return counts.isEmpty() ? QByteArray() : text.toUtf8();
}

QByteArray Report::ToJson(const QVector<Finding>& findings)
{
    QJsonArray list;
    for (const Finding& finding : findings) {
        QJsonObject object{{"file", finding.file},
                           {"line", finding.start.line},
                           {"column", finding.start.column},
                           {"endLine", finding.end.line},
                           {"endColumn", finding.end.column},
                           {"severity", SeverityName(finding.severity)},
                           {"message", finding.message},
                           {"check", InfoOf(finding.check).name},
                           {"object", finding.object},
                           {"property", finding.property},
                           {"statement", finding.statement},
                           {"source", finding.original},
                           {"fix", finding.fix}};
        if (finding.hasPlace) {
            object.insert("statementOffset", finding.place.offset);
            object.insert("statementLength", finding.place.length);
        }
        list.append(object);
    }
    return QJsonDocument(list).toJson();
}

QByteArray Report::ToSarif(const QVector<Finding>& findings, bool succeeded)
{
    QJsonArray rules;
    for (const CheckInfo& check : AllChecks())
        rules.append(Rule(check));
    QJsonArray results;
    for (const Finding& finding : findings)
        results.append(Result(finding));

    const QJsonObject driver{{"name", "declcheck"}, {"version", DECLARATIONHANDLER_VERSION}, {"rules", rules}};
    const QJsonObject run{{"tool", QJsonObject{{"driver", driver}}},
                          {"columnKind", "unicodeCodePoints"},
                          {"invocations", QJsonArray{QJsonObject{{"executionSuccessful", succeeded}}}},
                          {"results", results}};
    return QJsonDocument(QJsonObject{{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                                     {"version", "2.1.0"},
                                     {"runs", QJsonArray{run}}})
        .toJson();
}

QByteArray Report::ToText(const QVector<VariableUse>& variables)
{
    QString text;
    for (const VariableUse& variable : variables) {
        const QString prefix = variable.package.isEmpty() ? QString() : variable.package + ':';
        text += Where(variable.file, variable.position) + prefix + variable.name + '\n';
    }
    return text.toUtf8();
}

QByteArray Report::ToJson(const QVector<VariableUse>& variables)
{
    QJsonArray list;
    for (const VariableUse& variable : variables) {
        list.append(QJsonObject{{"package", variable.package},
                                {"name", variable.name},
                                {"file", variable.file},
                                {"line", variable.position.line},
                                {"column", variable.position.column}});
    }
    return QJsonDocument(list).toJson();
}
