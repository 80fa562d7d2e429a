#include <QLabel>
#include <QTimer>

#include "DeclarationForms/formbinding.h"
#ifdef BENCHMARK_INSPECTOR
#include "DeclarationInspector/declarationinspector.h"
#endif
#include "peerdata.h"

namespace {

/// Statements stand in the targets' properties, as Designer leaves them.
class Forms : public PeerData
{
public:
    void Prepare(const Form& form) override
    {
        for (const Binding& binding : form.bindings)
            binding.target->setProperty(form.MarkedProperty().toLatin1(), binding.own);
    }

    void Load(const Form& form) override
    {
        m_binding = std::make_unique<FormBinding>(form.top.get());
        m_isAsBound = m_binding->Bind() && m_binding->Problems().isEmpty() && !m_binding->IsEdited();
    }

    QString Error() const override { return m_isAsBound ? QString() : "there are problems or edits"; }
    void SetDeliveryInterval(int milliseconds) override { m_binding->SetDeliveryInterval(milliseconds); }
    void Save(const Form&) override { m_binding->Save(); }

    qint64 Evaluations() const override
    {
        qint64 evaluations = 0;
        for (const BoundProperty& property : m_binding->BoundProperties())
            evaluations += qint64(property.evaluations);
        return evaluations;
    }

private:
    std::unique_ptr<FormBinding> m_binding;
    bool m_isAsBound = true;
};

/// What a program does that does not hear of changes: a timer shows all of the data on all labels.
class Timer : public PeerData
{
public:
    void Load(const Form& form) override
    {
        const auto show = [this, &form] {
            for (int i = 0; i < int(form.bindings.size()); ++i)
                static_cast<QLabel*>(form.bindings[i].target)->setText(Value(i).toString());
        };
        QObject::connect(&m_timer, &QTimer::timeout, show);
        show();
    }

    void SetDeliveryInterval(int milliseconds) override { m_timer.start(milliseconds); }

private:
    QTimer m_timer;
};

#ifdef BENCHMARK_INSPECTOR
/// Under the eyes of the inspector.
class Inspected : public Forms
{
public:
    void Load(const Form& form) override
    {
        DeclarationInspector::Show();
        Forms::Load(form);
    }
};

const bool inspectedRegistered = RegisterSubject("inspected", MakeSubject<Inspected>, "W7");
#endif

const bool registered = RegisterSubject("forms", MakeSubject<Forms>, "W3 W4 W5 W6 W7")
    && RegisterSubject("timer", MakeSubject<Timer>, "W7");

} // namespace
