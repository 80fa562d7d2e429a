#ifndef FORMWATCHER_H
#define FORMWATCHER_H

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include "formstatements.h"

class QDesignerFormEditorInterface;
class QDesignerFormWindowInterface;

/// Follows the form that the user edits. Writing a form out takes time, so that changes that come close together are
/// read at once, and the longer reading takes the rarer it is done.
class FormWatcher : public QObject
{
    Q_OBJECT

public:
    explicit FormWatcher(QDesignerFormEditorInterface* core);

    QDesignerFormEditorInterface* Core() const { return m_core; }
    /// Null when no form is open.
    QDesignerFormWindowInterface* Form() const;
    /// Where the form is or will be saved; empty for one that never was.
    QString FileName() const;
    /// What Designer would save, as it was read last.
    const QByteArray& Content() const { return m_content; }
    const QVector<FormStatement>& Statements() const { return m_statements; }

    /// Reads what waits to be read.
    void ReadNow();

signals:
    /// The form was read anew, or is another one.
    void Read();
    void SelectionChanged();

private:
    void SetForm(QDesignerFormWindowInterface* form);
    void ReadSoon();
    void ReadForm();

    QDesignerFormEditorInterface* const m_core;
    QPointer<QDesignerFormWindowInterface> m_form;
    QTimer m_timer;
    qint64 m_duration = 0; ///< Of the last reading, in milliseconds.
    QByteArray m_content;
    QVector<FormStatement> m_statements;
};

#endif
