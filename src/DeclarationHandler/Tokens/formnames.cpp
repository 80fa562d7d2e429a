#include "DeclarationHandler/Tokens/formnames.h"

#include <QObject>

#include "DeclarationHandler/Tokens/textview.h"

namespace {

thread_local FormNames* inUse = nullptr;

const int SmallestTable = 64;

bool IsBelow(const QObject* object, const QObject* parent)
{
    while (object && object != parent)
        object = object->parent();
    return object;
}

} // namespace

FormNames::FormNames() : m_textCount(0) {}

FormNames::Use::Use(FormNames* names) : m_outer(inUse)
{
    inUse = names;
}

FormNames::Use::~Use()
{
    inUse = m_outer;
}

QString FormNames::StartOf(const QString& text, int length)
{
    if (!inUse || length == 0)
        return TextView::StartOf(text, length);
    QString& slot = inUse->SlotOf(QString::fromRawData(text.constData(), length));
    if (slot.isNull()) {
        slot = TextView::StartOf(text, length);
        ++inUse->m_textCount;
    }
    return slot;
}

QString FormNames::Shared(const QString& text)
{
    return inUse ? inUse->Share(text) : text;
}

QObject* FormNames::FindChild(QObject* parent, const QString& name)
{
    return inUse && !name.isEmpty() ? inUse->Find(parent, name) : parent->findChild<QObject*>(name);
}

QString FormNames::Share(const QString& text)
{
    if (text.isEmpty())
        return text;
    QString& slot = SlotOf(text);
    if (slot.isNull()) {
        slot = text;
        ++m_textCount;
    }
    return slot;
}

void FormNames::Clear()
{
    m_texts = QVector<QString>();
    m_textCount = 0;
    m_descendants.clear();
}

/// Where \a text stands, or a null text where it belongs. \a text must not be empty.
QString& FormNames::SlotOf(const QString& text)
{
    if (2 * m_textCount >= m_texts.count())
        Enlarge();
    QString* const table = m_texts.data();
    const uint mask = static_cast<uint>(m_texts.count()) - 1;
    // Qt 4 leaves little of how a name begins in the low bits. Knuth's multiplicative hashing.
    const uint hash = qHash(text) * 2654435761u;
    uint i = (hash ^ (hash >> 16)) & mask;
    while (!table[i].isNull() && table[i] != text)
        i = (i + 1) & mask;
    return table[i];
}

void FormNames::Enlarge()
{
    const QVector<QString> texts = m_texts;
    m_texts = QVector<QString>(qMax(SmallestTable, 2 * texts.count()));
    m_textCount = 0;
    for (int i = 0; i < texts.count(); ++i)
        Share(texts.at(i));
}

QObject* FormNames::Find(QObject* parent, const QString& name)
{
    Descendants& descendants = m_descendants[parent];
    const int childCount = parent->children().count();
    if (descendants.parent != parent || descendants.childCount != childCount) {
        descendants.parent = parent;
        descendants.childCount = childCount;
        descendants.byName.clear();
        Collect(parent, &descendants.byName);
    }
    QPointer<QObject>& object = descendants.byName[name];
    if (!object || object->objectName() != name || !IsBelow(object->parent(), parent))
        object = parent->findChild<QObject*>(name);
    return object;
}

// In the order of QObject::findChild(): the children of an object come before theirs.
void FormNames::Collect(const QObject* parent, QHash<QString, QPointer<QObject>>* byName)
{
    const QObjectList& children = parent->children();
    for (int i = 0; i < children.count(); ++i) {
        const QString name = children.at(i)->objectName();
        if (!name.isEmpty() && !byName->contains(name))
            byName->insert(name, children.at(i));
    }
    for (int i = 0; i < children.count(); ++i)
        Collect(children.at(i), byName);
}
