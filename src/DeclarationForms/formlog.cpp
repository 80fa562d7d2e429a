#include "DeclarationForms/formlog.h"

#include <QObject>

Q_LOGGING_CATEGORY(FormLog, "declarationforms", QtWarningMsg)

QString DescribeObject(const QObject* object)
{
    if (!object)
        return QStringLiteral("no object");
    const QString className = QString::fromLatin1(object->metaObject()->className());
    if (object->objectName().isEmpty())
        return QStringLiteral("%1 without a name").arg(className);
    return QStringLiteral("%1 \"%2\"").arg(className, object->objectName());
}
