#include "DeclarationForms/boundstatement.h"

#include <QWidget>

#include <algorithm>

#include "DeclarationForms/formreferences.h"
#include "DeclarationForms/formwalk.h"
#include "DeclarationForms/watchedproperty.h"

BoundStatement::BoundStatement(WatchedProperty* boundProperty, const std::shared_ptr<const BoundAccess>& propertyAccess)
    : property(boundProperty), object(boundProperty->owner->object), access(propertyAccess)
{
}

QVariant BoundStatement::Target(Faults* faults) const
{
    Faults unused;
    if (!faults)
        faults = &unused;
    if (!value.isValid())
        return property ? property->original : QVariant();
    if (access->TakesImagePath(value))
        return BoundAccess::LoadImage(value.toString(), &faults->image);
    QString text;
    if (format && NumberFormat::IsNumber(value) && format->Apply(value, Locale(), &text, &faults->format))
        return text;
    return value;
}

bool BoundStatement::HoldsTarget(const QVariant& held) const
{
    return IsPlain() ? Holds(held, value) : Holds(held, Target());
}

void BoundStatement::ReadFormat(const QVariant& held)
{
    QString text;
    // Most objects have few dynamic properties, and their classes many others.
    const QList<QByteArray> names = object->dynamicPropertyNames();
    for (const QByteArray& formatName : names) {
        if (FormWalk::IsFormat(formatName) && FormWalk::FormattedBy(formatName) == Name())
            text = object->property(formatName).toString();
    }
    const bool takesText = !text.isEmpty() && (held.userType() == QMetaType::QString || property->isUnknown);
    format.reset(takesText ? new NumberFormat(text) : nullptr);
}

QLocale BoundStatement::Locale() const
{
    return object->isWidgetType() ? static_cast<const QWidget*>(object)->locale() : QLocale();
}

bool BoundStatement::Reads(const WatchedProperty* other) const
{
    return std::any_of(compiled.properties.begin(), compiled.properties.end(),
                       [other](const FormProperty* reference) { return reference->Property() == other; });
}
