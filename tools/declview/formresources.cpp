#include "declview/formresources.h"

#include <QDebug>
#include <QDir>
#include <QProcess>
#include <QResource>
#include <QStandardPaths>
#include <QXmlStreamReader>

#include "qtversion.h"

namespace {

QStringList IncludedFiles(const QByteArray& form)
{
    QStringList files;
    QXmlStreamReader reader(form);
    while (!reader.atEnd()) {
        // Headers are included, too, but not from a location.
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == QLatin1String("include")
            && reader.attributes().hasAttribute("location"))
            files.append(reader.attributes().value("location").toString());
    }
    return files;
}

QString Compiler()
{
    const QString ofThisQt = QStandardPaths::findExecutable("rcc", {QtVersion::ToolsFolder()});
    return ofThisQt.isEmpty() ? QStandardPaths::findExecutable("rcc") : ofThisQt;
}

} // namespace

FormResources::~FormResources()
{
    Clear();
}

void FormResources::Load(const QByteArray& form, const QDir& folder)
{
    Clear();
    const QStringList files = IncludedFiles(form);
    for (const QString& file : files)
        Add(folder.filePath(file));
}

void FormResources::Add(const QString& fileName)
{
    QProcess compiler;
    compiler.start(Compiler(), {"--binary", fileName}, QIODevice::ReadOnly);
    const bool finished = compiler.waitForFinished();
    const QByteArray resource = compiler.readAllStandardOutput();
    if (finished && compiler.exitCode() == 0
        && QResource::registerResource(reinterpret_cast<const uchar*>(resource.constData()))) {
        m_registered.append(resource);
        return;
    }
    const QString reason
        = finished ? QString::fromLocal8Bit(compiler.readAllStandardError()).trimmed() : compiler.errorString();
    qWarning().noquote() << QString("The resources %1 are not there: %2").arg(fileName, reason);
}

void FormResources::Clear()
{
    for (const QByteArray& resource : qAsConst(m_registered))
        QResource::unregisterResource(reinterpret_cast<const uchar*>(resource.constData()));
    m_registered.clear();
}
