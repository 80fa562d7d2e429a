#include "edit/statementhighlighter.h"

#include <QTextDocument>

namespace {

/// The same kind on a light and on a dark background.
struct Color
{
    QRgb light;
    QRgb dark;
};

const Color Word = {0x6a1b9a, 0xce93d8};
const Color Number = {0x00695c, 0x80cbc4};
const Color Text = {0x2e7d32, 0xa5d6a7};
const Color Variable = {0x0d47a1, 0x90caf9};

} // namespace

void StatementHighlighter::SetDark(bool isDark)
{
    if (m_isDark == isDark)
        return;
    m_isDark = isDark;
    rehighlight();
}

const StatementTokens& StatementHighlighter::Tokens()
{
    // The document's revision is not yet another one when it is coloured.
    const QString text = document()->toPlainText();
    if (text != m_text) {
        m_text = text;
        m_tokens = StatementTokens(text);
    }
    return m_tokens;
}

void StatementHighlighter::highlightBlock(const QString& text)
{
    const int start = currentBlock().position();
    const int end = start + int(text.size());
    // What goes on in the next line colours that, too.
    int carriedOver = -1;
    for (const StatementToken& token : Tokens().Tokens()) {
        if (token.place.End() <= start)
            continue;
        if (token.place.offset >= end)
            break;
        const int from = qMax(token.place.offset, start);
        setFormat(from - start, qMin(token.place.End(), end) - from, FormatOf(token));
        if (token.place.End() > end)
            carriedOver = token.type;
    }
    setCurrentBlockState(carriedOver);
}

QTextCharFormat StatementHighlighter::FormatOf(const StatementToken& token) const
{
    const auto colored = [this](const Color& color) {
        QTextCharFormat format;
        format.setForeground(QColor(m_isDark ? color.dark : color.light));
        return format;
    };
    if (token.IsNumber())
        return colored(Number);
    if (token.IsQuoted())
        return colored(Text);
    if (token.type == Token::TT_VARIABLE)
        return colored(Variable);
    if (!token.row || !token.row->IsWord())
        return QTextCharFormat();
    QTextCharFormat format = colored(Word);
    format.setFontWeight(QFont::Bold);
    return format;
}
