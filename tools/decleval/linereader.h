#ifndef LINEREADER_H
#define LINEREADER_H

#include <QStringList>

/// Reads lines from the standard input: at a terminal with editing, history and completion, else plainly.
class LineReader
{
public:
    /// \a words are what can be completed.
    explicit LineReader(const QStringList& words);

    /// False at the end of the input.
    bool ReadLine(QString* line);
    bool IsTerminal() const { return m_isTerminal; }

private:
    bool ReadPlainly(QString* line);
    bool Edit(QString* line);

    const bool m_isTerminal;
};

#endif
