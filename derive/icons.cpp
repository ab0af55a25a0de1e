#include "derive/icons.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"

#include <QDir>
#include <QRegularExpression>

#include <array>

namespace Tarnby
{

namespace
{

constexpr int kNoIcon = -1; // "NA"

// The WeatherBug conditions 000-176 and the base icon each one takes ("NA" for -1).
// Day and night forms alternate in blocks; a chance form takes the icon of its weather;
// from 078 on the chance forms come in triples for 30, 40 and 50 percent.
//
//   000 Clear 32              001 Cloudy 26              002 Partly Cloudy (n) 29
//   003 Partly Cloudy 30      004 Partly Sunny 30        005 Rain 11
//   006 Thunderstorms 37      007 Sunny 32               008 Snow 14
//   009 Flurries 15           010 Unknown NA             011 Chance of Snow 14
//   012 Snow (n) 46           013 Cloudy (n) 27          014 Rain (n) 45
//   015 Chance of Rain (n) 45 016 Partly Cloudy (n) 29   017 Clear (n) 31
//   018 Thunderstorms (n) 47  019 Chance of Flurries 13  020 Chance of Rain 11
//   021 Chance of Sleet 7     022 Chance of Storms 0     023 Hazy 21
//   024 Mostly Cloudy 28      025 Sleet 7                026 Mostly Sunny 34
//   027-036, night forms: Chance of Flurries 46, Chance of Sleet 45, Chance of Snow 46,
//     Chance of Storms 47, Clear 31, Flurries 46, Hazy 31, Mostly Cloudy 27,
//     Mostly Clear 33, Sleet 45
//   037 Unknown (n) NA
//   038-041 Chance of Rain Showers 1, Chance of Snow Showers 14, Snow Showers 13,
//     Rain Showers 1;  042-045 the same at night: 45, 46, 46, 45
//   046/047 Freezing Rain 10/10    048/049 Chance of Freezing Rain 10/10
//   050 Windy 23   051 Foggy 20   052 Scattered Showers 9   053 Scattered Thunderstorms 9
//   054 Light Snow 14   055 Chance of Light Snow 14   056 Frozen Mix 5
//   057 Chance of Frozen Mix 5   058 Drizzle 9   059 Chance of Drizzle 9
//   060 Freezing Drizzle 8   061 Chance of Freezing Drizzle 8   062 Heavy Snow 16
//   063 Heavy Rain 12   064 Hot and Humid 36   065 Very Hot 36   066 Increasing Clouds 28
//   067 Clearing 34   068 Mostly Cloudy 28   069 Very Cold 25
//   070-075, night forms of 064-069 but the last: Warm and Humid 31, Increasing Clouds 27,
//     Clearing 33, Mostly Cloudy 27, Very Cold 25, Mostly Clear 33
//   076 Nowcast NA   077 Headline NA
//   Chance triples (30/40/50%):
//   078-080 Snow 14          081-083 Snow (n) 46
//   084-086 Rain 11          087-089 Flurries 13        090-092 Sleet 7
//   093-095 Storms 0         096-098 Rain (n) 45        099-101 Flurries (n) 46
//   102-104 Sleet (n) 45     105-107 Storms (n) 47      108-110 Rain Showers 1
//   111-113 Snow Showers 14  114-116 Rain Showers (n) 45  117-119 Snow Showers (n) 46
//   120-122 Freezing Rain 10 123-125 Freezing Rain (n) 10 126-128 Light Snow 14
//   129-131 Frozen Mix 5     132-134 Drizzle 9          135-137 Freezing Drizzle 8
//   138 Light Snow Showers 14   139 Light Rain Showers (n) 45   140 Light Rain 11
//   141 Rain and Snow 5   142 Light Freezing Rain 10   143 Blowing Snow 15
//   144-147 night forms of 140-143: 45, 46, 10, 46
//   148 Rain Showers Likely 1   149 Blowing Dust 19   150 Rain Showers Likely (n) 45
//   151 Blowing Dust (n) 31   152 Smoke 19   153 Smoke (n) 31   154 Thunderstorms Likely 37
//   155 Snow Likely 14   156 Showers 1   157 Tropical Storm 23   158 Windy (n) 23
//   159 Foggy (n) 20
//   160-176, night precipitation: Drizzle, Chance of Drizzle, Freezing Drizzle, Chance of
//     Freezing Drizzle 45; Light Snow, Chance of Light Snow, Frozen Mix, Chance of Frozen
//     Mix 46; Heavy Rain 45; Heavy Snow 46; Scattered Showers 45; Light Snow Showers,
//     Snow Likely 46; Rain Likely 45; Scattered Snow Showers 46; Light Rain Showers 45;
//     Snow Showers Likely 46
constexpr std::array<int, 177> kCondToBase = {
    32,      26, 29, 30, 30, 11, 37,      32,      14, 15, // 000
    kNoIcon, 14, 46, 27, 45, 45, 29,      31,      47, 13, // 010
    11,      7,  0,  21, 28, 7,  34,      46,      45, 46, // 020
    47,      31, 46, 31, 27, 33, 45,      kNoIcon, 1,  14, // 030
    13,      1,  45, 46, 46, 45, 10,      10,      10, 10, // 040
    23,      20, 9,  9,  14, 14, 5,       5,       9,  9,  // 050
    8,       8,  16, 12, 36, 36, 28,      34,      28, 25, // 060
    31,      27, 33, 27, 25, 33, kNoIcon, kNoIcon, 14, 14, // 070
    14,      46, 46, 46, 11, 11, 11,      13,      13, 13, // 080
    7,       7,  7,  0,  0,  0,  45,      45,      45, 46, // 090
    46,      46, 45, 45, 45, 47, 47,      47,      1,  1,  // 100
    1,       14, 14, 14, 45, 45, 45,      46,      46, 46, // 110
    10,      10, 10, 10, 10, 10, 14,      14,      14, 5,  // 120
    5,       5,  9,  9,  9,  8,  8,       8,       14, 45, // 130
    11,      5,  10, 15, 45, 46, 10,      46,      1,  19, // 140
    45,      31, 19, 31, 37, 14, 1,       23,      23, 20, // 150
    45,      45, 45, 45, 46, 46, 46,      46,      45, 46, // 160
    45,      46, 46, 45, 46, 45, 46,                       // 170
};

// Night conditions, as ranges.
constexpr std::pair<int, int> kNightConditions[] = {
    {2, 2},    {12, 18},   {27, 36},   {42, 45},   {47, 47},   {49, 49},   {70, 75},   {81, 83},
    {96, 107}, {114, 119}, {123, 125}, {139, 139}, {144, 147}, {150, 151}, {153, 153}, {158, 176},
};

// WeatherBug conditions from 177 on and the lower condition each folds onto. The middle
// member of each triple from 180 on fixes the triple; 182 keeps its own; a triple without
// a known member, and everything after 206, has no counterpart and becomes Unknown (010).
//
//   177 117   178 118   179 119
//   180-181 036   182 045
//   183-185 031   186-188 008   189-191 047   192-194 009
//   195-197 005   198-200 025   201-203 010   204-206 032
//   207-282 010
struct RemapRange {
    int first, last, target;
};
constexpr RemapRange kRemap[] = {
    {177, 177, 117}, {178, 178, 118}, {179, 179, 119}, {180, 181, 36}, {182, 182, 45},
    {183, 185, 31},  {186, 188, 8},   {189, 191, 47},  {192, 194, 9},  {195, 197, 5},
    {198, 200, 25},  {201, 203, 10},  {204, 206, 32},  {207, 282, 10},
};

struct NamedIcon {
    const char *names; // one or more names, separated by blanks
    const char *night;
    const char *day;
};

constexpr NamedIcon kNwsIcons[] = {
    {"skc", "31", "32"},
    {"few sct", "29", "30"},
    {"bkn ovc", "27", "28"},
    {"wind_skc", "31", "32"},
    {"wind_few", "33", "34"},
    {"wind_sct", "29", "30"},
    {"wind_bkn wind_ovc", "27", "28"},
    {"snow rain_snow", "46", "14"},
    {"rain_sleet snow_sleet", "5", "5"},
    {"fzra rain_fzra snow_fzra", "7", "7"},
    {"sleet", "45", "5"},
    {"rain", "45", "11"},
    {"rain_showers", "45", "1"},
    {"rain_showers_hi", "45", "8"},
    {"tsra", "47", "3"},
    {"tsra_sct tsra_hi", "47", "9"},
    {"tornado hurricane tropical_storm", "23", "23"},
    {"dust smoke", "31", "19"},
    {"haze", "31", "21"},
    {"hot", "31", "36"},
    {"cold", "25", "25"},
    {"blizzard", "46", "14"},
    {"fog", "NA", "NA"},
};

constexpr NamedIcon kNamedIcons[] = {
    {"chanceflurries", "46", "13"},
    {"chancerain", "45", "11"},
    {"chancesleet", "45", "5"},
    {"chancesnow", "46", "14"},
    {"chancetstorms", "47", "0"},
    {"clear", "31", "32"},
    {"cloudy", "29", "26"},
    {"flurries", "46", "13"},
    {"fog", "20", "20"},
    {"hazy", "31", "21"},
    {"mostlycloudy", "27", "28"},
    {"mostlysunny partlycloudy partlysunny", "29", "30"},
    {"rain", "45", "11"},
    {"sleet", "45", "5"},
    {"snow", "46", "14"},
    {"sunny", "31", "32"},
    {"tstorms", "47", "0"},
};

// The words of a named icon; `night` is used at night where it is given.
struct IconWords {
    const char *name;
    const char *day;
    const char *night;
};
constexpr IconWords kIconWords[] = {
    {"chancesnow", "Chance of Snow", nullptr},
    {"chanceflurries", "Chance of Flurries", nullptr},
    {"chancerain", "Chance of Rain", nullptr},
    {"chancesleet", "Chance of Sleet", nullptr},
    {"chancetstorms", "Chance of Thunderstorms", nullptr},
    {"clear", "Clear", nullptr},
    {"cloudy", "Cloudy", nullptr},
    {"flurries", "Flurries", nullptr},
    {"fog", "Fog", nullptr},
    {"hazy", "Hazy", nullptr},
    {"mostlycloudy", "Mostly Cloudy", nullptr},
    {"mostlysunny", "Mostly Sunny", "Mostly Clear"},
    {"partlycloudy", "Partly Cloudy", nullptr},
    {"partlysunny", "Partly Sunny", "Partly Clear"},
    {"rain", "Rain", nullptr},
    {"sleet", "Sleet", nullptr},
    {"snow", "Snow", nullptr},
    {"sunny", "Sunny", "Clear"},
    {"tstorms", "Thunderstorms", nullptr},
};

struct BaseCond {
    int base; // kNoIcon for "NA"
    int cond;
};
constexpr BaseCond kBaseToCond[] = {
    {32, 0},       {26, 1},  {29, 2},  {30, 3},  {11, 5},  {37, 6},  {14, 8},  {15, 9},
    {kNoIcon, 10}, {46, 12}, {27, 13}, {45, 14}, {31, 17}, {47, 18}, {7, 25},  {0, 6},
    {21, 23},      {28, 24}, {34, 26}, {9, 52},  {13, 40}, {8, 46},  {10, 46}, {23, 50},
    {20, 51},      {16, 62}, {12, 63}, {36, 65}, {25, 69}, {33, 75},
};
constexpr int kFallbackCond = 33;

// Chance groups: any member picks the code for 30, 40, and 50 percent or more, and the
// first group a fourth code for 60 percent or more. cond156 (Showers) joins the rain
// showers, cond059 (Chance of Drizzle) the drizzle triple, cond084 its rain triple.
constexpr int kNone = -1;
struct ChanceGroup {
    std::array<int, 4> levels; // the fourth may be kNone
    int alsoMember;
};
constexpr ChanceGroup kChanceGroups[] = {
    {{108, 109, 110, 148}, 156},     {{132, 133, 134, kNone}, 59},
    {{135, 136, 137, kNone}, kNone}, {{129, 130, 131, kNone}, kNone},
    {{126, 127, 128, kNone}, kNone}, {{84, 85, 86, kNone}, kNone},
};

QString threeDigits(int n)
{
    return QString::number(n).rightJustified(3, u'0');
}

QString baseText(int base)
{
    return base == kNoIcon ? QStringLiteral("NA") : QString::number(base);
}

bool digitsOnly(const QString &text)
{
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// The number of a WeatherBug condition in any of its forms, -1 for none.
int conditionNumber(QString code)
{
    if (code.startsWith(QStringLiteral("nt_"))) code.remove(0, 3);
    if (code.startsWith(QStringLiteral("cond"))) code.remove(0, 4);
    return digitsOnly(code) && code.size() <= 3 ? code.toInt() : -1;
}

bool isConditionCode(const QString &value)
{
    return value.startsWith(QStringLiteral("cond")) || value.startsWith(QStringLiteral("nt_cond"));
}

bool nameListHas(const char *names, const QString &name)
{
    return QString::fromLatin1(names).split(u' ').contains(name);
}

// NWS icons live under /icons/<set>/day/ or /night/ on the NWS API host, whose name is a
// setting; the path is what tells them.
bool isNwsIconAddress(const QString &value)
{
    return value.startsWith(QStringLiteral("http"), Qt::CaseInsensitive) &&
           value.contains(QStringLiteral("/icons/")) &&
           (value.contains(QStringLiteral("/day/")) || value.contains(QStringLiteral("/night/")));
}

QString iconFolder(const QString &set)
{
    return process().ProfilePath + QStringLiteral("/Skins/Icons/") + set;
}

// The icon's place: absolute, or relative when the profile path would break the page's
// quoting, or when the page lies in the per-city folder.
QString placeOf(const QString &setAndFile, bool relativeForExport)
{
    QString path;
    if (relativeForExport)
        path = QStringLiteral("../../../../../Skins/Icons/") + setAndFile;
    else if (process().ProfilePath.contains(u'\''))
        path = QStringLiteral("../../../Skins/Icons/") + setAndFile;
    else
        path = iconFolder(setAndFile);
    return path.replace(u'\\', u'/');
}

QString currentIconValue(const QString &section, const QString &key)
{
    QString value = GetCache(section, key);
    if (key == QStringLiteral("image-icon") &&
        (value.isEmpty() || value == QStringLiteral("N/A"))) {
        value = GetCache(QStringLiteral("Hourly"), QStringLiteral("weather-icon1"));
        if (!value.startsWith(QStringLiteral("nt_")) &&
            StationLocalNow(0) == QStringLiteral("0:00"))
            value.prepend(QStringLiteral("nt_"));
    }
    return value;
}

// The icon's file name, without extension, in the set's scheme.
QString iconName(const QString &value, const QString &stationGroup, bool weatherBugSet)
{
    QString base;
    if (stationGroup == QStringLiteral("WeatherBug")) {
        if (weatherBugSet) return value;
        if (isConditionCode(value)) return CondToBase(value);
        return value.startsWith(QStringLiteral("nt_")) ? value.mid(3) : value;
    }
    if (stationGroup == QStringLiteral("NWS") && isNwsIconAddress(value))
        base = NwsIconToBase(value);
    else if (isConditionCode(value))
        base = CondToBase(value);
    else
        base = NameToBase(value, true);
    return weatherBugSet ? BaseToCond(base) : base;
}

} // namespace

QString IconSetName(bool forTray)
{
    const QString key = forTray ? QStringLiteral("TrayIcons") : QStringLiteral("Icons");
    QString set = GetPref(QStringLiteral("Skins"), key);
    if (set.isEmpty()) {
        set = QStringLiteral("Shiny");
        SavePref(QStringLiteral("Skins"), key, set);
    }
    return set;
}

QString IconSetExtension(const QString &set)
{
    const QStringList files = QDir(iconFolder(set)).entryList(QDir::Files, QDir::Name);
    if (files.isEmpty()) return {};
    const QString &first = files.first();
    const qsizetype dot = first.lastIndexOf(u'.');
    return dot < 0 ? QString() : first.mid(dot);
}

QString MoonIconPath(const QString &value, bool relativeForExport)
{
    const QString set = IconSetName(false);
    const QString latitude = GetPref(QStringLiteral("CityCode"), QStringLiteral("Latitude"));
    const QString hemisphere = latitude.trimmed().startsWith(u'-') ? QStringLiteral("Southern")
                                                                   : QStringLiteral("Northern");
    return placeOf(set + QStringLiteral("/Moon/") + hemisphere + QLatin1Char('/') + value +
                       IconSetExtension(set),
                   relativeForExport);
}

QString IconPath(const QString &section, const QString &key, bool forTray, bool preferPngSet,
                 bool relativeForExport, bool valueGiven, const QString &stationGroup)
{
    if (key.contains(QStringLiteral("MoonIcon")))
        return MoonIconPath(GetCache(section, key), relativeForExport);
    QString value = valueGiven ? key : currentIconValue(section, key);
    if (value.isEmpty()) value = QStringLiteral("NA");
    QString set = IconSetName(forTray);
    QString extension = IconSetExtension(set);
    if (preferPngSet && extension.compare(QStringLiteral(".PNG"), Qt::CaseInsensitive) == 0) {
        set = QStringLiteral("WeatherBug");
        extension = IconSetExtension(set);
    }
    const QString name = iconName(value, stationGroup, set == QStringLiteral("WeatherBug"));
    return placeOf(set + QLatin1Char('/') + name + extension, relativeForExport);
}

QString DayOrNight(const QString &code)
{
    const QString day = QStringLiteral("D"), night = QStringLiteral("N");
    if (code.startsWith(QStringLiteral("cond"))) {
        const int n = conditionNumber(code);
        for (const auto &[first, last] : kNightConditions)
            if (n >= first && n <= last) return night;
        return day;
    }
    if (code.startsWith(QStringLiteral("nt_"))) return night;
    if (isNwsIconAddress(code) && code.contains(QStringLiteral("/night/"))) return night;
    return day;
}

QString NwsIconToBase(const QString &address)
{
    const bool night = address.contains(QStringLiteral("/night/"));
    const QString marker = night ? QStringLiteral("/night/") : QStringLiteral("/day/");
    const qsizetype at = address.indexOf(marker);
    if (at < 0) return QStringLiteral("20");
    QString name = address.mid(at + marker.size());
    const qsizetype end = name.indexOf(QRegularExpression(QStringLiteral("[?,/]")));
    if (end >= 0) name.truncate(end);
    for (const NamedIcon &icon : kNwsIcons)
        if (nameListHas(icon.names, name)) return QLatin1String(night ? icon.night : icon.day);
    return QStringLiteral("20");
}

QString NameToBase(const QString &name, bool useNight)
{
    const bool nightName = name.startsWith(QStringLiteral("nt_"));
    const QString plain = (nightName ? name.mid(3) : name).toLower();
    for (const NamedIcon &icon : kNamedIcons)
        if (nameListHas(icon.names, plain))
            return QLatin1String(nightName && useNight ? icon.night : icon.day);
    return QStringLiteral("NA");
}

QString CondToBase(const QString &code)
{
    const int n = conditionNumber(code);
    if (n < 0 || n >= int(kCondToBase.size())) return QStringLiteral("NA");
    return baseText(kCondToBase[n]);
}

QString BaseToCond(const QString &number)
{
    const int base = number == QStringLiteral("NA") ? kNoIcon
                     : digitsOnly(number)           ? number.toInt()
                                                    : -2;
    for (const BaseCond &row : kBaseToCond)
        if (row.base == base) return QStringLiteral("cond") + threeDigits(row.cond);
    return QStringLiteral("cond") + threeDigits(kFallbackCond);
}

QString RemapCondNumber(const QString &number)
{
    if (!digitsOnly(number)) return number;
    bool fits = false;
    const int n = number.toInt(&fits);
    if (fits && n < 177) return number;
    for (const RemapRange &r : kRemap)
        if (n >= r.first && n <= r.last) return threeDigits(r.target);
    return threeDigits(10);
}

QString ConditionFromIconName(const QString &name)
{
    const bool night = name.startsWith(QStringLiteral("nt_"));
    const QString plain = night ? name.mid(3) : name;
    for (const IconWords &w : kIconWords)
        if (plain == QLatin1String(w.name))
            return QLatin1String(night && w.night ? w.night : w.day);
    return QStringLiteral("N/A");
}

QString AdjustCondByChance(const QString &code, const QString &chance)
{
    const int n = conditionNumber(code);
    static const QRegularExpression leadingNumber(QStringLiteral("^\\s*(\\d+)"));
    const QRegularExpressionMatch m = leadingNumber.match(chance);
    if (n < 0 || !m.hasMatch()) return code;
    const int percent = m.captured(1).toInt();
    if (percent < 30) return code;
    for (const ChanceGroup &g : kChanceGroups) {
        const bool member =
            n == g.alsoMember || std::find(g.levels.begin(), g.levels.end(), n) != g.levels.end();
        if (!member) continue;
        const int level =
            percent >= 60 && g.levels[3] != kNone ? 3 : std::min((percent - 30) / 10, 2);
        const qsizetype digitsAt = code.indexOf(QRegularExpression(QStringLiteral("\\d")));
        return code.left(digitsAt) + threeDigits(g.levels[level]);
    }
    return code;
}

} // namespace Tarnby
