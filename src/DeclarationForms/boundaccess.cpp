#include "DeclarationForms/boundaccess.h"

#include <QFile>
#include <QMetaEnum>
#include <QMetaMethod>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <cmath>

#include "Common/qtcompat.h"
#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/formvalues.h"

namespace {

const QLatin1String NoImage("::empty");
/// Of a number to its decimals: a half, and what a double makes of it.
const double LargestRounding = 0.51;

int IndexOf(const QObject* object, const QString& name)
{
    return object->metaObject()->indexOfProperty(name.toUtf8());
}

/// Of a value that is a double.
double Number(const QVariant& value)
{
    return *static_cast<const double*>(value.constData());
}

int DecimalsOf(const QObject* object)
{
    bool isNumber = false;
    const int decimals = object->property("decimals").toInt(&isNumber);
    return isNumber ? decimals : -1;
}

/// The number of an enumerator; invalid where the property is no enumeration or has none of that name.
QVariant EnumeratorOf(const QObject* object, const QString& name, const QString& text)
{
    const QMetaProperty property = object->metaObject()->property(IndexOf(object, name));
    if (!property.isEnumType())
        return QVariant();
    bool isKnown = false;
    const QByteArray keys = text.toLatin1();
    const QMetaEnum enumeration = property.enumerator();
    const int number
        = property.isFlagType() ? enumeration.keysToValue(keys, &isKnown) : enumeration.keyToValue(keys, &isKnown);
    return isKnown ? QVariant(number) : QVariant();
}

} // namespace

BoundAccess::BoundAccess(const QObject* object, const QString& name)
    : m_name(name),
      m_access(object, QString::fromLatin1(name.toUtf8())),
      m_direct(object->metaObject()->property(IndexOf(object, name))),
      m_metaObject(object->metaObject()),
      m_adapter(AdapterRegistry::Find(object, name)),
      m_index(IndexOf(object, name)),
      m_notifySignal(NotifySignalOf(object->metaObject(), m_index, m_adapter)),
      m_isWritable(m_index < 0 || m_adapter || object->metaObject()->property(m_index).isWritable()),
      m_kind(KindOf(object, name))
{
}

int BoundAccess::NotifySignalOf(const QMetaObject* metaObject, int index, const PropertyAdapter* adapter)
{
    // Behind the code that SIGNAL() puts in front.
    if (adapter && !adapter->notifySignal.isEmpty())
        return metaObject->indexOfSignal(QMetaObject::normalizedSignature(adapter->notifySignal.constData() + 1));
    return index < 0 ? -1 : metaObject->property(index).notifySignalIndex();
}

bool BoundAccess::Exists(const QObject* object) const
{
    return m_index >= 0 || m_adapter || object->property(m_name.toUtf8()).isValid();
}

QVariant BoundAccess::Read(const QObject* object) const
{
    if (m_kind == Visible) {
        const QWidget* const widget = static_cast<const QWidget*>(object);
        return !widget->isHidden() || IsUnsettled(object);
    }
    if (m_kind == Enabled)
        return !static_cast<const QWidget*>(object)->testAttribute(Qt::WA_ForceDisabled);
    return ReadPlain(object);
}

QVariant BoundAccess::ReadPlain(const QObject* object) const
{
    QVariant value;
    if (m_adapter)
        value = m_adapter->read(object);
    else if (object->metaObject() != m_metaObject || !m_direct.Read(object, &value))
        value = m_index < 0 ? QtCompat::ReadProperty(m_name.toUtf8(), object) : m_access.Read(object, m_name);
    return value;
}

bool BoundAccess::Write(QObject* object, const QVariant& value) const
{
    bool isTaken = false;
    if (!m_adapter && object->metaObject() == m_metaObject && m_direct.Write(object, value, &isTaken))
        return isTaken;
    if (!m_adapter)
        return m_index < 0 ? object->setProperty(m_name.toUtf8(), value) : m_access.Write(object, m_name, value);
    const QPointer<QObject> guarded = object;
    const PropertyAdapter* const adapter = m_adapter;
    isTaken = adapter->write(object, value);
    if (guarded && IndexOf(object, m_name) < 0)
        object->setProperty(m_name.toUtf8(), isTaken ? value : adapter->read(object));
    return isTaken;
}

const QVariant& BoundAccess::AsHeld(const QObject* object, const QVariant& value, QVariant* text) const
{
    const bool isText = m_kind == Plain && !m_adapter && m_direct.Type() == QMetaType::QString;
    const bool isMade = isText && value.userType() == QMetaType::Double && object->metaObject() == m_metaObject;
    if (!isMade)
        return value;
    *text = value.toString();
    return *text;
}

void BoundAccess::Mirror(QObject* object) const
{
    if (m_adapter && IndexOf(object, m_name) < 0)
        object->setProperty(m_name.toUtf8(), m_adapter->read(object));
}

bool BoundAccess::Holds(const QObject* object, const QVariant& held, const QVariant& written) const
{
    const bool isFraction = held.userType() == QMetaType::Double;
    // What most numbers are, without a detour.
    const bool areFractions = isFraction && written.userType() == QMetaType::Double;
    if (areFractions ? FormValues::AreEqualFractions(Number(held), Number(written)) : FormValues::Holds(held, written))
        return true;
    if (isFraction) {
        const bool isNear = std::abs(Number(held) - written.toDouble()) < LargestRounding;
        return isNear && FormValues::Holds(held, written, DecimalsOf(object));
    }
    // A text is no enumerator, whose property holds a number.
    if (written.userType() != QMetaType::QString || held.userType() == QMetaType::QString)
        return false;
    const QVariant enumerator = EnumeratorOf(object, m_name, written.toString());
    return enumerator.isValid() && held.toInt() == enumerator.toInt();
}

bool BoundAccess::IsUnsettled(const QObject* object) const
{
    if (m_kind != Visible)
        return false;
    const QWidget* const widget = static_cast<const QWidget*>(object);
    return !widget->isWindow() && widget->isHidden() && !widget->testAttribute(Qt::WA_WState_ExplicitShowHide);
}

bool BoundAccess::TakesImagePath(const QVariant& value) const
{
    return m_kind == Image && !value.isNull() && !value.canConvert<QPixmap>();
}

QVariant BoundAccess::LoadImage(const QString& path, QString* problem)
{
    if (path.isEmpty()) {
        *problem = QStringLiteral("an image is wanted, or the path of one");
        return QVariant();
    }
    if (path == NoImage && !QFile::exists(path))
        return QPixmap();
    const QPixmap image(path);
    if (image.isNull()) {
        *problem = QFile::exists(path) ? QStringLiteral("the file \"%1\" is no image").arg(path)
                                       : QStringLiteral("there is no file \"%1\"").arg(path);
    }
    return image;
}

BoundAccess::Kind BoundAccess::KindOf(const QObject* object, const QString& name)
{
    if (name == QLatin1String("pixmap") || name == QLatin1String("statusIcon"))
        return Image;
    if (name == QLatin1String("html") || name == QLatin1String("markdown"))
        return Markup;
    if (!object->isWidgetType())
        return Plain;
    if (name == QLatin1String("visible"))
        return Visible;
    return name == QLatin1String("enabled") ? Enabled : Plain;
}
