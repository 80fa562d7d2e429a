#include "check/propertychecks.h"

#include "DeclarationForms/formadapters.h"

namespace {

const int MaxNames = 20;

} // namespace

PropertyChecks::PropertyChecks(const FormModel& model, const CheckOptions& options, FormFindings* findings)
    : m_model(model), m_options(options), m_findings(findings)
{
}

void PropertyChecks::CheckBound(const Declaration& declaration)
{
    QObject* const object = m_model.Instance().Object(declaration.object);
    if (!object)
        return;
    const QMetaProperty property = FormModel::MetaProperty(object, declaration.name);
    if (property.isValid() && !property.isWritable() && !FormAdapters::IsAdapted(object, declaration.name))
        m_findings->ReportName(
            Check::ReadOnlyProperty,
            QString("\"%1\" of %2 cannot be written").arg(declaration.name, m_model.Describe(object)),
            declaration.object, *declaration.property);
    if (!m_model.HasProperty(object, declaration.name))
        ReportMissing(declaration, object, declaration.name, nullptr);
}

void PropertyChecks::CheckRead(int number)
{
    m_reads.resize(m_model.Declarations().size());
    const Declaration& declaration = m_model.Declarations().at(number);
    const int read = declaration.diagnosis.HasExpression() ? declaration.diagnosis.Tree().TokenCount() : 0;
    const QVector<StatementToken>& tokens = declaration.diagnosis.Tokens().Tokens();
    for (int i = 0; i < tokens.size(); ++i) {
        const Reference& reference = tokens.at(i).reference;
        QObject* const object = reference.IsProperty() ? Resolve(declaration, reference) : nullptr;
        if (object)
            CheckReadProperty(number, reference, object, i < read);
    }
}

/// The object that the path leads to; null where that is not known.
QObject* PropertyChecks::Resolve(const Declaration& declaration, const Reference& reference)
{
    QObject* object = m_model.StartOf(declaration, reference.path.first());
    for (int i = 1; object && i < reference.path.size(); ++i) {
        const QString& name = reference.path.at(i);
        QObject* const child = m_model.Instance().Find(object, name);
        if (child) {
            CheckAmbiguity(declaration, object, name, reference.pathPlace.at(i));
        } else {
            const QString nearest = m_model.Instance().NearestBelow(object, name);
            const QString hint = nearest.isEmpty() ? QString() : QString("; did you mean \"%1\"?").arg(nearest);
            m_findings->Report(
                Check::UnknownObject,
                QString("There is no object \"%1\" below %2%3").arg(name, m_model.Describe(object), hint), declaration,
                reference.pathPlace.at(i), m_model.Instance().OnlyNearBelow(object, name));
        }
        object = child;
    }
    return object;
}

void PropertyChecks::CheckAmbiguity(const Declaration& declaration, QObject* parent, const QString& name,
                                    const TextPlace& place)
{
    const int count = m_model.Instance().Count(parent, name);
    if (count > 1)
        m_findings->Report(Check::AmbiguousPath,
                           QString("%1 objects below %2 are called \"%3\"; the path leads to the first one found")
                               .arg(count)
                               .arg(m_model.Describe(parent), name),
                           declaration, place);
}

void PropertyChecks::CheckReadProperty(int number, const Reference& reference, QObject* object, bool isRead)
{
    const Declaration& declaration = m_model.Declarations().at(number);
    const int writer = m_model.WriterOf(object, reference.name);
    if (writer >= 0) {
        if (isRead)
            m_reads[number].append({writer, &reference});
    } else if (!m_model.HasProperty(object, reference.name)) {
        ReportMissing(declaration, object, reference.name, &reference.namePlace);
    } else if (isRead && !m_model.IsMap(object, reference.name)) {
        const QString name = m_model.Describe(object) + ':' + reference.name;
        if (!FormModel::MetaProperty(object, reference.name).hasNotifySignal())
            return m_quietReads.append({number, name, reference.namePlace});
        m_findings->Report(Check::NeverTriggers,
                           QString("No declaration writes \"%1\" of %2, so a change of it is not noticed here")
                               .arg(reference.name, m_model.Describe(object)),
                           declaration, reference.namePlace);
    }
}

/// Nobody is likely to wait for changes of what tells of none: one line for all.
void PropertyChecks::ReportQuietReads()
{
    QVector<QuietRead> reads;
    QStringList names;
    for (const QuietRead& read : qAsConst(m_quietReads)) {
        const Declaration& declaration = m_model.Declarations().at(read.declaration);
        if (m_findings->SuppressedFor(declaration.object, declaration.name).contains(int(Check::NeverTriggers)))
            continue;
        reads.append(read);
        if (!names.contains(read.property) && names.size() < MaxNames)
            names.append(read.property);
    }
    if (reads.isEmpty())
        return;
    const QString more = names.size() < MaxNames ? QString() : ", ...";
    const QString where = reads.size() == 1
        ? QString(", so a change of it is not noticed here")
        : QString("; changes are not noticed in %1 places that read them, of which this is the first")
              .arg(reads.size());
    m_findings->Report(Check::NeverTriggers, QString("No declaration writes %1%2").arg(names.join(", ") + more, where),
                       m_model.Declarations().at(reads.first().declaration), reads.first().place);
}

/// Of the bound property, or of one read in the statement at \a statementPlace.
void PropertyChecks::ReportMissing(const Declaration& declaration, QObject* object, const QString& name,
                                   const TextPlace* statementPlace)
{
    if (m_options.IsHostProperty(name))
        return;
    const NearestName properties = m_model.PropertiesOf(object);
    const int number = m_model.Instance().Number(object);
    const QString replacement = number < 0 ? QString() : m_model.Instance().ReplacedBy(number);
    const QString taken = replacement.isEmpty() ? QString() : QString(", taken for a %1,").arg(replacement);
    const Check check = replacement.isEmpty() ? Check::UnknownProperty : Check::UnverifiedProperty;
    const QString message
        = QString("%1%2 has no property \"%3\"%4").arg(m_model.Describe(object), taken, name, properties.Hint(name));
    const QString meant = replacement.isEmpty() ? properties.FindOnly(name) : QString();
    if (statementPlace)
        return m_findings->Report(check, message, declaration, *statementPlace, meant);
    const QString bound = declaration.property->name;
    const bool isFree = !meant.isEmpty() && m_model.WriterOf(object, meant) < 0;
    m_findings->ReportName(check, message, declaration.object, *declaration.property,
                           isFree ? bound.chopped(name.size()) + meant : QString());
}
