#ifndef SHAREDTEXTS_H
#define SHAREDTEXTS_H

#include <QString>
#include <QVector>

/// A pool of texts: what is equal shares its characters. The names in the statements of a form are few, and
/// each occurs in many of them.
class SharedTexts
{
public:
    SharedTexts();

    /// \a text itself, or the equal one that is in the pool already.
    QString Share(const QString& text);

    /// The first \a length characters; where they are new to the pool, a copy that shares nothing with \a text.
    QString ShareStartOf(const QString& text, int length);

    /// Lets go of everything.
    void Clear();

private:
    Q_DISABLE_COPY(SharedTexts)

    QString& SlotOf(const QString& text);
    void Enlarge();

    // A hash table in one piece. The nodes of a QSet, freed in the order of their hashes, leave holes all over
    // the heap; the events of later notifications lie in them, each out of the caches' reach. A change that
    // 10,000 declarations read takes a third longer then (the benchmark W4_fan).
    QVector<QString> m_texts; ///< Null where free, which is at least every other.
    int m_textCount;
};

#endif
