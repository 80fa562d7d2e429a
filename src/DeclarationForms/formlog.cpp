#include "DeclarationForms/formlog.h"

#include <QObject>

Q_LOGGING_CATEGORY(FormLog, "declarationforms", QtWarningMsg)

namespace {

const int LongestPart = 2000; ///< Of a message.

} // namespace

QString Printable(QString text)
{
    if (text.length() > LongestPart)
        text = text.left(LongestPart) + QChar(0x2026);
    for (QChar& character : text) {
        if (!character.isPrint() && !character.isSurrogate())
            character = QLatin1Char('?');
    }
    return text;
}

QString DescribeObject(const QObject* object)
{
    if (!object)
        return QStringLiteral("no object");
    const QString className = QString::fromLatin1(object->metaObject()->className());
    if (object->objectName().isEmpty())
        return QStringLiteral("%1 without a name").arg(className);
    return QStringLiteral("%1 \"%2\"").arg(className, object->objectName());
}
