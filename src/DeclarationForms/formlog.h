#ifndef FORMLOG_H
#define FORMLOG_H

#include <QLoggingCategory>
#include <QString>

class QObject;

/// Problems go to this category, "declarationforms", too.
Q_DECLARE_LOGGING_CATEGORY(FormLog)

/// Class and name of an object, for messages.
QString DescribeObject(const QObject* object);

#endif
