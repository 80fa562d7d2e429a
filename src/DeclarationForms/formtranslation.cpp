#include "DeclarationForms/formtranslation.h"

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/formbinder.h"
#include "DeclarationForms/formdelivery.h"
#include "DeclarationForms/formedits.h"
#include "DeclarationForms/formstate.h"
#include "DeclarationForms/formvalues.h"
#include "DeclarationForms/formwalk.h"
#include "DeclarationForms/watchedproperty.h"
#include "common/source/PlatformIndependent/propertyinfo.h"

void FormTranslation::Begin()
{
    if (m_isRunning)
        return;
    m_isRunning = true;
    TakeSnapshot();
}

void FormTranslation::End()
{
    Absorb();
    m_isRunning = false;
    m_snapshot.clear();
}

void FormTranslation::TakeSnapshot()
{
    m_snapshot.clear();
    for (const std::shared_ptr<BoundStatement>& statement : m_state.In(nullptr)) {
        if (!statement->property)
            continue;
        const bool isEdited = m_edits.Refresh(statement);
        m_snapshot.push_back({statement, statement->Read(), isEdited});
    }
}

void FormTranslation::Absorb()
{
    if (!m_isRunning)
        return;
    std::vector<Held> snapshot;
    snapshot.swap(m_snapshot);
    for (const Held& before : snapshot) {
        if (before.statement->property)
            Absorb(before);
    }
    TakeSnapshot();
}

void FormTranslation::Renew()
{
    if (m_isRunning)
        TakeSnapshot();
}

void FormTranslation::Absorb(const Held& before)
{
    const std::shared_ptr<BoundStatement>& statement = before.statement;
    const QVariant held = statement->Read();
    if (!statement->property || FormValues::AreEqual(held, before.value))
        return;
    statement->property->original = held;
    if (before.isEdited) {
        m_delivery.WriteProperty(*statement, before.value);
        m_edits.Set(statement, true);
        return;
    }
    statement->shown = held;
    statement->isOverwritten = true;
    m_edits.Set(statement, false);
    m_delivery.Mark(statement);
}

void FormTranslation::Apply()
{
    QVector<QPair<QPointer<QObject>, QByteArray>> texts;
    texts.swap(m_texts);
    // What is taken away first: a property may get another marker.
    for (const auto& text : texts) {
        if (text.first && text.first->property(text.second).toString().isEmpty())
            Unbind(text.first, text.second);
    }
    for (const auto& text : texts) {
        if (text.first && !text.first->property(text.second).toString().isEmpty())
            Bind(text.first, text.second);
    }
    if (!texts.isEmpty())
        m_binder.ResolveAgain();
}

void FormTranslation::Unbind(QObject* object, const QByteArray& name)
{
    const QString marked = QString::fromUtf8(name);
    m_state.problems.RemoveFailed(object, marked);
    // The next language may have a statement again.
    m_state.objects.WatchTexts(object);
    const std::shared_ptr<BoundStatement> statement = m_state.Find(object, PropertyInfo::ToNormal(marked));
    if (statement && *statement->marked == marked)
        m_binder.Unbind(statement);
}

void FormTranslation::Bind(QObject* object, const QByteArray& name)
{
    const QString marked = QString::fromUtf8(name);
    const QVariant text = object->property(name);
    const std::shared_ptr<BoundStatement> statement = m_state.Find(object, PropertyInfo::ToNormal(marked));
    if (!statement || (*statement->marked == marked && statement->text != text.toString()))
        m_binder.Bind(MarkedProperty{object, marked, text}, statement ? statement->source : m_state.source);
    else if (*statement->marked == marked)
        m_state.problems.RemoveFailed(object, marked);
    else
        m_binder.TellDuplicate(MarkedProperty{object, marked, text});
}
