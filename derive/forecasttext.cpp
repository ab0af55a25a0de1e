#include "derive/forecasttext.h"

#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "derive/units.h"

#include <QRegularExpression>
#include <QStringList>

#include <array>
#include <optional>
#include <utility>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr auto kAnyCase = Qt::CaseInsensitive;
constexpr QChar kDegree(0x00B0);
const QString kDaily = u"Daily"_s;
const QString kHourly = u"Hourly"_s;

struct TextPair {
    const char16_t *from;
    const char16_t *to;
};

// Applied in this order as plain, case-sensitive replacements: the longer names come
// before the shorter ones they contain ("west virginia" before "virginia", "northeastern"
// before "northeast" before "north"), and " kansas" keeps its blank so that "arkansas"
// is left to its own row.
constexpr std::array<TextPair, 138> kProperCase = {{
    {u"sunday", u"Sunday"},
    {u"monday", u"Monday"},
    {u"tuesday", u"Tuesday"},
    {u"wednesday", u"Wednesday"},
    {u"thursday", u"Thursday"},
    {u"friday", u"Friday"},
    {u"saturday", u"Saturday"},
    {u"january", u"January"},
    {u"february", u"February"},
    {u"march", u"March"},
    {u"april", u"April"},
    {u"may", u"May"},
    {u"june", u"June"},
    {u"july", u"July"},
    {u"august", u"August"},
    {u"september", u"September"},
    {u"october", u"October"},
    {u"november", u"November"},
    {u"december", u"December"},
    {u"am adt", u"AM ADT"},
    {u"pm adt", u"PM ADT"},
    {u"midnight adt", u"12 AM ADT"},
    {u"am akdt", u"AM AKDT"},
    {u"pm akdt", u"PM AKDT"},
    {u"midnight akdt", u"12 AM AKDT"},
    {u"am akst", u"AM AKST"},
    {u"pm akst", u"PM AKST"},
    {u"midnight akst", u"12 AM AKST"},
    {u"am ast", u"AM AST"},
    {u"pm ast", u"PM AST"},
    {u"midnight ast", u"12 AM AST"},
    {u"am cdt", u"AM CDT"},
    {u"pm cdt", u"PM CDT"},
    {u"midnight cdt", u"12 AM CDT"},
    {u"am cst", u"AM CST"},
    {u"pm cst", u"PM CST"},
    {u"midnight cst", u"12 AM CST"},
    {u"am edt", u"AM EDT"},
    {u"pm edt", u"PM EDT"},
    {u"midnight edt", u"12 AM EDT"},
    {u"am est", u"AM EST"},
    {u"pm est", u"PM EST"},
    {u"midnight est", u"12 AM EST"},
    {u"am hadt", u"AM HADT"},
    {u"pm hadt", u"PM HADT"},
    {u"midnight hadt", u"12 AM HADT"},
    {u"am hast", u"AM HAST"},
    {u"pm hast", u"PM HAST"},
    {u"midnight hast", u"12 AM HAST"},
    {u"am mdt", u"AM MDT"},
    {u"pm mdt", u"PM MDT"},
    {u"midnight mdt", u"12 AM MDT"},
    {u"am mst", u"AM MST"},
    {u"pm mst", u"PM MST"},
    {u"midnight mst", u"12 AM MST"},
    {u"am pdt", u"AM PDT"},
    {u"pm pdt", u"PM PDT"},
    {u"midnight pdt", u"12 AM PDT"},
    {u"am pst", u"AM PST"},
    {u"pm pst", u"PM PST"},
    {u"midnight pst", u"12 AM PST"},
    {u" am ", u" AM "},
    {u" pm ", u" PM "},
    {u" midnight ", u" 12 AM "},
    {u" pm.", u" PM."},
    {u" am.", u" AM."},
    {u" midnight.", u" 12 AM."},
    {u"alaska", u"Alaska"},
    {u"alabama", u"Alabama"},
    {u"arkansas", u"Arkansas"},
    {u"american samoa", u"American Samoa"},
    {u"arizona", u"Arizona"},
    {u"california", u"California"},
    {u"colorado", u"Colorado"},
    {u"connecticut", u"Connecticut"},
    {u"district of columbia", u"District of Columbia"},
    {u"delaware", u"Delaware"},
    {u"florida", u"Florida"},
    {u"georgia", u"Georgia"},
    {u"guam", u"Guam"},
    {u"hawaii", u"Hawaii"},
    {u"iowa", u"Iowa"},
    {u"idaho", u"Idaho"},
    {u"illinois", u"Illinois"},
    {u"indiana", u"Indiana"},
    {u" kansas", u" Kansas"},
    {u"kentucky", u"Kentucky"},
    {u"louisiana", u"Louisiana"},
    {u"massachusetts", u"Massachusetts"},
    {u"maryland", u"Maryland"},
    {u"maine", u"Maine"},
    {u"michigan", u"Michigan"},
    {u"minnesota", u"Minnesota"},
    {u"mississippi", u"Mississippi"},
    {u"montana", u"Montana"},
    {u"north carolina", u"North Carolina"},
    {u"north dakota", u"North Dakota"},
    {u"nebraska", u"Nebraska"},
    {u"new hampshire", u"New Hampshire"},
    {u"new jersey", u"New Jersey"},
    {u"new mexico", u"New Mexico"},
    {u"nevada", u"Nevada"},
    {u"new york", u"New York"},
    {u"ohio", u"Ohio"},
    {u"oklahoma", u"Oklahoma"},
    {u"oregon", u"Oregon"},
    {u"pennsylvania", u"Pennsylvania"},
    {u"puerto rico", u"Puerto Rico"},
    {u"rhode island", u"Rhode Island"},
    {u"south carolina", u"South Carolina"},
    {u"south dakota", u"South Dakota"},
    {u"tennessee", u"Tennessee"},
    {u"texas", u"Texas"},
    {u"utah", u"Utah"},
    {u"virgin islands", u"Virgin Islands"},
    {u"vermont", u"Vermont"},
    {u"washington", u"Washington"},
    {u"wisconsin", u"Wisconsin"},
    {u"west virginia", u"West Virginia"},
    {u"virginia", u"Virginia"},
    {u"wyoming", u"Wyoming"},
    {u" northeastern ", u" Northeastern "},
    {u" northwestern ", u" Northwestern "},
    {u" southeastern ", u" Southeastern "},
    {u" southwestern ", u" Southwestern "},
    {u" northeast ", u" Northeast "},
    {u" northwest ", u" Northwest "},
    {u" southeast ", u" Southeast "},
    {u" southwest ", u" Southwest "},
    {u" northern ", u" Northern "},
    {u" eastern ", u" Eastern "},
    {u" southern ", u" Southern "},
    {u" western ", u" Western "},
    {u" central ", u" Central "},
    {u" north ", u" North "},
    {u" east ", u" East "},
    {u" south ", u" South "},
    {u" west ", u" West "},
}};

struct PhraseNumber {
    const char16_t *phrase;
    double number;
};

constexpr std::array<PhraseNumber, 6> kNearWords = {{
    {u"IN THE LOW SINGLE DIGITS", 2},
    {u"IN THE MID SINGLE DIGITS", 5},
    {u"IN THE UPPER SINGLE DIGITS", 8},
    {u"IN THE LOW TEENS", 12},
    {u"IN THE MID TEENS", 15},
    {u"IN THE UPPER TEENS", 18},
}};

// "LOWER" before "LOW ", although the blank already keeps them apart.
constexpr std::array<PhraseNumber, 4> kDecadeWords = {{
    {u"IN THE LOWER ", 3},
    {u"IN THE LOW ", 3},
    {u"IN THE MID ", 5},
    {u"IN THE UPPER ", 8},
}};

constexpr std::array<const char16_t *, 6> kInchWords = {
    u"A TENTH OF AN INCH", u"A QUARTER OF AN INCH", u"A HALF OF AN INCH", u"AN INCH", u"ONE INCH",
    u"INCHES OF"};

// The amounts of the fixed phrases, in inches. The half comes with and without "OF".
constexpr std::array<PhraseNumber, 6> kInchAmounts = {{
    {u"A HALF AN INCH", 0.5},
    {u"A HALF OF AN INCH", 0.5},
    {u"A QUARTER OF AN INCH", 0.25},
    {u"A TENTH OF AN INCH", 0.1},
    {u"AN INCH", 1},
    {u"ONE INCH", 1},
}};

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

QString numberText(double value)
{
    return formatNumber(value, {});
}

// A Fahrenheit value as the user reads temperatures: "72°F", "22°C", "72°F (22°C)" or
// "22°C (72°F)".
QString dressTemperature(const QString &fahrenheit, bool bothUnits, const QString &unit)
{
    const QString f = fahrenheit + kDegree + u'F';
    const bool celsiusFirst = unit == u"C";
    if (!celsiusFirst && !bothUnits) return f;
    const QString c = ToCelsius(fahrenheit, true) + kDegree + u'C';
    if (!bothUnits) return c;
    return celsiusFirst ? c + u" ("_s + f + u')' : f + u" ("_s + c + u')';
}

// "0." that ends a sentence marks a temperature ("AROUND 40." is 40°F); "0." before a
// digit is a decimal fraction and stays.
void markBareDecades(QString &text)
{
    for (qsizetype at = text.indexOf(u"0."); at >= 0; at = text.indexOf(u"0.", at + 2)) {
        if (at + 2 < text.size() && isAsciiDigit(text[at + 2])) continue;
        text.insert(at + 1, u'F');
        ++at;
    }
}

void dressDewPoint(QString &text, bool bothUnits, const QString &unit)
{
    static const QString phrase = u"Dew point will be around "_s;
    qsizetype from = 0;
    for (qsizetype at; (at = text.indexOf(phrase, from, kAnyCase)) >= 0;) {
        const qsizetype start = at + phrase.size();
        const qsizetype letter = text.indexOf(u'F', start, kAnyCase);
        if (letter < 0) return;
        const QString number = text.mid(start, letter - start).remove(kDegree).trimmed();
        from = start;
        if (!isNumeric(number)) continue;
        const QString dressed = dressTemperature(number, bothUnits, unit);
        text.replace(start, letter + 1 - start, dressed);
        from = start + dressed.size();
    }
}

// Digits right in front of "F." or "F " are a temperature: "40F." is "40°F.". A "-" in
// front of the digits is a sign only at the start of a word ("30-40F" is a range).
void dressBareTemperatures(QString &text, bool bothUnits, const QString &unit)
{
    for (qsizetype at = 0; at + 1 < text.size(); ++at) {
        if ((text[at] != u'F' && text[at] != u'f') ||
            (text[at + 1] != u'.' && text[at + 1] != u' '))
            continue;
        qsizetype start = at;
        while (start > 0 && isAsciiDigit(text[start - 1]))
            --start;
        if (start == at) continue;
        if (start > 0 && text[start - 1] == u'-' && (start == 1 || text[start - 2] == u' '))
            --start;
        const QString dressed = dressTemperature(text.mid(start, at - start), bothUnits, unit);
        text.replace(start, at + 1 - start, dressed);
        at = start + dressed.size() - 1;
    }
}

// "2 to 4" or "2" in the rain unit; empty when the amount is not made of numbers.
QString rainAmount(const QString &text, const QString &unit)
{
    const QString amount = text.trimmed();
    const qsizetype to = amount.indexOf(u" to ", 0, kAnyCase);
    if (to < 0) return isNumeric(amount) ? RainFromInches(amount, unit) : QString();
    const QString low = amount.left(to).trimmed();
    const QString high = amount.mid(to + 4).trimmed();
    if (!isNumeric(low) || !isNumeric(high)) return {};
    return RainFromInches(low, unit) + amount.mid(to, 4) + RainFromInches(high, unit);
}

// "INCHES OF": the amount runs from the start of the sentence (a ". " found from twelve
// characters in front of the phrase) to the phrase; "INCHES" becomes the unit, " OF" stays.
QString replaceInchesOf(QString text, const QString &phrase, const QString &unit)
{
    constexpr qsizetype kInches = 6; // "INCHES"
    qsizetype from = 0;
    for (qsizetype at; (at = text.indexOf(phrase, from, kAnyCase)) >= 0;) {
        from = at + phrase.size();
        const qsizetype stop = text.indexOf(u". ", std::max<qsizetype>(0, at - 12));
        if (stop < 0 || stop + 2 > at) continue;
        const qsizetype start = stop + 2;
        const QString amount = rainAmount(text.mid(start, at - start), unit);
        if (amount.isEmpty()) continue;
        const QString replacement = amount + u' ' + unit;
        text.replace(start, at + kInches - start, replacement);
        from = start + replacement.size();
    }
    return text;
}

void convertWindRanges(QString &text, const QString &unit)
{
    static const QRegularExpression range(u"\\d+( to )\\d+( mph)"_s,
                                          QRegularExpression::CaseInsensitiveOption);
    QString out;
    qsizetype done = 0;
    for (auto matches = range.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const qsizetype start = match.capturedStart();
        const QString low = text.mid(start, match.capturedStart(1) - start);
        const QString high =
            text.mid(match.capturedEnd(1), match.capturedStart(2) - match.capturedEnd(1));
        out += QStringView(text).mid(done, start - done);
        out += WindFromMph(low, unit) + match.captured(1) + WindFromMph(high, unit) + u' ' + unit;
        done = match.capturedEnd();
    }
    if (done == 0) return;
    out += QStringView(text).mid(done);
    text = out;
}

// "25 MPH" becomes "40.2 km/h": the number runs back from " MPH" to the blank before it.
void convertWindSpeeds(QString &text, const QString &unit)
{
    static const QString mph = u" MPH"_s;
    qsizetype from = 0;
    for (qsizetype at; (at = text.indexOf(mph, from, kAnyCase)) >= 0;) {
        from = at + mph.size();
        if (at == 0) continue;
        const qsizetype start = text.lastIndexOf(u' ', at - 1) + 1;
        const QString number = text.mid(start, at - start);
        if (!isNumeric(number)) continue;
        const QString replacement = WindFromMph(number, unit) + u' ' + unit;
        text.replace(start, from - start, replacement);
        from = start + replacement.size();
    }
}

// The word right in front of `at`, blanks between them skipped.
QString wordBefore(const QString &text, qsizetype at)
{
    qsizetype end = at;
    while (end > 0 && text[end - 1] == u' ')
        --end;
    qsizetype start = end;
    while (start > 0 && text[start - 1] != u' ')
        --start;
    return text.mid(start, end - start);
}

// The number a piece of text names: all of it when it is a number, else its last word
// ("is 60" names 60).
std::optional<double> numberIn(QStringView text)
{
    text = text.trimmed();
    if (!isNumeric(text)) text = text.mid(text.lastIndexOf(u' ') + 1);
    if (text.isEmpty() || !isNumeric(text)) return std::nullopt;
    return readNumber(text);
}

// The number between `phrase` and the next "%".
std::optional<double> numberBeforePercent(const QString &text, const QString &phrase)
{
    const qsizetype at = text.indexOf(phrase);
    if (at < 0) return std::nullopt;
    const qsizetype start = at + phrase.size();
    const qsizetype percent = text.indexOf(u'%', start);
    if (percent < 0) return std::nullopt;
    return numberIn(QStringView(text).mid(start, percent - start));
}

// Any "%" with "precipitation ", "rain " or "snow " in the twenty characters before it.
std::optional<double> numberNearPercentSign(const QString &text)
{
    static const std::array<QString, 3> words = {u"precipitation "_s, u"rain "_s, u"snow "_s};
    for (qsizetype at = text.indexOf(u'%'); at >= 0; at = text.indexOf(u'%', at + 1)) {
        const qsizetype windowStart = std::max<qsizetype>(0, at - 20);
        const QStringView window = QStringView(text).mid(windowStart, at - windowStart);
        for (const QString &word : words) {
            const qsizetype found = window.lastIndexOf(word);
            if (found < 0) continue;
            if (const auto number = numberIn(window.mid(found + word.size()))) return number;
        }
    }
    return std::nullopt;
}

// A date as the cache holds it: in the system's forms, or as an ISO date-time
// ("2024-04-03T19:00:00") the way the providers deliver the hours.
std::optional<QDateTime> readCacheDate(QString text)
{
    if (text.size() > 10 && text[10] == u'T') text[10] = u' ';
    return readDate(text);
}

// Day-of-month order across a month's end: the 31st lies before the 1st that follows.
bool dayLiesBefore(int day, int reference)
{
    if (day < reference) return reference - day < 15;
    return day - reference > 15;
}

QString rowKey(const char16_t *field, int row)
{
    return QString::fromUtf16(field) + QString::number(row);
}

QString halfKey(const char16_t *field, const QString &half, int day)
{
    return QString::fromUtf16(field) + half + QString::number(day);
}

// "30% Chance Rain" with the chance 50 is "50% Chance Rain"; a chance of 0 drops "0% ".
QString withShortTitleChance(QString title, const QString &chance)
{
    const qsizetype percent = title.indexOf(u'%');
    if (percent < 0) return title;
    qsizetype start = percent;
    while (start > 0 && isAsciiDigit(title[start - 1]))
        --start;
    if (start < percent && title.mid(start, percent - start) != chance)
        title.replace(start, percent - start, chance);
    if (title.startsWith(u"0% ")) title.remove(0, 3);
    return title;
}

// The number in front of the first percentage mark that is not about humidity.
QString withPredictionChance(QString text, const QString &chance)
{
    static const std::array<QString, 3> marks = {u" percent"_s, u"% chance"_s, u"%."_s};
    for (const QString &mark : marks) {
        for (qsizetype at = text.indexOf(mark); at >= 0; at = text.indexOf(mark, at + 1)) {
            const qsizetype windowStart = std::max<qsizetype>(0, at - 20);
            if (text.mid(windowStart, at - windowStart).contains(u"humidity", kAnyCase)) continue;
            const qsizetype start = at == 0 ? 0 : text.lastIndexOf(u' ', at - 1) + 1;
            if (isNumeric(QStringView(text).mid(start, at - start)))
                text.replace(start, at - start, chance);
            return text;
        }
    }
    return text;
}

void applyDayPartChance(const QString &half, int day, const QString &chance)
{
    SaveCache(kDaily, halfKey(u"pre", half, day), chance);
    const QString titleKey = halfKey(u"short-title", half, day);
    const QString title = GetCache(kDaily, titleKey);
    const QString newTitle = withShortTitleChance(title, chance);
    if (newTitle != title) SaveCache(kDaily, titleKey, newTitle);
    const QString textKey = halfKey(u"prediction", half, day);
    const QString text = GetCache(kDaily, textKey);
    const QString newText = withPredictionChance(text, chance);
    if (newText != text) SaveCache(kDaily, textKey, newText);
}

} // namespace

QString RewriteForecast(const QString &input)
{
    if (input.isEmpty()) return input;
    const ProcessValues &pv = process();
    const bool bothUnits = conversionOptions().bothUnits;
    const QString &unit = pv.UnitTemp;
    QString text = input;
    text.replace(u"in the low to mid"_s, u"in the low"_s, kAnyCase);
    markBareDecades(text);
    // One search each for the families before their members: most texts hold none.
    if (text.contains(u"IN THE ", kAnyCase)) {
        for (const auto &[phrase, number] : kNearWords)
            text = ReplaceNearWord(text, QString::fromUtf16(phrase), number, bothUnits, unit);
        for (const auto &[phrase, offset] : kDecadeWords)
            text = ReplaceDecadeWord(text, QString::fromUtf16(phrase), offset, bothUnits, unit);
    }
    dressDewPoint(text, bothUnits, unit);
    dressBareTemperatures(text, bothUnits, unit);
    if (pv.UnitPre != u"inches" && text.contains(u"INCH", kAnyCase))
        for (const char16_t *phrase : kInchWords)
            text = ReplaceInchWord(text, QString::fromUtf16(phrase), pv.UnitPre);
    if (pv.UnitWind != u"mph") {
        convertWindRanges(text, pv.UnitWind);
        convertWindSpeeds(text, pv.UnitWind);
    }
    return text;
}

QString ReplaceNearWord(const QString &text, const QString &phrase, double fahrenheit,
                        bool bothUnits, const QString &unit)
{
    if (phrase.isEmpty() || !text.contains(phrase, kAnyCase)) return text;
    QString out = text;
    return out.replace(
        phrase, u"near "_s + dressTemperature(numberText(fahrenheit), bothUnits, unit), kAnyCase);
}

QString ReplaceDecadeWord(const QString &text, const QString &phrase, double offset, bool bothUnits,
                          const QString &unit)
{
    if (phrase.isEmpty()) return text;
    QString out = text;
    qsizetype from = 0;
    for (qsizetype at; (at = out.indexOf(phrase, from, kAnyCase)) >= 0;) {
        const qsizetype start = at + phrase.size();
        const qsizetype letter = out.indexOf(u'S', start, kAnyCase);
        if (letter < 0) break;
        const QStringView decade = QStringView(out).mid(start, letter - start);
        from = start;
        if (!isNumeric(decade)) continue;
        const QString value = numberText(offset + readNumber(decade).value_or(0));
        const QString replacement = u"near "_s + dressTemperature(value, bothUnits, unit);
        out.replace(at, letter + 1 - at, replacement);
        from = at + replacement.size();
    }
    return out;
}

QString ReplaceInchWord(const QString &text, const QString &phrase, const QString &unit)
{
    if (phrase.compare(u"INCHES OF", kAnyCase) == 0) return replaceInchesOf(text, phrase, unit);
    for (const auto &[known, inches] : kInchAmounts) {
        if (phrase.compare(QStringView(known), kAnyCase) != 0) continue;
        QString out = text;
        return out.replace(phrase, RainFromInches(numberText(inches), unit) + u' ' + unit,
                           kAnyCase);
    }
    return text;
}

QString FixForecastCase(const QString &text)
{
    QString out = text;
    for (const auto &[from, to] : kProperCase)
        out.replace(QString::fromUtf16(from), QString::fromUtf16(to), Qt::CaseSensitive);
    return out;
}

QString ChanceFromForecast(const QString &text)
{
    static const std::array<QString, 4> subjects = {u"rain"_s, u"precipitation"_s, u"showers"_s,
                                                    u"snow"_s};
    const qsizetype percentWord = text.indexOf(u"percent");
    if (percentWord > 0) {
        const QString word = wordBefore(text, percentWord);
        if (isNumeric(word)) return word;
    }
    for (const QString &subject : subjects) {
        const QString phrase = u"Chance of "_s + subject + u' ';
        // "near 50%" is read as 45, a deliberate allowance for the word "near".
        if (const auto near = numberBeforePercent(text, phrase + u"near "_s))
            return numberText(*near - 5);
        if (const auto plain = numberBeforePercent(text, phrase)) return numberText(*plain);
    }
    const qsizetype chanceOf = text.indexOf(u"% chance of precipitation");
    if (chanceOf > 0) {
        const QString word = wordBefore(text, chanceOf);
        if (isNumeric(word)) return word;
    }
    if (const auto near = numberNearPercentSign(text)) return numberText(*near);
    if (text.contains(u"chance", kAnyCase)) return u"10"_s;
    return {};
}

void FillChanceFromForecast()
{
    const int count = CacheCount(kDaily);
    for (int day = 1; day <= count; ++day) {
        for (const QString &half : {u"1"_s, u"2"_s}) {
            const QString prediction = GetCache(kDaily, halfKey(u"prediction", half, day));
            if (prediction.isEmpty()) continue;
            const QString chance = ChanceFromForecast(prediction);
            const QString key = halfKey(u"pre", half, day);
            const QString cached = GetCache(kDaily, key);
            const bool differs = isNumeric(chance) && readNumber(chance) != readNumber(cached);
            if (!isNumeric(cached) || differs) SaveCache(kDaily, key, chance);
        }
    }
}

void ReprocessForecasts()
{
    const int count = CacheCount(kDaily);
    if (CelsiusTwinsWanted()) {
        for (int day = 1; day <= count; ++day) {
            for (const char16_t *field : {u"low", u"high"}) {
                const QString value = GetCache(kDaily, rowKey(field, day));
                if (!value.isEmpty())
                    SaveCache(kDaily, rowKey(field, day) + u'C', ToCelsius(value, true));
            }
        }
    }
    for (int day = 1; day <= count; ++day) {
        for (const QString &half : {u"1"_s, u"2"_s}) {
            QString raw = GetCache(kDaily, halfKey(u"prediction", half, day));
            raw.replace(u"&deg;"_s, QString(kDegree));
            SaveCache(kDaily, halfKey(u"predictionC", half, day), RewriteForecast(raw));
        }
    }
}

QString DayPartOfHour(const QString &text)
{
    const std::optional<QDateTime> when = readCacheDate(text);
    if (!when) return {};
    const int hour = when->time().hour();
    return hour >= 6 && hour <= 16 ? u"D"_s : u"N"_s;
}

QString HourlyChanceSummary()
{
    QStringList entries;
    QString part;
    int day = 0;
    double largest = 0;
    const auto close = [&] {
        if (!part.isEmpty())
            entries << QString::number(day).rightJustified(2, u'0') + part + numberText(largest);
    };
    const int count = CacheCount(kHourly);
    for (int row = 1; row <= count; ++row) {
        const QString dateTime = GetCache(kHourly, rowKey(u"date-time", row));
        QString rowPart = DayPartOfHour(GetCache(kHourly, rowKey(u"hour", row)));
        if (rowPart.isEmpty()) rowPart = DayPartOfHour(dateTime);
        std::optional<QDateTime> date = readCacheDate(dateTime);
        if (!date) date = readCacheDate(GetCache(kHourly, rowKey(u"date", row)));
        if (rowPart.isEmpty() || !date) continue;
        if (rowPart != part) {
            close();
            part = rowPart;
            day = date->date().day();
            largest = 0;
        }
        const QString chance = GetCache(kHourly, rowKey(u"prob-of-precip", row));
        if (isNumeric(chance)) largest = std::max(largest, readNumber(chance).value_or(0));
    }
    close();
    return entries.join(u'|');
}

int ApplyHourlyChance()
{
    const std::optional<QDateTime> first = readCacheDate(GetCache(kDaily, u"date"_s));
    const int days = CacheCount(kDaily);
    int skipped = 0;
    int day = 0;
    for (const QString &entry : HourlyChanceSummary().split(u'|', Qt::SkipEmptyParts)) {
        const int entryDay = entry.left(2).toInt();
        if (first && dayLiesBefore(entryDay, first->date().day())) {
            ++skipped;
            continue;
        }
        const bool daytime = entry.mid(2, 1) == u"D";
        day = day == 0 ? 1 : day + (daytime ? 1 : 0);
        if (day > days) break;
        applyDayPartChance(daytime ? u"1"_s : u"2"_s, day, entry.mid(3));
    }
    return skipped;
}

} // namespace Tarnby
