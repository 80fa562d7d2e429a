#ifndef FORMPROBLEM_H
#define FORMPROBLEM_H

#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QString>

/// What is wrong with one declaration of a form. Known to the meta-type system once a FormBinding was made.
struct FormProblem
{
    /// What is wrong.
    enum Kind
    {
        Syntax,           ///< The statement cannot be read.
        LeftOver,         ///< Text stands behind a complete statement.
        UnknownObject,    ///< A widget path leads to no object.
        UnknownProperty,  ///< The object has no property of that name; it became a dynamic one.
        ReadOnlyProperty, ///< The property cannot be written.
        NotAStatement,    ///< No object, no text, or a name without a marker.
        Duplicate,        ///< The property has a statement under another marker already.
        Cycle,            ///< The statement reads what depends on it.
        NotTaken,         ///< The property does not hold what was written.
        NoValue,          ///< The statement has no value.
        Evaluation,       ///< An index, a key or a number format that does not fit.
        NotStored         ///< An edited value could not be saved.
    };
    /// How much it matters.
    enum Severity
    {
        Note,    ///< Nothing is wrong.
        Warning, ///< The property is bound.
        Error    ///< The property is left alone, or the statement before this one stays in force.
    };

    Kind kind = Syntax;        ///< What is wrong.
    Severity severity = Error; ///< How much it matters.
    QPointer<QObject> object;  ///< The bound object.
    QString property;          ///< With its marker, as the form has it.
    QString statement;         ///< As the form has it.
    int position = -1;         ///< Where in the statement, in QChar units; -1 where no place is known.
    int length = 0;            ///< Of the place; 0 at the end of the statement, and where no place is known.
    QString message;           ///< One sentence for a person, which names object and property.
};

Q_DECLARE_METATYPE(FormProblem)

#endif
