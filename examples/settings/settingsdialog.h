#ifndef SETTINGSDIALOG_H
#define SETTINGSDIALOG_H

#include <QDialog>
#include <QScopedPointer>

#include "DeclarationHandler/declarationhandler.h"

namespace Ui {
class SettingsDialog;
}

/// The dialog. Its form brings the statements along; this class binds them, and saves the page shown
/// or all pages.
class SettingsDialog : public QDialog
{
    Q_OBJECT

public:
    SettingsDialog();
    ~SettingsDialog() override;

private:
    // The handler goes before the widgets do, which are this dialog's children.
    const QScopedPointer<Ui::SettingsDialog> m_ui;
    DeclarationHandler m_handler;
};

#endif
