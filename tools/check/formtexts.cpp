#include "check/formtexts.h"

#include <QFileInfo>

#include "check/statementcomparison.h"

namespace {

/// Whether anybody reads the texts of the property, as far as that is known.
bool ShowsTexts(const FormModel& model, const Declaration& declaration)
{
    static const QStringList names{"styleSheet", "objectName", "pixmap", "statusIcon"};
    static const QSet<int> types{QMetaType::UnknownType, QMetaType::QString, QMetaType::QStringList,
                                 QMetaType::QVariant, QMetaType::QKeySequence};
    QObject* const object = model.Instance().Object(declaration.object);
    const QMetaProperty property = object ? FormModel::MetaProperty(object, declaration.name) : QMetaProperty();
    return !names.contains(declaration.name) && (!property.isValid() || types.contains(property.userType()));
}

bool IsTranslatable(const Declaration& declaration)
{
    return declaration.property->isTranslatable && declaration.diagnosis.HasExpression()
        && declaration.diagnosis.Messages().isEmpty();
}

} // namespace

FormTexts::FormTexts(const FormModel& model, const QString& formName, const CheckOptions& options, const Lookup& lookup,
                     const FormFindings& findings)
    : context(model.Document().ClassName()), fileName(QFileInfo(formName).fileName()), texts(model.Document().Texts())
{
    for (const Declaration& declaration : model.Declarations()) {
        if (!IsTranslatable(declaration))
            continue;
        const FormObject& owner = model.Owner(declaration);
        TranslatableStatement statement;
        statement.text = declaration.property->text;
        statement.comment = declaration.property->comment;
        statement.object = owner.className + '#' + owner.name;
        statement.property = declaration.property->name;
        statement.showsTexts = ShowsTexts(model, declaration);
        statement.suppressed = findings.SuppressedFor(declaration.object, declaration.name);
        const QVector<StatementToken>& tokens = declaration.diagnosis.Tokens().Tokens();
        for (const StatementToken& token : tokens) {
            if (token.type == Token::TT_VARIABLE)
                statement.types.insert(StatementComparison::NameOf(token.reference, options.package),
                                       lookup(declaration, token.reference));
        }
        statements.append(statement);
    }
}

void FormTexts::ReportTextless(const FormModel& model, const Lookup& lookup, FormFindings* findings)
{
    const Declaration* first = nullptr;
    int count = 0;
    for (const Declaration& declaration : model.Declarations()) {
        const auto lookupHere = [&](const Reference& reference) { return lookup(declaration, reference); };
        const bool isTextless = IsTranslatable(declaration)
            && !(ShowsTexts(model, declaration) && StatementComparison::HasShownText(declaration.diagnosis, lookupHere))
            && !findings->SuppressedFor(declaration.object, declaration.name)
                    .contains(int(Check::TranslatableStatement));
        count += isTextless ? 1 : 0;
        if (isTextless && !first)
            first = &declaration;
    }
    const QString advice = "; take \"translatable\" off in Designer, so that translators do not get it";
    if (count == 1)
        findings->ReportName(Check::TranslatableStatement, "The statement has no text to show" + advice, first->object,
                             *first->property);
    else if (count > 1)
        findings->ReportName(Check::TranslatableStatement,
                             QString("%1 statements have no text to show, of which this is the first").arg(count)
                                 + QString(advice).replace("get it", "get them"),
                             first->object, *first->property);
}
