#ifndef SUBJECT_H
#define SUBJECT_H

#include <memory>

#include "corpus.h"
#include "form.h"

/// A statement that is ready to be evaluated.
class Compiled
{
public:
    virtual ~Compiled() = default;
    virtual QVariant Evaluate() = 0;
};

/// What is measured: one way to evaluate statements and to bind the properties of forms to variables.
class Subject
{
public:
    virtual ~Subject() = default;

    /// Takes in variables; their positions name them below.
    virtual void Define(const Variables& variables) = 0;

    virtual std::unique_ptr<Compiled> Compile(const Statement& statement) = 0;
    /// The value that a statement must have here.
    virtual QVariant Expected(const Statement& statement) const { return statement.value; }

    /// Binds all targets of a form to the variables defined, and gives them their first values. The form
    /// outlives the subject.
    virtual void Load(const Form& form) = 0;
    virtual void Change(int variable, const QVariant& value) = 0;
    /// Returns when all targets have followed the changes.
    virtual void Deliver() {}

    /// Writes all targets' values to their variables.
    virtual void Save() = 0;
    virtual QVariant Value(int variable) const = 0;
};

/// Registers all workloads for a subject.
bool RegisterSubject(const std::string& name, std::unique_ptr<Subject> (*make)());

template<typename T>
std::unique_ptr<Subject> MakeSubject()
{
    return std::make_unique<T>();
}

#endif
