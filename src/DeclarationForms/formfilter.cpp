#include "DeclarationForms/formfilter.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDynamicPropertyChangeEvent>
#include <QFocusEvent>
#include <QKeyEvent>

namespace {

/// A combo box tells of no text that is not among its items, and its line edit hands the focus on to it.
bool IsConfirmation(const QObject* object, const QKeyEvent& event)
{
    const bool isReturn = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    const QComboBox* const comboBox = isReturn ? qobject_cast<const QComboBox*>(object) : nullptr;
    return comboBox && comboBox->isEditable();
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
        m_listener->OnPropertySet(object, static_cast<QDynamicPropertyChangeEvent*>(event)->propertyName());
        break;
    case QEvent::FocusOut:
        return static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason && Leave(object);
    case QEvent::KeyPress:
        return IsConfirmation(object, *static_cast<QKeyEvent*>(event)) && Leave(object);
    case QEvent::LocaleChange:
        m_listener->OnLocaleChange(object);
        break;
    default:
        break;
    }
    return false;
}

/// Answers whether the object is gone, destroyed by a slot: nobody else gets the event then.
bool FormFilter::Leave(QObject* object)
{
    const QPointer<QObject> guarded = object;
    m_listener->OnLeft(object);
    return !guarded;
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
