#ifndef EXPECT_H
#define EXPECT_H

#include <QTextStream>
#include <QVariant>

/// How many claims of the example did not hold; its exit code.
inline int failures = 0;

/// Prints a value, and what it should be where it is another. The types count too.
inline void Expect(const QString& what, const QVariant& value, const QVariant& expected)
{
    QTextStream out(stdout);
    out << what << " -> " << value.toString() << " (" << (value.isValid() ? value.typeName() : "no value") << ")\n";
    if (value.userType() == expected.userType() && value == expected)
        return;
    ++failures;
    out << "    but should be " << expected.toString() << " (" << expected.typeName() << ")\n";
}

#endif
