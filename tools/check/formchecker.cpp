#include "check/formchecker.h"

#include <QMap>
#include <QRegularExpression>

#include <algorithm>

#include "DataLayer/variableidentifier.h"
#include "check/referencecycles.h"
#include "common/knownvariables.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "qtversion.h"

FormChecker::FormChecker(const QString& fileName, const CheckOptions& options)
    : m_fileName(fileName),
      m_options(options),
      m_list(fileName, m_model.Document().Source(), options),
      m_findings(m_model.Document(), &m_list),
      m_properties(m_model, options, &m_findings),
      m_values(m_model, &m_findings)
{
}

bool FormChecker::Run(const QByteArray& content, QString* error)
{
    if (!m_model.Load(content, m_fileName, error))
        return false;
    m_findings.ReadSuppressions();
    m_model.Collect(&m_findings);
    for (int i = 0; i < m_model.Declarations().size(); ++i)
        CheckStatement(i);
    m_findings.StartStatement();
    ReferenceCycles(m_model, m_properties.Reads(), &m_findings).Run();
    m_properties.ReportQuietReads();
    if (m_options.usesHandler)
        m_values.CheckOrder();
    FormTexts::ReportTextless(m_model, Types(), &m_findings);
    m_list.Sort();
    return true;
}

FormTexts FormChecker::Texts() const
{
    return FormTexts(m_model, m_fileName, m_options, Types(), m_findings);
}

FormTexts::Lookup FormChecker::Types() const
{
    return
        [this](const Declaration& declaration, const Reference& reference) { return TypeOf(declaration, reference); };
}

QVector<VariableUse> FormChecker::Variables() const
{
    QMap<VariableIdentifier, VariableUse> uses;
    for (const Declaration& declaration : m_model.Declarations()) {
        const QVector<Reference> variables = declaration.diagnosis.Tokens().Variables();
        for (const Reference& variable : variables) {
            const QString package = variable.Package(m_options.package);
            const VariableIdentifier identifier(variable.name, package);
            if (uses.contains(identifier))
                continue;
            const TextPlace place = m_model.Document().SourcePlace(*declaration.property, variable.namePlace);
            uses.insert(identifier,
                        {package, variable.name, m_fileName, m_model.Document().Source().PositionOf(place.offset)});
        }
    }
    return uses.values().toVector();
}

void FormChecker::CheckStatement(int number)
{
    m_findings.StartStatement();
    const Declaration& declaration = m_model.Declarations().at(number);
    m_properties.CheckBound(declaration);
    const StatementTypes types(declaration.diagnosis.Tree(),
                               [&](const Reference& reference) { return TypeOf(declaration, reference); });
    StatementChecks checks(declaration.diagnosis, types, m_options);
    QObject* const object = m_model.Instance().Object(declaration.object);
    if (object && FormModel::MetaProperty(object, declaration.name).userType() == QMetaType::Bool)
        checks.WantTruth();
    const QVector<StatementFinding> findings = checks.Run();
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
            m_findings.Report(finding.check, finding.message, declaration, finding.place, finding.fix);
    }
    m_properties.CheckRead(number);
    if (!declaration.diagnosis.HasExpression())
        return;
    if (declaration.diagnosis.Messages().isEmpty())
        m_values.CheckValue(declaration, types);
    if (PropertyInfo::IsMutable(declaration.property->name))
        m_values.CheckStore(declaration);
}

/// Whether a reference takes an object of the form for a package, or for the start of a name. An object that has the
/// property is asked for, since packages and variables have names of their own.
bool FormChecker::CheckObjectAsPackage(const Declaration& declaration, const StatementToken& token)
{
    static const QRegularExpression separator("[\\\\.]");
    const Reference& reference = token.reference;
    const QString package = reference.Package(m_options.package);
    if (token.type != Token::TT_VARIABLE || reference.IsProperty() || m_options.IsHostVariable(package, reference.name)
        || (m_options.variables && m_options.variables->Find(package, reference.name)))
        return false;
    const QString path = reference.hasPackage ? reference.package : reference.name.section('.', 0, -2);
    const QString property = reference.hasPackage ? reference.name : reference.name.section('.', -1);
    const QString name = path.section(separator, -1, -1, QString::SectionSkipEmpty);
    const bool isTop = name == m_model.Instance().Top()->objectName();
    QObject* const object = isTop ? m_model.Instance().Top() : m_model.Instance().Find(m_model.Instance().Top(), name);
    if (name.isEmpty() || !object || !m_model.HasProperty(object, property))
        return false;
    m_findings.Report(Check::ObjectAsPackage,
                      QString("\"%1\" is the name of a %2 here; the object's property is \"@TopWidget%3:%4\"")
                          .arg(reference.hasPackage ? path : reference.name,
                               reference.hasPackage ? "package" : "variable", isTop ? QString() : '\\' + name,
                               property),
                      declaration, token.place);
    return true;
}

ValueType FormChecker::TypeOf(const Declaration& declaration, const Reference& reference) const
{
    if (!reference.IsProperty())
        return TypeOfVariable(reference, m_options);
    QObject* const object = m_model.Find(declaration, reference);
    const QMetaProperty property = object ? FormModel::MetaProperty(object, reference.name) : QMetaProperty();
    if (!property.isValid() || property.isEnumType())
        return ValueType();
    ValueType type;
    type.kinds = ValueType::KindOf(QtVersion::NullOf(property.userType()));
    if (type.kinds == ValueType::Missing || type.kinds == ValueType::Other)
        type.kinds = ValueType::Any;
    type.hasFraction = type.IsOnly(ValueType::Double);
    return type;
}
