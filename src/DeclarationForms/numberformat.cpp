#include "DeclarationForms/numberformat.h"

#include <QRegularExpression>
#include <QStringList>

#include <charconv>
#include <cmath>
#include <limits>
#include <locale>

#include <fmt/format.h>

namespace {

const int MaxWidth = 1000;
const std::size_t MaxFields = 16;
/// What a number of any base, sign and separators may hold, and what a fill must therefore not be.
const QLatin1String NumberCharacters("0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ+-.,'");

/// Stand for the separators of a locale, which may be more than the one byte that std::numpunct has for each.
const char DecimalPoint = '\1';
const char GroupSeparator = '\2';

class Separators : public std::numpunct<char>
{
public:
    explicit Separators(bool isGrouped) : m_isGrouped(isGrouped) {}

protected:
    char do_decimal_point() const override { return DecimalPoint; }
    char do_thousands_sep() const override { return GroupSeparator; }
    std::string do_grouping() const override { return m_isGrouped ? "\3" : ""; }

private:
    const bool m_isGrouped;
};

const std::locale& SeparatorsOf(const QLocale& locale)
{
    static const std::locale grouped(std::locale::classic(), new Separators(true));
    static const std::locale ungrouped(std::locale::classic(), new Separators(false));
    return locale.numberOptions() & QLocale::OmitGroupSeparator ? ungrouped : grouped;
}

bool IsSpecified(const QString& specification, QRegularExpressionMatch* match)
{
    static const QRegularExpression pattern(
        QStringLiteral("^(?:(?<fill>[^{}])?[<>^])?[-+ ]?#?(?<width>\\d*)(?<precision>\\.\\d+)?(?<localized>L?)"
                       "(?<type>[a-zA-Z]?)$"),
        QRegularExpression::UseUnicodePropertiesOption);
    *match = pattern.match(specification);
    return match->hasMatch();
}

bool IsWithinLimit(const QString& number)
{
    bool isNumber = false;
    return number.isEmpty() || (number.toInt(&isNumber) <= MaxWidth && isNumber);
}

/// The number as an integer, where it is whole and there is one.
bool ToInteger(double number, qint64* result)
{
    // The first double that is too large.
    const double end = std::ldexp(1.0, std::numeric_limits<qint64>::digits);
    if (number != std::floor(number) || number >= end || number < -end)
        return false;
    *result = static_cast<qint64>(number);
    return true;
}

template<typename Number>
std::string Format(const std::string& format, Number number, const std::locale* locale)
{
    return locale ? fmt::vformat(*locale, format, fmt::make_format_args(number))
                  : fmt::vformat(format, fmt::make_format_args(number));
}

bool IsFraction(const QVariant& number)
{
    return number.userType() == QMetaType::Double || number.userType() == QMetaType::Float;
}

/// {fmt} writes the low byte of any other number, which alone is no character of UTF-8.
bool IsAscii(const QVariant& number)
{
    return number.toDouble() >= 0 && number.toDouble() <= 0x7f;
}

std::string FormatNumber(const std::string& format, const QVariant& number, bool asFraction, const std::locale* locale)
{
    if (asFraction)
        return Format(format, number.toDouble(), locale);
    qint64 integer = 0;
    if (IsFraction(number)) {
        if (ToInteger(number.toDouble(), &integer))
            return Format(format, integer, locale);
        // A float has fewer digits to show than the double that it makes.
        return number.userType() == QMetaType::Float ? Format(format, number.toFloat(), locale)
                                                     : Format(format, number.toDouble(), locale);
    }
    const quint64 natural = number.toULongLong();
    if (number.userType() == QMetaType::ULongLong && natural > static_cast<quint64>(std::numeric_limits<qint64>::max()))
        return Format(format, natural, locale);
    return Format(format, static_cast<qint64>(number.toLongLong()), locale);
}

QString Localized(QString text, const QLocale& locale)
{
    return text.replace(QLatin1Char(DecimalPoint), QString(locale.decimalPoint()))
        .replace(QLatin1Char(GroupSeparator), QString(locale.groupSeparator()));
}

QString WithoutBlanks(const QString& text)
{
    QString result;
    for (const QChar character : text) {
        if (!character.isSpace())
            result += character;
    }
    return result;
}

/// Where the fixed text in front ends; 0 where it is not all there. Blanks do not count.
int EndOfPrefix(const QString& text, const QString& prefix)
{
    int position = 0;
    const QString wanted = WithoutBlanks(prefix);
    for (const QChar expected : wanted) {
        while (position < text.length() && text.at(position).isSpace())
            ++position;
        if (position == text.length() || text.at(position++) != expected)
            return 0;
    }
    return position;
}

/// Where the fixed text behind begins; the end where it is not all there.
int StartOfSuffix(const QString& text, const QString& suffix)
{
    int position = text.length();
    const QString expected = WithoutBlanks(suffix);
    for (int i = expected.length() - 1; i >= 0; --i) {
        while (position > 0 && text.at(position - 1).isSpace())
            --position;
        if (position == 0 || text.at(--position) != expected.at(i))
            return text.length();
    }
    return position;
}

QString WithoutFill(QString text, const QString& fill)
{
    text = text.trimmed();
    if (fill.isEmpty() || NumberCharacters.contains(fill.at(0)))
        return text;
    while (text.startsWith(fill))
        text.remove(0, fill.length());
    while (text.endsWith(fill))
        text.chop(fill.length());
    return text.trimmed();
}

/// Of the type of a field; 10 for all that are not for another base.
int BaseOf(QChar type)
{
    switch (type.toLower().unicode()) {
    case 'x':
        return 16;
    case 'o':
        return 8;
    case 'b':
        return 2;
    default:
        return 10;
    }
}

/// Takes a sign off.
bool IsNegative(QString* text)
{
    const bool isNegative = text->startsWith(QLatin1Char('-'));
    if (isNegative || text->startsWith(QLatin1Char('+')))
        text->remove(0, 1);
    return isNegative;
}

bool ReadInBase(QString text, int base, QVariant* number)
{
    const bool isNegative = IsNegative(&text);
    if (base != 8 && text.length() > 2 && text.at(0) == QLatin1Char('0') && BaseOf(text.at(1)) == base)
        text.remove(0, 2);
    bool isNumber = false;
    const qlonglong magnitude = text.isEmpty() || !text.at(0).isLetterOrNumber() ? 0 : text.toLongLong(&isNumber, base);
    *number = isNegative ? -magnitude : magnitude;
    return isNumber;
}

bool ReadHexadecimalFraction(QString text, QVariant* number)
{
    const bool isNegative = IsNegative(&text);
    if (text.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        text.remove(0, 2);
    const QByteArray digits = text.toLatin1();
    double magnitude = 0;
    const std::from_chars_result result
        = std::from_chars(digits.constData(), digits.constData() + digits.length(), magnitude, std::chars_format::hex);
    *number = isNegative ? -magnitude : magnitude;
    return result.ec == std::errc() && result.ptr == digits.constData() + digits.length() && std::isfinite(magnitude);
}

bool ReadDecimal(const QString& text, const QLocale& locale, QVariant* number)
{
    bool isNumber = false;
    *number = locale.toLongLong(text, &isNumber);
    if (!isNumber)
        *number = locale.toULongLong(text, &isNumber);
    if (!isNumber)
        *number = locale.toDouble(text, &isNumber);
    return isNumber && std::isfinite(number->toDouble());
}

/// Any blank between digits, where the locale has one of the many blanks there.
QString WithGroupBlanks(QString text, const QLocale& locale)
{
    const QString separator(locale.groupSeparator());
    if (separator.isEmpty() || !separator.at(0).isSpace())
        return text;
    for (QChar& character : text) {
        if (character.isSpace())
            character = separator.at(0);
    }
    return text;
}

QLocale PlainLocale()
{
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    return locale;
}

const QRegularExpression& ZerosBeforeSign()
{
    static const QRegularExpression pattern(QStringLiteral("^0+(?=[-+ ])"));
    return pattern;
}

/// As formats write it: groups of three in every locale, and zeros in front up to a width.
bool ReadWritten(QString text, const QLocale& locale, QVariant* number)
{
    const QString separator(locale.groupSeparator());
    const QString point(locale.decimalPoint());
    const QRegularExpression pattern(
        QStringLiteral("^[-+]?(?:[0-9]+|0*[0-9]{1,3}(?:%1[0-9]{3})+)(?:%2[0-9]*)?(?:[eE][-+]?[0-9]+)?$")
            .arg(QRegularExpression::escape(separator), QRegularExpression::escape(point)));
    if (!pattern.match(text).hasMatch())
        return false;
    text.remove(separator);
    return ReadDecimal(text.replace(point, QLatin1String(".")), PlainLocale(), number);
}

} // namespace

bool NumberFormat::Field::WantsFraction() const
{
    return hasPrecision || QStringLiteral("aefg").contains(type.toLower());
}

NumberFormat::NumberFormat(const QString& format) : m_format(format)
{
    if (!Compile() && m_problem.isEmpty())
        m_problem = QStringLiteral("a brace has no counterpart");
    else if (m_problem.isEmpty() && m_fields.empty())
        m_problem = QStringLiteral("it has no field for the number");
    if (!m_problem.isEmpty())
        m_problem = QStringLiteral("the number format \"%1\" is wrong: %2").arg(m_format.left(MaxWidth), m_problem);
}

bool NumberFormat::Compile()
{
    for (int i = 0; i < m_format.length(); ++i) {
        const QChar character = m_format.at(i);
        const bool opens = character == QLatin1Char('{');
        if (!opens && character != QLatin1Char('}')) {
            m_texts.back() += character;
        } else if (i + 1 < m_format.length() && m_format.at(i + 1) == character) {
            m_texts.back() += character;
            ++i;
        } else {
            const int end = opens ? m_format.indexOf(QLatin1Char('}'), i) : -1;
            if (end < 0 || !CompileField(m_format.mid(i + 1, end - i - 1)))
                return false;
            i = end;
        }
    }
    return true;
}

bool NumberFormat::CompileField(const QString& text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    const QString name = text.left(colon);
    const bool isFirst = m_fields.empty();
    if (!name.isEmpty() && name != QLatin1String("0"))
        m_problem = QStringLiteral("there is no \"%1\", only one number").arg(name.left(MaxWidth));
    else if (!isFirst && name.isEmpty())
        m_problem = QStringLiteral("there is only one number, which further fields call {0}");
    else if (m_fields.size() == MaxFields)
        m_problem = QStringLiteral("it has more than %1 fields").arg(MaxFields);
    Field field;
    const QString specification = colon < 0 ? QString() : text.mid(colon + 1);
    if (!m_problem.isEmpty() || !CompileSpecification(specification, &field))
        return false;
    m_fields.push_back(field);
    m_texts.emplace_back();
    return true;
}

bool NumberFormat::CompileSpecification(const QString& specification, Field* field)
{
    QRegularExpressionMatch match;
    if (specification.contains(QLatin1Char('{')))
        m_problem = QStringLiteral("width and precision must be numbers");
    else if (!IsSpecified(specification, &match))
        m_problem = QStringLiteral("\"%1\" describes no number").arg(specification.left(MaxWidth));
    else if (!IsWithinLimit(match.captured(QStringLiteral("width")))
             || !IsWithinLimit(match.captured(QStringLiteral("precision")).mid(1)))
        m_problem = QStringLiteral("width and precision end at %1").arg(MaxWidth);
    if (!m_problem.isEmpty())
        return false;
    field->format = "{:" + specification.toStdString() + "}";
    field->isZeroPadded = match.captured(QStringLiteral("width")).startsWith(QLatin1Char('0'));
    field->fill = match.captured(QStringLiteral("fill"));
    field->hasPrecision = match.capturedLength(QStringLiteral("precision")) > 0;
    field->isLocalized = match.capturedLength(QStringLiteral("localized")) > 0;
    const QString type = match.captured(QStringLiteral("type"));
    field->type = type.isEmpty() ? QChar() : type.at(0);
    return true;
}

bool NumberFormat::Apply(const QVariant& number, const QLocale& locale, QString* text, QString* problem) const
{
    if (!m_problem.isEmpty()) {
        *problem = m_problem;
        return false;
    }
    QString result = m_texts.front();
    try {
        for (std::size_t i = 0; i < m_fields.size(); ++i) {
            const Field& field = m_fields[i];
            if (field.type == QLatin1Char('c') && !IsAscii(number))
                throw fmt::format_error("it is no character of ASCII");
            const std::locale* const separators = field.isLocalized ? &SeparatorsOf(locale) : nullptr;
            const QString written
                = QString::fromStdString(FormatNumber(field.format, number, field.WantsFraction(), separators));
            result += (field.isLocalized ? Localized(written, locale) : written) + m_texts[i + 1];
        }
    } catch (const fmt::format_error& error) {
        *problem = QStringLiteral("the number format \"%1\" does not fit %2: %3")
                       .arg(m_format.left(MaxWidth), number.toString(), QString::fromLatin1(error.what()));
        return false;
    }
    *text = result;
    return true;
}

bool NumberFormat::Read(const QString& text, const QLocale& locale, QVariant* number, QString* problem) const
{
    if (!m_problem.isEmpty() || m_fields.size() != 1) {
        *problem = m_problem.isEmpty()
            ? QStringLiteral("the number format \"%1\" shows more than one number").arg(m_format.left(MaxWidth))
            : m_problem;
        return false;
    }
    const int start = EndOfPrefix(text, m_texts.front());
    const QString rest = text.mid(start);
    if (ReadNumber(rest.left(StartOfSuffix(rest, m_texts.back())), locale, number))
        return true;
    *problem = QStringLiteral("\"%1\" is no number").arg(text.left(MaxWidth));
    return false;
}

bool NumberFormat::ReadNumber(const QString& text, const QLocale& locale, QVariant* number) const
{
    const Field& field = m_fields.front();
    QString digits = WithoutFill(text, field.fill);
    const int base = BaseOf(field.type);
    if (field.isLocalized)
        digits = WithGroupBlanks(digits, locale);
    if (field.type.toLower() == QLatin1Char('a')) {
        if (field.isLocalized)
            digits.replace(QString(locale.decimalPoint()), QLatin1String("."));
        return ReadHexadecimalFraction(digits, number);
    }
    if (base != 10) {
        if (field.isLocalized)
            digits.remove(QString(locale.groupSeparator()));
        return ReadInBase(digits, base, number);
    }
    if (!field.isLocalized)
        return ReadDecimal(digits, PlainLocale(), number);
    // Where it groups digits, {fmt} puts the zeros in front of the sign.
    if (field.isZeroPadded)
        digits.remove(ZerosBeforeSign());
    return ReadWritten(digits, locale, number) || ReadDecimal(digits, locale, number);
}

bool NumberFormat::IsNumber(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Double:
    case QMetaType::Float:
        return true;
    default:
        return false;
    }
}
