#include "view/viewedproperty.h"

#include <QIcon>
#include <QPixmap>
#include <QRegularExpression>
#include <QStringList>

#include "common/jsondata.h"

namespace {

QString SizeToText(const char* type, const QSize& size)
{
    return size.isEmpty() ? QString("%1, empty").arg(type)
                          : QString("%1, %2 x %3").arg(type).arg(size.width()).arg(size.height());
}

} // namespace

QVariant ViewedProperty::Value() const
{
    return object ? object->property(name.toLatin1()) : QVariant();
}

bool ViewedProperty::IsDoubtful() const
{
    return !problem.isEmpty() || (!findings.isEmpty() && findings.first().severity != FormProblem::Note);
}

QStringList ViewedProperty::Remarks() const
{
    QStringList remarks{problem, diagnostic};
    for (const DeclarationFinding& finding : findings)
        remarks.append(finding.text);
    remarks.removeAll(QString());
    remarks.removeDuplicates();
    return remarks;
}

QString WidgetPath(const QObject* object, const QObject* form)
{
    QStringList names;
    for (; object && object != form; object = object->parent()) {
        // What a class adds for itself is no object of the form's author.
        if (!object->objectName().isEmpty() && !object->objectName().startsWith("qt_"))
            names.prepend(object->objectName());
    }
    names.prepend("TopWidget");
    return names.join('\\');
}

QString ValueToText(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::QPixmap:
        return SizeToText("picture", value.value<QPixmap>().size());
    case QMetaType::QIcon:
        return value.value<QIcon>().isNull() ? "icon, empty" : "icon";
    case QMetaType::UnknownType:
        return QString();
    default:
        break;
    }
    const QString json = QString::fromUtf8(JsonData::ValueToJson(value));
    return json == "null" ? QString(value.typeName()) : json;
}

bool ValueFromText(const QString& text, QVariant* value, QString* error)
{
    if (JsonData::ValueFromJson(text.toUtf8(), value, error))
        return true;
    static const QRegularExpression meantAsJson("^\\s*[\\[{\"]");
    if (text.contains(meantAsJson))
        return false;
    *value = text;
    return true;
}
