#ifndef DECLARATION_H
#define DECLARATION_H

#include <QObject>
#include <QPointer>

#include "DeclarationHandler/declarationhandler_export.h"

class IExpression;

/// Binds something on an object to the tree of a statement. A declaration belongs to the thread of
/// its object.
class DECLARATIONHANDLER_EXPORT Declaration : public QObject
{
    Q_OBJECT

public:
    /// Takes ownership of the tree, which may be null; the object stays the caller's. Once the object is
    /// destroyed the declaration does nothing any more.
    Declaration(IExpression* condition, QObject* activeObject);
    ~Declaration() override;

    /// Sends the object's current state back through the tree. Answers whether it was passed on.
    virtual bool Save() = 0;

    /// The object acted on; null once it is destroyed.
    virtual QObject* GetActiveObject() const;

    /// Takes ownership of the tree and deletes the one held before.
    void SetCondition(IExpression* condition);

public Q_SLOTS:
    /// Evaluates the tree and writes its value. Answers whether something was written. An invalid value
    /// is written only with \a updateToInvalid.
    virtual bool Update(bool updateToInvalid) = 0;
    /// Update(true).
    bool Update();

Q_SIGNALS:
    /// After each attempt to write, also when the value was there already.
    void Updated();

protected:
    IExpression* m_condition;         ///< The tree, owned; null before SetCondition().
    QPointer<QObject> m_activeObject; ///< Not owned; null once it is destroyed.

private:
    Q_DISABLE_COPY(Declaration)
};

#endif
