#ifndef FORMSTATEMENTS_H
#define FORMSTATEMENTS_H

#include <QPointer>
#include <QString>
#include <QVector>

#include "edit/statementmark.h"

class QDesignerFormWindowInterface;

/// A marked property of a form that is open in Designer.
struct FormStatement
{
    QPointer<QObject> object;
    QString objectName;
    QString className;
    QString property; ///< With its marker.
    QString text;
    bool isText = true;           ///< Whether the property holds a text at all.
    QString type;                 ///< Of the property that it binds; empty where that is not known.
    QString findings;             ///< What is wrong, worst first, a line for each.
    QVector<StatementMark> marks; ///< What is wrong in the statement.
    TextPlace source;             ///< Where the text stands in what Designer would save.

    bool IsOf(const QObject* other, const QString& name) const { return object == other && property == name; }
};

namespace FormStatements {

/// The marked properties in the order of the form's file, which is what Designer would save now.
QVector<FormStatement> Read(const QDesignerFormWindowInterface* form, const QString& content);

} // namespace FormStatements

#endif
