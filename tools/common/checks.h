#ifndef CHECKS_H
#define CHECKS_H

#include <QSet>
#include <QString>
#include <QVector>

#include "Common/textplace.h"

class KnownVariables;

enum class Check
{
    ParseError,
    LeftOver,
    MinusSign,
    KeywordCase,
    UnknownObject,
    AmbiguousPath,
    UnknownProperty,
    UnverifiedProperty,
    ReadOnlyProperty,
    NeverTriggers,
    ReferenceCycle,
    DuplicateDeclaration,
    ConstantMapEntry,
    NotAText,
    StoresNowhere,
    LiteralSum,
    MixedLogic,
    TextComparison,
    UnknownVariable,
    UnknownClass,
    IntegerSum,
    LiteralDigits,
    LiteralLeft,
    FractionTruth,
    TextTruth,
    PrefixReach,
    ChainedComparison,
    ConstantCondition,
    UnusedReference,
    MissingElement,
    ForeignOperator,
    DotInName,
    SelectorPlace,
    Escape,
    ObjectAsPackage,
    ValueType,
    ValueRange,
    NeverBound
};

enum class Severity
{
    Note, ///< Legal, and perhaps wanted.
    Warning,
    Error
};

struct CheckInfo
{
    Check check;
    Severity severity;
    const char* name;
    const char* description;
};

/// All checks in the order of the enumeration.
const QVector<CheckInfo>& AllChecks();
const CheckInfo& InfoOf(Check check);
/// The word for a severity: error, warning or note.
QString SeverityName(Severity severity);

struct CheckOptions
{
    QString package;                           ///< Of variables that are named without one.
    const KnownVariables* variables = nullptr; ///< Where it is known which there are.
    QSet<int> disabled;                        ///< Values of Check.

    bool IsEnabled(Check check) const { return !disabled.contains(int(check)); }
};

/// So many are told of one statement; a generated or damaged one may be wrong in each of its words.
const int MaxFindings = 100;

/// What is wrong with a statement, whatever form it stands in.
struct StatementFinding
{
    Check check;
    TextPlace place;
    QString message;
};

#endif
