#include "check/findinglist.h"

#include <algorithm>

namespace {

const int MaxQuoted = 200;

/// The message in one line, with its middle left out where a statement makes it longer than anyone reads.
QString InOneLine(QString message)
{
    message.replace('\n', ' ');
    if (message.size() <= MaxQuoted)
        return message;
    return message.left(MaxQuoted / 2) + "..." + message.right(MaxQuoted / 4);
}

} // namespace

FindingList::FindingList(const QString& fileName, const XmlSource& source, const CheckOptions& options)
    : m_fileName(fileName), m_source(source), m_options(options)
{
}

void FindingList::Add(Finding finding)
{
    if (!m_options.IsEnabled(finding.check))
        return;
    finding.severity = m_options.severities.value(int(finding.check), InfoOf(finding.check).severity);
    finding.message = InOneLine(finding.message);
    finding.file = m_fileName;
    finding.start = m_source.PositionOf(finding.source.offset);
    finding.end = m_source.PositionOf(finding.source.End());
    m_findings.append(finding);
}

void FindingList::Sort()
{
    std::stable_sort(m_findings.begin(), m_findings.end(), [](const Finding& left, const Finding& right) {
        return left.source.offset < right.source.offset;
    });
}

QByteArray FindingList::Fixed(int* count) const
{
    QVector<QPair<TextPlace, QString>> replacements;
    for (const Finding& finding : m_findings) {
        const bool overlaps = !replacements.isEmpty() && replacements.last().first.End() > finding.source.offset;
        if (!finding.fix.isEmpty() && !overlaps)
            replacements.append({finding.source, finding.fix});
    }
    *count = replacements.size();
    return replacements.isEmpty() ? QByteArray() : m_source.Replaced(replacements);
}
