#ifndef REPORT_H
#define REPORT_H

#include <QByteArray>

#include "check/formchecker.h"

/// What declcheck writes, in UTF-8.
namespace Report {

/// For each finding «file:line:column: severity: message [check-name]» and an excerpt; with the colours of
/// a terminal, if they are wanted.
QByteArray ToText(const QVector<Finding>& findings, bool isColored);
/// A line with the numbers of findings and files; nothing when there are none.
QByteArray CountsToText(const QVector<Finding>& findings, int formCount, int translationCount);
/// A list of objects, one for each finding.
QByteArray ToJson(const QVector<Finding>& findings);
/// A log in the format SARIF 2.1.0. \a succeeded tells whether all forms could be checked.
QByteArray ToSarif(const QVector<Finding>& findings, bool succeeded);

QByteArray ToText(const QVector<VariableUse>& variables);
QByteArray ToJson(const QVector<VariableUse>& variables);

} // namespace Report

#endif
