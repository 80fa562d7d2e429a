#ifndef CHECK_H
#define CHECK_H

#include <cstdio>

/// Counts, and prints, what does not hold; the program goes on.
class Checks
{
public:
    void Hold(bool holds, const char* rule)
    {
        if (holds)
            return;
        std::fprintf(stderr, "Does not hold: %s\n", rule);
        ++m_failures;
    }

    /// What main() returns.
    int Result() const { return m_failures == 0 ? 0 : 1; }

private:
    int m_failures = 0;
};

#endif
