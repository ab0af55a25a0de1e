// The coded report: its groups, the sky and the present-weather words.

#include "providers/metar.h"

#include "providers/textcutters.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace Tarnby
{

namespace
{

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// Nearly every number of a report is a few plain digits: those are read directly, the
// rest by the locale's rules.
std::optional<int> plainDigits(QStringView text)
{
    if (text.isEmpty() || text.size() > 9 || !std::all_of(text.begin(), text.end(), isDigit))
        return std::nullopt;
    return text.toInt();
}

// A numeric text made a whole number, halves to even, as heights and days are read;
// nothing for a text that is no number or lies beyond int.
std::optional<int> wholeNumber(QStringView text)
{
    if (const std::optional<int> plain = plainDigits(text)) return plain;
    const std::optional<double> value = NumberInText(text);
    if (!value) return std::nullopt;
    const double whole = std::nearbyint(*value); // halves to even
    if (!(whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max()))
        return std::nullopt;
    return int(whole);
}

// Where " A" stands in the text from `from` on; -1 when nowhere. A plain loop: this
// runs once a report and Qt's general search costs more than the scan.
qsizetype indexOfAltimeterMark(QStringView text, qsizetype from)
{
    for (qsizetype i = from; i + 1 < text.size(); ++i)
        if (text[i] == u' ' && text[i + 1] == u'A') return i;
    return -1;
}

// The report up to and including its altimeter group, the first " A" word behind the
// first "/"; remarks follow the altimeter and are never decoded. A report without
// either mark stays whole.
QStringView withoutRemarks(QStringView text)
{
    const qsizetype slash = text.indexOf(u'/');
    if (slash < 0) return text;
    const qsizetype mark = indexOfAltimeterMark(text, slash + 1);
    if (mark < 0) return text;
    const qsizetype digitsStart = mark + 2;
    if (digitsStart == text.size()) return text;
    const qsizetype blank = text.indexOf(u' ', digitsStart);
    return blank < 0 ? text : text.first(blank);
}

// Three characters of a sky group in hundreds of feet, as feet; 0 when they are no number.
int layerHeight(QStringView hundreds)
{
    if (const std::optional<int> plain = plainDigits(hundreds)) return *plain * 100;
    return wholeNumber(hundreds.toString() + QLatin1String("00")).value_or(0);
}

QString layerWord(QStringView cover)
{
    if (cover == u"FEW") return QStringLiteral("Mostly Clear");
    if (cover == u"SCT") return QStringLiteral("Partly Cloudy");
    if (cover == u"BKN") return QStringLiteral("Mostly Cloudy");
    if (cover == u"OVC") return QStringLiteral("Overcast");
    return {};
}

// A speed made a whole number when it is numeric; any other text is kept.
QString speedText(QStringView speed)
{
    const std::optional<int> plain = plainDigits(speed);
    return plain ? QString::number(*plain) : WholeNumberText(speed);
}

QString withMinusSigns(QStringView temperature)
{
    return temperature.toString().replace(u'M', u'-');
}

enum class PairKind { Descriptor, Showers, Phenomenon };

struct WeatherPair {
    char16_t code[2];
    PairKind kind;
    const char16_t *word;
};

constexpr std::array<WeatherPair, 30> kWeatherPairs{{
    {{u'M', u'I'}, PairKind::Descriptor, u"Shallow"},
    {{u'P', u'R'}, PairKind::Descriptor, u"Partial"},
    {{u'B', u'C'}, PairKind::Descriptor, u"Patchy"},
    {{u'D', u'R'}, PairKind::Descriptor, u"Low Drifting"},
    {{u'B', u'L'}, PairKind::Descriptor, u"Blowing"},
    {{u'F', u'Z'}, PairKind::Descriptor, u"Freezing"},
    {{u'S', u'H'}, PairKind::Showers, u"Showers"},
    {{u'T', u'S'}, PairKind::Phenomenon, u"Thunderstorm"},
    {{u'R', u'A'}, PairKind::Phenomenon, u"Rain"},
    {{u'S', u'N'}, PairKind::Phenomenon, u"Snow"},
    {{u'I', u'C'}, PairKind::Phenomenon, u"Ice Crystals"},
    {{u'G', u'R'}, PairKind::Phenomenon, u"Hail"},
    {{u'U', u'P'}, PairKind::Phenomenon, u"Unknown Precipitation"},
    {{u'F', u'G'}, PairKind::Phenomenon, u"Fog"},
    {{u'B', u'R'}, PairKind::Phenomenon, u"Mist"},
    {{u'D', u'U'}, PairKind::Phenomenon, u"Widespread Dust"},
    {{u'S', u'A'}, PairKind::Phenomenon, u"Sand"},
    {{u'S', u'Q'}, PairKind::Phenomenon, u"Squall"},
    {{u'D', u'S'}, PairKind::Phenomenon, u"Duststorm"},
    {{u'F', u'C'}, PairKind::Phenomenon, u"Funnel Cloud"},
    {{u'D', u'Z'}, PairKind::Phenomenon, u"Drizzle"},
    {{u'S', u'G'}, PairKind::Phenomenon, u"Snow Grains"},
    {{u'P', u'L'}, PairKind::Phenomenon, u"Ice Pellets"},
    {{u'G', u'S'}, PairKind::Phenomenon, u"Small Hail"},
    {{u'V', u'A'}, PairKind::Phenomenon, u"Volcanic Ash"},
    {{u'H', u'Z'}, PairKind::Phenomenon, u"Haze"},
    {{u'F', u'U'}, PairKind::Phenomenon, u"Smoke"},
    {{u'P', u'Y'}, PairKind::Phenomenon, u"Spray"},
    {{u'P', u'O'}, PairKind::Phenomenon, u"Dust"},
    {{u'S', u'S'}, PairKind::Phenomenon, u"Sandstorm"},
}};

constexpr int kLetters = 26;

// Index into kWeatherPairs by the pair's two capital letters; -1 for other pairs.
constexpr std::array<qint8, kLetters *kLetters> kPairIndex = [] {
    std::array<qint8, kLetters * kLetters> index{};
    index.fill(-1);
    for (std::size_t i = 0; i < kWeatherPairs.size(); ++i) {
        const WeatherPair &pair = kWeatherPairs[i];
        index[(pair.code[0] - u'A') * kLetters + (pair.code[1] - u'A')] = qint8(i);
    }
    return index;
}();

bool isCapital(QChar c)
{
    return c >= u'A' && c <= u'Z';
}

const WeatherPair *findWeatherPair(QChar first, QChar second)
{
    if (!isCapital(first) || !isCapital(second)) return nullptr;
    const int i = kPairIndex[(first.unicode() - u'A') * kLetters + (second.unicode() - u'A')];
    return i < 0 ? nullptr : &kWeatherPairs[i];
}

using GroupChars = QVarLengthArray<QChar, 32>;

bool hasVicinity(QStringView group)
{
    for (qsizetype i = 0; i + 1 < group.size(); ++i)
        if (group[i] == u'V' && group[i + 1] == u'C') return true;
    return false;
}

// The group with every "VC" (in the vicinity) taken out, scanning left to right.
GroupChars withoutVicinity(QStringView group)
{
    GroupChars chars;
    for (qsizetype i = 0; i < group.size(); ++i) {
        if (group[i] == u'V' && i + 1 < group.size() && group[i + 1] == u'C')
            ++i;
        else
            chars.append(group[i]);
    }
    return chars;
}

} // namespace

bool clsMetar::IsValidMetar(QStringView text)
{
    if (!text.startsWith(u"METAR ")) return false;
    for (const char16_t *mark : {u"Z ", u"/", u"SM ", u" A"})
        if (!text.contains(QStringView(mark), Qt::CaseInsensitive)) return false;
    return !text.contains(u'<') && !text.contains(u'>');
}

bool clsMetar::ParseMetarData(QStringView text)
{
    if (text.isEmpty()) return false;
    const QStringView report = withoutRemarks(text);
    m_gustKts = QStringLiteral("0");
    // Groups are split at single blanks, so a doubled blank makes an empty group.
    qsizetype start = 0;
    for (qsizetype i = 0; i < report.size(); ++i) {
        if (report[i] != u' ') continue;
        applyReportGroup(report.sliced(start, i - start));
        start = i + 1;
    }
    applyReportGroup(report.sliced(start));
    return true;
}

// The first rule that fits takes the group. The order matters: a group with a "/" is
// never weather, and five characters beginning with "A" are always the altimeter.
void clsMetar::applyReportGroup(QStringView group)
{
    if (applyIdentityGroup(group) || applyWindGroup(group) || applyVisibilityGroup(group) ||
        applyTemperatureGroup(group) || applyAltimeterGroup(group) || ParseSkyCondition(group))
        return;
    appendCondition(DecodeWeatherGroup(group));
}

// Station, day and time, automatic station.
bool clsMetar::applyIdentityGroup(QStringView group)
{
    if (group.size() == 4 && group[0] == u'K') {
        m_stationId = group.toString();
        return true;
    }
    if (group.size() == 7 && group.endsWith(u'Z')) {
        if (const std::optional<int> day = wholeNumber(group.first(2)))
            m_day = QString::number(*day);
        QString time;
        time.reserve(5);
        time.append(group.sliced(2, 2)).append(u':').append(group.sliced(4, 2));
        m_time = time;
        return true;
    }
    if (group == u"AUTO") {
        m_isAuto = true;
        return true;
    }
    return false;
}

// "dddffKT" or "dddffGggKT"; a speed of three digits keeps only its first two.
bool clsMetar::applyWindGroup(QStringView group)
{
    if (group.size() < 7 || !group.endsWith(u"KT")) return false;
    m_windDirection = group.first(3).toString();
    m_windKts = speedText(group.sliced(3, 2));
    if (group.size() == 10 && group[5] == u'G') m_gustKts = speedText(group.sliced(6, 2));
    return true;
}

// "10SM", "1/2SM"; a leading "M" (less than) or "P" (more than) is dropped.
bool clsMetar::applyVisibilityGroup(QStringView group)
{
    if (group.size() < 3 || !group.endsWith(u"SM")) return false;
    const QStringView miles = isDigit(group[0]) ? group : group.sliced(1);
    const bool onlyUnit = miles.indexOf(u'S') == miles.size() - 2;
    m_visibility =
        onlyUnit ? miles.chopped(2).toString() : miles.toString().remove(QLatin1String("SM"));
    return true;
}

// "17/11", "M03/M08"; any other group with a slash is dropped.
bool clsMetar::applyTemperatureGroup(QStringView group)
{
    qsizetype slash = -1;
    int slashes = 0;
    for (qsizetype i = 0; i < group.size(); ++i) {
        if (group[i] != u'/') continue;
        if (slashes++ == 0) slash = i;
    }
    if (slashes == 0) return false;
    if (slashes == 1) {
        m_temperatureC = withMinusSigns(group.first(slash));
        m_dewPointC = withMinusSigns(group.sliced(slash + 1));
    }
    return true;
}

// "A2992" is 29.92 inches of mercury.
bool clsMetar::applyAltimeterGroup(QStringView group)
{
    if (group.size() != 5 || group[0] != u'A') return false;
    QString pressure;
    pressure.reserve(5);
    pressure.append(group.sliced(1, 2)).append(u'.').append(group.sliced(3, 2));
    m_pressure = pressure;
    return true;
}

bool clsMetar::ParseSkyCondition(QStringView sky)
{
    if (sky.size() >= 5 && sky.startsWith(u"VV")) {
        keepLowestLayer(QStringLiteral("Indefinite"), layerHeight(sky.sliced(2, 3)));
        return true;
    }
    if (sky.size() >= 6) {
        const QString word = layerWord(sky.first(3));
        if (!word.isEmpty()) {
            keepLowestLayer(word, layerHeight(sky.sliced(3, 3)));
            return true;
        }
    }
    if (sky == u"CLR" || sky == u"SKC") {
        m_clouds = QStringLiteral("Clear");
        m_cloudsHeight = QStringLiteral("0");
        return true;
    }
    return false;
}

// The lowest layer describes the sky, whatever order the report lists the layers in.
void clsMetar::keepLowestLayer(const QString &word, int height)
{
    const std::optional<int> stored = wholeNumber(m_cloudsHeight);
    if (stored && height >= *stored) return;
    m_clouds = word;
    m_cloudsHeight = QString::number(height);
}

void clsMetar::appendCondition(const QString &words)
{
    if (words.isEmpty()) return;
    if (!m_condition.isEmpty()) m_condition += QLatin1String(", ");
    m_condition += words;
}

// Every pair after the first phenomenon gets " & " in front, also a descriptor or an
// unknown pair behind it; the dangling " & " this leaves is how conditions have always
// read ("RAFZ" is "Rain & ").
QString clsMetar::DecodeWeatherGroup(QStringView group)
{
    GroupChars chars;
    QStringView rest = group;
    if (hasVicinity(group)) {
        chars = withoutVicinity(group);
        rest = QStringView(chars.data(), chars.size());
    }
    QStringView intensity;
    if (rest.startsWith(u'-')) intensity = u"Light";
    if (rest.startsWith(u'+')) intensity = u"Heavy";
    if (!intensity.isEmpty()) rest = rest.sliced(1);
    if (rest.size() % 2 != 0) return {};

    QString phenomena;
    QStringView descriptor;
    QStringView showers;
    for (qsizetype i = 0; i < rest.size(); i += 2) {
        if (!phenomena.isEmpty()) phenomena += QLatin1String(" & ");
        const WeatherPair *pair = findWeatherPair(rest[i], rest[i + 1]);
        if (!pair) continue;
        switch (pair->kind) {
        case PairKind::Descriptor:
            descriptor = pair->word;
            break;
        case PairKind::Showers:
            showers = pair->word;
            break;
        case PairKind::Phenomenon:
            phenomena += QStringView(pair->word);
            break;
        }
    }
    if (phenomena.isEmpty()) return {};

    QString words;
    for (QStringView part : {intensity, descriptor, QStringView(phenomena), showers}) {
        if (part.isEmpty()) continue;
        if (!words.isEmpty()) words += u' ';
        words += part;
    }
    return words;
}

} // namespace Tarnby
