#ifndef FINDING_H
#define FINDING_H

#include <QString>
#include <QVector>

#include "common/formdocument.h"
#include "common/statementtokens.h"

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
    UnknownClass
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

/// Something found in a form.
struct Finding
{
    Check check;
    Severity severity;
    QString message;
    QString file;
    TextPlace source; ///< In the source of the form.
    Position start;
    Position end;      ///< Behind the last character.
    QString object;    ///< The object that it is about, as «QLabel#name».
    QString property;  ///< The marked property, if it is about one.
    QString statement; ///< The property's text.
    QString excerpt;   ///< Two lines to show the place.
};

#endif
