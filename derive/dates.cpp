#include "derive/dates.h"

#include "core/clock.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dateformat.h"

#include <QList>
#include <QRegularExpression>

namespace Tarnby
{

namespace
{

// One field of the short-date pattern, for filling in a date part by part.
struct PatternPart {
    QChar kind; // 'd', 'M', 'y', or 0 for literal text
    int width = 0;
    QString text;
};

struct DateState {
    bool loaded = false;
    QLocale locale;
    QString shortPattern;
    QString timePattern;
    QString order;
    QString separator;
    QList<PatternPart> parts;
    QStringList monthPrefixes; // the first three letters of each month's name, lower case
    QStringList weekdayNames;  // full and abbreviated, lower case, without closing dots
    QTimeZone zone = QTimeZone::systemTimeZone();
};

DateState &rawState()
{
    static DateState s;
    return s;
}

void loadInto(DateState &s, const QLocale &locale);

DateState &state()
{
    DateState &s = rawState();
    if (!s.loaded) loadInto(s, QLocale::system());
    return s;
}

// The separators a date may use, in the order they are looked for.
const QStringList &separatorCandidates()
{
    static const QStringList list{QStringLiteral("/"), QStringLiteral("-"), QStringLiteral(". "),
                                  QStringLiteral("."), QStringLiteral(" "), QStringLiteral(",")};
    return list;
}

QString firstSeparatorIn(const QString &text)
{
    for (const QString &sep : separatorCandidates())
        if (text.contains(sep)) return sep;
    return {};
}

bool isDigits(const QString &text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

QString stripPunctuation(QString word)
{
    while (!word.isEmpty() && (word.endsWith(u',') || word.endsWith(u'.')))
        word.chop(1);
    return word;
}

bool isDateLetter(QChar c)
{
    const QChar l = c.toLower();
    return l == u'd' || l == u'm' || l == u'y';
}

// ---- patterns ---------------------------------------------------------------------------

// Splits a date pattern into its fields and the literal text between them.
QList<PatternPart> patternParts(const QString &pattern)
{
    QList<PatternPart> parts;
    qsizetype i = 0;
    while (i < pattern.size()) {
        const QChar c = pattern.at(i);
        qsizetype end = i + 1;
        if (isDateLetter(c)) {
            while (end < pattern.size() && pattern.at(end).toLower() == c.toLower())
                ++end;
            const QChar kind = c.toLower() == u'm' ? u'M' : c.toLower();
            parts.append({kind, int(end - i), {}});
        } else {
            while (end < pattern.size() && !isDateLetter(pattern.at(end)))
                ++end;
            parts.append({QChar(), 0, pattern.mid(i, end - i)});
        }
        i = end;
    }
    return parts;
}

int fieldCount(const QString &pattern)
{
    static const QRegularExpression nonLetters(QStringLiteral("[^dDmMyY]+"));
    return int(pattern.split(nonLetters, Qt::SkipEmptyParts).size());
}

// The pattern as QDate::fromString reads it.
QString qtDatePattern(const QString &pattern)
{
    QString qt;
    for (const PatternPart &p : patternParts(pattern))
        qt += p.kind.isNull() ? QLatin1Char('\'') + p.text + QLatin1Char('\'')
                              : QString(p.width, p.kind);
    return qt;
}

// One pattern after cleaning, or nothing when it cannot serve.
std::optional<QString> cleanCandidate(QString pattern, const QLocale &locale)
{
    if (pattern == QStringLiteral("MMMM dd yyyy") || fieldCount(pattern) != 3) return std::nullopt;
    if (pattern.contains(QStringLiteral("ddd"))) {
        pattern.replace(QStringLiteral("dddd"), QStringLiteral("dd"));
        pattern.replace(QStringLiteral("ddd"), QStringLiteral("dd"));
    } else {
        pattern.replace(QStringLiteral("MMMM"), QStringLiteral("MM"));
        pattern.replace(QStringLiteral("MMM"), QStringLiteral("MM"));
    }
    // The proof: two dates of June must both read back as June.
    const QString qtPattern = qtDatePattern(pattern);
    for (const int day : {14, 1}) {
        const QDate probe(2019, 6, day);
        const QString printed = formatDateTime(wallClock(probe), pattern, locale);
        if (locale.toDate(printed, qtPattern).month() != 6) return std::nullopt;
    }
    return pattern;
}

// The locale's formats in the program's picture notation: quoted words and direction
// marks go, and a two-digit year becomes four digits, since a two-digit year would read
// back in the wrong century.
QString pictureFromQtDate(QString format)
{
    static const QRegularExpression quoted(QStringLiteral("\\s*'[^']*'"));
    static const QRegularExpression marks(QStringLiteral("[\\x{200E}\\x{200F}\\x{061C}]"));
    static const QRegularExpression shortYear(QStringLiteral("(?<!y)yy(?!y)"));
    format.remove(quoted).remove(marks).replace(shortYear, QStringLiteral("yyyy"));
    return format.trimmed();
}

// Qt's time format in picture notation: the zone field goes with what frames it, the
// half-day marker becomes AM/PM, quoted words stay literal.
QString pictureFromQtTime(const QString &format)
{
    QString out;
    qsizetype i = 0;
    while (i < format.size()) {
        const QChar c = format.at(i);
        if (c == u'\'') {
            out += QLatin1Char('"') + readQuoted(format, i) + QLatin1Char('"');
        } else if (c == u't' || c == u'z') {
            while (i < format.size() && format.at(i) == c)
                ++i;
        } else if (c == u'A' || c == u'a') {
            out += c == u'A' ? QStringLiteral("AM/PM") : QStringLiteral("am/pm");
            i += format.mid(i, 2).compare(QStringLiteral("ap"), Qt::CaseInsensitive) == 0 ? 2 : 1;
        } else {
            out += c;
            ++i;
        }
    }
    out.remove(QStringLiteral("()")).remove(QStringLiteral("[]"));
    out = out.trimmed();
    while (out.endsWith(u',') || out.endsWith(u'.'))
        out = out.chopped(1).trimmed();
    return out;
}

QStringList localeDatePictures(const QLocale &locale)
{
    return {pictureFromQtDate(locale.dateFormat(QLocale::ShortFormat)),
            pictureFromQtDate(locale.dateFormat(QLocale::NarrowFormat)),
            pictureFromQtDate(locale.dateFormat(QLocale::LongFormat))};
}

QString cleanWith(const QString &pattern, const QLocale &locale)
{
    if (auto cleaned = cleanCandidate(pattern, locale)) return *cleaned;
    for (const QString &alternative : localeDatePictures(locale))
        if (auto cleaned = cleanCandidate(alternative, locale)) return *cleaned;
    return QStringLiteral("M/d/yyyy");
}

QString orderOf(const QString &pattern)
{
    QList<std::pair<qsizetype, QChar>> places{
        {pattern.indexOf(u'd', 0, Qt::CaseInsensitive), u'D'},
        {pattern.indexOf(u'm', 0, Qt::CaseInsensitive), u'M'},
        {pattern.indexOf(u'y', 0, Qt::CaseInsensitive), u'Y'}};
    std::sort(places.begin(), places.end());
    QString order;
    for (const auto &place : places)
        order += place.second;
    return order;
}

void loadInto(DateState &s, const QLocale &locale)
{
    s.loaded = true;
    s.locale = locale;
    s.shortPattern = cleanWith(pictureFromQtDate(locale.dateFormat(QLocale::ShortFormat)), locale);
    s.timePattern = pictureFromQtTime(locale.timeFormat(QLocale::LongFormat));
    s.order = orderOf(s.shortPattern);
    s.separator = firstSeparatorIn(s.shortPattern);
    if (s.separator.isEmpty()) s.separator = QStringLiteral("/");
    s.parts = patternParts(s.shortPattern);
    s.monthPrefixes.clear();
    for (int month = 1; month <= 12; ++month)
        s.monthPrefixes.append(locale.monthName(month).left(3).toLower());
    s.weekdayNames.clear();
    for (int day = 1; day <= 7; ++day)
        for (const auto format : {QLocale::LongFormat, QLocale::ShortFormat})
            s.weekdayNames.append(stripPunctuation(locale.dayName(day, format)).toLower());
}

// ---- reading ----------------------------------------------------------------------------

struct Ymd {
    int year = 0, month = 0, day = 0;
    bool valid() const { return year >= 100 && year <= 9999 && QDate(year, month, day).isValid(); }
};

// Two-digit years as the system reads them.
int fullYear(int year, int digits)
{
    if (digits > 2) return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

bool yearLike(const QString &part)
{
    return part.size() >= 3 || part.toInt() > 31;
}

// The time of day in a text: where it stands and what it says.
struct TimeInText {
    qsizetype start = -1;
    qsizetype length = 0;
    QTime time;
};

TimeInText findTime(const QString &text)
{
    static const QRegularExpression re(
        QStringLiteral("(?<![\\d:.])(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2})(?:\\.\\d+)?)?"
                       "(?:\\s*([AaPp])\\.?[Mm]\\.?(?!\\p{L}))?(?![\\d:])"
                       "|(?<![\\d:.])(\\d{1,2})\\s*([AaPp])\\.?[Mm]\\.?(?![\\p{L}\\d])"));
    const QRegularExpressionMatch m = re.match(text);
    if (!m.hasMatch()) return {};
    const bool hourOnly = m.capturedStart(5) >= 0;
    int hour = m.captured(hourOnly ? 5 : 1).toInt();
    const int minute = hourOnly ? 0 : m.captured(2).toInt();
    const int second = m.captured(3).toInt();
    const QString half = m.captured(hourOnly ? 6 : 4).toUpper();
    if (!half.isEmpty()) {
        if (hour > 12) return {};
        hour = hour % 12 + (half == QStringLiteral("P") ? 12 : 0);
    }
    const QTime time(hour, minute, second);
    if (!time.isValid()) return {};
    return {m.capturedStart(), m.capturedLength(), time};
}

struct DateAndTime {
    QString date; // the text without the time
    QString time; // the time as written, or empty
};

DateAndTime splitTime(const QString &text)
{
    const TimeInText t = findTime(text);
    if (t.start < 0) return {text.trimmed(), {}};
    QString date = text;
    date.remove(t.start, t.length);
    return {date.trimmed(), text.mid(t.start, t.length).trimmed()};
}

// The month whose name begins with the same three letters, 0 for none.
int monthByFirstThree(const QString &word, const DateState &s)
{
    const QString w = stripPunctuation(word).toLower();
    return w.size() < 3 ? 0 : int(s.monthPrefixes.indexOf(w.left(3))) + 1;
}

bool isWeekdayName(const QString &word, const DateState &s)
{
    return s.weekdayNames.contains(stripPunctuation(word).toLower());
}

// Day, month and year from three numbers in a given order ("DMY", "MDY", "YMD").
Ymd byOrder(const QStringList &n, const QString &order)
{
    Ymd ymd;
    for (int i = 0; i < 3; ++i) {
        const int value = n.at(i).toInt();
        switch (order.at(i).unicode()) {
        case 'D':
            ymd.day = value;
            break;
        case 'M':
            ymd.month = value;
            break;
        default:
            ymd.year = fullYear(value, int(n.at(i).size()));
        }
    }
    return ymd;
}

// The order of three numbers whose order nobody told: a year-like first part makes it
// year-first; a part above 12 cannot be the month; otherwise the system's order decides.
QString inferredOrder(const QStringList &n, const QString &systemOrder)
{
    if (yearLike(n.at(0))) return QStringLiteral("YMD");
    if (n.at(0).toInt() > 12) return QStringLiteral("DMY");
    if (n.at(1).toInt() > 12) return QStringLiteral("MDY");
    return systemOrder == QStringLiteral("DMY") ? QStringLiteral("DMY") : QStringLiteral("MDY");
}

// Day and year beside a month name: a year-like part is the year, else the second number.
std::optional<Ymd> withMonthName(int month, const QStringList &numbers)
{
    if (numbers.size() != 2) return std::nullopt;
    const int yearAt = yearLike(numbers.at(0)) && !yearLike(numbers.at(1)) ? 0 : 1;
    const QString &year = numbers.at(yearAt);
    return Ymd{fullYear(year.toInt(), int(year.size())), month, numbers.at(1 - yearAt).toInt()};
}

std::optional<Ymd> readNumbers(const QStringList &n, const QString &systemOrder)
{
    if (n.size() == 3) {
        Ymd ymd = byOrder(n, inferredOrder(n, systemOrder));
        if (!ymd.valid() && !yearLike(n.at(0))) // a day and month that do not fit are swapped
            std::swap(ymd.day, ymd.month);
        return ymd;
    }
    if (n.size() != 2) return std::nullopt;
    const int thisYear = localNow().date().year();
    if (yearLike(n.at(0)) || yearLike(n.at(1))) {
        const int yearAt = yearLike(n.at(0)) ? 0 : 1;
        const QString &year = n.at(yearAt);
        return Ymd{fullYear(year.toInt(), int(year.size())), n.at(1 - yearAt).toInt(), 1};
    }
    const bool dayFirst = systemOrder == QStringLiteral("DMY");
    return Ymd{thisYear, n.at(dayFirst ? 1 : 0).toInt(), n.at(dayFirst ? 0 : 1).toInt()};
}

std::optional<Ymd> readDatePart(const QString &text, const DateState &s)
{
    static const QRegularExpression separators(QStringLiteral("[\\s/\\-.,]+"));
    QStringList numbers;
    int month = 0;
    for (const QString &word : text.split(separators, Qt::SkipEmptyParts)) {
        if (isDigits(word) && word.size() <= 4)
            numbers.append(word);
        else if (isWeekdayName(word, s))
            continue;
        else if (const int m = monthByFirstThree(word, s); m && !month)
            month = m;
        else
            return std::nullopt;
    }
    if (!month) return readNumbers(numbers, s.order);
    if (numbers.size() == 1) {
        const QString &n = numbers.first();
        return yearLike(n) ? Ymd{fullYear(n.toInt(), int(n.size())), month, 1}
                           : Ymd{localNow().date().year(), month, n.toInt()};
    }
    return withMonthName(month, numbers);
}

// ---- writing ----------------------------------------------------------------------------

QString padded(int value, int width)
{
    return width >= 2 ? QString::number(value).rightJustified(2, u'0') : QString::number(value);
}

// The date in the system's short form, part by part.
QString fillPattern(const Ymd &ymd, const DateState &s)
{
    QString out;
    for (const PatternPart &p : s.parts) {
        if (p.kind == u'd')
            out += padded(ymd.day, p.width);
        else if (p.kind == u'M')
            out += p.width >= 3 ? s.locale.monthName(ymd.month, p.width == 3 ? QLocale::ShortFormat
                                                                             : QLocale::LongFormat)
                                : padded(ymd.month, p.width);
        else if (p.kind == u'y')
            out += p.width >= 4 ? QString::number(ymd.year) : padded(ymd.year % 100, 2);
        else
            out += p.text;
    }
    return out;
}

QStringList datePartsOf(const QString &date)
{
    const QString sep = firstSeparatorIn(date);
    QStringList parts;
    for (const QString &raw : sep.isEmpty() ? QStringList{date} : date.split(sep)) {
        const QString part = stripPunctuation(raw.trimmed());
        if (!part.isEmpty()) parts.append(part);
    }
    return parts;
}

std::optional<Ymd> normalisedParts(const QStringList &parts, const QString &sourceOrder,
                                   const DateState &s)
{
    const bool allNumeric = std::all_of(parts.begin(), parts.end(), isDigits);
    if (allNumeric) {
        if (parts.size() < 3) return std::nullopt;
        const QStringList three = parts.mid(0, 3);
        const QString order = sourceOrder.toUpper();
        const bool known = order == QStringLiteral("DMY") || order == QStringLiteral("MDY") ||
                           order == QStringLiteral("YMD");
        return byOrder(three, known ? order : inferredOrder(three, s.order));
    }
    QStringList numbers;
    int month = 0;
    for (const QString &part : parts) {
        if (isDigits(part))
            numbers.append(part);
        else if (const int m = monthByFirstThree(part, s); m && !month)
            month = m;
    }
    if (!month) return std::nullopt;
    return withMonthName(month, numbers);
}

QString joinWithTime(const QString &date, const QString &time, bool timeAfter)
{
    if (time.isEmpty()) return date;
    if (date.isEmpty()) return time;
    return timeAfter ? date + QLatin1Char(' ') + time : time + QLatin1Char(' ') + date;
}

// Puts day, month and year parts into the system's order.
QStringList inSystemOrder(const QString &day, const QString &month, const QString &year,
                          const QString &order)
{
    QStringList out;
    for (const QChar c : order)
        out.append(c == u'D' ? day : c == u'M' ? month : year);
    return out;
}

// FixDateFormat's roles: which of three kept parts is the day, the month and the year,
// when the text tells (a month name, or a year in front); the text order otherwise.
QStringList orderedForSystem(const QStringList &kept, int monthAt, const QString &order)
{
    if (kept.size() != 3) return kept;
    if (monthAt >= 0) {
        QList<int> others{0, 1, 2};
        others.removeOne(monthAt);
        const int yearAt = yearLike(kept.at(others.at(0))) && !yearLike(kept.at(others.at(1)))
                               ? others.at(0)
                               : others.at(1);
        const int dayAt = yearAt == others.at(0) ? others.at(1) : others.at(0);
        return inSystemOrder(kept.at(dayAt), kept.at(monthAt), kept.at(yearAt), order);
    }
    if (kept.at(0).size() >= 3) return inSystemOrder(kept.at(2), kept.at(1), kept.at(0), order);
    return kept;
}

// ---- the station's light ------------------------------------------------------------------

QString cacheValue(const char *section, const char *key)
{
    return GetCache(QLatin1String(section), QLatin1String(key));
}

std::optional<QTime> timeOfDay(const QString &text)
{
    if (auto dt = readDate(text)) return dt->time();
    return std::nullopt;
}

std::optional<QTime> stationClock()
{
    QString minute = cacheValue("Current", "now-date-minute-number");
    if (isDigits(minute)) minute = minute.rightJustified(2, u'0');
    const QString clockText = cacheValue("Current", "now-date-hour-number") + QLatin1Char(':') +
                              minute + QLatin1Char(' ') +
                              cacheValue("Current", "now-date-am-pm-abbrv");
    if (auto t = timeOfDay(clockText)) return t;
    if (auto observed = readDate(cacheValue("Current", "observed")))
        return QTime(observed->time().hour(), observed->time().minute()); // "h:nn AM/PM"
    return timeOfDay(cacheValue("LastUpdated", "CurrentTimeStamp"));
}

std::optional<QDate> stationDate()
{
    const QString m = cacheValue("Current", "now-date-month-number");
    const QString d = cacheValue("Current", "now-date-day-number");
    const QString y = cacheValue("Current", "now-date-year-number");
    if (!isDigits(m) || !isDigits(d) || !isDigits(y)) return std::nullopt;
    const QDate date(fullYear(y.toInt(), int(y.size())), m.toInt(), d.toInt());
    return date.isValid() ? std::optional(date) : std::nullopt;
}

QString hoursAndMinutes(qint64 seconds)
{
    const qint64 minutes = seconds / 60;
    return QString::number(minutes / 60) + QLatin1Char(':') +
           QString::number(minutes % 60).rightJustified(2, u'0');
}

struct LightKeys {
    const char *start;
    const char *end;
};

LightKeys lightKeys(int kind)
{
    return kind == 1 ? LightKeys{"dawn-time", "dusk-time"}
                     : LightKeys{"sunrise-time", "sunset-time"};
}

QString sunValue(const char *key, int row)
{
    return GetCache(QStringLiteral("Sun"), QLatin1String(key) + QString::number(row));
}

QString timeLeftWithDate(const QDate &date, const QTime &now, const LightKeys &keys,
                         const QTime &start, const QTime &end)
{
    const QDateTime nowAt = wallClock(date, now);
    const QDateTime startAt = wallClock(date, start);
    const QDateTime endAt = wallClock(date, end);
    if (nowAt < startAt) return hoursAndMinutes(nowAt.secsTo(startAt));
    if (nowAt < endAt) return hoursAndMinutes(nowAt.secsTo(endAt));
    const QTime tomorrowStart = timeOfDay(sunValue(keys.start, 2)).value_or(start);
    return hoursAndMinutes(nowAt.secsTo(wallClock(date.addDays(1), tomorrowStart)));
}

} // namespace

// ---- public -----------------------------------------------------------------------------

void LoadDatePatterns(const QLocale &locale)
{
    loadInto(rawState(), locale);
}

QLocale dateLocale()
{
    return state().locale;
}

void setLocalTimeZone(const QTimeZone &zone)
{
    rawState().zone = zone.isValid() ? zone : QTimeZone::systemTimeZone();
}

QDateTime wallClock(const QDate &date, const QTime &time)
{
    return QDateTime(date, time, Qt::UTC);
}

std::optional<QDateTime> readDate(const QString &text)
{
    const TimeInText t = findTime(text);
    QString datePart = text;
    if (t.start >= 0) datePart.remove(t.start, t.length);
    datePart = datePart.trimmed();
    if (datePart.isEmpty())
        return t.start >= 0 ? std::optional(wallClock(QDate(1899, 12, 30), t.time)) : std::nullopt;
    const std::optional<Ymd> ymd = readDatePart(datePart, state());
    if (!ymd || !ymd->valid()) return std::nullopt;
    return wallClock(QDate(ymd->year, ymd->month, ymd->day),
                     t.time.isValid() ? t.time : QTime(0, 0));
}

QString CleanShortDatePattern(const QString &pattern)
{
    return cleanWith(pattern, state().locale);
}

QString GetShortDatePattern()
{
    return state().shortPattern;
}

QString GetTimePattern()
{
    return state().timePattern;
}

QString systemDateOrder()
{
    return state().order;
}

QString systemDateSeparator()
{
    return state().separator;
}

QString NormaliseDate(const QString &text, const QString &sourceOrder)
{
    const DateState &s = state();
    const DateAndTime split = splitTime(text);
    std::optional<Ymd> ymd = normalisedParts(datePartsOf(split.date), sourceOrder, s);
    if (!ymd || !ymd->valid()) return text;
    return joinWithTime(fillPattern(*ymd, s), split.time, true);
}

QString FixDateFormat(const QString &text, bool keepTime, bool keepTimeAfter)
{
    const DateState &s = state();
    const DateAndTime split = splitTime(text);
    QStringList kept;
    int monthAt = -1;
    for (const QString &part : datePartsOf(split.date)) {
        if (isDigits(part)) {
            kept.append(part);
        } else if (const int month = part.size() > 2 ? monthByFirstThree(part, s) : 0;
                   month && monthAt < 0) {
            monthAt = int(kept.size());
            kept.append(QString::number(month));
        }
    }
    const QString date = orderedForSystem(kept, monthAt, s.order).join(s.separator);
    const QString result = joinWithTime(date, keepTime ? split.time : QString(), keepTimeAfter);
    return result.isEmpty() ? text : result;
}

QString FormatTime(const QString &text, bool noAmPm, bool trimMinutes, bool noSeconds,
                   bool keepMinutes)
{
    std::optional<QDateTime> dt = readDate(text);
    if (!dt) dt = readDate(FixDateFormat(text, true));
    if (!dt) return text;
    const bool use24 =
        GetPref(QStringLiteral("OnDownload"), QStringLiteral("Use24")) == QStringLiteral("True");
    const QString picture =
        use24 ? (noSeconds ? QStringLiteral("hh:mm") : QStringLiteral("hh:mm:ss"))
              : (noSeconds ? QStringLiteral("h:mm AM/PM") : QStringLiteral("h:mm:ss AM/PM"));
    QString out = formatDateTime(*dt, picture, state().locale);
    if (!use24 && noAmPm) out.remove(QStringLiteral(" AM")).remove(QStringLiteral(" PM"));
    if (trimMinutes)
        out.replace(QStringLiteral(":00:00"),
                    keepMinutes && use24 ? QStringLiteral(":00") : QString());
    return out;
}

QString generalDateText(const QDateTime &dt)
{
    if (!dt.isValid()) return {};
    const DateState &s = state();
    if (dt.date() == QDate(1899, 12, 30)) return formatDateTime(dt, s.timePattern, s.locale);
    const QString date = formatDateTime(dt, s.shortPattern, s.locale);
    if (dt.time() == QTime(0, 0)) return date;
    return date + QLatin1Char(' ') + formatDateTime(dt, s.timePattern, s.locale);
}

QString StationLocalNow(int kind, bool withDate)
{
    const QString none = QStringLiteral("0:00");
    const LightKeys keys = lightKeys(kind);
    const std::optional<QTime> now = stationClock();
    const std::optional<QTime> start = timeOfDay(sunValue(keys.start, 1));
    const std::optional<QTime> end = timeOfDay(sunValue(keys.end, 1));
    if (!now || !start || !end) return none;
    if (withDate) {
        if (const std::optional<QDate> date = stationDate())
            return timeLeftWithDate(*date, *now, keys, *start, *end);
    }
    if (*now < *start || *now >= *end) return none;
    return hoursAndMinutes(now->secsTo(*end));
}

QDateTime UtcNow()
{
    const QDateTime utc = clock().utcNow().toUTC();
    return wallClock(utc.date(), utc.time());
}

int UtcOffsetMinutes()
{
    return -state().zone.offsetFromUtc(clock().utcNow()) / 60;
}

int biasMinutesOn(const QDate &localDate)
{
    const DateState &s = state();
    return -QDateTime(localDate, QTime(12, 0), s.zone).offsetFromUtc() / 60;
}

QDateTime localNow()
{
    return utcToLocal(UtcNow());
}

QDateTime utcToLocal(const QDateTime &utc)
{
    if (!utc.isValid()) return {};
    const QDateTime instant(utc.date(), utc.time(), Qt::UTC);
    const QDateTime local = instant.toTimeZone(state().zone);
    return wallClock(local.date(), local.time());
}

QDateTime localToUtc(const QDateTime &local)
{
    if (!local.isValid()) return {};
    const QDateTime utc = QDateTime(local.date(), local.time(), state().zone).toUTC();
    return wallClock(utc.date(), utc.time());
}

QString utcTextToLocal(const QString &text)
{
    const std::optional<QDateTime> utc = readDate(text);
    return utc ? generalDateText(utcToLocal(*utc)) : text;
}

} // namespace Tarnby
