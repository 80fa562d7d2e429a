#ifndef FORMINSTANCE_H
#define FORMINSTANCE_H

#include <QHash>
#include <QScopedPointer>
#include <QStringList>
#include <QVector>

#include "common/nearestname.h"

class FormDocument;
class FormLoader;
class QObject;
class QWidget;
class QXmlStreamWriter;

/// The objects of a form, really made and put into each other as the loader of forms does it, so that
/// paths lead where they will lead and classes tell their properties. They get their names, but no
/// properties, and are never shown.
class FormInstance
{
public:
    FormInstance();
    ~FormInstance();

    /// False, with the reason, when the form cannot be built. The document must outlive this object.
    bool Create(const FormDocument& document, QString* error);

    QObject* Top() const;
    /// The object with that number in the document; null when the loader did not make it.
    QObject* Object(int number) const { return m_objects.at(number); }
    /// The number of an object; -1 for those that come without the document, such as parts of widgets.
    int Number(QObject* object) const { return m_numbers.value(object, -1); }

    /// The class that was made in the place of one that is not known here; empty for the class itself.
    QString ReplacedBy(int number) const { return m_replacements.at(number); }
    /// The class that was made.
    QString MadeAs(int number) const { return m_classes.at(number); }

    /// The first object below \a parent that bears the name, as references find it, or null.
    QObject* Find(QObject* parent, const QString& name) const;
    /// How many bear it.
    int Count(QObject* parent, const QString& name) const;
    /// The name that was probably meant by one that no object below \a parent bears; if there is none,
    /// of all objects.
    QString NearestBelow(QObject* parent, const QString& name) const;
    /// As NearestBelow(), but nothing where several names are near.
    QString OnlyNearBelow(QObject* parent, const QString& name) const;

private:
    struct Span
    {
        int first; ///< Positions in m_order: of the first object below, and behind the last.
        int last;
    };

    void ChooseClasses(const FormLoader& loader);
    QByteArray Skeleton() const;
    void WriteObject(int number, QXmlStreamWriter* xml) const;
    void WriteLayout(int number, QXmlStreamWriter* xml) const;
    void NameObjects();
    void IndexObjects();
    void IndexBelow(QObject* object);
    const NearestName& NamesBelow(QObject* parent) const;

    const FormDocument* m_document = nullptr;
    QScopedPointer<QWidget> m_top;
    QVector<QVector<int>> m_children;
    QHash<QString, int> m_groups; ///< Numbers of the button groups.
    QStringList m_classes;        ///< What is made for each object.
    QStringList m_replacements;
    QVector<QObject*> m_objects;
    QHash<QObject*, int> m_numbers;
    QVector<QObject*> m_order; ///< All objects, each before those below it.
    QHash<QObject*, Span> m_spans;
    QHash<QString, QVector<int>> m_positions; ///< In m_order, by name.
    mutable QHash<QObject*, NearestName> m_names;
};

#endif
