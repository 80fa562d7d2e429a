#include "DeclarationHandler/declarationhandler.h"

#include <QDebug>
#include <QSet>
#include <QWidget>

#include "Common/qtcompat.h"
#include "DataLayer/idatapeerfactory.h"
#include "DeclarationHandler/Declarations/declproperty.h"
#include "DeclarationHandler/Tokens/formnames.h"
#include "DeclarationHandler/parser.h"
#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"

namespace {

const ushort UninitializedMarker = 0x25BA;
const char* const LocalizedPrefix = "loc_";

IDataPeer* GetDataPeer()
{
    const qint32 peer = 0;
    return Ovex_DataPeerFactory(false)->GetDataPeer(peer);
}

/// "class#name"; a destroyed object has neither.
QString Describe(const QObject* object)
{
    const char* const className = object ? object->metaObject()->className() : "";
    return QString::fromLatin1("%1#%2").arg(QString::fromLatin1(className), object ? object->objectName() : QString());
}

QSet<QObject*> WidgetsNamed(const QString& name, const QObject* scope)
{
    QSet<QObject*> widgets;
    const QList<QWidget*> found = scope->findChildren<QWidget*>(name);
    for (int i = 0; i < found.count(); ++i)
        widgets.insert(found.at(i));
    return widgets;
}

/// How many of the widgets lie above \a object.
int CountAncestors(const QObject* object, const QSet<QObject*>& widgets)
{
    int count = 0;
    for (QObject* ancestor = object->parent(); ancestor; ancestor = ancestor->parent()) {
        if (widgets.contains(ancestor))
            ++count;
    }
    return count;
}

} // namespace

DeclarationHandler::DeclarationHandler() : m_names(new FormNames), m_cleared(new bool(false)) {}

DeclarationHandler::~DeclarationHandler()
{
    Clear();
}

bool DeclarationHandler::AddDeclaration(QObject* topWidget, QObject* widget, QString property, QString statement,
                                        QString defaultPackage, bool readOnly, bool initialize)
{
    if (!PropertyInfo::IsOvexProperty(property) || !widget)
        return false;
    property = m_names->Share(PropertyInfo::ToNormal(property));
    if (initialize)
        InitializeProperty(widget, property);

    DeclProperty* const declaration = NewDeclaration(widget, property, topWidget, statement, defaultPackage, readOnly);
    m_declarations.append(declaration);
    m_byObject.insert(widget, declaration);
    return true;
}

bool DeclarationHandler::AddDefaultDeclaration(QObject* topWidget, QObject* widget, QString property, QString statement,
                                               QString defaultPackage)
{
    if (FindDeclaration(widget, PropertyInfo::ToNormal(property)))
        return false;
    return AddDeclaration(topWidget, widget, property, statement, defaultPackage, true, false);
}

bool DeclarationHandler::AddConstMapDeclaration(QObject* widget, QString mapEntry, QString value)
{
    QString mapName;
    QString key;
    if (!widget || !ConstantMapParser::Parse(mapEntry, &mapName, &key))
        return false;
    const QByteArray property = QtCompat::ToAscii(mapName);
    QVariantMap map = widget->property(property).toMap();
    map.insert(key, value);
    widget->setProperty(property, map);
    return true;
}

Declaration* DeclarationHandler::CreateDeclaration(QObject* widget, QString property, QObject* topWidget,
                                                   const QString& statement, const QString& defaultPackage,
                                                   bool readOnly)
{
    return NewDeclaration(widget, property, topWidget, statement, defaultPackage, readOnly);
}

DeclProperty* DeclarationHandler::NewDeclaration(QObject* widget, const QString& property, QObject* topWidget,
                                                 const QString& statement, const QString& defaultPackage, bool readOnly)
{
    const FormNames::Use use(m_names.data());
    IDataPeer* const dataPeer = GetDataPeer();
    DeclProperty* const declaration = new DeclProperty(widget, property);
    Parser parser;
    parser.Tokenize(statement);
    declaration->SetCondition(parser.Parse(dataPeer, declaration, widget, topWidget, defaultPackage, readOnly));
    declaration->SetDataPeer(dataPeer);

    const QSet<PropertyKey> references = parser.GetReferencedProperties();
    for (QSet<PropertyKey>::const_iterator it = references.constBegin(); it != references.constEnd(); ++it) {
        Guard(it->first);
        m_pendingReferences.insert(*it, QPointer<Declaration>(declaration));
    }
    return declaration;
}

void DeclarationHandler::InitializeProperty(QObject* widget, const QString& property) const
{
    if (!widget)
        return;
    const QByteArray name = QtCompat::ToAscii(property);
    if (property == QLatin1String("visible"))
        widget->setProperty(name, false);
    else if (PropertyInfo::IsLocalizableProperty(property))
        widget->setProperty(name, GetUninitializedVariant(widget->property(name)));
}

void DeclarationHandler::ConnectPropertyCrossReferences()
{
    for (int i = 0; i < m_declarations.count() && !m_pendingReferences.isEmpty(); ++i)
        ConnectReaders(m_declarations.at(i));
    QMultiMap<PropertyKey, QPointer<Declaration>>::const_iterator it = m_pendingReferences.constBegin();
    for (; it != m_pendingReferences.constEnd(); ++it) {
        if (it.value() && it.key().second.startsWith(QLatin1String(LocalizedPrefix), Qt::CaseSensitive))
            ReportUnknownReference(it.key(), it.value());
    }
    m_pendingReferences.clear();
    m_guards.clear();
    m_names->Clear();
}

// Slots that run in between may clear or delete this handler.
void DeclarationHandler::Update()
{
    const QSharedPointer<bool> cleared = m_cleared;
    const int count = m_declarations.count();
    for (int i = 0; i < count && !*cleared; ++i)
        m_declarations.at(i)->Update(true);
}

void DeclarationHandler::Save(QObject* scope, const QString& objectName)
{
    const bool all = !scope || objectName.isEmpty();
    const QSet<QObject*> containers = all ? QSet<QObject*>() : WidgetsNamed(objectName, scope);
    const QSharedPointer<bool> cleared = m_cleared;
    const int count = m_declarations.count();
    for (int i = 0; i < count && !*cleared; ++i) {
        const QObject* const object = m_declarations.at(i)->GetActiveObject();
        if (!object)
            continue;
        int saves = 1;
        if (!all && object->objectName() != objectName)
            saves = object->isWidgetType() ? CountAncestors(object, containers) : 0;
        for (; saves > 0 && !*cleared; --saves)
            m_declarations.at(i)->Save();
    }
}

void DeclarationHandler::SaveProperty(QObject* widget, const QString& property)
{
    if (DeclProperty* const declaration = FindDeclaration(widget, property))
        declaration->Save();
}

void DeclarationHandler::Clear()
{
    *m_cleared = true;
    m_cleared = QSharedPointer<bool>(new bool(false));
    m_byObject.clear();
    m_pendingReferences.clear();
    m_guards.clear();
    m_names->Clear();
    const QVector<DeclProperty*> declarations = m_declarations;
    m_declarations.clear();
    qDeleteAll(declarations);
}

IExpression* DeclarationHandler::ParseExpression(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* topWidget,
                                                 QObject* widget, const QString& statement,
                                                 const QString& defaultPackage, bool readOnly)
{
    Parser parser;
    parser.Tokenize(statement);
    return parser.Parse(dataPeer, dataObserver, widget, topWidget, defaultPackage, readOnly);
}

Declaration* DeclarationHandler::ParseDeclaration(QObject* widget, QString property, IExpression* condition)
{
    if (!PropertyInfo::IsOvexProperty(property))
        return nullptr;
    return new DeclProperty(condition, widget, PropertyInfo::ToNormal(property));
}

QString DeclarationHandler::GetUninitializedString(QString text) const
{
    return text.prepend(QChar(UninitializedMarker));
}

QStringList DeclarationHandler::GetUninitializedStringList(QStringList list) const
{
    for (int i = 0; i < list.count(); ++i)
        list[i] = GetUninitializedString(list.at(i));
    return list;
}

QMap<QString, QVariant> DeclarationHandler::GetUninitializedMap(QMap<QString, QVariant> map) const
{
    for (QMap<QString, QVariant>::iterator it = map.begin(); it != map.end(); ++it)
        it.value() = GetUninitializedVariant(it.value());
    return map;
}

QVariant DeclarationHandler::GetUninitializedVariant(QVariant value) const
{
    if (value.type() == QVariant::String)
        return GetUninitializedString(value.toString());
    if (value.type() == QVariant::StringList)
        return GetUninitializedStringList(value.toStringList());
    if (value.type() == QVariant::Map)
        return GetUninitializedMap(value.toMap());
    return value;
}

// Containers here are keyed by address, and a destroyed object's address may be given to a new one:
// what they hold of the old object must not be taken for the new one's.
void DeclarationHandler::Guard(QObject* object)
{
    if (Alive(object))
        return;
    Forget(object);
    m_guards.insert(object, object);
}

/// The object, if it is one that the containers know and it is not destroyed; else null.
QObject* DeclarationHandler::Alive(QObject* object) const
{
    return m_guards.value(object);
}

void DeclarationHandler::Forget(QObject* object)
{
    QMultiMap<PropertyKey, QPointer<Declaration>>::iterator it
        = m_pendingReferences.lowerBound(PropertyKey(object, QString()));
    while (it != m_pendingReferences.end() && it.key().first == object)
        it = m_pendingReferences.erase(it);
}

/// The first declaration added of that property of that object; null when there is none.
DeclProperty* DeclarationHandler::FindDeclaration(QObject* widget, const QString& property) const
{
    DeclProperty* first = nullptr;
    QMultiHash<QObject*, DeclProperty*>::const_iterator it = m_byObject.constFind(widget);
    // The ones added last come first. One of another object, destroyed, may have the same key.
    for (; it != m_byObject.constEnd() && it.key() == widget; ++it) {
        if (it.value()->GetActiveObject() == widget && it.value()->GetProperty() == property)
            first = it.value();
    }
    return first;
}

void DeclarationHandler::ConnectReaders(const DeclProperty* writer)
{
    static const int updated = DeclProperty::staticMetaObject.indexOfSignal("Updated()");
    static const int update = DeclProperty::staticMetaObject.indexOfSlot("Update()");
    const PropertyKey key(Alive(writer->GetActiveObject()), writer->GetProperty());
    const QList<QPointer<Declaration>> readers = m_pendingReferences.values(key);
    for (int i = 0; i < readers.count(); ++i) {
        if (readers.at(i))
            QMetaObject::connect(writer, updated, readers.at(i).data(), update);
    }
    m_pendingReferences.remove(key);
}

void DeclarationHandler::ReportUnknownReference(const PropertyKey& key, const Declaration* reader) const
{
    const QString property = Describe(Alive(key.first)) + QLatin1Char(':') + key.second;
    qDebug() << "Reference to unknown property: '" << property << "' from declaration : '"
             << static_cast<const QObject*>(reader) << "' of widget: " << Describe(reader->GetActiveObject());
}
