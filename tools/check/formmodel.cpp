#include "check/formmodel.h"

#include "DeclarationForms/formadapters.h"
#include "check/formfindings.h"
#include "common/source/PlatformIndependent/constantmapparser.h"
#include "common/source/PlatformIndependent/propertyinfo.h"

bool FormModel::Load(const QByteArray& content, const QString& fileName, QString* error)
{
    if (!m_document.Parse(content, fileName, error))
        return false;
    const bool isBuilt = m_instance.Create(m_document, error);
    if (!isBuilt)
        *error = fileName + ": " + *error;
    return isBuilt;
}

void FormModel::Collect(FormFindings* findings)
{
    for (int i = 0; i < m_document.Objects().size(); ++i) {
        CheckClass(i, findings);
        CheckStrays(i, findings);
        for (const FormProperty& property : m_document.Objects().at(i).properties)
            CollectProperty(i, property, findings);
    }
}

void FormModel::CheckClass(int object, FormFindings* findings) const
{
    const FormObject& formObject = m_document.Objects().at(object);
    const QString replacement = m_instance.ReplacedBy(object);
    if (!replacement.isEmpty() && m_document.BaseClass(formObject.className).isEmpty())
        findings->ReportClass(
            Check::UnknownClass,
            QString("The class \"%1\" is not known; it is taken for a %2").arg(formObject.className, replacement),
            object);
}

/// What is no object of the running form has no properties to bind.
void FormModel::CheckStrays(int object, FormFindings* findings) const
{
    for (const FormProperty& property : m_document.Objects().at(object).strays) {
        if (PropertyInfo::IsOvexProperty(property.name) && !property.name.startsWith("_q_"))
            findings->ReportName(
                Check::NeverBound,
                QString("\"%1\" belongs to an item, a spacer or an attribute here, which has no statements; "
                        "bind a property of the widget")
                    .arg(property.name),
                object, property);
    }
}

void FormModel::CollectProperty(int object, const FormProperty& property, FormFindings* findings)
{
    const Target target(m_instance.Object(object), PropertyInfo::ToNormal(property.name));
    if (!PropertyInfo::IsOvexProperty(property.name) || property.name.startsWith("_q_")) {
        m_set.insert(Target(target.first, property.name));
        return;
    }
    if (!property.isText)
        findings->ReportName(
            Check::NotAText,
            QString("\"%1\" holds no text, so there is no statement; in Designer its type is \"String\"")
                .arg(property.name),
            object, property);
    else if (!CollectEntry(object, property, findings)) {
        NoteDeclared(object, property, target, findings);
        if (!m_writers.contains(target))
            m_writers.insert(target, m_declarations.size());
        m_declarations.append({object, &property, target.second, Diagnosis(property.text)});
    }
}

/// False for what is no entry of a constant map, and was not meant to be one.
bool FormModel::CollectEntry(int object, const FormProperty& property, FormFindings* findings)
{
    QString map;
    QString key;
    if (ConstantMapParser::Parse(property.name, &map, &key)) {
        m_maps.insert(Target(m_instance.Object(object), map));
        NoteDeclared(object, property, Target(m_instance.Object(object), map + '[' + key + ']'), findings);
        return true;
    }
    if (!property.name.contains('[') && !property.name.contains(']'))
        return false;
    findings->ReportName(
        Check::ConstantMapEntry,
        QString("\"%1\" is no entry of a constant map, as \"~map[key]\" or \"~map['a key']\" is").arg(property.name),
        object, property);
    return true;
}

void FormModel::NoteDeclared(int object, const FormProperty& property, const Target& target, FormFindings* findings)
{
    if (!target.first)
        return;
    const FormProperty* const earlier = m_declared.value(target);
    if (!earlier) {
        m_declared.insert(target, &property);
        return;
    }
    findings->ReportName(Check::DuplicateDeclaration,
                         QString("\"%1\" of %2 is declared already, as \"%3\" in line %4")
                             .arg(target.second, Describe(target.first), earlier->name)
                             .arg(m_document.Source().PositionOf(earlier->namePlace.offset).line),
                         object, property);
}

bool FormModel::HasProperty(QObject* object, const QString& name) const
{
    const Target target(object, name);
    return MetaProperty(object, name).isValid() || FormAdapters::IsAdapted(object, name)
        || object->dynamicPropertyNames().contains(name.toUtf8()) || m_set.contains(target) || m_maps.contains(target);
}

QMetaProperty FormModel::MetaProperty(QObject* object, const QString& name)
{
    const QMetaObject* const metaObject = object->metaObject();
    return metaObject->property(metaObject->indexOfProperty(name.toUtf8()));
}

NearestName FormModel::PropertiesOf(QObject* object) const
{
    QStringList names;
    const QMetaObject* const metaObject = object->metaObject();
    for (int i = 0; i < metaObject->propertyCount(); ++i)
        names.append(metaObject->property(i).name());
    const int number = m_instance.Number(object);
    for (const FormProperty& property :
         number < 0 ? QVector<FormProperty>() : m_document.Objects().at(number).properties) {
        if (!PropertyInfo::IsOvexProperty(property.name))
            names.append(property.name);
    }
    return NearestName(StatementTokens::Readable(names));
}

QObject* FormModel::StartOf(const Declaration& declaration, const QString& element) const
{
    QObject* const widget = m_instance.Object(declaration.object);
    if (element == "TopWidget")
        return m_instance.Top();
    if (element == "Widget" || !widget)
        return widget;
    return widget->parent() ? widget->parent() : m_instance.Top();
}

QObject* FormModel::Find(const Declaration& declaration, const Reference& reference) const
{
    QObject* object = StartOf(declaration, reference.path.first());
    for (int i = 1; object && i < reference.path.size(); ++i)
        object = m_instance.Find(object, reference.path.at(i));
    return object;
}

QString FormModel::Describe(QObject* object) const
{
    const int number = m_instance.Number(object);
    const QString className
        = number < 0 ? QString(object->metaObject()->className()) : m_document.Objects().at(number).className;
    return className + '#' + object->objectName();
}

QString FormModel::Describe(const Declaration& declaration) const
{
    const FormObject& object = Owner(declaration);
    return QString("%1#%2:%3").arg(object.className, object.name, declaration.name);
}
