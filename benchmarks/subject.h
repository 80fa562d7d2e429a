#ifndef SUBJECT_H
#define SUBJECT_H

#include <functional>

#include "form.h"

namespace benchmark {
class State;
}

/// A statement that is ready to be evaluated.
using Compiled = std::function<QVariant()>;

/// What is measured: one way to evaluate statements and to bind the properties of forms to variables.
class Subject
{
public:
    virtual ~Subject() = default;

    /// Takes in variables, named by their places below.
    virtual void Define(const Variables& variables) = 0;

    /// For those that W1 and W2 are registered for.
    virtual Compiled Compile(const Statement&) { return Compiled(); }
    /// The value that a statement must have here.
    virtual QVariant Expected(const Statement& statement) const { return statement.value; }

    /// Gives a form what it has before it is loaded.
    virtual void Prepare(const Form&) {}
    /// Binds all targets of a form, which outlives the subject, to the variables that have been defined,
    /// and gives them their first values.
    virtual void Load(const Form& form) = 0;
    /// What is wrong besides the values of the targets; else empty.
    virtual QString Error() const { return QString(); }

    virtual void Change(int variable, const QVariant& value) = 0;
    /// Returns when all targets have followed the changes.
    virtual void Deliver() {}
    /// How often targets follow at most, of the form that was loaded last. For those that W7 is registered for.
    virtual void SetDeliveryInterval(int) {}
    /// How many statements have been evaluated since the form was loaded; -1 where nobody counts.
    virtual qint64 Evaluations() const { return -1; }

    /// Writes the values of all targets of a form that was loaded to their variables.
    virtual void Save(const Form&) {}
    virtual QVariant Value(int variable) const = 0;
};

template<typename T>
std::unique_ptr<Subject> MakeSubject()
{
    return std::make_unique<T>();
}

/// Makes the benchmark fail if there is an error.
void Check(benchmark::State& state, const QString& error);

/// Registers workloads for a subject, all that it can do or those that are looked at.
bool RegisterSubject(const std::string& name, std::unique_ptr<Subject> (*make)(),
                     const std::string& workloads = "W1 W2 W3 W4 W5");

#endif
