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
    return property.object->property(property.name.toLatin1()).type() == QVariant::String;
}

} // namespace

//! [bind]
FormBinding BindForm(DeclarationHandler& handler, QWidget* form, const QString& defaultPackage)
{
    // The walk ends before the first property is touched: binding adds properties and hides widgets.
    QVector<MarkedProperty> properties;
    CollectMarked(form, &properties);

    FormBinding binding;
    for (const MarkedProperty& property : qAsConst(properties)) {
        const bool readOnly = PropertyInfo::IsReadOnly(property.name);
        if (!HoldsText(property))
            binding.refused.append(property);
        else if (handler.AddConstMapDeclaration(property.object, property.name, property.text))
            binding.constants.append(property);
        else if (handler.AddDeclaration(form, property.object, property.name, property.text, defaultPackage, readOnly,
                                        true))
            binding.declarations.append(property);
        else
            binding.refused.append(property);
    }
    return binding;
}
//! [bind]
