#ifndef REFERENCECYCLES_H
#define REFERENCECYCLES_H

#include "check/propertychecks.h"

/// Finds statements that read each other in a circle.
class ReferenceCycles
{
public:
    /// \a reads are what each declaration of the model reads. All must outlive this object.
    ReferenceCycles(const FormModel& model, const QVector<QVector<ReadDeclaration>>& reads, FormFindings* findings);

    void Run();

private:
    /// A declaration on the way through the references.
    struct Step
    {
        int declaration;
        int read; ///< The one that the way goes on with.
    };

    void FindFrom(int start);
    void Report(const QVector<Step>& way, int first);

    const FormModel& m_model;
    const QVector<QVector<ReadDeclaration>>& m_reads;
    FormFindings* const m_findings;
    QVector<int> m_depths; ///< Per declaration: where on the present way it stands, or one of the below.
};

#endif
