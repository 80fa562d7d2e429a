#ifndef FORMENGINE_H
#define FORMENGINE_H

#include <QPointer>
#include <QVector>

#include <memory>

#include "DeclarationForms/boundproperty.h"
#include "DeclarationForms/formbinder.h"
#include "DeclarationForms/formbinding.h"
#include "DeclarationForms/formdelivery.h"
#include "DeclarationForms/formedits.h"
#include "DeclarationForms/formfilter.h"
#include "DeclarationForms/formsaver.h"
#include "DeclarationForms/formstate.h"
#include "DeclarationForms/formtranslation.h"

/// What a FormBinding does. It lives until the last operation that runs has ended.
class FormEngine final : public std::enable_shared_from_this<FormEngine>,
                         private SignalReceiver::Listener,
                         private FormFilter::Listener
{
public:
    FormEngine(QObject* form, FormBinding* binding);
    ~FormEngine();

    /// Once it is shared.
    void Start();
    /// The binding is being deleted.
    void Close();

    FormState& State() { return m_state; }

    // As those of FormBinding.
    bool Bind(QObject* scope);
    bool Bind(QObject* object, const QString& property, const QString& statement, bool isDefault);
    void Unbind(QObject* scope);
    QVector<FormProblem> Problems(QObject* scope);
    QVector<BoundProperty> BoundProperties(QObject* scope);
    bool IsEdited(QObject* scope);
    FormSaveResult Save(QObject* scope);
    void Revert(QObject* scope);
    void Update();

private:
    typedef std::shared_ptr<BoundStatement> Statement;

    void OnChanged(WatchedProperty* property) override;
    void OnDestroyed(WatchedObject* object) override;
    void OnFinished(WatchedObject* object) override;
    void OnPropertySet(QObject* object, const QByteArray& name) override;
    void OnLeft(QObject* object) override;
    void OnLocaleChange(QObject* object) override;
    void OnLanguageChange() override;
    void OnTurn() override;

    void Deliver();
    void Run(bool withVariables);
    bool HasDeclaration(QObject* object, const QString& property);
    bool RefreshEdit(const Statement& statement);
    void NoteEdit(const Statement& statement);
    void SaveFinished(QObject* object);
    void SaveByPolicy(const std::vector<Statement>& statements);
    void MarkForRevert(const Statement& statement);
    void Tell();
    void TellSoon();

    QPointer<FormBinding> m_binding;
    FormFilter m_filter;
    FormState m_state;
    FormEdits m_edits;
    FormDelivery m_delivery;
    FormSaver m_saver;
    FormBinder m_binder;
    FormTranslation m_translation;
    bool m_toldEdited = false;
};

#endif
