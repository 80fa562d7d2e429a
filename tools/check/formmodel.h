#ifndef FORMMODEL_H
#define FORMMODEL_H

#include <QMetaProperty>
#include <QPair>
#include <QSet>

#include "check/forminstance.h"
#include "common/diagnosis.h"
#include "common/formdocument.h"

class FormFindings;

/// A marked property that binds another one to a statement.
struct Declaration
{
    int object; ///< Its number in the form.
    const FormProperty* property;
    QString name; ///< Of the bound property, without the markers.
    Diagnosis diagnosis;
};

/// A form with its objects and declarations, as they are once it runs.
class FormModel
{
public:
    /// False, with the reason, when the form cannot be read or built.
    bool Load(const QByteArray& content, const QString& fileName, QString* error);
    /// Finds the declarations, and tells what is wrong with their names.
    void Collect(FormFindings* findings);

    const FormDocument& Document() const { return m_document; }
    const FormInstance& Instance() const { return m_instance; }
    const QVector<Declaration>& Declarations() const { return m_declarations; }
    const FormObject& Owner(const Declaration& declaration) const
    {
        return m_document.Objects().at(declaration.object);
    }

    /// The first declaration that writes the property; -1 when there is none.
    int WriterOf(QObject* object, const QString& property) const { return m_writers.value({object, property}, -1); }
    bool IsMap(QObject* object, const QString& property) const { return m_maps.contains({object, property}); }
    bool HasProperty(QObject* object, const QString& name) const;
    /// What the class says of the property; invalid when it has none of that name.
    static QMetaProperty MetaProperty(QObject* object, const QString& name);
    /// The names of all that the object has.
    NearestName PropertiesOf(QObject* object) const;

    /// The object that the first element of a widget path stands for.
    QObject* StartOf(const Declaration& declaration, const QString& element) const;
    /// The object that a widget path leads to; null when it leads to none.
    QObject* Find(const Declaration& declaration, const Reference& reference) const;

    QString Describe(QObject* object) const;
    QString Describe(const Declaration& declaration) const;

private:
    /// A property of an object; the object is null where a path leads nowhere.
    using Target = QPair<QObject*, QString>;

    void CheckClass(int object, FormFindings* findings) const;
    void CheckStrays(int object, FormFindings* findings) const;
    void CollectProperty(int object, const FormProperty& property, FormFindings* findings);
    bool CollectEntry(int object, const FormProperty& property, FormFindings* findings);
    void NoteDeclared(int object, const FormProperty& property, const Target& target, FormFindings* findings);

    FormDocument m_document;
    FormInstance m_instance;
    QVector<Declaration> m_declarations;
    QHash<Target, int> m_writers;                  ///< The first declaration of each property.
    QHash<Target, const FormProperty*> m_declared; ///< All declared properties and entries of constant maps.
    QSet<Target> m_maps;                           ///< Constant maps.
    QSet<Target> m_set;                            ///< Dynamic properties that the form sets.
};

#endif
