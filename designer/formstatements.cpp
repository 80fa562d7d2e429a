#include "formstatements.h"

#include <QDesignerFormWindowInterface>
#include <QHash>
#include <QLayout>
#include <QMetaProperty>
#include <QWidget>

#include "bindableproperties.h"
#include "common/formdocument.h"
#include "common/source/PlatformIndependent/propertyinfo.h"
#include "designerobjects.h"

namespace {

/// The objects of a form by what its file says.
class ObjectFinder
{
public:
    ObjectFinder(const QDesignerFormWindowInterface* form, const FormDocument& document)
        : m_core(form->core()), m_document(document)
    {
        const QVector<QObject*> objects = DesignerObjects::InForm(form);
        for (QObject* const object : objects)
            m_byName.insert(object->objectName(), object);
    }

    QObject* Find(const FormObject& object) const
    {
        if (!object.name.isEmpty() || object.kind != FormObject::Layout || object.parent < 0)
            return m_byName.value(object.name);
        const auto* const parent = qobject_cast<QWidget*>(Find(m_document.Objects().at(object.parent)));
        return parent ? DesignerObjects::LayoutOf(m_core, parent) : nullptr;
    }

private:
    const QDesignerFormEditorInterface* const m_core;
    const FormDocument& m_document;
    QHash<QString, QObject*> m_byName;
};

} // namespace

QVector<FormStatement> FormStatements::Read(const QDesignerFormWindowInterface* form, const QString& content)
{
    QVector<FormStatement> statements;
    FormDocument document;
    QString error;
    if (!document.Parse(content.toUtf8(), form->fileName(), &error))
        return statements;
    const ObjectFinder finder(form, document);
    for (const FormObject& object : document.Objects()) {
        QObject* found = nullptr;
        for (const FormProperty& property : object.properties) {
            if (!BindableProperties::IsMarked(property.name))
                continue;
            found = found ? found : finder.Find(object);
            FormStatement statement;
            statement.object = found;
            statement.objectName = object.name.isEmpty() ? object.className : object.name;
            statement.className = object.className;
            statement.property = property.name;
            statement.text = property.text;
            statement.isText = property.isText;
            statement.source = property.textPlace;
            if (found)
                statement.type = BindableProperties::TypeOf(found, PropertyInfo::ToNormal(property.name));
            statements.append(statement);
        }
    }
    return statements;
}
