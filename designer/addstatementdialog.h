#ifndef ADDSTATEMENTDIALOG_H
#define ADDSTATEMENTDIALOG_H

#include <QDialog>
#include <QPointer>

class QCheckBox;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class StatementEdits;

/// Asks which property of an object a new statement is to bind.
class AddStatementDialog : public QDialog
{
    Q_OBJECT

public:
    AddStatementDialog(const StatementEdits* edits, QObject* object, QWidget* parent);

    /// With the marker.
    QString Property() const;

private:
    void Check();

    const StatementEdits* const m_edits;
    const QPointer<QObject> m_object;
    QComboBox* const m_property;
    QCheckBox* const m_writesBack;
    QLabel* const m_note;
    QDialogButtonBox* const m_buttons;
};

#endif
