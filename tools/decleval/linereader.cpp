#include "decleval/linereader.h"

#include <iostream>
#include <string>
#include <unistd.h>

#ifdef DECLEVAL_EDITING
#include <cstdlib>
#include <cstring>
#include <editline/readline.h>

#include "DeclarationHandler/Tokens/language.h"
#endif

#ifdef DECLEVAL_EDITING

namespace {

/// The library for editing asks through plain functions.
QList<QByteArray>& Words()
{
    static QList<QByteArray> words;
    return words;
}

/// What stands between words. References hold "@", ":" and "\", which the library for editing would split at.
QByteArray Separators()
{
    QByteArray separators = " \t'\"";
    for (int i = 0; i < Language::GetRowCount(); ++i) {
        const Language::Row& row = Language::GetRow(i);
        if (!row.IsWord() && row.role != Language::Selector)
            separators += row.text;
    }
    return separators;
}

/// The next of the words that start with the text, newly allocated; null when there are no more. \a state
/// is 0 for the first.
char* NextMatch(const char* text, int state)
{
    static int next = 0;
    if (state == 0)
        next = 0;
    while (next < Words().size()) {
        const QByteArray& word = Words().at(next++);
        if (word.startsWith(text))
            return strdup(word.constData());
    }
    return nullptr;
}

char** Complete(const char* text, int, int)
{
    // No names of files where no word matches.
    rl_attempted_completion_over = 1;
    return rl_completion_matches(text, NextMatch);
}

void SetUpEditing(const QStringList& words)
{
    for (const QString& word : words)
        Words().append(word.toUtf8());
    static const QByteArray separators = Separators();
    rl_basic_word_break_characters = separators.constData();
    rl_attempted_completion_function = Complete;
    using_history();
}

} // namespace

#endif

LineReader::LineReader(const QStringList& words) : m_isTerminal(isatty(STDIN_FILENO) && isatty(STDOUT_FILENO))
{
#ifdef DECLEVAL_EDITING
    if (m_isTerminal)
        SetUpEditing(words);
#else
    Q_UNUSED(words)
#endif
}

bool LineReader::ReadLine(QString* line)
{
    return m_isTerminal ? Edit(line) : ReadPlainly(line);
}

bool LineReader::ReadPlainly(QString* line)
{
    std::string text;
    if (!std::getline(std::cin, text))
        return false;
    *line = QString::fromStdString(text);
    return true;
}

#ifdef DECLEVAL_EDITING

bool LineReader::Edit(QString* line)
{
    char* const text = readline("> ");
    if (!text) {
        std::cout << std::endl;
        return false;
    }
    if (*text)
        add_history(text);
    *line = QString::fromLocal8Bit(text);
    std::free(text);
    return true;
}

#else

bool LineReader::Edit(QString* line)
{
    std::cout << "> " << std::flush;
    return ReadPlainly(line);
}

#endif
