#include "declcheck/formchecker.h"

#include <QMap>
#include <QMetaProperty>
#include <QRegularExpression>

#include <algorithm>

#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formadapters.h"
#include "common/knownvariables.h"
#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "declcheck/propertytrial.h"
#include "qtversion.h"

namespace {

const int MaxQuoted = 200;
const int MaxCycleSteps = 20;
const char SuppressingProperty[] = "declcheckDisable";

/// The message in one line, with its middle left out where a statement makes it longer than anyone reads.
QString InOneLine(QString message)
{
    message.replace('\n', ' ');
    if (message.size() <= MaxQuoted)
        return message;
    return message.left(MaxQuoted / 2) + "..." + message.right(MaxQuoted / 4);
}

QMetaProperty MetaProperty(QObject* object, const QString& name)
{
    const QMetaObject* const metaObject = object->metaObject();
    return metaObject->property(metaObject->indexOfProperty(name.toUtf8()));
}

} // namespace

FormChecker::FormChecker(const QString& fileName, const CheckOptions& options)
    : m_fileName(fileName), m_options(options)
{
}

bool FormChecker::Run(const QByteArray& content, QString* error)
{
    if (!m_document.Parse(content, m_fileName, error))
        return false;
    if (!m_form.Create(m_document, error)) {
        *error = m_fileName + ": " + *error;
        return false;
    }
    CollectDeclarations();
    m_edges.resize(m_declarations.size());
    for (int i = 0; i < m_declarations.size(); ++i)
        CheckStatement(i);
    m_reported = 0;
    CheckCycles();
    ReportQuietReads();
    std::stable_sort(m_findings.begin(), m_findings.end(), [](const Finding& left, const Finding& right) {
        return left.source.offset < right.source.offset;
    });
    return true;
}

QVector<VariableUse> FormChecker::Variables() const
{
    QMap<VariableIdentifier, VariableUse> uses;
    for (const Declaration& declaration : m_declarations) {
        const QVector<Reference> variables = declaration.diagnosis.Tokens().Variables();
        for (const Reference& variable : variables) {
            const QString package = variable.Package(m_options.package);
            const VariableIdentifier identifier(variable.name, package);
            if (uses.contains(identifier))
                continue;
            const TextPlace place = m_document.SourcePlace(*declaration.property, variable.namePlace);
            uses.insert(identifier, {package, variable.name, m_fileName, m_document.Source().PositionOf(place.offset)});
        }
    }
    return uses.values().toVector();
}

QByteArray FormChecker::Fixed(int* count) const
{
    QVector<QPair<TextPlace, QString>> replacements;
    for (const Finding& finding : m_findings) {
        const bool overlaps = !replacements.isEmpty() && replacements.last().first.End() > finding.source.offset;
        if (!finding.fix.isEmpty() && !overlaps)
            replacements.append({finding.source, finding.fix});
    }
    *count = replacements.size();
    return replacements.isEmpty() ? QByteArray() : m_document.Source().Replaced(replacements);
}

void FormChecker::CollectDeclarations()
{
    for (int i = 0; i < m_document.Objects().size(); ++i) {
        ReadSuppressions(i);
        CheckClass(i);
        CheckStrays(i);
        for (const FormProperty& property : m_document.Objects().at(i).properties)
            Collect(i, property);
    }
}

void FormChecker::Collect(int object, const FormProperty& property)
{
    const Target target(m_form.Object(object), PropertyInfo::ToNormal(property.name));
    if (!PropertyInfo::IsOvexProperty(property.name) || property.name.startsWith("_q_")) {
        m_set.insert(Target(target.first, property.name));
        return;
    }
    const QString type = property.element == "cstring" ? " of the type \"String\"" : QString();
    if (!property.isText)
        ReportName(Check::NotAText,
                   QString("\"%1\" holds no text%2, so there is no statement").arg(property.name, type), object,
                   property);
    else if (!CollectEntry(object, property)) {
        NoteDeclared(object, property, target);
        if (!m_writers.contains(target))
            m_writers.insert(target, m_declarations.size());
        m_declarations.append({object, &property, target.second, Diagnosis(property.text)});
    }
}

/// False for what is no entry of a constant map, and was not meant to be one.
bool FormChecker::CollectEntry(int object, const FormProperty& property)
{
    QString map;
    QString key;
    if (ConstantMapParser::Parse(property.name, &map, &key)) {
        m_maps.insert(Target(m_form.Object(object), map));
        NoteDeclared(object, property, Target(m_form.Object(object), map + '[' + key + ']'));
        return true;
    }
    if (!property.name.contains('[') && !property.name.contains(']'))
        return false;
    ReportName(
        Check::ConstantMapEntry,
        QString("\"%1\" is no entry of a constant map, as \"~map[key]\" or \"~map['a key']\" is").arg(property.name),
        object, property);
    return true;
}

void FormChecker::NoteDeclared(int object, const FormProperty& property, const Target& target)
{
    if (!target.first)
        return;
    const FormProperty* const earlier = m_declared.value(target);
    if (!earlier) {
        m_declared.insert(target, &property);
        return;
    }
    ReportName(Check::DuplicateDeclaration,
               QString("\"%1\" of %2 is declared already, as \"%3\" in line %4")
                   .arg(target.second, Describe(target.first), earlier->name)
                   .arg(m_document.Source().PositionOf(earlier->namePlace.offset).line),
               object, property);
}

void FormChecker::CheckClass(int object)
{
    const FormObject& formObject = m_document.Objects().at(object);
    const QString replacement = m_form.ReplacedBy(object);
    if (replacement.isEmpty() || !m_document.BaseClass(formObject.className).isEmpty())
        return;
    Finding finding;
    finding.check = Check::UnknownClass;
    finding.message
        = QString("The class \"%1\" is not known; it is taken for a %2").arg(formObject.className, replacement);
    finding.source = formObject.classPlace;
    finding.object = formObject.className + '#' + formObject.name;
    finding.excerpt = Excerpt(formObject.className, {0, int(formObject.className.size())});
    Add(finding, object);
}

/// A property of the object names checks to leave out, separated by commas: for all of the object, or behind
/// «PROPERTY:» for one of its properties.
void FormChecker::ReadSuppressions(int object)
{
    for (const FormProperty& property : m_document.Objects().at(object).properties) {
        if (property.name != SuppressingProperty)
            continue;
        const QStringList entries = property.text.split(',', Qt::SkipEmptyParts);
        for (const QString& entry : entries) {
            const QString bound = entry.contains(':') ? PropertyInfo::ToNormal(entry.section(':', 0, 0).trimmed()) : "";
            QString error;
            if (!AddChecks({entry.section(':', -1)}, &m_suppressed[{object, bound}], &error))
                ReportName(Check::UnknownCheck, error, object, property);
        }
    }
}

bool FormChecker::IsSuppressed(Check check, int object, const QString& property) const
{
    return m_suppressed.value({object, QString()}).contains(int(check))
        || m_suppressed.value({object, PropertyInfo::ToNormal(property)}).contains(int(check));
}

/// What is no object of the running form has no properties to bind.
void FormChecker::CheckStrays(int object)
{
    for (const FormProperty& property : m_document.Objects().at(object).strays) {
        if (PropertyInfo::IsOvexProperty(property.name) && !property.name.startsWith("_q_"))
            ReportName(Check::NeverBound,
                       QString("\"%1\" belongs to an item, a spacer or an attribute here, which has no statements; "
                               "bind a property of the widget")
                           .arg(property.name),
                       object, property);
    }
}

void FormChecker::CheckStatement(int number)
{
    m_reported = 0;
    const Declaration& declaration = m_declarations.at(number);
    CheckBoundProperty(declaration);
    const StatementTypes types(declaration.diagnosis.Tree(),
                               [&](const Reference& reference) { return TypeOf(declaration, reference); });
    const QVector<StatementFinding> findings = StatementChecks(declaration.diagnosis, types, m_options).Run();
    QSet<int> objects;
    const QVector<StatementToken>& tokens = declaration.diagnosis.Tokens().Tokens();
    for (const StatementToken& token : tokens) {
        const bool isTold = std::any_of(findings.begin(), findings.end(), [&](const StatementFinding& finding) {
            return finding.check == Check::KeywordCase && finding.place.offset == token.place.offset;
        });
        if (!isTold && CheckObjectAsPackage(declaration, token))
            objects.insert(token.reference.namePlace.offset);
    }
    for (const StatementFinding& finding : findings) {
        if (finding.check != Check::UnknownVariable || !objects.contains(finding.place.offset))
            Report(finding.check, finding.message, declaration, finding.place, finding.fix);
    }
    CheckReferences(number);
    if (!declaration.diagnosis.HasExpression())
        return;
    if (declaration.diagnosis.Messages().isEmpty())
        CheckValue(declaration, types);
    if (PropertyInfo::IsMutable(declaration.property->name))
        CheckStore(declaration);
}

void FormChecker::CheckReferences(int number)
{
    const Declaration& declaration = m_declarations.at(number);
    const int read = declaration.diagnosis.HasExpression() ? declaration.diagnosis.Tree().TokenCount() : 0;
    const QVector<StatementToken>& tokens = declaration.diagnosis.Tokens().Tokens();
    for (int i = 0; i < tokens.size(); ++i) {
        if (tokens.at(i).type == Token::TT_VARIABLE && tokens.at(i).reference.IsProperty())
            CheckReference(number, tokens.at(i), i < read);
    }
}

/// Whether a reference takes an object of the form for a package. An object that has the property is asked for,
/// since packages have names of their own.
bool FormChecker::CheckObjectAsPackage(const Declaration& declaration, const StatementToken& token)
{
    static const QRegularExpression separator("[\\\\.]");
    const Reference& reference = token.reference;
    if (token.type != Token::TT_VARIABLE || !reference.hasPackage || reference.IsProperty()
        || (m_options.variables && m_options.variables->Find(reference.package, reference.name)))
        return false;
    const QString name = reference.package.section(separator, -1, -1, QString::SectionSkipEmpty);
    const bool isTop = name == m_form.Top()->objectName();
    QObject* const object = isTop ? m_form.Top() : m_form.Find(m_form.Top(), name);
    if (name.isEmpty() || !object || !HasProperty(object, reference.name))
        return false;
    Report(Check::ObjectAsPackage,
           QString("\"%1\" is the name of a package here; the object's property is \"@TopWidget%2:%3\"")
               .arg(reference.package, isTop ? QString() : '\\' + name, reference.name),
           declaration, token.place);
    return true;
}

/// What becomes of the value in the bound property.
void FormChecker::CheckValue(const Declaration& declaration, const StatementTypes& types)
{
    QObject* const object = m_form.Object(declaration.object);
    const int root = declaration.diagnosis.Tree().Root();
    const ValueType& type = types.Of(root);
    const QMetaProperty property = object ? MetaProperty(object, declaration.name) : QMetaProperty();
    if (!property.isValid() || !property.isWritable() || declaration.name == "pixmap"
        || declaration.name == "statusIcon")
        return;
    // An unknown text that spells no number is as good as any other.
    const bool isSomeText = !type.isKnown && type.spellsNoNumber && property.userType() < QMetaType::QString;
    const QVariant value = isSomeText ? QVariant("a text") : type.isKnown ? type.value : QVariant();
    const QString refusal = PropertyTrial::Refusal(property, value);
    if (refusal.isEmpty())
        return CheckRange(declaration, type);
    const TextPlace all(0, int(declaration.property->text.size()));
    Report(Check::ValueType,
           QString("\"%1\" of %2 cannot take %3: %4")
               .arg(declaration.name, Describe(object),
                    isSomeText            ? "a text that spells no number"
                        : type.isConstant ? QString(JsonData::ValueToJson(value))
                                          : "what the data give, " + QString(JsonData::ValueToJson(value)),
                    refusal),
           declaration, all);
}

void FormChecker::CheckRange(const Declaration& declaration, const ValueType& type)
{
    const FormObject& object = m_document.Objects().at(declaration.object);
    const bool isMadeUp = !m_form.ReplacedBy(declaration.object).isEmpty();
    if (object.kind != FormObject::Widget || isMadeUp || !type.isKnown || !type.value.isValid()
        || IsLimitBound(declaration))
        return;
    PropertyTrial trial(object, m_form.MadeAs(declaration.object));
    // Data are examples, and a limit that no form states may be the host's.
    if (!type.isConstant && !trial.StatesLimit(declaration.name))
        return;
    const QString replacement = trial.Replacement(declaration.name, type.value);
    if (!replacement.isEmpty())
        Report(Check::ValueRange,
               QString("\"%1\" of %2 %3").arg(declaration.name, object.className + '#' + object.name, replacement),
               declaration, TextPlace(0, int(declaration.property->text.size())));
}

/// Whether a statement moves one of the limits.
bool FormChecker::IsLimitBound(const Declaration& declaration) const
{
    const QStringList limits = PropertyTrial::LimitsOf(declaration.name);
    return std::any_of(limits.begin(), limits.end(), [&](const QString& limit) {
        return m_writers.contains(Target(m_form.Object(declaration.object), limit));
    });
}

ValueType FormChecker::TypeOf(const Declaration& declaration, const Reference& reference) const
{
    if (!reference.IsProperty())
        return TypeOfVariable(reference, m_options);
    QObject* object = StartOf(declaration, reference.path.first());
    for (int i = 1; object && i < reference.path.size(); ++i)
        object = m_form.Find(object, reference.path.at(i));
    const QMetaProperty property = object ? MetaProperty(object, reference.name) : QMetaProperty();
    if (!property.isValid() || property.isEnumType())
        return ValueType();
    ValueType type;
    type.kinds = ValueType::KindOf(QtVersion::NullOf(property.userType()));
    if (type.kinds == ValueType::Missing || type.kinds == ValueType::Other)
        type.kinds = ValueType::Any;
    return type;
}

void FormChecker::CheckBoundProperty(const Declaration& declaration)
{
    QObject* const object = m_form.Object(declaration.object);
    if (!object)
        return;
    const QMetaProperty property = MetaProperty(object, declaration.name);
    if (property.isValid() && !property.isWritable() && !FormAdapters::IsAdapted(object, declaration.name))
        ReportName(Check::ReadOnlyProperty,
                   QString("\"%1\" of %2 cannot be written").arg(declaration.name, Describe(object)),
                   declaration.object, *declaration.property);
    const Target target(object, declaration.name);
    if (!property.isValid() && !FormAdapters::IsAdapted(object, declaration.name) && !m_set.contains(target)
        && !m_maps.contains(target))
        ReportMissingProperty(declaration, object, declaration.name, nullptr);
}

void FormChecker::CheckReference(int number, const StatementToken& token, bool isRead)
{
    const Declaration& declaration = m_declarations.at(number);
    QObject* const object = Resolve(declaration, token.reference);
    if (object)
        CheckReadProperty(number, token.reference, object, isRead);
}

/// The object that the path leads to; null where that is not known.
QObject* FormChecker::Resolve(const Declaration& declaration, const Reference& reference)
{
    QObject* object = StartOf(declaration, reference.path.first());
    for (int i = 1; object && i < reference.path.size(); ++i) {
        const QString& name = reference.path.at(i);
        QObject* const child = m_form.Find(object, name);
        if (child) {
            CheckAmbiguity(declaration, object, name, reference.pathPlace.at(i));
        } else {
            const QString nearest = m_form.NearestBelow(object, name);
            const QString hint = nearest.isEmpty() ? QString() : QString("; did you mean \"%1\"?").arg(nearest);
            Report(Check::UnknownObject,
                   QString("There is no object \"%1\" below %2%3").arg(name, Describe(object), hint), declaration,
                   reference.pathPlace.at(i), m_form.OnlyNearBelow(object, name));
        }
        object = child;
    }
    return object;
}

QObject* FormChecker::StartOf(const Declaration& declaration, const QString& element) const
{
    QObject* const widget = m_form.Object(declaration.object);
    if (element == "TopWidget")
        return m_form.Top();
    if (element == "Widget" || !widget)
        return widget;
    return widget->parent() ? widget->parent() : m_form.Top();
}

void FormChecker::CheckAmbiguity(const Declaration& declaration, QObject* parent, const QString& name,
                                 const TextPlace& place)
{
    const int count = m_form.Count(parent, name);
    if (count > 1)
        Report(Check::AmbiguousPath,
               QString("%1 objects below %2 are called \"%3\"; the path leads to the first one found")
                   .arg(count)
                   .arg(Describe(parent), name),
               declaration, place);
}

void FormChecker::CheckReadProperty(int number, const Reference& reference, QObject* object, bool isRead)
{
    const Declaration& declaration = m_declarations.at(number);
    const Target target(object, reference.name);
    if (m_writers.contains(target)) {
        if (isRead)
            m_edges[number].append({m_writers.value(target), &reference});
    } else if (!HasProperty(object, reference.name)) {
        ReportMissingProperty(declaration, object, reference.name, &reference.namePlace);
    } else if (isRead && !m_maps.contains(target)) {
        const QString name = Describe(object) + ':' + reference.name;
        if (!MetaProperty(object, reference.name).hasNotifySignal())
            return m_quietReads.append({number, name, reference.namePlace});
        Report(Check::NeverTriggers,
               QString("No declaration writes \"%1\" of %2, so a change of it is not noticed here")
                   .arg(reference.name, Describe(object)),
               declaration, reference.namePlace);
    }
}

/// Nobody is likely to wait for changes of what tells of none: one line for all.
void FormChecker::ReportQuietReads()
{
    QVector<QuietRead> reads;
    QStringList names;
    for (const QuietRead& read : qAsConst(m_quietReads)) {
        const Declaration& declaration = m_declarations.at(read.declaration);
        if (IsSuppressed(Check::NeverTriggers, declaration.object, declaration.name))
            continue;
        reads.append(read);
        if (!names.contains(read.property) && names.size() < MaxCycleSteps)
            names.append(read.property);
    }
    if (reads.isEmpty())
        return;
    const QString more = names.size() < MaxCycleSteps ? QString() : ", ...";
    const QString where = reads.size() == 1
        ? QString(", so a change of it is not noticed here")
        : QString("; changes are not noticed in %1 places that read them, of which this is the first")
              .arg(reads.size());
    Report(Check::NeverTriggers, QString("No declaration writes %1%2").arg(names.join(", ") + more, where),
           m_declarations.at(reads.first().declaration), reads.first().place);
}

void FormChecker::CheckStore(const Declaration& declaration)
{
    const StoreTarget store = FindStoreTarget(declaration.diagnosis.Tree());
    const StatementToken& token = declaration.diagnosis.Tokens().Tokens().at(store.token);
    QString reason = store.reason;
    if (reason.isEmpty() && token.reference.IsProperty() && token.reference.path.size() == 1) {
        QObject* const object = StartOf(declaration, token.reference.path.first());
        if (object && MetaProperty(object, token.reference.name).isValid()
            && !MetaProperty(object, token.reference.name).isWritable())
            reason = QString("\"%1\" cannot be written").arg(token.reference.name);
    }
    if (!reason.isEmpty())
        Report(Check::StoresNowhere,
               QString("A save of \"%1\" goes nowhere: %2").arg(declaration.property->name, reason), declaration,
               token.place);
}

void FormChecker::CheckCycles()
{
    // Per declaration: -1 not reached yet, -2 done, else where on the present way it stands.
    QVector<int> depths(m_declarations.size(), -1);
    for (int i = 0; i < m_declarations.size(); ++i) {
        if (depths.at(i) == -1)
            FindCycles(i, &depths);
    }
}

/// Walks along the references, depth first; one that leads back onto the way closes a cycle.
void FormChecker::FindCycles(int start, QVector<int>* depths)
{
    QVector<Step> way{{start, -1}};
    (*depths)[start] = 0;
    while (!way.isEmpty()) {
        Step& step = way.last();
        const QVector<Edge>& edges = m_edges.at(step.declaration);
        if (++step.edge >= edges.size()) {
            (*depths)[step.declaration] = -2;
            way.removeLast();
            continue;
        }
        const int next = edges.at(step.edge).declaration;
        if (depths->at(next) >= 0)
            ReportCycle(way, depths->at(next));
        if (depths->at(next) != -1)
            continue;
        (*depths)[next] = way.size();
        way.append({next, -1});
    }
}

/// Tells of the circle from the step \a first of the way to its end and back.
void FormChecker::ReportCycle(const QVector<Step>& way, int first)
{
    QStringList path;
    for (int i = first; i < way.size() && path.size() < MaxCycleSteps; ++i)
        path.append(Describe(m_declarations.at(way.at(i).declaration)));
    if (way.size() - first > MaxCycleSteps)
        path.append("...");
    path.append(path.first());
    const Step& step = way.at(first);
    const Reference& reference = *m_edges.at(step.declaration).at(step.edge).reference;
    Report(Check::ReferenceCycle, "Statements read each other in a circle: " + path.join(" -> "),
           m_declarations.at(step.declaration), reference.namePlace);
}

bool FormChecker::HasProperty(QObject* object, const QString& name) const
{
    const Target target(object, name);
    return MetaProperty(object, name).isValid() || FormAdapters::IsAdapted(object, name)
        || object->dynamicPropertyNames().contains(name.toUtf8()) || m_set.contains(target) || m_maps.contains(target);
}

NearestName FormChecker::PropertiesOf(QObject* object) const
{
    QStringList names;
    const QMetaObject* const metaObject = object->metaObject();
    for (int i = 0; i < metaObject->propertyCount(); ++i)
        names.append(metaObject->property(i).name());
    const int number = m_form.Number(object);
    for (const FormProperty& property :
         number < 0 ? QVector<FormProperty>() : m_document.Objects().at(number).properties) {
        if (!PropertyInfo::IsOvexProperty(property.name))
            names.append(property.name);
    }
    return NearestName(names);
}

/// Of the bound property, or of one read in the statement at \a statementPlace.
void FormChecker::ReportMissingProperty(const Declaration& declaration, QObject* object, const QString& name,
                                        const TextPlace* statementPlace)
{
    if (m_options.IsHostProperty(name))
        return;
    const NearestName properties = PropertiesOf(object);
    const int number = m_form.Number(object);
    const QString replacement = number < 0 ? QString() : m_form.ReplacedBy(number);
    const QString taken = replacement.isEmpty() ? QString() : QString(", taken for a %1,").arg(replacement);
    const Check check = replacement.isEmpty() ? Check::UnknownProperty : Check::UnverifiedProperty;
    const QString message
        = QString("%1%2 has no property \"%3\"%4").arg(Describe(object), taken, name, properties.Hint(name));
    if (statementPlace)
        Report(check, message, declaration, *statementPlace,
               replacement.isEmpty() ? properties.FindOnly(name) : QString());
    else
        ReportName(check, message, declaration.object, *declaration.property);
}

QString FormChecker::Describe(QObject* object) const
{
    const int number = m_form.Number(object);
    const QString className
        = number < 0 ? QString(object->metaObject()->className()) : m_document.Objects().at(number).className;
    return className + '#' + object->objectName();
}

QString FormChecker::Describe(const Declaration& declaration) const
{
    const FormObject& object = m_document.Objects().at(declaration.object);
    return QString("%1#%2:%3").arg(object.className, object.name, declaration.name);
}

void FormChecker::Report(Check check, const QString& message, const Declaration& declaration,
                         const TextPlace& statementPlace, const QString& fix)
{
    if (m_reported >= MaxFindings)
        return;
    ++m_reported;
    const FormObject& object = m_document.Objects().at(declaration.object);
    Finding finding;
    finding.check = check;
    finding.message = message;
    finding.source = m_document.SourcePlace(*declaration.property, statementPlace);
    finding.object = object.className + '#' + object.name;
    finding.property = declaration.property->name;
    finding.statement = declaration.property->text;
    finding.excerpt = Excerpt(finding.statement, statementPlace, finding.property + "  ");
    // Not where entities hide what stands there.
    if (m_document.Source().Piece(finding.source)
        == finding.statement.mid(statementPlace.offset, statementPlace.length))
        finding.fix = fix;
    Add(finding, declaration.object);
}

void FormChecker::ReportName(Check check, const QString& message, int object, const FormProperty& property)
{
    const FormObject& formObject = m_document.Objects().at(object);
    Finding finding;
    finding.check = check;
    finding.message = message;
    finding.source = property.namePlace;
    finding.object = formObject.className + '#' + formObject.name;
    finding.property = property.name;
    finding.statement = property.text;
    const QString start = property.name + "  " + property.text.section('\n', 0, 0);
    finding.excerpt = Excerpt(start, {0, int(property.name.size())});
    Add(finding, object);
}

void FormChecker::Add(Finding finding, int object)
{
    if (!m_options.IsEnabled(finding.check) || IsSuppressed(finding.check, object, finding.property))
        return;
    finding.severity = m_options.severities.value(int(finding.check), InfoOf(finding.check).severity);
    finding.message = InOneLine(finding.message);
    finding.file = m_fileName;
    finding.start = m_document.Source().PositionOf(finding.source.offset);
    finding.end = m_document.Source().PositionOf(finding.source.End());
    m_findings.append(finding);
}
