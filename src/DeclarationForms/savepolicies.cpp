#include "DeclarationForms/savepolicies.h"

#include <QMetaMethod>
#include <QVariant>
#include <QWidget>

#include "DeclarationForms/formlog.h"

namespace {

const char* const PolicyProperty = "savePolicy";

bool Read(const QString& text, FormBinding::SavePolicy* policy)
{
    if (text == QLatin1String("onRequest"))
        *policy = FormBinding::SaveOnRequest;
    else if (text == QLatin1String("onEditingFinished"))
        *policy = FormBinding::SaveOnEditingFinished;
    else if (text == QLatin1String("atOnce"))
        *policy = FormBinding::SaveAtOnce;
    else
        return false;
    return true;
}

int FindSignal(const QMetaObject* metaObject, const char* name)
{
    for (int i = 0; i < metaObject->methodCount(); ++i) {
        const QMetaMethod method = metaObject->method(i);
        if (method.methodType() == QMetaMethod::Signal && method.name() == name)
            return i;
    }
    return -1;
}

} // namespace

FormBinding::SavePolicy SavePolicies::Of(const QObject* object, FormBinding::SavePolicy policy)
{
    for (; object; object = object->parent()) {
        const QVariant text = object->property(PolicyProperty);
        if (!text.isValid())
            continue;
        FormBinding::SavePolicy own = policy;
        if (Read(text.toString(), &own))
            return own;
        qCWarning(FormLog).noquote() << QStringLiteral("savePolicy of %1: \"%2\" is none.")
                                            .arg(Printable(DescribeObject(object)), Printable(text.toString()));
    }
    return policy;
}

std::vector<int> SavePolicies::FinishSignals(const QObject* object)
{
    std::vector<int> found;
    for (const char* const name :
         {"editingFinished", "clicked", "activated", "sliderReleased", "triggered", "buttonClicked"}) {
        const int index = FindSignal(object->metaObject(), name);
        if (index >= 0)
            found.push_back(index);
    }
    return found;
}

bool SavePolicies::IsConfirmedByChange(const QObject* object)
{
    if (!FinishSignals(object).empty())
        return false;
    const QWidget* const widget = object->isWidgetType() ? static_cast<const QWidget*>(object) : nullptr;
    return !widget || widget->focusPolicy() == Qt::NoFocus || widget->focusProxy();
}

bool SavePolicies::TellsOfLeaving(const QObject* object)
{
    return object->metaObject()->indexOfSignal("editingFinished()") >= 0;
}
