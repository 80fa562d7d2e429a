#include "declarationdesigner.h"

#include <QCoreApplication>

#include "designertools.h"

DeclarationDesigner::DeclarationDesigner() = default;
DeclarationDesigner::~DeclarationDesigner() = default;

void DeclarationDesigner::initialize(QDesignerFormEditorInterface* core)
{
    if (m_core)
        return;
    m_core = core;
    m_tools = std::make_unique<DesignerTools>(core);
    // Designer ends before its plugins do.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_tools.reset(); });
}
