#ifndef CHECKS_H
#define CHECKS_H

#include <QHash>
#include <QSet>
#include <QStringList>
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
    NeverBound,
    UnknownCheck,
    TranslationError,
    TranslationChange,
    TranslationUnused,
    TranslatableStatement,
    ValueBeforeLimit,
    OperandKind
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
/// Adds the checks of these names. False, with the reason, when there is none of such a name.
bool AddChecks(const QStringList& names, QSet<int>* checks, QString* error);

struct CheckOptions
{
    QString package;                           ///< Of variables that are named without one.
    const KnownVariables* variables = nullptr; ///< Where it is known which there are.
    QSet<int> disabled;                        ///< Values of Check.
    bool usesHandler = false;                  ///< Whether the host adds the statements itself, in their order.
    QHash<int, Severity> severities;           ///< Of checks, where they are not the usual ones.
    QStringList hostVariables;                 ///< Patterns of «PACKAGE:NAME» that are none of the data's.
    QStringList hostProperties;                ///< Patterns of properties that no class has.

    /// Whether the host is said to have the variable, or the property.
    bool IsHostVariable(const QString& variablePackage, const QString& name) const;
    bool IsHostProperty(const QString& name) const;
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
    QString fix = QString(); ///< What is certainly meant in the place; empty when nothing is.
};

#endif
