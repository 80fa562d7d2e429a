#include "decleval/linereader.h"

#include <iostream>
#include <string>
#include <unistd.h>

#ifdef DECLEVAL_EDITING
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <editline/readline.h>
#include <fcntl.h>
#include <poll.h>

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

volatile std::sig_atomic_t isInterrupted = 0;
/// An interrupt writes to the second, so that whoever waits for the first as well misses none.
int interruptPipe[2] = {-1, -1};

void NoteInterrupt(int)
{
    isInterrupted = 1;
    const char byte = 0;
    if (write(interruptPipe[1], &byte, 1) < 0)
        isInterrupted = 1; // Full: it tells already.
}

/// Waits for input. Answers whether that came before an interrupt.
bool WaitForInput()
{
    struct pollfd sources[2] = {{STDIN_FILENO, POLLIN, 0}, {interruptPipe[0], POLLIN, 0}};
    while (poll(sources, 2, -1) < 0) {
        if (errno != EINTR)
            return false;
    }
    return !(sources[1].revents & POLLIN);
}

/// The next character, which the library would wait for again after an interrupt; -1 at the end.
int ReadCharacter(FILE*)
{
    std::mbstate_t state = {};
    for (;;) {
        char byte = 0;
        if (!WaitForInput() || read(STDIN_FILENO, &byte, 1) != 1)
            return -1;
        wchar_t character = 0;
        const std::size_t used = std::mbrtowc(&character, &byte, 1, &state);
        if (used != std::size_t(-2))
            return used == std::size_t(-1) ? '?' : int(character);
    }
}

char** Complete(const char* text, int, int)
{
    // No names of files where no word matches.
    rl_attempted_completion_over = 1;
    return rl_completion_matches(text, NextMatch);
}

/// While it lives, an interrupt ends the waiting for input and not the program.
class InterruptGuard
{
public:
    InterruptGuard()
    {
        isInterrupted = 0;
        if (interruptPipe[1] < 0)
            return;
        char byte = 0;
        while (read(interruptPipe[0], &byte, 1) == 1) {}
        struct sigaction action = {};
        action.sa_handler = NoteInterrupt;
        sigaction(SIGINT, &action, &m_previous);
    }
    ~InterruptGuard()
    {
        if (interruptPipe[1] >= 0)
            sigaction(SIGINT, &m_previous, nullptr);
    }
    Q_DISABLE_COPY(InterruptGuard)

private:
    struct sigaction m_previous;
};

void SetUpEditing(const QStringList& words)
{
    for (const QString& word : words)
        Words().append(word.toUtf8());
    static const QByteArray separators = Separators();
    rl_basic_word_break_characters = separators.constData();
    rl_attempted_completion_function = Complete;
    const bool isOpen = pipe(interruptPipe) == 0 && fcntl(interruptPipe[0], F_SETFL, O_NONBLOCK) == 0
        && fcntl(interruptPipe[1], F_SETFL, O_NONBLOCK) == 0;
    // Without it, an interrupt ends the program, as everywhere.
    if (isOpen)
        rl_getc_function = ReadCharacter;
    else
        interruptPipe[1] = -1;
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
    const InterruptGuard guard;
    char* const text = readline("> ");
    if (!text) {
        std::cout << std::endl;
        line->clear();
        return isInterrupted != 0;
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
