#ifndef PROPERTYCHECKS_H
#define PROPERTYCHECKS_H

#include "check/formfindings.h"

/// What a declaration reads: another one, and through which reference.
struct ReadDeclaration
{
    int declaration;
    const Reference* reference;
};

/// Checks that there are the properties that declarations bind and read, and that changes of them are noticed.
class PropertyChecks
{
public:
    /// All must outlive this object.
    PropertyChecks(const FormModel& model, const CheckOptions& options, FormFindings* findings);

    /// The property that is bound.
    void CheckBound(const Declaration& declaration);
    /// Those that the declaration of that number reads.
    void CheckRead(int number);
    /// Once all are checked: tells of reads that are worth one line together.
    void ReportQuietReads();

    /// What each declaration reads.
    const QVector<QVector<ReadDeclaration>>& Reads() const { return m_reads; }

private:
    /// A read of a property that tells nobody of its changes.
    struct QuietRead
    {
        int declaration;
        QString property;
        TextPlace place;
    };

    QObject* Resolve(const Declaration& declaration, const Reference& reference);
    void CheckAmbiguity(const Declaration& declaration, QObject* parent, const QString& name, const TextPlace& place);
    void CheckReadProperty(int number, const Reference& reference, QObject* object, bool isRead);
    void ReportMissing(const Declaration& declaration, QObject* object, const QString& name,
                       const TextPlace* statementPlace);

    const FormModel& m_model;
    const CheckOptions& m_options;
    FormFindings* const m_findings;
    QVector<QVector<ReadDeclaration>> m_reads;
    QVector<QuietRead> m_quietReads;
};

#endif
