#include "bindform/bindform.h"

#include <QVariant>
#include <QWidget>

#include "DeclarationHandler/declarationhandler.h"
#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"

namespace {

void CollectMarked(QObject* object, QVector<MarkedProperty>* properties)
{
    const QList<QByteArray> names = object->dynamicPropertyNames();
    for (const QByteArray& name : names) {
        const QString marked = QString::fromLatin1(name);
        if (PropertyInfo::IsOvexProperty(marked) && !name.startsWith("_q_"))
            properties->append({object, marked, object->property(name).toString()});
    }
    for (QObject* child : object->children())
        CollectMarked(child, properties);
}

bool HoldsText(const MarkedProperty& property)
{
    return property.object->property(property.name.toLatin1()).userType() == QMetaType::QString;
}

} // namespace

QVector<MarkedProperty> CollectMarkedProperties(QWidget* form)
{
    QVector<MarkedProperty> properties;
    CollectMarked(form, &properties);
    return properties;
}

//! [bind]
BindingKind BindProperty(DeclarationHandler& handler, QWidget* form, const MarkedProperty& property,
                         const QString& defaultPackage)
{
    const bool readOnly = PropertyInfo::IsReadOnly(property.name);
    if (!HoldsText(property))
        return BindingKind::Refused;
    if (handler.AddConstMapDeclaration(property.object, property.name, property.text))
        return BindingKind::Constant;
    if (handler.AddDeclaration(form, property.object, property.name, property.text, defaultPackage, readOnly, true))
        return BindingKind::Declaration;
    return BindingKind::Refused;
}

FormBinding BindForm(DeclarationHandler& handler, QWidget* form, const QString& defaultPackage)
{
    // The walk ends before the first property is touched: binding adds properties and hides widgets.
    const QVector<MarkedProperty> properties = CollectMarkedProperties(form);
    FormBinding binding;
    for (const MarkedProperty& property : properties) {
        switch (BindProperty(handler, form, property, defaultPackage)) {
        case BindingKind::Declaration:
            binding.declarations.append(property);
            break;
        case BindingKind::Constant:
            binding.constants.append(property);
            break;
        case BindingKind::Refused:
            binding.refused.append(property);
        }
    }
    return binding;
}
//! [bind]
