#include "check/forminstance.h"

#include <QCoreApplication>
#include <QEvent>
#include <QSet>
#include <QWidget>
#include <QXmlStreamWriter>

#include <algorithm>

#include "common/formdocument.h"
#include "common/formloader.h"
#include "common/statementtokens.h"

namespace {

QSet<QString> ToSet(const QStringList& list)
{
    return QSet<QString>(list.begin(), list.end());
}

} // namespace

FormInstance::FormInstance() = default;

FormInstance::~FormInstance() = default;

bool FormInstance::Create(const FormDocument& document, QString* error)
{
    m_document = &document;
    m_children.resize(document.Objects().size());
    for (int i = 1; i < document.Objects().size(); ++i) {
        const FormObject& object = document.Objects().at(i);
        m_children[qMax(0, object.parent)].append(i);
        if (object.kind == FormObject::ButtonGroup)
            m_groups.insert(object.name, i);
    }
    FormLoader loader;
    ChooseClasses(loader);
    QString reason;
    // Each widget posts one of these, with which its destruction would take for ever; nobody waits for them. Those of
    // others in the program come before.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::PolishRequest);
    m_top.reset(loader.Load(Skeleton(), &reason));
    QCoreApplication::removePostedEvents(nullptr, QEvent::PolishRequest);
    if (!m_top) {
        *error = QString("The form cannot be built: %1").arg(reason);
        return false;
    }
    NameObjects();
    IndexObjects();
    return true;
}

QObject* FormInstance::Top() const
{
    return m_top.data();
}

QObject* FormInstance::Find(QObject* parent, const QString& name) const
{
    const QVector<int> positions = m_positions.value(name);
    const Span span = m_spans.value(parent);
    const auto first = std::lower_bound(positions.begin(), positions.end(), span.first);
    if (first == positions.end() || *first >= span.last)
        return nullptr;
    const auto next = first + 1;
    const bool isOnly = next == positions.end() || *next >= span.last;
    return isOnly ? m_order.at(*first) : parent->findChild<QObject*>(name);
}

int FormInstance::Count(QObject* parent, const QString& name) const
{
    const QVector<int> positions = m_positions.value(name);
    const Span span = m_spans.value(parent);
    const auto first = std::lower_bound(positions.begin(), positions.end(), span.first);
    return int(std::lower_bound(first, positions.end(), span.last) - first);
}

QString FormInstance::NearestBelow(QObject* parent, const QString& name) const
{
    const QString nearest = NamesBelow(parent).Find(name);
    return nearest.isEmpty() && parent != m_top.data() ? NamesBelow(m_top.data()).Find(name) : nearest;
}

QString FormInstance::OnlyNearBelow(QObject* parent, const QString& name) const
{
    return NamesBelow(parent).FindOnly(name);
}

/// A custom widget without a plugin is made as the class that it extends, any other unknown widget as
/// a plain one.
void FormInstance::ChooseClasses(const FormLoader& loader)
{
    const QSet<QString> widgets = ToSet(loader.availableWidgets()) << "Line";
    const QSet<QString> layouts = ToSet(loader.availableLayouts());
    for (const FormObject& object : m_document->Objects()) {
        QString chosen = object.className;
        if (object.kind == FormObject::Layout && !layouts.contains(chosen))
            chosen = "QVBoxLayout";
        QSet<QString> tried;
        while (object.kind == FormObject::Widget && !widgets.contains(chosen)) {
            tried.insert(chosen);
            chosen = m_document->BaseClass(chosen);
            if (chosen.isEmpty() || tried.contains(chosen))
                chosen = "QWidget";
        }
        m_replacements.append(chosen == object.className ? QString() : chosen);
        m_classes.append(chosen);
    }
}

/// A form with the objects alone, named by their numbers.
QByteArray FormInstance::Skeleton() const
{
    QByteArray skeleton;
    QXmlStreamWriter xml(&skeleton);
    xml.writeStartElement("ui");
    xml.writeAttribute("version", "4.0");
    WriteObject(0, &xml);
    xml.writeStartElement("buttongroups");
    for (const int group : m_groups) {
        xml.writeEmptyElement("buttongroup");
        xml.writeAttribute("name", QString::number(group));
    }
    xml.writeEndElement();
    xml.writeEndElement();
    return skeleton;
}

void FormInstance::WriteObject(int number, QXmlStreamWriter* xml) const
{
    const FormObject& object = m_document->Objects().at(number);
    if (object.kind == FormObject::ButtonGroup)
        return;
    if (object.kind == FormObject::Layout)
        return WriteLayout(number, xml);
    const bool isWidget = object.kind == FormObject::Widget;
    xml->writeStartElement(isWidget ? "widget" : object.kind == FormObject::Action ? "action" : "actiongroup");
    if (isWidget)
        xml->writeAttribute("class", m_classes.at(number));
    xml->writeAttribute("name", QString::number(number));
    if (m_groups.contains(object.buttonGroup)) {
        // The loader makes the group with its first button.
        xml->writeStartElement("attribute");
        xml->writeAttribute("name", "buttonGroup");
        xml->writeTextElement("string", QString::number(m_groups.value(object.buttonGroup)));
        xml->writeEndElement();
    }
    for (const int child : m_children.at(number))
        WriteObject(child, xml);
    xml->writeEndElement();
}

void FormInstance::WriteLayout(int number, QXmlStreamWriter* xml) const
{
    xml->writeStartElement("layout");
    xml->writeAttribute("class", m_classes.at(number));
    xml->writeAttribute("name", QString::number(number));
    int row = 0;
    for (const int child : m_children.at(number)) {
        xml->writeStartElement("item");
        // Rows of a grid and of a form; the other layouts ignore them.
        xml->writeAttribute("row", QString::number(row++));
        xml->writeAttribute("column", "0");
        WriteObject(child, xml);
        xml->writeEndElement();
    }
    xml->writeEndElement();
}

void FormInstance::NameObjects()
{
    m_objects.fill(nullptr, m_document->Objects().size());
    QList<QObject*> made = m_top->findChildren<QObject*>();
    made.prepend(m_top.data());
    for (QObject* const object : qAsConst(made)) {
        bool isNumber = false;
        const int number = object->objectName().toInt(&isNumber);
        if (!isNumber || number < 0 || number >= m_objects.size() || m_objects.at(number))
            continue;
        m_objects[number] = object;
        m_numbers.insert(object, number);
    }
    for (auto it = m_numbers.constBegin(); it != m_numbers.constEnd(); ++it)
        it.key()->setObjectName(m_document->Objects().at(it.value()).name);
}

void FormInstance::IndexObjects()
{
    IndexBelow(m_top.data());
    for (int i = 0; i < m_order.size(); ++i) {
        if (!m_order.at(i)->objectName().isEmpty())
            m_positions[m_order.at(i)->objectName()].append(i);
    }
}

void FormInstance::IndexBelow(QObject* object)
{
    m_order.append(object);
    const int first = m_order.size();
    for (QObject* const child : object->children())
        IndexBelow(child);
    m_spans.insert(object, {first, int(m_order.size())});
}

const NearestName& FormInstance::NamesBelow(QObject* parent) const
{
    const auto found = m_names.constFind(parent);
    if (found != m_names.constEnd())
        return found.value();
    QStringList names;
    const Span span = m_spans.value(parent);
    for (int i = span.first; i < span.last; ++i) {
        if (m_numbers.contains(m_order.at(i)))
            names.append(m_order.at(i)->objectName());
    }
    return m_names.insert(parent, NearestName(StatementTokens::Readable(names))).value();
}
