#include "formpreview.h"

#include <QDir>
#include <QFileInfo>

#include "common/projectfile.h"
#include "installedprogram.h"

namespace {

const int MaxErrors = 2000;
/// In milliseconds.
const int EndTime = 3000;

} // namespace

FormPreview::FormPreview(const QString& fileName) : m_fileName(fileName)
{
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            emit Ended(m_process.program() + ": " + m_process.errorString());
    });
    connect(&m_process, &QProcess::readyReadStandardError, this, &FormPreview::TakeErrors);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &FormPreview::Finish);
}

FormPreview::~FormPreview()
{
    m_process.disconnect(this);
    m_process.terminate();
    if (!m_process.waitForFinished(EndTime))
        m_process.kill();
}

void FormPreview::Start(const QByteArray& content)
{
    const QString program = InstalledProgram::Find(DECLVIEW_NAME);
    if (program.isEmpty())
        return emit Ended(QString("\"%1\" is not installed.").arg(DECLVIEW_NAME));
    if (!Create())
        return emit Ended(QString("%1: %2").arg(m_file.fileTemplate(), m_file.errorString()));
    Update(content);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.start(program, Arguments());
}

void FormPreview::Update(const QByteArray& content)
{
    if (content == m_content || !m_file.isOpen())
        return;
    m_content = content;
    m_file.resize(0);
    m_file.seek(0);
    m_file.write(content);
    m_file.flush();
}

/// Beside the form where that can be written.
bool FormPreview::Create()
{
    const QFileInfo form(m_fileName);
    const QString name = QString(".%1-XXXXXX.ui").arg(m_fileName.isEmpty() ? "form" : form.completeBaseName());
    if (!m_fileName.isEmpty())
        m_file.setFileTemplate(form.absoluteDir().filePath(name));
    if (!m_fileName.isEmpty() && m_file.open())
        return true;
    m_file.setFileTemplate(QDir::temp().filePath(name));
    return m_file.open();
}

/// What the project file says is told where the file lies elsewhere.
QStringList FormPreview::Arguments() const
{
    const QString name = QFileInfo(m_fileName).fileName();
    QStringList arguments{m_file.fileName(), "--form-name", name.isEmpty() ? "new form" : name};
    const QString folder = QFileInfo(m_fileName).absolutePath();
    const bool isBeside = QFileInfo(m_file.fileName()).absolutePath() == folder;
    ProjectFile project;
    QString error;
    if (m_fileName.isEmpty() || isBeside || !project.Read(ProjectFile::Find(folder), &error))
        return arguments;
    if (!project.package.isEmpty())
        arguments << "--package" << project.package;
    if (!project.data.isEmpty())
        arguments << "--data" << project.data;
    return arguments;
}

void FormPreview::TakeErrors()
{
    m_errors = (m_errors + m_process.readAllStandardError()).right(MaxErrors);
}

void FormPreview::Finish(int code, QProcess::ExitStatus status)
{
    TakeErrors();
    const bool isGood = status == QProcess::NormalExit && code == 0;
    emit Ended(isGood ? QString() : QString::fromLocal8Bit(m_errors).trimmed());
}
