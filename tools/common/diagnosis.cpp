#include "common/diagnosis.h"

namespace {

const int MaxExcerpt = 100;

/// What the parser's message leaves open, or nothing.
QString Detail(const ParserReport& report, const QString& statement)
{
    const QString text = statement.mid(report.place.offset, report.place.length);
    switch (report.cause) {
    case ParserReport::EmptyStatement:
        return "The statement is empty.";
    case ParserReport::OperandWanted:
        return QString("An operand is wanted in place of \"%1\".").arg(text);
    case ParserReport::OperatorWanted:
        return QString("\"%1\" cannot follow an operand.").arg(text);
    default:
        return QString();
    }
}

/// How far the line reaches to the left of a position, and at most MaxExcerpt / 2.
int LineStart(const QString& text, int position)
{
    int start = position;
    while (start > 0 && position - start < MaxExcerpt / 2 && text.at(start - 1) != '\n')
        --start;
    return start;
}

int LineEnd(const QString& text, int start)
{
    int end = start;
    while (end < text.size() && end - start < MaxExcerpt && text.at(end) != '\n')
        ++end;
    return end;
}

bool EndsLine(const QString& text, int position)
{
    return position < 0 || position >= text.size() || text.at(position) == '\n';
}

/// Blanks as wide as the text, which keep its tabs.
QString Blanks(const QString& text)
{
    QString blanks;
    for (const QChar character : text) {
        if (!character.isLowSurrogate())
            blanks += character == '\t' ? '\t' : ' ';
    }
    return blanks;
}

} // namespace

Diagnosis::Diagnosis(const QString& statement) : m_statement(statement), m_tree(statement), m_hasError(false)
{
    for (const ParserReport& report : m_tree.Reports()) {
        m_messages.append({report.message, Detail(report, statement), report.place, report.isError});
        m_hasError = m_hasError || report.isError;
    }
}

QString Excerpt(const QString& text, const TextPlace& place, const QString& label)
{
    const int start = LineStart(text, place.offset);
    const int end = LineEnd(text, start);
    const QString before = (start == 0                      ? label
                                : EndsLine(text, start - 1) ? QString()
                                                            : QString("..."))
        + text.mid(start, place.offset - start);
    const QString line = before + text.mid(place.offset, end - place.offset) + (EndsLine(text, end) ? "" : "...");
    const QString marks = '^' + QString(qBound(1, place.length, qMax(1, end - place.offset)) - 1, '~');
    const QString indent(4, ' ');
    return indent + line + '\n' + indent + Blanks(before) + marks + '\n';
}
