#ifndef FORMTRANSLATION_H
#define FORMTRANSLATION_H

#include <QByteArray>
#include <QPair>
#include <QPointer>
#include <QVariant>
#include <QVector>

#include <memory>
#include <vector>

class BoundStatement;
class FormBinder;
class FormDelivery;
class FormEdits;
class FormState;

/// What Designer's retranslateUi() does to a form while it handles a change of language: plain properties are
/// written over, and statements change.
class FormTranslation
{
public:
    FormTranslation(FormState* state, FormEdits* edits, FormDelivery* delivery, FormBinder* binder)
        : m_state(*state), m_edits(*edits), m_delivery(*delivery), m_binder(*binder)
    {
    }

    /// Before the form handles the change, and when it has.
    void Begin();
    void End();
    /// Between these two.
    bool IsRunning() const { return m_isRunning; }

    /// What has been written so far counts as Designer's; edits are put back.
    void Absorb();
    /// What statements have written so far is not Designer's.
    void Renew();

    /// A marked property of a bound object was set; the next Apply() binds it anew.
    void NoteText(QObject* object, const QByteArray& name) { m_texts.append({object, name}); }
    void Apply();
    bool HasTexts() const { return !m_texts.isEmpty(); }

private:
    struct Held
    {
        std::shared_ptr<BoundStatement> statement;
        QVariant value;
        bool isEdited;
    };

    void TakeSnapshot();
    void Absorb(const Held& before);
    void Bind(QObject* object, const QByteArray& name);
    void Unbind(QObject* object, const QByteArray& name);

    FormState& m_state;
    FormEdits& m_edits;
    FormDelivery& m_delivery;
    FormBinder& m_binder;
    bool m_isRunning = false;
    std::vector<Held> m_snapshot;
    QVector<QPair<QPointer<QObject>, QByteArray>> m_texts;
};

#endif
