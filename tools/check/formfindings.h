#ifndef FORMFINDINGS_H
#define FORMFINDINGS_H

#include "check/findinglist.h"
#include "check/formmodel.h"

/// Gathers what is found in a form, without what its author suppresses.
class FormFindings
{
public:
    /// All must outlive this object.
    FormFindings(const FormDocument& document, FindingList* list);

    /// Reads what the objects of the form suppress.
    void ReadSuppressions();
    /// Of one object, and of one of its properties or of an empty name.
    QSet<int> SuppressedFor(int object, const QString& property) const;

    /// From here on another statement is checked, of which so much is told.
    void StartStatement() { m_reported = 0; }

    /// Tells of a place in the statement.
    void Report(Check check, const QString& message, const Declaration& declaration, const TextPlace& statementPlace,
                const QString& fix = QString());
    /// Tells of the property's name.
    void ReportName(Check check, const QString& message, int object, const FormProperty& property,
                    const QString& fix = QString());
    /// Tells of the class of an object.
    void ReportClass(Check check, const QString& message, int object);

private:
    void Add(const Finding& finding, int object);
    Finding MakeFinding(Check check, const QString& message, int object) const;

    const FormDocument& m_document;
    FindingList* const m_list;
    QHash<QPair<int, QString>, QSet<int>> m_suppressed; ///< Checks, by object and property, or "" for all of them.
    int m_reported = 0;                                 ///< Of the statement that is being checked.
};

#endif
