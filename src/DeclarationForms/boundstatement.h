#ifndef BOUNDSTATEMENT_H
#define BOUNDSTATEMENT_H

#include <QLocale>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

#include "DeclarationForms/boundaccess.h"
#include "DeclarationForms/compiledstatement.h"
#include "DeclarationForms/numberformat.h"
#include "DeclarationForms/problembook.h"

struct WatchedProperty;

/// One property that is bound: its statement, and what became of it. What is done with it is the others' part.
class BoundStatement
{
public:
    /// \a propertyAccess is that of the property.
    BoundStatement(WatchedProperty* boundProperty, const std::shared_ptr<const BoundAccess>& propertyAccess);

    /// What the property would hold; the value itself, what Designer gave where there is none, an image for
    /// its path, or the text of a number by the format.
    struct Faults
    {
        QString format; ///< The number is there without it.
        QString image;  ///< The target is a null image, or invalid where nothing is to be written.
    };
    QVariant Target(Faults* faults = nullptr) const;
    /// Whether that is the value as it is.
    bool IsPlain() const { return value.isValid() && !format && !access->TakesImagePath(value); }
    /// Of the property, without marker.
    const QString& Name() const { return access->Name(); }
    QVariant Read() const { return access->Read(object); }
    bool Holds(const QVariant& held, const QVariant& target) const { return access->Holds(object, held, target); }
    /// As with Target().
    bool HoldsTarget(const QVariant& held) const;

    /// Looks for a number format beside the property, which holds \a held, if that is a text.
    void ReadFormat(const QVariant& held);
    /// In which numbers are written.
    QLocale Locale() const;

    /// Whether it reads that property.
    bool Reads(const WatchedProperty* other) const;

    // What each evaluation looks at stands together, in the order in which it does: a large form does not fit into
    // the caches.
    WatchedProperty* property; ///< Null once it is not bound any more.
    quint64 delivery = 0;      ///< Number of the last one with an evaluation.
    int rank = 0;              ///< In the order of reading.
    int circle = 0;            ///< Members of a circle have the same number; 0 for none.
    bool isDirty = false;      ///< Waits for an evaluation.
    bool isWritable = false;
    bool isShown = false; ///< Evaluated once.
    bool isEdited = false;
    bool isTouched = false;     ///< May be edited: in the list of those.
    bool isUnwatched = false;   ///< In the list of those that do not tell of edits.
    bool isReverting = false;   ///< The next evaluation overwrites an edit.
    bool isOverwritten = false; ///< To be written, though it is as before by all that can be compared.
    bool isFaulty = false;      ///< In the list of those with problems.
    bool isUnresolved = false;  ///< In the list of those with a path that leads nowhere.
    bool isAlone = false;       ///< Nothing else of the object is bound.
    bool isRead = false;        ///< By statements.
    bool isCut = false;         ///< Not taken, with a bound that has not caught up.
    quint16 source = 0;         ///< Of its variables, among the form's.
    int place = 0;              ///< In the order bound.
    QObject* object;            ///< Null once it is destroyed.
    quint64 evaluations = 0;
    CompiledStatement compiled;
    QVariant value; ///< What the statement gave last.
    QVariant shown; ///< What the property held after that.
    std::shared_ptr<const BoundAccess> access;
    StandingProblems problems;
    std::unique_ptr<NumberFormat> format; ///< Null for none.
    std::unique_ptr<QVariant> refused;    ///< What the property held when it could not be saved; null for nothing.
    uint writes = 0;                      ///< Counts them, so that one notices another inside it.
    uint changes = 0;                     ///< Counts those that are told by others than the statement's own write.

    const QString* marked = nullptr; ///< The name of the property, one of those that FormObjects keeps.
    QString text;

private:
    Q_DISABLE_COPY(BoundStatement)
};

#endif
