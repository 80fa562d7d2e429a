#include "DeclarationHandler/Declarations/declproperty.h"

#include <QDebug>
#include <QFile>
#include <QPixmap>
#include <QVariant>

#include "Common/qtcompat.h"
#include "DataLayer/idatapeer.h"
#include "DeclarationHandler/iexpression.h"

namespace {

const QLatin1String VisibleProperty("visible");
const QLatin1String PixmapProperty("pixmap");
const QLatin1String StatusIconProperty("statusIcon");
const QLatin1String NoImage("::empty");

} // namespace

DeclProperty::DeclProperty(QObject* activeObject, const QString& property)
    : DeclProperty(nullptr, activeObject, property)
{
    connect(this, SIGNAL(DoNotifyDeclaration(VariableIdentifier)), this, SLOT(OnNotifyDeclaration(VariableIdentifier)),
            Qt::QueuedConnection);
}

DeclProperty::DeclProperty(IExpression* condition, QObject* activeObject, const QString& property)
    : Declaration(condition, activeObject),
      m_property(property),
      m_dataPeer(nullptr),
      m_written(false),
      m_cycleReported(false),
      m_postponed(0),
      m_destroyed(nullptr)
{
}

DeclProperty::~DeclProperty()
{
    if (m_destroyed)
        *m_destroyed = true;
    if (m_dataPeer)
        m_dataPeer->RemoveObserver(this);
}

bool DeclProperty::Save()
{
    return m_condition && m_activeObject && m_condition->Store(CurrentValue());
}

void DeclProperty::OnNotify(const VariableIdentifier& identifier)
{
    Q_EMIT DoNotifyDeclaration(identifier);
}

bool DeclProperty::SetProperty(const QVariant& value)
{
    if (!m_activeObject)
        return false;
    if (m_written && CurrentValue() == value && m_property != VisibleProperty)
        return false;
    m_written = true;

    const QVariant current = CurrentValue();
    if (value.isValid() && current.isValid() && !value.isNull() && !current.isNull()
        && !QtCompat::CanConvert(value, current.userType())) {
        qDebug() << "Illegal assignment?: '" << value << "' to property: " << QtCompat::ToAscii(m_property)
                 << " with type: " << current.type() << " value: " << current;
    }
    // Whoever listens to the property may delete this declaration.
    m_activeObject->setProperty(QtCompat::ToAscii(m_property), value);
    return true;
}

bool DeclProperty::SetPixmap(const QVariant& value)
{
    if (!m_activeObject)
        return false;
    QString path = value.toString();
    if (path.isEmpty()) {
        qDebug() << "Pixmap in widget " << m_activeObject->objectName() << "has invalid type for pixmap" << value;
        return false;
    }
    if (!QFile::exists(path)) {
        if (path == NoImage)
            path.clear();
        else
            qDebug() << "Pixmap file does not exist" << path;
    }
    return SetProperty(QPixmap(path));
}

QString DeclProperty::GetProperty() const
{
    return m_property;
}

void DeclProperty::SetDataPeer(IDataPeer* dataPeer)
{
    m_dataPeer = dataPeer;
}

void DeclProperty::OnNotifyDeclaration(const VariableIdentifier&)
{
    // A slot of the widget may run an event loop inside Update(); what arrives there must not be lost.
    if (m_destroyed)
        ++m_postponed;
    else
        Update(true);
}

bool DeclProperty::Update(bool updateToInvalid)
{
    if (!m_condition || !m_activeObject)
        return false;
    if (m_destroyed) {
        ReportCycle();
        return false;
    }
    bool destroyed = false;
    m_destroyed = &destroyed;

    bool written = false;
    const QVariant value = m_condition->Retrieve();
    if (!destroyed && (updateToInvalid || value.isValid())) {
        written = TakesImagePath(value) ? SetPixmap(value) : SetProperty(value);
        if (!destroyed)
            Q_EMIT Updated();
    }
    if (!destroyed) {
        m_destroyed = nullptr;
        RepostNotifications();
    }
    return written;
}

bool DeclProperty::Update()
{
    return Declaration::Update();
}

void DeclProperty::RepostNotifications()
{
    for (; m_postponed > 0; --m_postponed)
        Q_EMIT DoNotifyDeclaration(VariableIdentifier());
}

bool DeclProperty::TakesImagePath(const QVariant& value) const
{
    return (m_property == PixmapProperty || m_property == StatusIconProperty) && !value.isNull()
        && !value.canConvert(QVariant::Pixmap);
}

QVariant DeclProperty::CurrentValue() const
{
    return m_activeObject->property(QtCompat::ToAscii(m_property));
}

void DeclProperty::ReportCycle()
{
    if (m_cycleReported)
        return;
    m_cycleReported = true;
    const QString name = QString::fromLatin1("%1#%2:%3")
                             .arg(QString::fromLatin1(m_activeObject->metaObject()->className()),
                                  m_activeObject->objectName(), m_property);
    qDebug() << "Cycle of references: property is being updated already:" << name;
}
