#ifndef FORMDOCUMENT_H
#define FORMDOCUMENT_H

#include <QHash>
#include <QSet>
#include <QStringList>
#include <QVector>

#include "common/xmlsource.h"

class QXmlStreamReader;

/// A dynamic or other property, as a form's author entered it.
struct FormProperty
{
    QString name;
    QString text;                ///< Of a property that holds a text.
    bool isText;                 ///< Whether it does.
    QString element;             ///< What its value stands in, such as "number"; empty when there is none.
    QString content;             ///< Of a value of another kind that is one word, such as a number.
    bool isTranslatable = false; ///< Whether translators get the text.
    QString comment;             ///< What tells them apart from others of the same text.
    TextPlace namePlace;         ///< In the source.
    TextPlace textPlace;         ///< In the source, where entities make it longer.
};

/// An object of a form, as it stands in the file.
struct FormObject
{
    enum Kind
    {
        Widget,
        Layout,
        Action,
        ActionGroup,
        ButtonGroup
    };

    Kind kind;
    QString className;
    TextPlace classPlace; ///< In the source.
    QString name;
    int parent;          ///< Its number, or -1.
    QString buttonGroup; ///< The name of the group that a button belongs to.
    QVector<FormProperty> properties;
    QVector<FormProperty> strays; ///< Of its items, spacers and attributes, which no object has.
    QStringList items;            ///< The texts of its items, such as those of a combo box.
};

/// The objects of a .ui file with the places of their properties. Reads any input without harm.
class FormDocument
{
public:
    /// False, with the reason, when the file cannot be read or is no form. What it includes is not looked at.
    bool Read(const QString& fileName, QString* error);
    bool Parse(const QByteArray& content, const QString& fileName, QString* error);

    /// Parents before their children, else in the order of the file.
    const QVector<FormObject>& Objects() const { return m_objects; }
    /// The name of the form's class, under which translators find its texts.
    QString ClassName() const { return m_className; }
    /// All texts of the form.
    QSet<QString> Texts() const;
    /// The class that a custom widget extends; empty for classes that the form does not know.
    QString BaseClass(const QString& customClass) const { return m_baseClasses.value(customClass); }

    const XmlSource& Source() const { return m_source; }
    /// The place in the source of a piece of the property's text.
    TextPlace SourcePlace(const FormProperty& property, const TextPlace& place) const
    {
        return m_source.PlaceIn(property.textPlace, property.text, place);
    }

private:
    void ReadElements(QXmlStreamReader* reader);
    void ReadStart(QXmlStreamReader* reader);
    void AddObject(const QXmlStreamReader& reader, FormObject::Kind kind);
    void ReadProperty(QXmlStreamReader* reader);
    void ReadValue(QXmlStreamReader* reader, FormProperty* property) const;
    void AddStray(const FormProperty& property);
    void ReadAttribute(QXmlStreamReader* reader);
    void ReadCustomWidget(QXmlStreamReader* reader);
    int EnclosingObject() const;

    XmlSource m_source;
    QString m_className;
    QVector<FormObject> m_objects;
    QVector<int> m_open; ///< The object of each element that is open; -1 for elements that are none.
    QHash<QString, QString> m_baseClasses;
};

#endif
