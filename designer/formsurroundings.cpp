#include "formsurroundings.h"

#include <QDesignerFormWindowInterface>
#include <QDesignerPropertySheetExtension>
#include <QFileInfo>
#include <QWidget>

#include "bindableproperties.h"
#include "common/projectfile.h"
#include "designerobjects.h"
#include "formwatcher.h"

namespace {

const char Own[] = "Widget";
const char Parent[] = "ParentWidget";
const char Top[] = "TopWidget";
/// In letters, from which on a value is cut.
const int MaxValue = 200;

} // namespace

QStringList FormSurroundings::Paths() const
{
    QStringList paths{Own, Parent, Top};
    const QDesignerFormWindowInterface* const form = m_watcher->Form();
    const QVector<QObject*> objects = form ? DesignerObjects::InForm(form) : QVector<QObject*>();
    for (const QObject* const object : objects) {
        const bool isReadable = StatementTokens::Readable({object->objectName()}).size() == 1;
        if (object != form->mainContainer() && isReadable)
            paths.append(QString(Top) + '\\' + object->objectName());
    }
    return paths;
}

QStringList FormSurroundings::Properties(const QString& path) const
{
    QStringList names;
    QObject* const object = Find(path.split('\\'));
    const QDesignerPropertySheetExtension* const sheet
        = object ? DesignerObjects::Sheet(m_watcher->Core(), object) : nullptr;
    for (int i = 0; sheet && i < sheet->count(); ++i) {
        const QString name = sheet->propertyName(i);
        if (sheet->isVisible(i) && !BindableProperties::IsMarked(name))
            names.append(name);
    }
    return StatementTokens::Readable(names);
}

QStringList FormSurroundings::Variables() const
{
    ReadData();
    QStringList names;
    for (const Variable& variable : m_data.Variables()) {
        if (StatementTokens::Readable({variable.name}).isEmpty())
            continue;
        if (variable.package == m_package)
            names.append(variable.name);
        names.append('@' + variable.package + ':' + variable.name);
    }
    return names;
}

QString FormSurroundings::Describe(const Reference& reference) const
{
    if (reference.IsProperty()) {
        const QObject* const object = Find(reference.path);
        const QString type = object ? BindableProperties::TypeOf(object, reference.name) : QString();
        return type.isEmpty() ? QString() : QString("%1 of %2: %3").arg(reference.name, object->objectName(), type);
    }
    ReadData();
    const Variable* const variable = m_data.Find(reference.Package(m_package), reference.name);
    if (!variable)
        return QString();
    const QString value = QString::fromUtf8(JsonData::ValueToJson(variable->value));
    const QString shown = value.size() > MaxValue ? value.left(MaxValue) + "..." : value;
    return QString("%1: %2, %3").arg(reference.name, variable->value.typeName(), shown);
}

/// As a widget path leads: each name somewhere below the one in front of it.
QObject* FormSurroundings::Find(const QStringList& path) const
{
    QWidget* const top = m_watcher->Form() ? m_watcher->Form()->mainContainer() : nullptr;
    QObject* object = nullptr;
    if (path.value(0) == Top)
        object = top;
    else if (path.value(0) == Own)
        object = m_object;
    else if (path.value(0) == Parent)
        object = m_object && m_object != top ? m_object->parent() : m_object.data();
    for (int i = 1; object && i < path.size(); ++i)
        object = object->findChild<QObject*>(path.at(i));
    return object;
}

/// Reads the project's data where they are not those that were read last.
void FormSurroundings::ReadData() const
{
    ProjectFile project;
    QString error;
    const QString file = m_watcher->FileName();
    const QString found = file.isEmpty() ? QString() : ProjectFile::Find(QFileInfo(file).absolutePath());
    if (!found.isEmpty() && !project.Read(found, &error))
        project = ProjectFile();
    m_package = project.package;
    const QDateTime time = QFileInfo(project.data).lastModified();
    if (project.data == m_dataFile && time == m_dataTime)
        return;
    m_dataFile = project.data;
    m_dataTime = time;
    JsonData data;
    // What is wrong with them, the check tells.
    m_data = !project.data.isEmpty() && data.Read(project.data, &error) ? data : JsonData();
}
