#ifndef FINDINGLIST_H
#define FINDINGLIST_H

#include "check/finding.h"
#include "common/checks.h"

/// What is found in one file.
class FindingList
{
public:
    /// All must outlive this object.
    FindingList(const QString& fileName, const XmlSource& source, const CheckOptions& options);

    /// Unless the check is left out. File, severity and positions are filled in here.
    void Add(Finding finding);
    /// In the order of the file.
    void Sort();

    const QVector<Finding>& Findings() const { return m_findings; }
    /// The file with all that is certain mended, and how much that is; null when it is nothing.
    QByteArray Fixed(int* count) const;

private:
    const QString m_fileName;
    const XmlSource& m_source;
    const CheckOptions& m_options;
    QVector<Finding> m_findings;
};

#endif
