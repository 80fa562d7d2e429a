#ifndef FORMPREVIEW_H
#define FORMPREVIEW_H

#include <QProcess>
#include <QTemporaryFile>

/// A declview with a form that is not saved. It reads the form from a file beside the real one, so that what the form
/// names by its path is found, and the project file.
class FormPreview : public QObject
{
    Q_OBJECT

public:
    /// \a fileName is where the form is saved; empty for one that never was.
    explicit FormPreview(const QString& fileName);
    ~FormPreview() override;

    void Start(const QByteArray& content);
    /// The window follows.
    void Update(const QByteArray& content);

signals:
    /// The window was closed, or there is none for that \a reason.
    void Ended(const QString& reason);

private:
    bool Create();
    QStringList Arguments() const;
    void TakeErrors();
    void Finish(int code, QProcess::ExitStatus status);

    const QString m_fileName;
    QTemporaryFile m_file;
    QByteArray m_content;
    QProcess m_process;
    QByteArray m_errors; ///< The last of what it printed.
};

#endif
