#include "bindableproperties.h"

#include <QButtonGroup>
#include <QDesignerDynamicPropertySheetExtension>
#include <QDesignerFormEditorInterface>
#include <QDesignerPropertySheetExtension>
#include <QMetaProperty>
#include <QRadioButton>
#include <QSet>

#include <algorithm>

#include "DeclarationForms/formadapters.h"
#include "DeclarationForms/propertyorder.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "designerobjects.h"
#include "qtversion.h"

namespace {

/// What the forms library adds to classes.
const char* const AdaptedNames[] = {"items", "currentData", "rows", "checkedValue"};

/// What stands for a class without a user property.
const char* const MainNames[] = {"text", "title", "html", "windowTitle"};

bool HasAdapter(const QObject* object, const QString& name)
{
    // Every widget could be one around radio buttons.
    if (name == "checkedValue" && object->isWidgetType() && !object->findChild<QRadioButton*>())
        return false;
    return FormAdapters::IsAdapted(object, name);
}

/// Whether something that a statement can give makes a value of it.
bool TakesValues(const QMetaProperty& property)
{
    if (property.isEnumType() || property.userType() == QMetaType::QVariant)
        return true;
    static const QSet<int> images{QMetaType::QPixmap, QMetaType::QIcon};
    if (images.contains(property.userType()))
        return true;
    for (const QVariant& value : {QVariant(QString()), QVariant(0.0), QVariant(QVariantList())}) {
        if (QtVersion::CanConvert(value, property.userType()))
            return true;
    }
    return false;
}

QString MainProperty(const QMetaObject* type)
{
    if (type->userProperty().isValid())
        return type->userProperty().name();
    const auto has = [type](const char* name) { return type->indexOfProperty(name) >= 0; };
    const auto found = std::find_if(std::begin(MainNames), std::end(MainNames), has);
    return found == std::end(MainNames) ? QString() : QString(*found);
}

/// Those that can be bound, in the order of the classes from the object's own to QObject.
QStringList OfClasses(const QMetaObject* type)
{
    QStringList names;
    for (; type; type = type->superClass()) {
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            const QMetaProperty property = type->property(i);
            const QString name = property.name();
            if (property.isWritable() && name != "objectName" && !names.contains(name) && TakesValues(property))
                names.append(name);
        }
    }
    return names;
}

/// The least and the most of the main property.
bool IsLimit(const QMetaObject* type, const QString& name, const QString& main)
{
    const int mainIndex = type->indexOfProperty(main.toLatin1().constData());
    const int index = type->indexOfProperty(name.toLatin1().constData());
    return mainIndex >= 0 && index >= 0 && PropertyOrder::Bounds(name, main)
        && type->property(index).userType() == type->property(mainIndex).userType()
        && (name.startsWith("minimum") || name.startsWith("maximum"));
}

} // namespace

bool BindableProperties::IsMarked(const QString& name)
{
    return PropertyInfo::IsOvexProperty(name) && !name.startsWith("_q_");
}

QString BindableProperties::Marked(const QString& name, bool isWrittenBack)
{
    return (isWrittenBack ? '_' : '~') + name;
}

QString BindableProperties::TypeOf(const QObject* object, const QString& name)
{
    const QMetaObject* const type = object->metaObject();
    const int index = type->indexOfProperty(name.toUtf8().constData());
    return index < 0 ? QString::fromLatin1(object->property(name.toUtf8().constData()).typeName())
                     : QString::fromLatin1(type->property(index).typeName());
}

QStringList BindableProperties::Unbound(const QDesignerFormEditorInterface* core, QObject* object)
{
    const QMetaObject* const type = object->metaObject();
    const QString main = MainProperty(type);
    QStringList names;
    for (const char* const name : AdaptedNames) {
        if (HasAdapter(object, name))
            names.append(name);
    }
    QSet<QString> bound;
    const QDesignerPropertySheetExtension* const sheet = DesignerObjects::Sheet(core, object);
    for (int i = 0; sheet && i < sheet->count(); ++i) {
        const QString name = sheet->propertyName(i);
        if (DesignerObjects::DynamicIndex(core, object, name) != i)
            continue;
        if (IsMarked(name))
            bound.insert(PropertyInfo::ToNormal(name));
        else
            names.append(name);
    }
    names += OfClasses(type);

    const auto rank = [&](const QString& name) { return IsLimit(type, name, main) ? 0 : name == main ? 1 : 2; };
    names.erase(std::remove_if(names.begin(), names.end(), [&](const QString& name) { return bound.contains(name); }),
                names.end());
    std::stable_sort(names.begin(), names.end(),
                     [&](const QString& left, const QString& right) { return rank(left) < rank(right); });
    return names;
}
