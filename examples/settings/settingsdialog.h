#ifndef SETTINGSDIALOG_H
#define SETTINGSDIALOG_H

#include <QDialog>
#include <QScopedPointer>
#include <QTranslator>

#include "DeclarationForms/formbinding.h"

namespace Ui {
class SettingsDialog;
}

/// The dialog. Its form brings the statements along; this class binds them, shows which pages are edited and
/// what could not be saved, and follows the language that is set.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    SettingsDialog();
    ~SettingsDialog() override;

    const FormBinding& GetBinding() const { return m_binding; }

public Q_SLOTS:
    /// Saves everything, and closes the dialog if all was taken.
    void accept() override;
    /// Gives all edits up, and closes the dialog.
    void reject() override;

protected:
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void ShowState();

private:
    void ConnectButtons();
    void WatchEdits();
    void ShowEditedPages();
    void ShowRefusals();
    void FollowLanguage();

    const QScopedPointer<Ui::SettingsDialog> m_ui;
    FormBinding m_binding;
    QTranslator m_translator;
    QString m_language;
};

#endif
