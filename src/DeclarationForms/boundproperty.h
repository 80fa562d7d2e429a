#ifndef BOUNDPROPERTY_H
#define BOUNDPROPERTY_H

#include <QObject>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QVariant>
#include <QVector>

#include "DataLayer/variableidentifier.h"

/// A property of a form that is bound to a statement, as it was when asked for.
struct BoundProperty
{
    QPointer<QObject> object;              ///< The bound object.
    QString property;                      ///< With its marker, as the form has it.
    QString statement;                     ///< That is in force.
    bool writable = false;                 ///< Whether edits can be saved.
    QVariant value;                        ///< What the statement gave last.
    QVariant shown;                        ///< What the property held after that.
    bool edited = false;                   ///< Whether it holds something else than what the binding left there.
    quint64 evaluations = 0;               ///< Since it was first bound.
    QVector<VariableIdentifier> variables; ///< That the statement reads, each once.
    QVector<QPair<QPointer<QObject>, QString>> properties; ///< That the statement reads, each once.
};

#endif
