#include "DeclarationForms/choiceadapters.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QList>
#include <QPointer>
#include <QRadioButton>
#include <QWidget>

#include <functional>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/formvalues.h"

namespace {

const QString CheckedValue = QStringLiteral("checkedValue");
const char* const ValueProperty = "value";

typedef QList<QAbstractButton*> Buttons;

/// The radio buttons with a value below a widget: its own or, where it has none, those deeper down.
Buttons ButtonsBelow(const QObject* object)
{
    for (const Qt::FindChildOptions options : {Qt::FindDirectChildrenOnly, Qt::FindChildrenRecursively}) {
        Buttons buttons;
        const auto below = object->findChildren<QRadioButton*>(QString(), options);
        for (QRadioButton* const button : below) {
            if (button->property(ValueProperty).isValid())
                buttons.append(button);
        }
        if (!buttons.isEmpty())
            return buttons;
    }
    return Buttons();
}

Buttons ButtonsOf(const QObject* object)
{
    const QButtonGroup* const group = qobject_cast<const QButtonGroup*>(object);
    return group ? group->buttons() : ButtonsBelow(object);
}

QAbstractButton* CheckedOf(const Buttons& buttons)
{
    for (QAbstractButton* const button : buttons) {
        if (button->isChecked())
            return button;
    }
    return nullptr;
}

QVariant ReadChecked(const QObject* object)
{
    const QAbstractButton* const button = CheckedOf(ButtonsOf(object));
    return button ? button->property(ValueProperty) : QVariant();
}

/// What is exclusive cannot be unchecked otherwise.
void Uncheck(QAbstractButton* button)
{
    QObject* const exclusive = button->group() ? static_cast<QObject*>(button->group()) : button;
    const char* const property = button->group() ? "exclusive" : "autoExclusive";
    const QPointer<QObject> guarded = exclusive;
    const QVariant isExclusive = exclusive->property(property);
    exclusive->setProperty(property, false);
    button->setChecked(false);
    if (guarded)
        exclusive->setProperty(property, isExclusive);
}

/// No value stands for no button.
bool WriteChecked(QObject* object, const QVariant& value)
{
    const Buttons buttons = ButtonsOf(object);
    if (!value.isValid()) {
        if (QAbstractButton* const checked = CheckedOf(buttons))
            Uncheck(checked);
        return true;
    }
    for (QAbstractButton* const button : buttons) {
        if (FormValues::Holds(button->property(ValueProperty), value)) {
            button->setChecked(true);
            return button->isChecked();
        }
    }
    return false;
}

/// Buttons that are added later are not watched.
void WatchButtons(QObject* object, const std::function<void()>& changed)
{
    const Buttons buttons = ButtonsBelow(object);
    for (const QAbstractButton* const button : buttons)
        QObject::connect(button, &QAbstractButton::toggled, object, [changed] { changed(); });
}

} // namespace

void ChoiceAdapters::AddTo(AdapterTable* table)
{
    table->Add(&QButtonGroup::staticMetaObject, CheckedValue,
               {ReadChecked, WriteChecked, SIGNAL(buttonToggled(QAbstractButton*, bool))});
    table->Add(&QWidget::staticMetaObject, CheckedValue, {ReadChecked, WriteChecked, QByteArray(), WatchButtons});
}
