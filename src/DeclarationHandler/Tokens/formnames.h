#ifndef FORMNAMES_H
#define FORMNAMES_H

#include <QHash>
#include <QPointer>
#include <QString>
#include <QVector>

class QObject;

/// What the declarations of one form share while they are made: the texts of the names in their
/// statements, and the form's objects by name. Searching the form anew for each path would take time
/// in proportion to its square.
class FormNames
{
public:
    FormNames();

    /// Makes an instance the one that the lexer of this thread uses, for as long as this lives.
    class Use
    {
    public:
        explicit Use(FormNames* names);
        ~Use();

    private:
        Q_DISABLE_COPY(Use)

        FormNames* m_outer;
    };

    /// A copy of the first \a length characters that shares nothing with \a text; shared with equal ones
    /// where an instance is in use.
    static QString StartOf(const QString& text, int length);

    /// \a text itself; the equal one that is shared already where an instance is in use.
    static QString Shared(const QString& text);

    /// As QObject::findChild(). Where an instance is in use, the form is searched once, and again when an
    /// object is not found where it was.
    static QObject* FindChild(QObject* parent, const QString& name);

    /// \a text itself, or the equal one that was shared before.
    QString Share(const QString& text);

    /// Lets go of everything.
    void Clear();

private:
    Q_DISABLE_COPY(FormNames)

    /// The objects below one.
    struct Descendants
    {
        QPointer<QObject> parent;
        int childCount;
        QHash<QString, QPointer<QObject>> byName;
    };

    QString& SlotOf(const QString& text);
    void Enlarge();
    QObject* Find(QObject* parent, const QString& name);
    static void Collect(const QObject* parent, QHash<QString, QPointer<QObject>>* byName);

    // A hash table in one piece. Nodes of their own, freed in the order of their hashes, would leave holes all
    // over the heap; the events of later notifications would lie in them, each out of the caches' reach.
    QVector<QString> m_texts; ///< Null where free, which is at least every other.
    int m_textCount;
    QHash<QObject*, Descendants> m_descendants;
};

#endif
