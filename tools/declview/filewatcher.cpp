#include "declview/filewatcher.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>

namespace {

/// For whoever writes in several steps to get done.
const int CheckDelay = 150;

/// Empty when there is no such file.
QByteArray HashOf(const QString& fileName)
{
    QFile file(fileName);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result() : QByteArray();
}

} // namespace

FileWatcher::FileWatcher()
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(CheckDelay);
    connect(&m_timer, &QTimer::timeout, this, &FileWatcher::Check);
    const auto startTimer = [this] {
        if (!m_timer.isActive())
            m_timer.start();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, startTimer);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, startTimer);
}

void FileWatcher::Add(const QString& fileName)
{
    m_contents.insert(fileName, HashOf(fileName));
    m_watcher.addPaths({fileName, QFileInfo(fileName).absolutePath()});
}

void FileWatcher::Accept()
{
    Compare();
}

void FileWatcher::Check()
{
    // The watcher loses sight of a file that was replaced.
    const QStringList files = m_contents.keys();
    for (const QString& file : files) {
        if (!m_watcher.files().contains(file) && QFile::exists(file))
            m_watcher.addPath(file);
    }
    if (Compare())
        Q_EMIT Changed();
}

bool FileWatcher::Compare()
{
    bool changed = false;
    for (auto it = m_contents.begin(); it != m_contents.end(); ++it) {
        const QByteArray hash = HashOf(it.key());
        if (hash.isEmpty() || hash == it.value())
            continue;
        it.value() = hash;
        changed = true;
    }
    return changed;
}
