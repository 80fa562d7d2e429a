#include "DeclarationForms/formfilter.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDynamicPropertyChangeEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>

namespace {

/// A combo box tells of no text that is not among its items, and its line edit hands the focus on to it.
bool IsConfirmation(const QObject* object, const QKeyEvent& event)
{
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const QComboBox* const comboBox = isReturn ? qobject_cast<const QComboBox*>(object) : nullptr;
    return comboBox && comboBox->isEditable();
}

/// Whether the call, which runs code of the host, destroys the object: nobody else gets the event then.
template<typename Call>
bool Destroys(QObject* object, Call call)
{
    const QPointer<QObject> guarded = object;
    call();
    return !guarded;
}

} // namespace

FormFilter::FormFilter(Listener* listener) : m_listener(listener), m_ancestors(this) {}

void FormFilter::SetForm(QObject* form)
{
    m_ancestors.Install(form);
}

void FormFilter::PostTurn()
{
    if (m_isPosted)
        return;
    m_isPosted = true;
    QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
}

void FormFilter::Close()
{
    m_ancestors.Remove();
    m_listener = nullptr;
}

bool FormFilter::event(QEvent* event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    m_isPosted = false;
    if (m_listener)
        m_listener->OnTurn();
    return true;
}

bool FormFilter::eventFilter(QObject* object, QEvent* event)
{
    if (!m_listener)
        return false;
    switch (event->type()) {
    case QEvent::DynamicPropertyChange:
        return Destroys(object, [=] {
            m_listener->OnPropertySet(object, static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName());
        });
    case QEvent::FocusOut:
        return static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason
            && Destroys(object, [=] { m_listener->OnLeft(object); });
    case QEvent::KeyPress:
        return IsConfirmation(object, *static_cast<QKeyEvent*>(event))
            && Destroys(object, [=] { m_listener->OnLeft(object); });
    case QEvent::LocaleChange:
        m_listener->OnLocaleChange(object);
        break;
    default:
        break;
    }
    return false;
}

void FormFilter::Ancestors::Install(QObject* form)
{
    Remove();
    m_form = form;
    for (QObject* object = form; object; object = object->parent()) {
        object->installEventFilter(this);
        m_objects.append(object);
    }
}

void FormFilter::Ancestors::Remove()
{
    for (const QPointer<QObject>& object : qAsConst(m_objects)) {
        if (object)
            object->removeEventFilter(this);
    }
    m_objects.clear();
}

bool FormFilter::Ancestors::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::ParentChange) {
        Install(m_form);
    } else if (event->type() == QEvent::LanguageChange && m_owner->m_listener) {
        m_owner->m_listener->OnLanguageChange();
        m_owner->PostTurn();
    }
    return false;
}
