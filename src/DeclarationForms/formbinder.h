#ifndef FORMBINDER_H
#define FORMBINDER_H

#include <QPointer>
#include <QSet>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

#include "Common/textplace.h"
#include "DeclarationForms/formproblem.h"
#include "DeclarationForms/statementcompiler.h"
#include "DeclarationForms/widgetpaths.h"

class BoundAccess;
class BoundStatement;
class FormDelivery;
class FormEdits;
class FormState;
struct MarkedProperty;
struct WatchedObject;
struct WatchedProperty;

/// Binds statements to the properties of a form, and ends that again.
class FormBinder
{
public:
    typedef std::shared_ptr<BoundStatement> Statement;

    FormBinder(FormState* state, FormEdits* edits, FormDelivery* delivery);

    /// Binds all that stand below that object; false when one has an error. What is to be evaluated is marked.
    bool Bind(QObject* scope);
    /// One of them, with variables of that one of the form's sources. False for an error, which stands among the
    /// problems.
    bool Bind(const MarkedProperty& property, quint16 source);
    /// Tells that the property has another statement.
    void TellDuplicate(const MarkedProperty& property);
    void Unbind(const QObject* scope);
    void Unbind(const Statement& statement);

    /// Takes out what belongs to an object that is being destroyed.
    void Forget(const WatchedObject* object);

    /// Looks paths up again that led nowhere; with \a name those alone that end in that object's.
    void ResolveAgain(const QString& name = QString());

private:
    typedef std::shared_ptr<const BoundAccess> Access;

    /// The marked properties of one object.
    bool BindMarked(QObject* object);
    bool Fail(const MarkedProperty& property, FormProblem::Kind kind, const QString& reason,
              const TextPlace& place = TextPlace(-1, 0));
    bool Check(const MarkedProperty& property, const QString& name);
    Statement Prepare(const MarkedProperty& property, const QString& name, const Access& access, const QVariant& held);
    void Install(const MarkedProperty& property, const Statement& statement, CompiledStatement* compiled,
                 const QVariant& held);
    void TellBound() const;
    void WatchUntold(const Statement& statement);
    void Watch(WatchedProperty* property, const BoundAccess& access);
    void Unwatch(WatchedProperty* property);
    void PutConstant(QObject* object, const QString& map, const QString& key, const QString& value);

    QString NormalName(const QString& marked);
    void Attach(const Statement& statement);
    void Detach(const CompiledStatement& compiled);
    void NoteUnresolved(const Statement& statement);
    bool Resolve(const Statement& statement);
    void TellPaths(const Statement& statement);

    FormState& m_state;
    FormEdits& m_edits;
    FormDelivery& m_delivery;
    StatementCompiler m_compiler;
    WidgetPaths m_paths;
    QString m_lastMarked; ///< As NormalName() was asked for last, and what it answered.
    QString m_lastNormal;
    std::vector<std::weak_ptr<BoundStatement>> m_unresolved; ///< Those with a path that leads nowhere.
};

#endif
