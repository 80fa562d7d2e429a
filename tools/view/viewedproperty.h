#ifndef VIEWEDPROPERTY_H
#define VIEWEDPROPERTY_H

#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

#include "DeclarationForms/formproblem.h"

/// What a checker says of a declaration.
struct DeclarationFinding
{
    FormProblem::Severity severity;
    QString text; ///< With the name of the check.
};

/// A property of the form that is bound to a statement, and what is known about it.
struct ViewedProperty
{
    QPointer<QObject> object;
    QString name; ///< Without its marker.
    QString statement;
    QString path;  ///< Of the object, as a statement would write it; names are not always unique.
    bool writable; ///< Whether a save writes it back.
    quint64 evaluations;
    QString diagnostic;                                 ///< What was written last during an evaluation.
    QString problem{};                                  ///< Of the binding, the first that stands; may be empty.
    FormProblem::Severity severity = FormProblem::Note; ///< Of that problem.
    bool edited = false;                                ///< Whether a save would write it back now.

    QVector<DeclarationFinding> findings{}; ///< The gravest first.

    /// The problem that stands, or else the diagnostic.
    QString Problem() const { return problem.isEmpty() ? diagnostic : problem; }
    /// That, or else the gravest finding.
    QString Remark() const { return Problem().isEmpty() && !findings.isEmpty() ? findings.first().text : Problem(); }
    /// Whether there is more to say than notes of a checker.
    bool IsDoubtful() const;
    /// All that there is to say, each once.
    QStringList Remarks() const;
    /// Invalid once the object is gone.
    QVariant Value() const;
};

/// The names of the object and of what it lies in, up to the form: «TopWidget\panel\ok».
QString WidgetPath(const QObject* object, const QObject* form);

/// A value in one line. What JSON knows is written as JSON, the rest as a text that tells what it is.
QString ValueToText(const QVariant& value);

/// The value that somebody entered: JSON, or else a text. False, with the reason, when it was meant to be JSON and
/// is none.
bool ValueFromText(const QString& text, QVariant* value, QString* error);

#endif
