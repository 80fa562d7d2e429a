#ifndef FORMCHECKS_H
#define FORMCHECKS_H

#include <QHash>
#include <QProcess>

#include "edit/statementmark.h"
#include "formstatements.h"

class FormWatcher;

/// Has the form that is edited checked by declcheck, in the background: what is typed meanwhile is checked next.
class FormChecks : public QObject
{
    Q_OBJECT

public:
    explicit FormChecks(FormWatcher* watcher);
    ~FormChecks() override;

    /// What was found in the statement as it reads there, without what has no place in it.
    QVector<StatementMark> MarksOf(const FormStatement& statement) const;
    /// All that was found, worst first, as a text of one line for each.
    QString TextOf(const FormStatement& statement) const;
    /// Whether that is of the form as it was last read.
    bool IsCurrent() const { return m_isCurrent; }
    /// Why the form is not checked; empty when it is.
    const QString& Failure() const { return m_failure; }

signals:
    void Checked();

private:
    struct Found
    {
        QVector<StatementMark> marks;
        QVector<StatementMark> all;
    };
    using Key = QPair<QString, QPair<QString, QString>>;

    static Key KeyOf(const QString& object, const QString& property, const QString& statement);
    void CheckForm();
    void Start();
    void Finish(int code, QProcess::ExitStatus status);
    void Fail(const QString& reason);
    void Take(const QByteArray& json);

    FormWatcher* const m_watcher;
    QProcess m_process;
    QString m_content; ///< What is checked, or was.
    QString m_fileName;
    bool m_isCurrent = false;
    bool m_isWaiting = false; ///< There is something newer than what is checked.
    QHash<Key, Found> m_found;
    QString m_failure;
};

#endif
