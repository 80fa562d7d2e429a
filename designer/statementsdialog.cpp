#include "statementsdialog.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "designerobjects.h"
#include "formwatcher.h"
#include "statementspanel.h"
#include "view/tablepanel.h"

namespace {

const QSize StartSize(720, 480);

} // namespace

StatementsDialog::StatementsDialog(FormWatcher* watcher, FormChecks* checks, StatementEdits* edits, QObject* object,
                                   QWidget* parent)
    : QDialog(parent), m_panel(new StatementsPanel(watcher, checks, edits, object))
{
    setWindowTitle(QString("Statements of %1").arg(DesignerObjects::Label(watcher->Core(), object)));
    resize(StartSize);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // The object may go while the dialog is there, with its form.
    connect(object, &QObject::destroyed, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_panel);
    layout->addWidget(buttons);
}
