#ifndef FORMEDITS_H
#define FORMEDITS_H

#include <QVariant>

#include <memory>

#include "DeclarationForms/statementlist.h"

class BoundStatement;
class QObject;

/// Which properties of a form the user has edited.
class FormEdits
{
public:
    typedef StatementList::Statements Statements;

    FormEdits();

    /// Whether a property that holds \a held has been edited, where its statement would show \a target.
    static bool IsEdit(const BoundStatement& statement, const QVariant& held, const QVariant& target);

    /// Looks at the property. Answers whether it is edited, then with what it holds in \a value, if that is not null.
    bool Refresh(const std::shared_ptr<BoundStatement>& statement, QVariant* value = nullptr);
    /// The same for one that is to be saved. An edit that the property has told of was compared with the data then, and
    /// is again with each evaluation.
    bool Confirm(const std::shared_ptr<BoundStatement>& statement, QVariant* value);
    void Set(const std::shared_ptr<BoundStatement>& statement, bool isEdited);
    /// It is saved or given up: what was refused does not matter any more.
    void End(const std::shared_ptr<BoundStatement>& statement);
    /// It may be edited from now on.
    void Touch(const std::shared_ptr<BoundStatement>& statement) { m_touched.Add(statement); }

    /// Whether any property is.
    bool HasEdits() const { return m_count > 0; }
    /// Those that may be edited, without looking at properties that tell of their changes by themselves.
    Statements Candidates(const QObject* scope);
    /// One that does not tell of its changes.
    void AddUnwatched(const std::shared_ptr<BoundStatement>& statement) { m_unwatched.Add(statement); }

private:
    bool Look(const std::shared_ptr<BoundStatement>& statement, bool isCompared, QVariant* held);

    int m_count = 0;
    StatementList m_touched;
    StatementList m_unwatched;
};

#endif
