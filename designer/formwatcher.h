#ifndef FORMWATCHER_H
#define FORMWATCHER_H

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include "formstatements.h"

class QDesignerFormEditorInterface;
class QDesignerFormWindowInterface;

/// Follows the form that the user edits. Writing a form out takes time, so that changes that come close together are
/// read at once, and the longer reading takes the rarer it is done. A statement that is typed is put in its place
/// meanwhile.
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
    const QString& Content() const { return m_content; }
    const QVector<FormStatement>& Statements() const { return m_statements; }

    /// Whether that is how Designer has it, with all that has been typed.
    bool IsCurrent() const { return !m_timer.isActive() || m_isKnown; }

    /// Reads what waits to be read.
    void ReadNow();

    /// The text of a statement is about to change, and has changed.
    void StartTyping();
    void TakeTyped(const QObject* object, const QString& property, const QString& text);

signals:
    /// The form was read anew, is another one, or something was typed.
    void Read();
    void SelectionChanged();

private:
    void SetForm(QDesignerFormWindowInterface* form);
    void ReadSoon();
    void ReadForm();
    bool Replace(const QObject* object, const QString& property, const QString& text);

    QDesignerFormEditorInterface* const m_core;
    QPointer<QDesignerFormWindowInterface> m_form;
    QTimer m_timer;
    qint64 m_duration = 0;  ///< Of the last reading, in milliseconds.
    bool m_isKnown = false; ///< What the timer waits for has been put in its place.
    bool m_canType = false; ///< There was nothing else to read when the typing started.
    QString m_content;
    QVector<FormStatement> m_statements;
};

#endif
