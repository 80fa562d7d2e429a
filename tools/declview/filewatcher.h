#ifndef FILEWATCHER_H
#define FILEWATCHER_H

#include <QFileSystemWatcher>
#include <QMap>
#include <QTimer>

/// Tells when the contents of files change, also those of a file that is put in the place of the one
/// before, as editors do. A file that is gone for the moment has not changed.
class FileWatcher : public QObject
{
    Q_OBJECT

public:
    FileWatcher();

    void Add(const QString& fileName);
    /// Takes the files as they are now for unchanged.
    void Accept();

Q_SIGNALS:
    void Changed();

private:
    void Check();
    /// Whether any contents are others than before.
    bool Compare();

    QFileSystemWatcher m_watcher;
    QTimer m_timer;
    QMap<QString, QByteArray> m_contents; ///< A hash for each file.
};

#endif
