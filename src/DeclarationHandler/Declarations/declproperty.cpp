#include "DeclarationHandler/Declarations/declproperty.h"

#include <QCoreApplication>
#include <QDebug>
#include <QEvent>
#include <QFile>
#include <QPixmap>
#include <QVariant>

#include <atomic>

#include "Common/qtcompat.h"
#include "DataLayer/idatapeer.h"
#include "DeclarationHandler/iexpression.h"

namespace {

const QLatin1String VisibleProperty("visible");
const QLatin1String PixmapProperty("pixmap");
const QLatin1String StatusIconProperty("statusIcon");
const QLatin1String NoImage("::empty");

const int MaxNestedUpdates = 1000;

/// The updates of this thread that wait for one another, each told by the one before it.
struct UpdateChain
{
    int nested;         ///< On the stack.
    uint length;        ///< In all, those included that ended when the event loop took over.
    uint deletedBefore; ///< Declarations that were deleted before it began.
};
thread_local UpdateChain chain = {0, 0, 0};

// Of declarations, in all threads. They may wrap around; only differences count.
std::atomic<uint> createdCount(0);
std::atomic<uint> deletedCount(0);

/// Goes on with a chain of updates from the event loop. Dies with its declaration.
class ContinuedUpdate : public QObject
{
public:
    ContinuedUpdate(DeclProperty* declaration, bool updateToInvalid)
        : QObject(declaration), m_declaration(declaration), m_updateToInvalid(updateToInvalid), m_chain(chain)
    {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        deleteLater();
        const UpdateChain interrupted = chain;
        chain = m_chain;
        chain.nested = 0;
        m_declaration->Update(m_updateToInvalid);
        chain = interrupted;
        return true;
    }

private:
    DeclProperty* const m_declaration;
    const bool m_updateToInvalid;
    const UpdateChain m_chain;
};

} // namespace

DeclProperty::DeclProperty(QObject* activeObject, const QString& property)
    : DeclProperty(nullptr, activeObject, property)
{
    ConnectNotifications();
}

DeclProperty::DeclProperty(IExpression* condition, QObject* activeObject, const QString& property)
    : Declaration(condition, activeObject),
      m_property(property),
      m_dataPeer(nullptr),
      m_access(activeObject, property),
      m_destroyed(nullptr),
      m_postponed(0),
      m_kind(KindOf(property)),
      m_written(false),
      m_cycleReported(false)
{
    ++createdCount;
}

DeclProperty::~DeclProperty()
{
    if (m_destroyed)
        *m_destroyed = true;
    if (m_dataPeer)
        m_dataPeer->RemoveObserver(this);
    ++deletedCount;
}

bool DeclProperty::Save()
{
    return m_condition && m_activeObject && m_condition->Store(m_access.Read(m_activeObject, m_property));
}

void DeclProperty::OnNotify(const VariableIdentifier& identifier)
{
    Q_EMIT DoNotifyDeclaration(identifier);
}

bool DeclProperty::SetProperty(const QVariant& value)
{
    if (!m_activeObject)
        return false;
    const QVariant current = m_access.Read(m_activeObject, m_property);
    if (m_written && m_kind != Visible && QtCompat::AreEqual(current, value))
        return false;
    m_written = true;

    if (value.isValid() && current.isValid() && !QtCompat::IsNull(value) && !QtCompat::IsNull(current)
        && !QtCompat::CanConvert(value, current.userType())) {
        qDebug() << "Illegal assignment?: '" << value << "' to property: " << QtCompat::ToAscii(m_property)
                 << " with type: " << QtCompat::TypeOf(current) << " value: " << current;
    }
    // Whoever listens to the property may delete this declaration.
    m_access.Write(m_activeObject, m_property, value);
    return true;
}

bool DeclProperty::SetPixmap(const QVariant& value)
{
    if (!m_activeObject)
        return false;
    QString path = QtCompat::ToString(value);
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
    if (chain.length == 0)
        chain.deletedBefore = deletedCount;
    // A chain longer than there were declarations since it began goes round in circles.
    if (m_destroyed || chain.length > createdCount - chain.deletedBefore) {
        ReportCycle();
        return false;
    }
    if (chain.nested >= MaxNestedUpdates) {
        new ContinuedUpdate(this, updateToInvalid);
        return false;
    }
    ++chain.nested;
    ++chain.length;
    const bool written = Evaluate(updateToInvalid);
    --chain.nested;
    --chain.length;
    return written;
}

bool DeclProperty::Update()
{
    return Declaration::Update();
}

void DeclProperty::ConnectNotifications()
{
    static std::atomic<bool> isRegistered(false);
    if (!isRegistered)
        isRegistered = QtCompat::IsRegistered("VariableIdentifier");
    if (isRegistered) {
        connect(this, QTCOMPAT_SIGNAL(DeclProperty, DoNotifyDeclaration, (const VariableIdentifier&)), this,
                QTCOMPAT_SLOT(void, DeclProperty, OnNotifyDeclaration, (const VariableIdentifier&)),
                Qt::QueuedConnection);
    } else {
        // By name, which Qt refuses, saying why: registering the type is the host's part.
        connect(this, SIGNAL(DoNotifyDeclaration(VariableIdentifier)), this,
                SLOT(OnNotifyDeclaration(VariableIdentifier)), Qt::QueuedConnection);
    }
}

DeclProperty::Kind DeclProperty::KindOf(const QString& property)
{
    if (property == VisibleProperty)
        return Visible;
    return property == PixmapProperty || property == StatusIconProperty ? Image : Plain;
}

bool DeclProperty::Evaluate(bool updateToInvalid)
{
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

void DeclProperty::RepostNotifications()
{
    for (; m_postponed > 0; --m_postponed)
        Q_EMIT DoNotifyDeclaration(VariableIdentifier());
}

bool DeclProperty::TakesImagePath(const QVariant& value) const
{
    return m_kind == Image && !QtCompat::IsNull(value) && !QtCompat::CanConvert(value, QMetaType::QPixmap);
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
