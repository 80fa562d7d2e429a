#include "common/checks.h"

#include <QRegularExpression>

#include <algorithm>

#include "common/nearestname.h"

namespace {

bool MatchesAny(const QStringList& patterns, const QString& text)
{
    return std::any_of(patterns.begin(), patterns.end(), [&](const QString& pattern) {
        // Not a path: what a "*" stands for may hold any character.
        const QString expression = QRegularExpression::escape(pattern).replace("\\*", ".*");
        return QRegularExpression(QRegularExpression::anchoredPattern(expression)).match(text).hasMatch();
    });
}

} // namespace

const QVector<CheckInfo>& AllChecks()
{
    static const QVector<CheckInfo> checks{
        {Check::ParseError, Severity::Error, "parse-error", "The parser reports an error in a statement."},
        {Check::LeftOver, Severity::Warning, "left-over", "A statement ends before its text; the rest is ignored."},
        {Check::MinusSign, Severity::Warning, "minus-sign",
         "A minus before a digit is the sign of a number, not a subtraction."},
        {Check::KeywordCase, Severity::Warning, "keyword-case",
         "A keyword in the wrong case is the name of a variable or package."},
        {Check::UnknownObject, Severity::Error, "unknown-object", "A widget path leads to no object."},
        {Check::AmbiguousPath, Severity::Warning, "ambiguous-path",
         "Several objects bear a name in a widget path; the first one found is taken."},
        {Check::UnknownProperty, Severity::Error, "unknown-property",
         "The object does not have the property that is bound or read."},
        {Check::UnverifiedProperty, Severity::Note, "unverified-property",
         "The class of the object is not known here; the one that it extends lacks the property."},
        {Check::ReadOnlyProperty, Severity::Error, "read-only-property", "A bound property cannot be written."},
        {Check::NeverTriggers, Severity::Note, "never-triggers",
         "No declaration writes a property that a statement reads, so its changes are not noticed."},
        {Check::ReferenceCycle, Severity::Warning, "reference-cycle",
         "Statements read each other's properties in a circle."},
        {Check::DuplicateDeclaration, Severity::Error, "duplicate-declaration",
         "A property, or an entry of a constant map, is declared twice."},
        {Check::ConstantMapEntry, Severity::Error, "constant-map-entry", "The name is no entry of a constant map."},
        {Check::NotAText, Severity::Error, "not-a-text", "A marked property holds no text, so there is no statement."},
        {Check::StoresNowhere, Severity::Warning, "stores-nowhere",
         "A writable declaration has a statement through which nothing can be saved."},
        {Check::LiteralSum, Severity::Warning, "literal-sum", "A plus between number literals joins their texts."},
        {Check::MixedLogic, Severity::Warning, "mixed-logic",
         "Different logic operators without parentheses; they group from left to right."},
        {Check::TextComparison, Severity::Warning, "text-comparison", "Texts are compared as numbers."},
        {Check::UnknownVariable, Severity::Warning, "unknown-variable",
         "The data do not have the variable that a statement reads."},
        {Check::UnknownClass, Severity::Warning, "unknown-class",
         "The class of a widget or layout is neither known nor declared in the form."},
        {Check::IntegerSum, Severity::Warning, "integer-sum", "A plus between whole numbers has no value."},
        {Check::LiteralDigits, Severity::Warning, "literal-digits", "A number literal keeps six digits only."},
        {Check::LiteralLeft, Severity::Warning, "literal-left",
         "A literal on the left of an equality decides how the values are compared."},
        {Check::FractionTruth, Severity::Warning, "fraction-truth", "A number is rounded for its truth value."},
        {Check::TextTruth, Severity::Warning, "text-truth", "A text that is not empty, 0 or false counts as true."},
        {Check::PrefixReach, Severity::Warning, "prefix-reach",
         "A prefix operator reaches over the operators behind its operand."},
        {Check::ChainedComparison, Severity::Warning, "chained-comparison",
         "The truth value of a comparison is compared as a number."},
        {Check::ConstantCondition, Severity::Warning, "constant-condition", "A condition has always the same value."},
        {Check::UnusedReference, Severity::Warning, "unused-reference", "The value of a reference is never used."},
        {Check::MissingElement, Severity::Warning, "missing-element",
         "A subscript or member leads to no element of the list or map."},
        {Check::ForeignOperator, Severity::Error, "foreign-operator", "The language does not have this operator."},
        {Check::DotInName, Severity::Warning, "dot-in-name", "A dot belongs to the name or number beside it."},
        {Check::SelectorPlace, Severity::Warning, "selector-place", "No selector follows or holds parentheses."},
        {Check::Escape, Severity::Warning, "escape", "There are no escapes in quotes."},
        {Check::ObjectAsPackage, Severity::Warning, "object-as-package",
         "A reference that names an object of the form reads a data variable."},
        {Check::ValueType, Severity::Error, "value-type", "The bound property cannot take the value."},
        {Check::ValueRange, Severity::Warning, "value-range", "The bound property takes another value in its place."},
        {Check::NeverBound, Severity::Warning, "never-bound",
         "A marked property of an item, a spacer or an attribute never becomes a statement."},
        {Check::UnknownCheck, Severity::Warning, "unknown-check", "A form suppresses a check that there is not."},
        {Check::TranslationError, Severity::Error, "translation-error",
         "The translation of a statement does not parse."},
        {Check::TranslationChange, Severity::Error, "translation-change",
         "The translation of a statement changes what is not shown."},
        {Check::TranslationUnused, Severity::Note, "translation-unused", "No form uses the translations."},
        {Check::TranslatableStatement, Severity::Note, "translatable-statement",
         "A statement without a text to show is translatable."},
        {Check::ValueBeforeLimit, Severity::Warning, "value-before-limit",
         "A value is declared before what limits it."},
        {Check::OperandKind, Severity::Warning, "operand-kind", "An operator can make nothing of an operand."},
    };
    return checks;
}

const CheckInfo& InfoOf(Check check)
{
    return AllChecks().at(int(check));
}

QString SeverityName(Severity severity)
{
    switch (severity) {
    case Severity::Note:
        return "note";
    case Severity::Warning:
        return "warning";
    default:
        return "error";
    }
}

bool AddChecks(const QStringList& names, QSet<int>* checks, QString* error)
{
    QStringList known;
    for (const CheckInfo& check : AllChecks())
        known.append(check.name);
    for (const QString& name : names) {
        const int number = known.indexOf(name.trimmed());
        if (number < 0) {
            *error = QString("There is no check \"%1\"%2").arg(name.trimmed(), NearestName(known).Hint(name.trimmed()));
            return false;
        }
        checks->insert(number);
    }
    return true;
}

bool CheckOptions::IsHostVariable(const QString& variablePackage, const QString& name) const
{
    return MatchesAny(hostVariables, variablePackage + ':' + name);
}

bool CheckOptions::IsHostProperty(const QString& name) const
{
    return MatchesAny(hostProperties, name);
}
