#include "DeclarationHandler/Tokens/sharedtexts.h"

#include "DeclarationHandler/Tokens/textview.h"

namespace {

const int SmallestTable = 64; ///< A power of two, as all sizes are.

} // namespace

SharedTexts::SharedTexts() : m_textCount(0) {}

QString SharedTexts::Share(const QString& text)
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

QString SharedTexts::ShareStartOf(const QString& text, int length)
{
    if (length == 0)
        return TextView::StartOf(text, length);
    QString& slot = SlotOf(QString::fromRawData(text.constData(), length));
    if (slot.isNull()) {
        slot = TextView::StartOf(text, length);
        ++m_textCount;
    }
    return slot;
}

void SharedTexts::Clear()
{
    m_texts = QVector<QString>();
    m_textCount = 0;
}

/// Where \a text stands, or a null text where it belongs. \a text must not be empty.
QString& SharedTexts::SlotOf(const QString& text)
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

void SharedTexts::Enlarge()
{
    const QVector<QString> texts = m_texts;
    m_texts = QVector<QString>(qMax(SmallestTable, 2 * texts.count()));
    m_textCount = 0;
    for (int i = 0; i < texts.count(); ++i)
        Share(texts.at(i));
}
