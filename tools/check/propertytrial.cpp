#include "check/propertytrial.h"

#include <QComboBox>
#include <QDate>
#include <QMetaEnum>

#include "common/formdocument.h"
#include "common/formloader.h"
#include "common/nearestname.h"
#include "qtversion.h"

namespace {

const int MaxKeys = 8;

/// Properties whose values others limit, and what a form's author should know of that.
struct Limited
{
    const char* property;
    QStringList limits;
    const char* hint;
};

const QVector<Limited>& LimitedProperties()
{
    static const QVector<Limited> properties{
        {"value", {"minimum", "maximum", "decimals"}, "\"minimum\" and \"maximum\" limit it"},
        {"sliderPosition", {"minimum", "maximum"}, "\"minimum\" and \"maximum\" limit it"},
        {"currentText", {"editable"}, "the combo box has no such item"},
        {"currentIndex", {}, "it has no such item"},
        {"date", {"minimumDate", "maximumDate"}, "\"minimumDate\" and \"maximumDate\" limit it"},
        {"time", {"minimumTime", "maximumTime"}, "\"minimumTime\" and \"maximumTime\" limit it"},
    };
    return properties;
}

const Limited* Find(const QString& property)
{
    for (const Limited& limited : LimitedProperties()) {
        if (property == limited.property)
            return &limited;
    }
    return nullptr;
}

QString KeysOf(const QMetaEnum& enumeration, const QString& wanted)
{
    QStringList keys;
    for (int i = 0; i < enumeration.keyCount(); ++i)
        keys.append(enumeration.key(i));
    const QStringList words = wanted.split('|');
    for (const QString& word : words) {
        const QString name = word.section("::", -1).trimmed();
        const QString nearest = keys.contains(name) ? QString() : NearestName(keys).Hint(name);
        if (!nearest.isEmpty())
            return (words.size() > 1 ? QString("it has no \"%1\"").arg(name) : QString("it has no such name"))
                + nearest;
    }
    const QString more = keys.size() > MaxKeys ? ", ..." : "";
    return "it wants a name: " + keys.mid(0, MaxKeys).join(", ") + more;
}

QString WantedBy(const QMetaProperty& property)
{
    switch (property.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return "it wants a whole number";
    case QMetaType::Double:
        return "it wants a number";
    case QMetaType::Bool:
        return "it wants a truth value";
    case QMetaType::QDate:
        return "it wants a date that exists, as '2024-02-29'";
    case QMetaType::QTime:
        return "it wants a time, as '23:59:00'";
    case QMetaType::QDateTime:
        return "it wants a date and time that exist, as '2024-02-29T23:59:00'";
    case QMetaType::QString:
        return "it wants a text";
    default:
        return QString("it wants a %1, which a variable of the host may hold").arg(property.typeName());
    }
}

QVariant ValueOf(const FormProperty& property)
{
    if (property.element == "bool")
        return property.content == "true";
    return property.content.toDouble();
}

bool IsSame(const QVariant& left, const QVariant& right)
{
    // Spin boxes round to their decimals.
    if (left.userType() == QMetaType::Double)
        return qAbs(left.toDouble() - right.toDouble()) <= 0.5;
    return left == right;
}

} // namespace

QString PropertyTrial::Refusal(const QMetaProperty& property, QVariant value)
{
    const int type = property.userType();
    if (!value.isValid() || type == QMetaType::QVariant || type == value.userType())
        return QString();
    if (property.isEnumType()) {
        // Qt takes no other numbers.
        bool isKey = value.userType() == QMetaType::Int || value.userType() == QMetaType::UInt
            || value.userType() >= QMetaType::User;
        if (value.userType() == QMetaType::QString)
            property.enumerator().keysToValue(value.toByteArray(), &isKey);
        return isKey ? QString() : KeysOf(property.enumerator(), value.toString());
    }
    // Nothing is known here of what the host lets be converted into types of its own.
    if (type >= QMetaType::User)
        return QString();
    return QtVersion::Convert(&value, type) ? QString() : WantedBy(property);
}

PropertyTrial::PropertyTrial(const FormObject& object, const QString& className, FormLoader* loader)
    : m_object(object), m_className(className), m_loader(loader)
{
}

PropertyTrial::~PropertyTrial() = default;

QString PropertyTrial::Replacement(const QString& property, const QVariant& value)
{
    const Limited* const limited = Find(property);
    if (!limited)
        return QString();
    if (!m_widget)
        MakeWidget();
    const auto* const comboBox = qobject_cast<QComboBox*>(m_widget.data());
    // The pages and items of other widgets are not made here, and an empty combo box is the host's to fill.
    if (property.startsWith("current") && (!comboBox || m_object.items.isEmpty()))
        return QString();
    const QByteArray name = property.toUtf8();
    QVariant wanted = value;
    const QVariant before = m_widget->property(name);
    if (property == "currentText" && comboBox->isEditable())
        return QString();
    if (property == "currentText" && value.toString().isEmpty())
        return QString();
    if (!QtVersion::Convert(&wanted, before.userType()) || !m_widget->setProperty(name, wanted))
        return QString();
    const QVariant taken = m_widget->property(name);
    if (IsSame(wanted, taken))
        return QString();
    return QString("becomes %1 when it is set to %2: %3").arg(taken.toString(), wanted.toString(), limited->hint);
}

QStringList PropertyTrial::LimitsOf(const QString& property)
{
    const Limited* const limited = Find(property);
    return limited ? limited->limits : QStringList();
}

bool PropertyTrial::StatesLimit(const QString& property) const
{
    const QStringList limits = LimitsOf(property);
    if (!m_object.items.isEmpty() && property.startsWith("current"))
        return true;
    return std::any_of(m_object.properties.begin(), m_object.properties.end(),
                       [&](const FormProperty& stated) { return limits.contains(stated.name); });
}

/// With the limits that the form states; of dates it keeps the whole range.
void PropertyTrial::MakeWidget()
{
    m_widget.reset(m_loader->createWidget(m_className, nullptr, QString()));
    for (const FormProperty& property : m_object.properties) {
        const bool isLimit
            = std::any_of(LimitedProperties().begin(), LimitedProperties().end(),
                          [&](const Limited& limited) { return limited.limits.contains(property.name); });
        if (isLimit && !property.content.isEmpty())
            m_widget->setProperty(property.name.toUtf8(), ValueOf(property));
    }
    AddItems();
}

void PropertyTrial::AddItems()
{
    auto* const comboBox = qobject_cast<QComboBox*>(m_widget.data());
    if (comboBox)
        comboBox->addItems(m_object.items);
}
