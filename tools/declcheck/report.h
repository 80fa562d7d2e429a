#ifndef REPORT_H
#define REPORT_H

#include <QByteArray>

#include "declcheck/formchecker.h"

/// What declcheck writes, in UTF-8.
namespace Report {

/// For each finding «file:line:column: severity: message [check-name]» and an excerpt.
QByteArray ToText(const QVector<Finding>& findings);
/// A list of objects, one for each finding.
QByteArray ToJson(const QVector<Finding>& findings);
/// A log in the format SARIF 2.1.0. \a succeeded tells whether all forms could be checked.
QByteArray ToSarif(const QVector<Finding>& findings, bool succeeded);

QByteArray ToText(const QVector<VariableUse>& variables);
QByteArray ToJson(const QVector<VariableUse>& variables);

} // namespace Report

#endif
