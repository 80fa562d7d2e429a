#include "formchecks.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

#include "formwatcher.h"
#include "installedprogram.h"

namespace {

/// In milliseconds.
const int KillTime = 3000;

Severity SeverityOf(const QString& name)
{
    for (const Severity severity : {Severity::Error, Severity::Warning}) {
        if (name == SeverityName(severity))
            return severity;
    }
    return Severity::Note;
}

} // namespace

FormChecks::FormChecks(FormWatcher* watcher) : m_watcher(watcher)
{
    connect(watcher, &FormWatcher::Read, this, &FormChecks::CheckForm);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            Fail(m_process.program() + ": " + m_process.errorString());
    });
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &FormChecks::Finish);
    CheckForm();
}

FormChecks::~FormChecks()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished(KillTime);
}

QVector<StatementMark> FormChecks::MarksOf(const FormStatement& statement) const
{
    return m_found.value(KeyOf(statement.objectName, statement.property, statement.text)).marks;
}

QString FormChecks::TextOf(const FormStatement& statement) const
{
    QStringList lines;
    const Found found = m_found.value(KeyOf(statement.objectName, statement.property, statement.text));
    for (const StatementMark& mark : found.all)
        lines.append(SeverityName(mark.severity) + ": " + mark.message);
    return lines.join('\n');
}

/// Names are one of a kind in Designer; what has none is told by its class and its statement.
FormChecks::Key FormChecks::KeyOf(const QString& object, const QString& property, const QString& statement)
{
    return {object, {property, statement}};
}

void FormChecks::CheckForm()
{
    if (m_watcher->Content() == m_content && m_watcher->FileName() == m_fileName)
        return;
    m_content = m_watcher->Content();
    m_fileName = m_watcher->FileName();
    m_isCurrent = false;
    m_isWaiting = true;
    if (m_process.state() == QProcess::NotRunning)
        Start();
    else
        m_process.kill();
}

void FormChecks::Start()
{
    m_isWaiting = false;
    if (m_content.isEmpty()) {
        Take(QByteArray());
        return;
    }
    const QString program = InstalledProgram::Find(DECLCHECK_NAME);
    if (program.isEmpty()) {
        Fail(QString("\"%1\" is not installed").arg(DECLCHECK_NAME));
        return;
    }
    QStringList arguments{"-", "--format", "json"};
    // A form that was never saved belongs to no project.
    if (m_fileName.isEmpty())
        arguments << "--project" << QString();
    else
        arguments << "--stdin-name" << QFileInfo(m_fileName).absoluteFilePath();
    m_process.start(program, arguments);
    m_process.write(m_content.toUtf8());
    m_process.closeWriteChannel();
}

void FormChecks::Finish(int code, QProcess::ExitStatus status)
{
    const QByteArray output = m_process.readAllStandardOutput();
    const QByteArray errors = m_process.readAllStandardError();
    if (m_isWaiting)
        Start();
    else if (status == QProcess::NormalExit && (code == 0 || code == 1))
        Take(output);
    else
        Fail(QString::fromLocal8Bit(errors).trimmed());
}

void FormChecks::Fail(const QString& reason)
{
    m_found.clear();
    m_failure = reason.isEmpty() ? QString("declcheck failed") : reason;
    emit Checked();
}

void FormChecks::Take(const QByteArray& json)
{
    m_isCurrent = true;
    m_found.clear();
    m_failure.clear();
    const QJsonArray findings = QJsonDocument::fromJson(json).array();
    for (const QJsonValue& value : findings) {
        const QJsonObject finding = value.toObject();
        const StatementMark mark{
            TextPlace(finding.value("statementOffset").toInt(), finding.value("statementLength").toInt()),
            SeverityOf(finding.value("severity").toString()), finding.value("message").toString(),
            finding.value("fix").toString()};
        const QStringList object = finding.value("object").toString().split('#');
        Found& found = m_found[KeyOf(object.last().isEmpty() ? object.first() : object.last(),
                                     finding.value("property").toString(), finding.value("statement").toString())];
        found.all.append(mark);
        if (finding.contains("statementOffset"))
            found.marks.append(mark);
    }
    for (Found& found : m_found) {
        std::stable_sort(found.all.begin(), found.all.end(), [](const StatementMark& left, const StatementMark& right) {
            return left.severity > right.severity;
        });
    }
    emit Checked();
}
