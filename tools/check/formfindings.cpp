#include "check/formfindings.h"

#include "common/source/PlatformIndependent/propertyinfo.h"

namespace {

const char SuppressingProperty[] = "declcheckDisable";

} // namespace

FormFindings::FormFindings(const FormDocument& document, FindingList* list) : m_document(document), m_list(list) {}

/// A property of the object names checks to leave out, separated by commas: for all of the object, or behind
/// «PROPERTY:» for one of its properties.
void FormFindings::ReadSuppressions()
{
    for (int i = 0; i < m_document.Objects().size(); ++i) {
        for (const FormProperty& property : m_document.Objects().at(i).properties) {
            const bool suppresses = property.name == SuppressingProperty;
            const QStringList entries = suppresses ? property.text.split(',', Qt::SkipEmptyParts) : QStringList();
            for (const QString& entry : entries) {
                const QString bound
                    = entry.contains(':') ? PropertyInfo::ToNormal(entry.section(':', 0, 0).trimmed()) : "";
                QString error;
                if (!AddChecks({entry.section(':', -1)}, &m_suppressed[{i, bound}], &error))
                    ReportName(Check::UnknownCheck, error, i, property);
            }
        }
    }
}

QSet<int> FormFindings::SuppressedFor(int object, const QString& property) const
{
    return m_suppressed.value({object, QString()}) + m_suppressed.value({object, PropertyInfo::ToNormal(property)});
}

void FormFindings::Report(Check check, const QString& message, const Declaration& declaration,
                          const TextPlace& statementPlace, const QString& fix)
{
    if (m_reported >= MaxFindings)
        return;
    ++m_reported;
    Finding finding = MakeFinding(check, message, declaration.object);
    finding.source = m_document.SourcePlace(*declaration.property, statementPlace);
    finding.property = declaration.property->name;
    finding.statement = declaration.property->text;
    finding.place = statementPlace;
    finding.hasPlace = true;
    finding.excerpt = Excerpt(finding.statement, statementPlace, finding.property + "  ");
    // Not where entities hide what stands there.
    if (m_document.Source().Piece(finding.source)
        == finding.statement.mid(statementPlace.offset, statementPlace.length))
        finding.fix = fix;
    Add(finding, declaration.object);
}

void FormFindings::ReportName(Check check, const QString& message, int object, const FormProperty& property,
                              const QString& fix)
{
    Finding finding = MakeFinding(check, message, object);
    finding.source = property.namePlace;
    finding.property = property.name;
    finding.statement = property.text;
    const QString start = property.name + "  " + property.text.section('\n', 0, 0);
    finding.excerpt = Excerpt(start, {0, int(property.name.size())});
    if (m_document.Source().Piece(finding.source) == property.name)
        finding.fix = fix;
    Add(finding, object);
}

void FormFindings::ReportClass(Check check, const QString& message, int object)
{
    const FormObject& formObject = m_document.Objects().at(object);
    Finding finding = MakeFinding(check, message, object);
    finding.source = formObject.classPlace;
    finding.excerpt = Excerpt(formObject.className, {0, int(formObject.className.size())});
    Add(finding, object);
}

Finding FormFindings::MakeFinding(Check check, const QString& message, int object) const
{
    Finding finding;
    finding.check = check;
    finding.message = message;
    finding.object = m_document.Objects().at(object).className + '#' + m_document.Objects().at(object).name;
    return finding;
}

void FormFindings::Add(const Finding& finding, int object)
{
    if (!SuppressedFor(object, finding.property).contains(int(finding.check)))
        m_list->Add(finding);
}
