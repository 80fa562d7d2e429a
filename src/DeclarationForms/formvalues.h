#ifndef FORMVALUES_H
#define FORMVALUES_H

#include <QString>
#include <QVariant>

/// How values of data and of properties compare, convert and are told.
namespace FormValues {

/// Whether both are of one type and equal. Unlike QVariant's own comparison it takes no text for a number, and
/// it knows images.
bool AreEqual(const QVariant& left, const QVariant& right);

/// As numbers are compared: what is no number equals itself.
bool AreEqualFractions(double left, double right);

/// Whether a property that holds \a held has taken \a written: equal after conversion to the type that it
/// holds, or, with \a decimals of 0 and above, once rounded to as many.
bool Holds(const QVariant& held, const QVariant& written, int decimals = -1);

/// Puts \a value, as a value of the type \a type, into \a result. False where it cannot be one without loss.
bool ConvertWithoutLoss(const QVariant& value, int type, QVariant* result);

/// The value for a message: short, with a text in quotes.
QString Describe(const QVariant& value);

/// What of \a given a property that holds \a held has not taken, as part of a message: of lists and maps the
/// first entry that differs.
QString DescribeRefusal(const QVariant& given, const QVariant& held, const QString& subject = QStringLiteral("it"));

/// The type of the value for a message, in the words of the language where it has some: "an integer".
QString DescribeType(const QVariant& value);

} // namespace FormValues

#endif
