#ifndef NUMBERFORMAT_H
#define NUMBERFORMAT_H

#include <QLocale>
#include <QString>
#include <QVariant>

#include <string>
#include <vector>

/// Writes numbers into a text and reads them back, by a format of the {fmt} library: "{:.1f} rpm".
///
/// A format is untrusted text. Widths and precisions are numbers of at most 1,000, and there are at most 16
/// fields, all of them for the one number: "{0:.1f} ({0:.0f})". Such a format shows only; it reads nothing.
class NumberFormat
{
public:
    explicit NumberFormat(const QString& format = QString());

    bool IsEmpty() const { return m_format.isEmpty(); }

    /// Writes \a number, with the separators of \a locale where the format has an "L". False, with the reason in
    /// \a problem, where the format is wrong or is none for this number; then \a text is left alone.
    bool Apply(const QVariant& number, const QLocale& locale, QString* text, QString* problem) const;

    /// Reads the number in \a text, an integer where it has neither fraction nor exponent. The fixed text in
    /// front and behind may be missing, each as a whole. False, with the reason in \a problem, for what is no
    /// number then.
    bool Read(const QString& text, const QLocale& locale, QVariant* number, QString* problem) const;

    /// Whether it is of a type for numbers; truth values are not.
    static bool IsNumber(const QVariant& value);

private:
    struct Field
    {
        std::string format; ///< For {fmt}, with the braces.
        QString fill;       ///< Empty for none.
        QChar type;         ///< Null for none.
        bool isZeroPadded = false;
        bool hasPrecision = false;
        bool isLocalized = false;

        bool WantsFraction() const;
    };

    bool Compile();
    bool CompileField(const QString& field);
    /// What stands behind the colon.
    bool CompileSpecification(const QString& specification, Field* field);
    bool ReadNumber(const QString& text, const QLocale& locale, QVariant* number) const;

    QString m_format;
    QString m_problem;           ///< What is wrong with the format; empty for nothing.
    std::vector<Field> m_fields; ///< Each stands behind the text of the same index.
    std::vector<QString> m_texts{QString()};
};

#endif
