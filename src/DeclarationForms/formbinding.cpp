#include "DeclarationForms/formbinding.h"

#include "DeclarationForms/boundstatement.h"
#include "DeclarationForms/evaluation.h"
#include "DeclarationForms/formengine.h"
#include "DeclarationForms/formregistry.h"
#include "DeclarationForms/inspectorloader.h"

FormBinding::FormBinding(QObject* form, QObject* parent) : QObject(parent), d(std::make_shared<FormEngine>(form, this))
{
    qRegisterMetaType<FormProblem>("FormProblem");
    d->Start();
    FormRegistry::Add(this);
    InspectorLoader::LoadIfAsked(this);
}

FormBinding::~FormBinding()
{
    FormRegistry::Remove(this);
    d->Close();
}

QObject* FormBinding::Form() const
{
    return d->State().form;
}

void FormBinding::SetDataPeer(IDataPeer* peer)
{
    d->State().SetSource({peer, DefaultPackage()});
}

IDataPeer* FormBinding::DataPeer() const
{
    return FormState::PeerOf(d->State().Source());
}

void FormBinding::SetDefaultPackage(const QString& package)
{
    d->State().SetSource({d->State().Source().peer, package});
}

QString FormBinding::DefaultPackage() const
{
    return d->State().Source().package;
}

void FormBinding::SetSavePolicy(SavePolicy policy)
{
    d->State().savePolicy = policy;
}

void FormBinding::SetEditPolicy(EditPolicy policy)
{
    d->State().editPolicy = policy;
}

void FormBinding::SetDeliveryInterval(int milliseconds)
{
    d->State().gatherer.SetInterval(milliseconds);
}

bool FormBinding::Bind(QObject* scope)
{
    return d->Bind(scope);
}

bool FormBinding::Bind(QObject* object, const QString& markedProperty, const QString& statement)
{
    return d->Bind(object, markedProperty, statement, false);
}

bool FormBinding::BindDefault(QObject* object, const QString& markedProperty, const QString& statement)
{
    return d->Bind(object, markedProperty, statement, true);
}

void FormBinding::Unbind(QObject* scope)
{
    d->Unbind(scope);
}

QVector<FormProblem> FormBinding::Problems(QObject* scope) const
{
    return d->Problems(scope);
}

QVector<BoundProperty> FormBinding::BoundProperties(QObject* scope) const
{
    return d->BoundProperties(scope);
}

bool FormBinding::IsEdited(QObject* scope) const
{
    return d->IsEdited(scope);
}

FormSaveResult FormBinding::Save(QObject* scope)
{
    return d->Save(scope);
}

void FormBinding::Revert(QObject* scope)
{
    d->Revert(scope);
}

void FormBinding::Update()
{
    d->Update();
}

QObject* FormBinding::EvaluatedObject()
{
    const BoundStatement* const running = Evaluation::Running();
    return running ? running->object : nullptr;
}

QString FormBinding::EvaluatedProperty()
{
    const BoundStatement* const running = Evaluation::Running();
    return running ? *running->marked : QString();
}
