#include "DeclarationHandler/declarationhandler.h"

#include <QDebug>
#include <QHash>
#include <QPair>
#include <QPointer>
#include <QSet>
#include <QSharedPointer>
#include <QVector>
#include <QWidget>

#include "Common/objectindex.h"
#include "Common/qtcompat.h"
#include "DataLayer/idatapeerfactory.h"
#include "DeclarationHandler/Declarations/declproperty.h"
#include "DeclarationHandler/Tokens/formscope.h"
#include "DeclarationHandler/Tokens/sharedtexts.h"
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

void ReportUnknownReference(const QObject* object, const QString& property, const Declaration* reader)
{
    const QString reference = Describe(object) + QLatin1Char(':') + property;
    qDebug() << "Reference to unknown property: '" << reference << "' from declaration : '"
             << static_cast<const QObject*>(reader) << "' of widget: " << Describe(reader->GetActiveObject());
}

} // namespace

/// The declarations of one form, and what is known of them.
class DeclarationHandlerPrivate
{
public:
    typedef QPair<QObject*, QString> PropertyKey;

    /// That a declaration reads a property of an object. The object's address, by which this is found, may
    /// be given to another one once the first is destroyed.
    struct Reference
    {
        QPointer<QObject> object;
        QPointer<Declaration> reader;
    };

    DeclarationHandlerPrivate() : m_cleared(new bool(false)), m_indexedCount(0) {}

    DeclProperty* NewDeclaration(QObject* widget, const QString& property, QObject* topWidget, const QString& statement,
                                 const QString& defaultPackage, bool readOnly);
    DeclProperty* FindDeclaration(QObject* widget, const QString& property);
    void ConnectReaders(const DeclProperty* writer);
    void ReportUnknownReferences() const;
    void ForgetNames();

    QVector<DeclProperty*> m_declarations;                  ///< Owned; in the order added.
    QMultiHash<PropertyKey, Reference> m_pendingReferences; ///< By the property read.
    SharedTexts m_texts;                                    ///< Of the names in statements, until the form is complete.
    QSharedPointer<bool> m_cleared; ///< Set, and replaced, by Clear(): what walks through the list stops.

    QMultiHash<QObject*, DeclProperty*> m_byObject; ///< The first few declarations, by what they act on.
    int m_indexedCount;                             ///< How many; the others when first needed.

private:
    Q_DISABLE_COPY(DeclarationHandlerPrivate)

    ObjectIndex m_objects; ///< By name, until the form is complete.
};

DeclProperty* DeclarationHandlerPrivate::NewDeclaration(QObject* widget, const QString& property, QObject* topWidget,
                                                        const QString& statement, const QString& defaultPackage,
                                                        bool readOnly)
{
    const FormScope scope(&m_texts, &m_objects);
    IDataPeer* const dataPeer = GetDataPeer();
    DeclProperty* const declaration = new DeclProperty(widget, property);
    Parser parser;
    parser.Tokenize(statement);
    declaration->SetCondition(parser.Parse(dataPeer, declaration, widget, topWidget, defaultPackage, readOnly));
    declaration->SetDataPeer(dataPeer);

    const QSet<PropertyKey> references = parser.GetReferencedProperties();
    for (QSet<PropertyKey>::const_iterator it = references.constBegin(); it != references.constEnd(); ++it) {
        const Reference reference = {it->first, declaration};
        m_pendingReferences.insert(*it, reference);
    }
    return declaration;
}

/// The first declaration added of that property of that object; null when there is none.
DeclProperty* DeclarationHandlerPrivate::FindDeclaration(QObject* widget, const QString& property)
{
    for (; m_indexedCount < m_declarations.count(); ++m_indexedCount) {
        DeclProperty* const declaration = m_declarations.at(m_indexedCount);
        if (QObject* const object = declaration->GetActiveObject())
            m_byObject.insert(object, declaration);
    }
    DeclProperty* first = nullptr;
    QMultiHash<QObject*, DeclProperty*>::const_iterator it = m_byObject.constFind(widget);
    // The ones added last come first. One of another object, destroyed, may have the same key.
    for (; it != m_byObject.constEnd() && it.key() == widget; ++it) {
        if (it.value()->GetActiveObject() == widget && it.value()->GetProperty() == property)
            first = it.value();
    }
    return first;
}

void DeclarationHandlerPrivate::ConnectReaders(const DeclProperty* writer)
{
    const PropertyKey key(writer->GetActiveObject(), writer->GetProperty());
    QMultiHash<PropertyKey, Reference>::iterator it = m_pendingReferences.find(key);
    while (it != m_pendingReferences.end() && it.key() == key) {
        if (!it->object) {
            ++it;
            continue;
        }
        if (it->reader) {
            QObject::connect(writer, QTCOMPAT_SIGNAL(Declaration, Updated, ()), it->reader.data(),
                             QTCOMPAT_SLOT(bool, Declaration, Update, ()));
        }
        it = m_pendingReferences.erase(it);
    }
}

void DeclarationHandlerPrivate::ReportUnknownReferences() const
{
    QMap<PropertyKey, bool> unknown; // in order
    QMultiHash<PropertyKey, Reference>::const_iterator it = m_pendingReferences.constBegin();
    for (; it != m_pendingReferences.constEnd(); ++it) {
        if (it.key().second.startsWith(QLatin1String(LocalizedPrefix), Qt::CaseSensitive))
            unknown.insert(it.key(), true);
    }
    const QList<PropertyKey> keys = unknown.keys();
    for (int i = 0; i < keys.count(); ++i) {
        const QList<Reference> references = m_pendingReferences.values(keys.at(i));
        for (int j = 0; j < references.count(); ++j) {
            if (references.at(j).reader)
                ReportUnknownReference(references.at(j).object, keys.at(i).second, references.at(j).reader);
        }
    }
}

void DeclarationHandlerPrivate::ForgetNames()
{
    m_texts.Clear();
    m_objects.Clear();
}

DeclarationHandler::DeclarationHandler() : d(new DeclarationHandlerPrivate) {}

DeclarationHandler::~DeclarationHandler()
{
    Clear();
}

bool DeclarationHandler::AddDeclaration(QObject* topWidget, QObject* widget, QString property, QString statement,
                                        QString defaultPackage, bool readOnly, bool initialize)
{
    if (!PropertyInfo::IsOvexProperty(property) || !widget)
        return false;
    property = d->m_texts.Share(PropertyInfo::ToNormal(property));
    if (initialize)
        InitializeProperty(widget, property);

    d->m_declarations.append(d->NewDeclaration(widget, property, topWidget, statement, defaultPackage, readOnly));
    return true;
}

bool DeclarationHandler::AddDefaultDeclaration(QObject* topWidget, QObject* widget, QString property, QString statement,
                                               QString defaultPackage)
{
    if (d->FindDeclaration(widget, PropertyInfo::ToNormal(property)))
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
    return d->NewDeclaration(widget, property, topWidget, statement, defaultPackage, readOnly);
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
    for (int i = 0; i < d->m_declarations.count() && !d->m_pendingReferences.isEmpty(); ++i)
        d->ConnectReaders(d->m_declarations.at(i));
    d->ReportUnknownReferences();
    d->m_pendingReferences.clear();
    d->ForgetNames();
}

// Slots that run in between may clear or delete this handler.
void DeclarationHandler::Update()
{
    const QSharedPointer<bool> cleared = d->m_cleared;
    const int count = d->m_declarations.count();
    for (int i = 0; i < count && !*cleared; ++i)
        d->m_declarations.at(i)->Update(true);
}

void DeclarationHandler::Save(QObject* scope, const QString& objectName)
{
    const bool all = !scope || objectName.isEmpty();
    const QSet<QObject*> containers = all ? QSet<QObject*>() : WidgetsNamed(objectName, scope);
    const QSharedPointer<bool> cleared = d->m_cleared;
    const int count = d->m_declarations.count();
    for (int i = 0; i < count && !*cleared; ++i) {
        const QObject* const object = d->m_declarations.at(i)->GetActiveObject();
        if (!object)
            continue;
        int saves = 1;
        if (!all && object->objectName() != objectName)
            saves = object->isWidgetType() ? CountAncestors(object, containers) : 0;
        for (; saves > 0 && !*cleared; --saves)
            d->m_declarations.at(i)->Save();
    }
}

void DeclarationHandler::SaveProperty(QObject* widget, const QString& property)
{
    if (DeclProperty* const declaration = d->FindDeclaration(widget, property))
        declaration->Save();
}

void DeclarationHandler::Clear()
{
    *d->m_cleared = true;
    d->m_cleared = QSharedPointer<bool>(new bool(false));
    d->m_byObject.clear();
    d->m_indexedCount = 0;
    d->m_pendingReferences.clear();
    d->ForgetNames();
    const QVector<DeclProperty*> declarations = d->m_declarations;
    d->m_declarations.clear();
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
    if (value.userType() == QMetaType::QString)
        return GetUninitializedString(value.toString());
    if (value.userType() == QMetaType::QStringList)
        return GetUninitializedStringList(value.toStringList());
    if (value.userType() == QMetaType::QVariantMap)
        return GetUninitializedMap(value.toMap());
    return value;
}
