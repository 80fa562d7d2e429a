#ifndef FORMLOG_H
#define FORMLOG_H

#include <QLoggingCategory>
#include <QString>

class QObject;

/// Problems go to this category, "declarationforms", too.
Q_DECLARE_LOGGING_CATEGORY(FormLog)

/// The text for a message: forms may hold anything, and anything of any length.
QString Printable(QString text);

/// Class and name of an object, for messages; to be made printable.
QString DescribeObject(const QObject* object);

#endif
