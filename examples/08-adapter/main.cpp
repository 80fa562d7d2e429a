// A property that a class lacks: the page that a stack of pages shows, by its name.

#include <QApplication>
#include <QStackedWidget>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formadapters.h"
#include "DeclarationForms/formbinding.h"
#include "expect.h"

namespace {

//! [adapter]
QVariant ReadPage(const QObject* stack)
{
    const QWidget* const page = static_cast<const QStackedWidget*>(stack)->currentWidget();
    return page ? page->objectName() : QVariant();
}

bool WritePage(QObject* stack, const QVariant& name)
{
    auto* const page = stack->findChild<QWidget*>(name.toString(), Qt::FindDirectChildrenOnly);
    if (page)
        static_cast<QStackedWidget*>(stack)->setCurrentWidget(page);
    return page;
}

void RegisterCurrentPage()
{
    FormAdapters::Register(&QStackedWidget::staticMetaObject, "currentPage", ReadPage, WritePage,
                           SIGNAL(currentChanged(int)));
}
//! [adapter]

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    RegisterCurrentPage();
    const VariableIdentifier page("page", "Panel");
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(page, "charts", IDataPeer::NoFlag);

    QStackedWidget stack;
    for (const char* const name : {"overview", "charts", "alarms"}) {
        auto* const widget = new QWidget;
        widget->setObjectName(name);
        stack.addWidget(widget);
    }
    FormBinding binding(&stack);
    binding.SetDefaultPackage("Panel");
    binding.SetSavePolicy(FormBinding::SaveAtOnce);
    binding.Bind(&stack, "_currentPage", "page");
    Expect("page", stack.currentWidget()->objectName(), "charts");

    stack.setCurrentIndex(2);
    QCoreApplication::processEvents();
    Expect("page in the data", data->GetValue(page, QVariant()), "alarms");

    data->ChangeValue(page, "help", IDataPeer::NoFlag);
    QCoreApplication::processEvents();
    Expect("page for a name that is none", stack.currentWidget()->objectName(), "alarms");
    Expect("problem", int(binding.Problems().value(0).kind), int(FormProblem::NotTaken));
    return failures;
}
