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

// Declarations of all threads that were ever made, and of those the ones that are gone. They may wrap around;
// only differences count.
std::atomic<uint> createdCount(0);
std::atomic<uint> deletedCount(0);

/// The updates of this thread that wait for one another, each told by the one before it.
struct UpdateChain
{
    int nested;         ///< On the stack.
    uint length;        ///< In all, those included that ended when the event loop took over.
    uint deletedBefore; ///< Declarations that were gone when it began.

    /// Whether it has come back to a declaration: it is longer than there were declarations since it began,
    /// those counted that are gone by now.
    bool GoesInCircles() const { return length > createdCount - deletedBefore; }
};
thread_local UpdateChain chain = {0, 0, 0};

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

void ConnectNotifications(DeclProperty* declaration)
{
    static std::atomic<bool> isRegistered(false);
    if (!isRegistered)
        isRegistered = QtCompat::IsRegistered("VariableIdentifier");
    if (isRegistered) {
        QObject::connect(
            declaration, QTCOMPAT_SIGNAL(DeclProperty, DoNotifyDeclaration, (const VariableIdentifier&)), declaration,
            QTCOMPAT_SLOT(void, DeclProperty, OnNotifyDeclaration, (const VariableIdentifier&)), Qt::QueuedConnection);
    } else {
        // By name, which Qt refuses, saying why: registering the type is the host's part.
        QObject::connect(declaration, SIGNAL(DoNotifyDeclaration(VariableIdentifier)), declaration,
                         SLOT(OnNotifyDeclaration(VariableIdentifier)), Qt::QueuedConnection);
    }
}

} // namespace

/// One evaluation of a declaration and what comes of it. Slots of the host run in between and may delete the
/// declaration.
class PropertyUpdate
{
public:
    /// A declaration has one at a time.
    explicit PropertyUpdate(DeclProperty* declaration) : m_declaration(declaration) { declaration->m_update = this; }
    ~PropertyUpdate();

    /// Answers whether something was written.
    bool Run(bool updateToInvalid);
    /// The declaration is gone.
    void NoteDeletion() { m_declaration = nullptr; }

    /// Says, once for each declaration, that it came back to itself.
    static void ReportCycle(DeclProperty* declaration);

private:
    Q_DISABLE_COPY(PropertyUpdate)

    bool Write(const QVariant& value);

    DeclProperty* m_declaration; ///< Null once it is deleted.
};

PropertyUpdate::~PropertyUpdate()
{
    if (!m_declaration)
        return;
    m_declaration->m_update = nullptr;
    for (; m_declaration->m_postponed > 0; --m_declaration->m_postponed)
        Q_EMIT m_declaration->DoNotifyDeclaration(VariableIdentifier());
}

bool PropertyUpdate::Run(bool updateToInvalid)
{
    const QVariant value = m_declaration->m_condition->Retrieve();
    if (!m_declaration || (!updateToInvalid && !value.isValid()))
        return false;
    const bool written = Write(value);
    if (m_declaration)
        Q_EMIT m_declaration->Updated();
    return written;
}

bool PropertyUpdate::Write(const QVariant& value)
{
    if (m_declaration->m_takesImages && !QtCompat::IsNull(value) && !QtCompat::CanConvert(value, QMetaType::QPixmap))
        return m_declaration->SetPixmap(value);
    return m_declaration->SetProperty(value);
}

void PropertyUpdate::ReportCycle(DeclProperty* declaration)
{
    if (declaration->m_cycleReported)
        return;
    declaration->m_cycleReported = true;
    const QObject* const object = declaration->GetActiveObject();
    const QString name = QString::fromLatin1("%1#%2:%3")
                             .arg(QString::fromLatin1(object->metaObject()->className()), object->objectName(),
                                  declaration->m_property);
    qDebug() << "Cycle of references: property is being updated already:" << name;
}

DeclProperty::DeclProperty(QObject* activeObject, const QString& property)
    : DeclProperty(nullptr, activeObject, property)
{
    ConnectNotifications(this);
}

DeclProperty::DeclProperty(IExpression* condition, QObject* activeObject, const QString& property)
    : Declaration(condition, activeObject),
      m_property(property),
      m_dataPeer(nullptr),
      m_access(activeObject, property),
      m_update(nullptr),
      m_postponed(0),
      m_alwaysWritten(property == VisibleProperty),
      m_takesImages(property == PixmapProperty || property == StatusIconProperty),
      m_written(false),
      m_cycleReported(false)
{
    ++createdCount;
}

DeclProperty::~DeclProperty()
{
    if (m_update)
        m_update->NoteDeletion();
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
    if (m_written && !m_alwaysWritten && QtCompat::AreEqual(current, value))
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
    if (m_update)
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
    if (m_update || chain.GoesInCircles()) {
        PropertyUpdate::ReportCycle(this);
        return false;
    }
    if (chain.nested >= MaxNestedUpdates) {
        new ContinuedUpdate(this, updateToInvalid);
        return false;
    }
    ++chain.nested;
    ++chain.length;
    const bool written = PropertyUpdate(this).Run(updateToInvalid);
    --chain.nested;
    --chain.length;
    return written;
}

bool DeclProperty::Update()
{
    return Declaration::Update();
}
