#ifndef FORMTEXTS_H
#define FORMTEXTS_H

#include "check/formfindings.h"
#include "common/statementtypes.h"

/// A statement that translators get.
struct TranslatableStatement
{
    QString text;
    QString comment;                 ///< What tells it apart from others of the same text.
    QString object;                  ///< As «QLabel#name».
    QString property;                ///< The marked one.
    bool showsTexts;                 ///< Whether anybody reads the texts of the bound property.
    QHash<QString, ValueType> types; ///< What it reads, by StatementComparison::NameOf().
    QSet<int> suppressed;            ///< Checks that the form leaves out.
};

/// What translators get of a form.
struct FormTexts
{
    /// The types of what a declaration reads.
    using Lookup = std::function<ValueType(const Declaration& declaration, const Reference& reference)>;

    FormTexts() = default;
    FormTexts(const FormModel& model, const QString& fileName, const CheckOptions& options, const Lookup& lookup,
              const FormFindings& findings);

    /// Tells in one line of statements in which there is nothing to translate.
    static void ReportTextless(const FormModel& model, const Lookup& lookup, FormFindings* findings);

    QString context;     ///< The name of the form's class.
    QString fileName;    ///< Without its folder.
    QSet<QString> texts; ///< All of the form, statements or not.
    QVector<TranslatableStatement> statements;
};

#endif
