#include "derive/dateformat.h"

#include <QList>

#include <algorithm>

namespace Tarnby
{

namespace
{

enum class Field {
    Literal,
    Day,
    Day2,
    WeekdayShort,
    WeekdayLong,
    WeekdayNumber,
    WeekOfYear,
    Month,
    Month2,
    MonthShort,
    MonthLong,
    Quarter,
    DayOfYear,
    Year2,
    Year4,
    Hour,
    Hour2,
    Minute,
    Minute2,
    Second,
    Second2,
    HalfUpper,
    HalfLower,
    HalfLetterUpper,
    HalfLetterLower,
    HalfLocale,
};

struct Token {
    Field field;
    QString text; // for Literal
};

bool isHalfDay(Field f)
{
    return f >= Field::HalfUpper;
}

// The half-day fields, longest first so that "AMPM" is not read as "AM" + "PM".
struct HalfDayWord {
    const char16_t *word;
    Field upper, lower;
};
constexpr HalfDayWord kHalfDayWords[] = {
    {u"AM/PM", Field::HalfUpper, Field::HalfLower},
    {u"AMPM", Field::HalfLocale, Field::HalfLocale},
    {u"A/P", Field::HalfLetterUpper, Field::HalfLetterLower},
};

int runLength(const QString &picture, qsizetype at)
{
    const QChar c = picture.at(at).toLower();
    qsizetype end = at;
    while (end < picture.size() && picture.at(end).toLower() == c)
        ++end;
    return int(end - at);
}

// Reads one letter field at `at`; returns the field and how many characters it takes.
std::pair<Field, int> letterField(const QString &picture, qsizetype at, bool afterHour)
{
    const int run = runLength(picture, at);
    switch (picture.at(at).toLower().unicode()) {
    case 'd': {
        constexpr Field byLength[] = {Field::Day, Field::Day2, Field::WeekdayShort,
                                      Field::WeekdayLong};
        const int length = std::min(run, 4);
        return {byLength[length - 1], length};
    }
    case 'w':
        return run >= 2 ? std::pair{Field::WeekOfYear, 2} : std::pair{Field::WeekdayNumber, 1};
    case 'm':
        if (run >= 4) return {Field::MonthLong, 4};
        if (run == 3) return {Field::MonthShort, 3};
        if (afterHour) return {run == 2 ? Field::Minute2 : Field::Minute, run};
        return {run == 2 ? Field::Month2 : Field::Month, run};
    case 'q':
        return {Field::Quarter, 1};
    case 'y':
        if (run >= 4) return {Field::Year4, 4};
        return run >= 2 ? std::pair{Field::Year2, 2} : std::pair{Field::DayOfYear, 1};
    case 'h':
        return run >= 2 ? std::pair{Field::Hour2, 2} : std::pair{Field::Hour, 1};
    case 'n':
        return run >= 2 ? std::pair{Field::Minute2, 2} : std::pair{Field::Minute, 1};
    case 's':
        return run >= 2 ? std::pair{Field::Second2, 2} : std::pair{Field::Second, 1};
    default:
        return {Field::Literal, 1};
    }
}

void appendLiteral(QList<Token> &tokens, const QString &text)
{
    if (!tokens.isEmpty() && tokens.last().field == Field::Literal)
        tokens.last().text += text;
    else
        tokens.append({Field::Literal, text});
}

QList<Token> tokenize(const QString &picture)
{
    QList<Token> tokens;
    bool afterHour = false;
    qsizetype i = 0;
    while (i < picture.size()) {
        const QChar c = picture.at(i);
        if (c == u'"') {
            appendLiteral(tokens, readQuoted(picture, i));
            continue;
        }
        if (c == u'\\') {
            if (i + 1 < picture.size()) appendLiteral(tokens, picture.mid(i + 1, 1));
            i += 2;
            continue;
        }
        bool matched = false;
        for (const HalfDayWord &w : kHalfDayWords) {
            const QString word = QString::fromUtf16(w.word);
            if (picture.mid(i, word.size()).compare(word, Qt::CaseInsensitive) == 0) {
                tokens.append({c.isUpper() ? w.upper : w.lower, {}});
                i += word.size();
                matched = true;
                break;
            }
        }
        if (matched) continue;
        const auto [field, length] = letterField(picture, i, afterHour);
        if (field == Field::Literal) {
            appendLiteral(tokens, QString(c));
        } else {
            tokens.append({field, {}});
            afterHour = field == Field::Hour || field == Field::Hour2;
        }
        i += length;
    }
    return tokens;
}

QString twoDigits(int n)
{
    return QString::number(n).rightJustified(2, u'0');
}

// Week 1 holds 1 January; weeks begin on Sunday.
int weekOfYear(const QDate &d)
{
    const int firstWeekday = QDate(d.year(), 1, 1).dayOfWeek() % 7; // Sunday 0
    return (d.dayOfYear() - 1 + firstWeekday) / 7 + 1;
}

QString halfDay(Field f, const QTime &t, const QLocale &locale)
{
    const bool am = t.hour() < 12;
    switch (f) {
    case Field::HalfUpper:
        return am ? QStringLiteral("AM") : QStringLiteral("PM");
    case Field::HalfLower:
        return am ? QStringLiteral("am") : QStringLiteral("pm");
    case Field::HalfLetterUpper:
        return am ? QStringLiteral("A") : QStringLiteral("P");
    case Field::HalfLetterLower:
        return am ? QStringLiteral("a") : QStringLiteral("p");
    default:
        return am ? locale.amText() : locale.pmText();
    }
}

QString printField(const Token &token, const QDate &d, const QTime &t, bool twelveHour,
                   const QLocale &locale)
{
    const int hour = twelveHour ? (t.hour() + 11) % 12 + 1 : t.hour();
    switch (token.field) {
    case Field::Literal:
        return token.text;
    case Field::Day:
        return QString::number(d.day());
    case Field::Day2:
        return twoDigits(d.day());
    case Field::WeekdayShort:
        return locale.dayName(d.dayOfWeek(), QLocale::ShortFormat);
    case Field::WeekdayLong:
        return locale.dayName(d.dayOfWeek(), QLocale::LongFormat);
    case Field::WeekdayNumber:
        return QString::number(d.dayOfWeek() % 7 + 1);
    case Field::WeekOfYear:
        return QString::number(weekOfYear(d));
    case Field::Month:
        return QString::number(d.month());
    case Field::Month2:
        return twoDigits(d.month());
    case Field::MonthShort:
        return locale.monthName(d.month(), QLocale::ShortFormat);
    case Field::MonthLong:
        return locale.monthName(d.month(), QLocale::LongFormat);
    case Field::Quarter:
        return QString::number((d.month() + 2) / 3);
    case Field::DayOfYear:
        return QString::number(d.dayOfYear());
    case Field::Year2:
        return twoDigits(d.year() % 100);
    case Field::Year4:
        return QString::number(d.year()).rightJustified(4, u'0');
    case Field::Hour:
        return QString::number(hour);
    case Field::Hour2:
        return twoDigits(hour);
    case Field::Minute:
        return QString::number(t.minute());
    case Field::Minute2:
        return twoDigits(t.minute());
    case Field::Second:
        return QString::number(t.second());
    case Field::Second2:
        return twoDigits(t.second());
    default:
        return halfDay(token.field, t, locale);
    }
}

} // namespace

QString readQuoted(const QString &text, qsizetype &at)
{
    const qsizetype close = text.indexOf(text.at(at), at + 1);
    const qsizetype end = close < 0 ? text.size() : close;
    const QString quoted = text.mid(at + 1, end - at - 1);
    at = end + 1;
    return quoted;
}

QString formatDateTime(const QDateTime &dt, const QString &picture, const QLocale &locale)
{
    if (!dt.isValid()) return {};
    const QList<Token> tokens = tokenize(picture);
    const bool twelveHour = std::any_of(tokens.begin(), tokens.end(),
                                        [](const Token &t) { return isHalfDay(t.field); });
    const QDate d = dt.date();
    const QTime t = dt.time();
    QString out;
    for (const Token &token : tokens)
        out += printField(token, d, t, twelveHour, locale);
    return out;
}

} // namespace Tarnby
