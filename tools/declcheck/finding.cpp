#include "declcheck/finding.h"

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
