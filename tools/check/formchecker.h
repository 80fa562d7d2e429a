#ifndef FORMCHECKER_H
#define FORMCHECKER_H

#include "check/formtexts.h"
#include "check/propertychecks.h"
#include "check/valuechecks.h"
#include "common/statementchecks.h"

/// A data variable that a form reads.
struct VariableUse
{
    QString package;
    QString name;
    QString file;
    Position position; ///< Where it is read first.
};

/// Checks the marked properties of one form.
class FormChecker
{
public:
    /// The options must outlive this object.
    FormChecker(const QString& fileName, const CheckOptions& options);

    /// Checks what the file contains. False, with the reason, when the form cannot be checked.
    bool Run(const QByteArray& content, QString* error);

    /// In the order of the file.
    const QVector<Finding>& Findings() const { return m_list.Findings(); }
    /// What translators get of the form, once it was checked.
    FormTexts Texts() const;
    /// Each variable once, by package and name.
    QVector<VariableUse> Variables() const;
    /// The content with all that is certain mended, and how much that is; null when it is nothing.
    QByteArray Fixed(int* count) const { return m_list.Fixed(count); }

private:
    void CheckStatement(int number);
    FormTexts::Lookup Types() const;
    ValueType TypeOf(const Declaration& declaration, const Reference& reference) const;
    bool CheckObjectAsPackage(const Declaration& declaration, const StatementToken& token);

    const QString m_fileName;
    const CheckOptions& m_options;
    FormModel m_model;
    FindingList m_list;
    FormFindings m_findings;
    PropertyChecks m_properties;
    ValueChecks m_values;
};

#endif
