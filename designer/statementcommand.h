#ifndef STATEMENTCOMMAND_H
#define STATEMENTCOMMAND_H

#include <QPointer>
#include <QUndoCommand>
#include <QVariant>

class QDesignerFormEditorInterface;

/// A step of Designer's undo: a dynamic property of an object gets another value, or comes, or goes.
class StatementCommand : public QUndoCommand
{
public:
    /// A value that is not valid stands for no property. Steps of the same \a run, of one property, become one;
    /// run 0 stands alone.
    StatementCommand(QDesignerFormEditorInterface* core, QObject* object, const QString& property,
                     const QVariant& value, int run, QUndoCommand* parent = nullptr);

    void undo() override { Apply(m_before); }
    void redo() override { Apply(m_after); }
    int id() const override;
    bool mergeWith(const QUndoCommand* next) override;

private:
    void Apply(const QVariant& value);
    bool Write(const QVariant& value);

    QDesignerFormEditorInterface* const m_core;
    const QPointer<QObject> m_object;
    const QString m_property;
    const int m_run;
    QVariant m_before;
    QVariant m_after;
};

#endif
