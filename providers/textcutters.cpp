#include "providers/textcutters.h"

#include "derive/numberformat.h"
#include "derive/units.h"

#include <algorithm>

namespace Tarnby
{

namespace
{

const QString kNotAvailable = QStringLiteral("NA");

// A whole number of a few digits, which prints as it is written in any locale.
bool isPlainWhole(QStringView value)
{
    if (value == u"0") return true;
    if (value.startsWith(u'-')) value = value.mid(1);
    const auto digit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    return !value.isEmpty() && value.size() <= 9 && value.front() != u'0' &&
           std::all_of(value.begin(), value.end(), digit);
}

// A JSON number in "." form, as the decimal type would hold it, printed in the locale.
QString jsonNumberText(const QString &value)
{
    if (isPlainWhole(value)) return value;
    const std::optional<double> number = NumberInText(ToLocaleNumber(value));
    return number ? formatNumber(*number, u"") : QString();
}

QString jsonValueText(QString value)
{
    if (value.endsWith(QLatin1Char(','))) value.chop(1);
    if (value.isEmpty()) return value;
    switch (value.at(0).unicode()) {
    case '"':
        return value.remove(QLatin1Char('"'));
    case 'n':
        return {};
    case 't':
        return QStringLiteral("true");
    case 'f':
        return QStringLiteral("false");
    default:
        return jsonNumberText(value);
    }
}

bool isNumberCharacter(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('-') ||
           c == QLatin1Char('+') || c == QLatin1Char('.') || c == QLatin1Char(',');
}

} // namespace

QString ExtractBetween(const QString &text, const QString &startMark, const QString &endMark,
                       const QString &prefix, int cutRight, bool mustExist)
{
    const qsizetype start = text.indexOf(startMark);
    if (start < 0) return mustExist ? QString() : text;
    const qsizetype from = start + startMark.size();
    const qsizetype end = endMark.isEmpty() ? text.size() : text.indexOf(endMark, from);
    if (end < 0) return text;
    QString result = text.mid(from, end - from);
    if (cutRight > 0) result.chop(cutRight);
    return prefix.isEmpty() ? result : prefix + result;
}

std::optional<QString> CutBetweenMarks(const QString &text, const QString &startMark,
                                       const QString &endMark)
{
    const qsizetype start = text.indexOf(startMark);
    if (start < 0) return std::nullopt;
    const qsizetype from = start + startMark.size();
    const qsizetype end = text.indexOf(endMark, from);
    if (end < 0) return std::nullopt;
    return text.mid(from, end - from);
}

QString ReadJsonValue(const QString &document, const QString &key, const QString &terminator)
{
    const QString mark = QLatin1Char('"') + key + QStringLiteral("\": ");
    const QString value = jsonValueText(ExtractBetween(document, mark, terminator));
    return value.isEmpty() ? kNotAvailable : value;
}

QString ReadJsonText(const QString &document, const QString &key)
{
    return ExtractBetween(document, QLatin1Char('"') + key + QStringLiteral("\": \""),
                          QStringLiteral("\","));
}

QString TextAfterLast(const QString &text, const QString &mark, bool keepMark)
{
    const qsizetype at = mark.isEmpty() ? -1 : text.lastIndexOf(mark);
    if (at < 0) return {};
    return text.mid(keepMark ? at : at + mark.size());
}

QString KeepNumberCharacters(const QString &text, const QString &kind)
{
    QString kept;
    kept.reserve(text.size());
    for (const QChar c : text)
        if (isNumberCharacter(c)) kept.append(c);
    return kind == QStringLiteral("Humidity") ? WholeNumberText(kept) : kept;
}

std::optional<double> NumberInText(QStringView text)
{
    return isNumeric(text) ? readNumber(text) : std::nullopt;
}

QString WholeNumberText(QStringView text)
{
    const std::optional<double> number = NumberInText(text);
    const std::optional<qint16> whole = number ? roundToInt16(*number) : std::nullopt;
    return whole ? QString::number(*whole) : text.toString();
}

} // namespace Tarnby
