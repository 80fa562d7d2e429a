#include "check/valuechecks.h"

#include <QMap>

#include <algorithm>

#include "DeclarationForms/propertyorder.h"
#include "check/propertytrial.h"
#include "common/jsondata.h"
#include "common/statementchecks.h"

namespace {

const char Checkable[] = "checkable";

} // namespace

ValueChecks::ValueChecks(const FormModel& model, FormFindings* findings) : m_model(model), m_findings(findings) {}

/// What becomes of the value in the bound property.
void ValueChecks::CheckValue(const Declaration& declaration, const StatementTypes& types)
{
    QObject* const object = m_model.Instance().Object(declaration.object);
    const int root = declaration.diagnosis.Tree().Root();
    const ValueType& type = types.Of(root);
    const QMetaProperty property = object ? FormModel::MetaProperty(object, declaration.name) : QMetaProperty();
    if (!property.isValid() || !property.isWritable() || declaration.name == "pixmap"
        || declaration.name == "statusIcon")
        return;
    // An unknown text that spells no number is as good as any other.
    const bool isSomeText = !type.isKnown && type.spellsNoNumber && property.userType() < QMetaType::QString;
    const QVariant value = isSomeText ? QVariant("a text") : type.isKnown ? type.value : QVariant();
    const QString refusal = PropertyTrial::Refusal(property, value);
    if (refusal.isEmpty() && declaration.name == "checked")
        return CheckChecked(declaration, type);
    if (refusal.isEmpty())
        return CheckRange(declaration, type);
    const TextPlace all(0, int(declaration.property->text.size()));
    m_findings->Report(Check::ValueType,
                       QString("\"%1\" of %2 cannot take %3: %4")
                           .arg(declaration.name, m_model.Describe(object),
                                isSomeText            ? "a text that spells no number"
                                    : type.isConstant ? QString(JsonData::ValueToJson(value))
                                                      : "what the data give, " + QString(JsonData::ValueToJson(value)),
                                refusal),
                       declaration, all);
}

void ValueChecks::CheckRange(const Declaration& declaration, const ValueType& type)
{
    const FormObject& object = m_model.Owner(declaration);
    const bool isMadeUp = !m_model.Instance().ReplacedBy(declaration.object).isEmpty();
    if (object.kind != FormObject::Widget || isMadeUp || !type.isKnown || !type.value.isValid()
        || IsLimitBound(declaration))
        return;
    PropertyTrial trial(object, m_model.Instance().MadeAs(declaration.object), &m_loader);
    // Data are examples, and a limit that no form states may be the host's.
    if (!type.isConstant && !trial.StatesLimit(declaration.name))
        return;
    const QString replacement = trial.Replacement(declaration.name, type.value);
    if (!replacement.isEmpty())
        m_findings->Report(
            Check::ValueRange,
            QString("\"%1\" of %2 %3").arg(declaration.name, object.className + '#' + object.name, replacement),
            declaration, TextPlace(0, int(declaration.property->text.size())));
}

/// What is not checkable cannot be checked, whatever the value.
void ValueChecks::CheckChecked(const Declaration& declaration, const ValueType& type)
{
    QObject* const object = m_model.Instance().Object(declaration.object);
    const bool isMadeUp = !m_model.Instance().ReplacedBy(declaration.object).isEmpty();
    const bool isNever = type.isConstant && !type.value.toBool();
    if (isMadeUp || isNever || m_model.WriterOf(object, Checkable) >= 0)
        return;
    // The objects that are looked at have none of the form's values.
    QVariant checkable = object->property(Checkable);
    for (const FormProperty& property : m_model.Owner(declaration).properties) {
        if (property.name == Checkable)
            checkable = property.content;
    }
    if (checkable.isValid() && !checkable.toBool())
        m_findings->Report(
            Check::ValueRange,
            QString("\"checked\" of %1 stays false: it is not \"checkable\"").arg(m_model.Describe(object)),
            declaration, TextPlace(0, int(declaration.property->text.size())));
}

/// Whether a statement moves one of the limits.
bool ValueChecks::IsLimitBound(const Declaration& declaration) const
{
    const QStringList limits = PropertyTrial::LimitsOf(declaration.name);
    return std::any_of(limits.begin(), limits.end(), [&](const QString& limit) {
        return m_model.WriterOf(m_model.Instance().Object(declaration.object), limit) >= 0;
    });
}

void ValueChecks::CheckStore(const Declaration& declaration)
{
    const StoreTarget store = FindStoreTarget(declaration.diagnosis.Tree());
    const StatementToken& token = declaration.diagnosis.Tokens().Tokens().at(store.token);
    QString reason = store.reason;
    if (reason.isEmpty() && token.reference.IsProperty() && token.reference.path.size() == 1) {
        QObject* const object = m_model.StartOf(declaration, token.reference.path.first());
        if (object && FormModel::MetaProperty(object, token.reference.name).isValid()
            && !FormModel::MetaProperty(object, token.reference.name).isWritable())
            reason = QString("\"%1\" cannot be written").arg(token.reference.name);
    }
    if (!reason.isEmpty())
        m_findings->Report(Check::StoresNowhere,
                           QString("A save of \"%1\" goes nowhere: %2").arg(declaration.property->name, reason),
                           declaration, token.place);
}

void ValueChecks::CheckOrder()
{
    QMap<int, QVector<const Declaration*>> declarations;
    for (const Declaration& declaration : m_model.Declarations()) {
        QObject* const object = m_model.Instance().Object(declaration.object);
        // Others limit nothing, and there may be many.
        if (object && FormModel::MetaProperty(object, declaration.name).isValid())
            declarations[declaration.object].append(&declaration);
    }
    for (const QVector<const Declaration*>& ofObject : qAsConst(declarations))
        CheckOrder(ofObject);
}

/// Of one object.
void ValueChecks::CheckOrder(const QVector<const Declaration*>& declarations)
{
    for (int i = 0; i < declarations.size(); ++i) {
        const Declaration& value = *declarations.at(i);
        const auto limit = std::find_if(declarations.begin() + i, declarations.end(), [&](const Declaration* later) {
            return PropertyOrder::Bounds(later->name, value.name);
        });
        if (limit != declarations.end())
            m_findings->ReportName(Check::ValueBeforeLimit,
                                   QString("\"%1\" is declared before \"%2\", so the limits of before hold for its "
                                           "first value; declare \"%2\" first")
                                       .arg(value.name, (*limit)->name),
                                   value.object, *value.property);
    }
}
