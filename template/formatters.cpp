#include "template/formatters.h"

#include "core/clock.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "derive/units.h"
#include "providers/station.h"
#include "template/cachereads.h"

#include <array>
#include <utility>

namespace Tarnby
{

namespace
{

const QString kCurrent = QStringLiteral("Current");
const QChar kDegree(0xB0);

bool conversionFlag(const char *key)
{
    return SettingValue(QStringLiteral("Conversion"), QString::fromLatin1(key)) == u"True";
}

bool hasWord(QStringView suffix, QStringView word)
{
    for (qsizetype at = suffix.indexOf(word); at >= 0; at = suffix.indexOf(word, at + 1)) {
        const qsizetype end = at + word.size();
        if ((at == 0 || suffix[at - 1] == u' ') && (end == suffix.size() || suffix[end] == u' '))
            return true;
    }
    return false;
}

// "NNE" to "22.5°": the degrees of a compass word with one decimal where needed, as a
// wind direction is shown when WindInDegrees is on. Other texts stay as they are.
QString compassAsDegrees(const QString &compass)
{
    static const std::array<std::pair<const char *, const char *>, 16> table{{
        {"N", "360"},
        {"NNE", "22.5"},
        {"NE", "45"},
        {"ENE", "67.5"},
        {"E", "90"},
        {"ESE", "112.5"},
        {"SE", "135"},
        {"SSE", "157.5"},
        {"S", "180"},
        {"SSW", "202.5"},
        {"SW", "225"},
        {"WSW", "247.5"},
        {"W", "270"},
        {"WNW", "292.5"},
        {"NW", "315"},
        {"NNW", "337.5"},
    }};
    for (const auto &[word, degrees] : table) {
        if (compass == QLatin1StringView(word)) return QLatin1StringView(degrees) + kDegree;
    }
    return compass;
}

QString directionText(const QString &compass)
{
    return conversionFlag("WindInDegrees") ? compassAsDegrees(compass) : compass;
}

QString otherUnit(const QString &unit)
{
    return unit == u"C" ? QStringLiteral("F") : QStringLiteral("C");
}

// Both units side by side, primary first.
QString bothUnits(const QString &primary, const QString &secondary, const TemperatureDress &dress)
{
    const QString unit = TemperatureUnit();
    QString first = primary, second = secondary;
    if (dress.showUnit) {
        first += kDegree + unit;
        second += kDegree + otherUnit(unit);
    } else if (dress.degree) {
        first += kDegree;
        second += kDegree;
    }
    switch (dress.layout) {
    case TemperatureLayout::Return:
        return first + QStringLiteral("<BR />") + second;
    case TemperatureLayout::Parens:
        return first + QStringLiteral(" (") + second + u')';
    case TemperatureLayout::Inline:
        break;
    }
    return first + u'/' + second;
}

QString singleUnit(QString value, const TemperatureDress &dress)
{
    if (dress.round && isNumeric(value))
        value = RoundedOrSame(value);
    else if (!dress.whole && dress.tenths && isNumeric(value))
        value = formatNumber(readNumber(value).value_or(0), u"##0.0");
    if (dress.degree) return value + kDegree;
    if (dress.showUnit) return value + kDegree + TemperatureUnit();
    return value;
}

} // namespace

TemperatureDress TemperatureDress::fromSuffix(QStringView suffix)
{
    TemperatureDress dress;
    dress.degree = hasWord(suffix, u"DEGREE");
    dress.showUnit = !dress.degree && !hasWord(suffix, u"PLAIN");
    dress.single = hasWord(suffix, u"SINGLE");
    dress.whole = hasWord(suffix, u"WHOLE");
    dress.round = dress.whole || hasWord(suffix, u"ROUND");
    dress.tenths = hasWord(suffix, u"TENTHS");
    if (hasWord(suffix, u"RETURN"))
        dress.layout = TemperatureLayout::Return;
    else if (hasWord(suffix, u"PARENS"))
        dress.layout = TemperatureLayout::Parens;
    return dress;
}

QString TemperatureUnit()
{
    return process().UnitTemp == u"C" ? QStringLiteral("C") : QStringLiteral("F");
}

std::optional<QString> RoundedWhole(const QString &text)
{
    if (!isNumeric(text)) return std::nullopt;
    const std::optional<double> number = readNumber(text);
    if (!number) return std::nullopt;
    const std::optional<qint16> whole = roundToInt16(double(float(*number)));
    if (!whole) return std::nullopt;
    return QString::number(*whole);
}

QString RoundedOrSame(const QString &text)
{
    return RoundedWhole(text).value_or(text);
}

QString FormatTemperature(const QString &section, const QString &key, const TemperatureDress &given,
                          bool valueGiven)
{
    QString value = valueGiven ? key : CacheValue(section, key);
    if (value.isEmpty() || value == u"N/A") return QStringLiteral("N/A");
    TemperatureDress dress = given;
    const bool celsius = TemperatureUnit() == u"C";
    // A Celsius user with tenths never sees rounded temperatures, whatever the token says.
    if (dress.round && celsius && !dress.whole && conversionFlag("UseTenths")) dress.round = false;
    if (celsius) value = valueGiven ? ToCelsius(value, true) : CacheValue(section, key + u'C');
    if (key == u"temp-rate") {
        if (dress.degree) return value + kDegree;
        return dress.showUnit ? value + kDegree + TemperatureUnit() : value;
    }
    if (!dress.single && conversionOptions().bothUnits) {
        QString other;
        if (!valueGiven) other = CacheValue(section, celsius ? key : key + u'C');
        if (dress.round) {
            value = RoundedOrSame(value);
            other = RoundedOrSame(other);
        }
        return bothUnits(value, other, dress);
    }
    return singleUnit(value, dress);
}

QString FormatPercent(const QString &section, const QString &key, bool showPercent, bool valueGiven,
                      bool round)
{
    QString value = valueGiven ? key : CacheValue(section, key);
    if (round) value = RoundedOrSame(value);
    if (value.isEmpty()) return QStringLiteral("N/A");
    return showPercent && value != u"N/A" ? value + u'%' : value;
}

namespace
{

// Rain and visibility: the twin in a unit other than the base one, the unit behind.
QString formatMeasure(const QString &key, bool showUnit, const QString &unit, QStringView baseUnit)
{
    QString value = CacheValue(kCurrent, key);
    if (value.isEmpty()) return QStringLiteral("N/A");
    if (value == u"N/A") return value;
    if (unit != baseUnit) value = CacheValue(kCurrent, key + u'C');
    return showUnit ? value + u' ' + unit : value;
}

QString pressureTrendWord()
{
    QString trend;
    const QString rate = CacheValue(kCurrent, QStringLiteral("pressure-rate"));
    if (isNumeric(rate)) {
        trend = rate;
    } else {
        const QString now = CacheValue(kCurrent, QStringLiteral("pressure"));
        const QString last = CacheValue(QStringLiteral("Cache"), QStringLiteral("last-pressure"));
        if (isNumeric(now) && isNumeric(last)) {
            const double change = readNumber(now).value_or(0) - readNumber(last).value_or(0);
            trend = ToLocaleNumber(formatNumber(change, u"0.00", kInvariantSymbols));
            if (change >= 0) trend.prepend(u'+');
        }
    }
    trend.remove(QStringLiteral("+0.00"));
    if (trend.contains(u'-')) return QStringLiteral("falling");
    return trend.contains(u'+') ? QStringLiteral("rising") : QStringLiteral("steady");
}

} // namespace

QString FormatRain(const QString &key, bool showUnit)
{
    QString value = formatMeasure(key, showUnit, process().UnitPre, u"inches");
    return value.replace(QStringLiteral("0.00"), QStringLiteral("0"));
}

QString FormatVisibility(const QString &key, bool showUnit)
{
    return formatMeasure(key, showUnit, process().UnitVis, u"miles");
}

QString FormatBarometer(bool showUnit, const QString &keySuffix)
{
    const QString key = QStringLiteral("pressure") + keySuffix;
    QString value = CacheValue(kCurrent, key);
    if (value.isEmpty()) return QStringLiteral("N/A");
    if (value == u"N/A") return value;
    const QString &unit = process().UnitBar;
    if (unit != u"inches") value = CacheValue(kCurrent, key + u'C');
    if (!showUnit) return value;
    value += u' ' + unit;
    if (keySuffix == u"-rate") return value;
    return value + QStringLiteral(" and ") + pressureTrendWord();
}

WindDress WindDress::fromSuffix(QStringView suffix)
{
    WindDress dress;
    const bool full = hasWord(suffix, u"FULL");
    const bool no = hasWord(suffix, u"NO");
    dress.showUnit = !hasWord(suffix, u"PLAIN");
    dress.withDirection = full || (no && hasWord(suffix, u"GUST"));
    dress.withGust = full || (no && hasWord(suffix, u"DIRECTION"));
    dress.round = hasWord(suffix, u"ROUND");
    return dress;
}

QString FormatWind(const QString &section, const QString &keySuffix, const WindDress &dress,
                   bool valueGiven)
{
    const QString gustKey = QStringLiteral("gust-speed");
    QString value =
        valueGiven
            ? keySuffix
            : CacheValue(section,
                         keySuffix == gustKey ? gustKey : QStringLiteral("wind-speed") + keySuffix);
    if (value.isEmpty()) return QStringLiteral("N/A");
    const std::optional<QString> whole = RoundedWhole(value);
    if (!whole || whole->size() > 3) return value;
    const QString &unit = process().UnitWind;
    value = WindFromMph(value, unit);
    if (dress.round) value = RoundedOrSame(value);
    if (dress.showUnit) value += u' ' + unit;
    if (dress.withDirection) {
        const QString direction =
            directionText(CacheValue(section, QStringLiteral("wind-direction") + keySuffix));
        if (!direction.isEmpty() && direction != u"N/A") value = direction + u' ' + value;
    }
    if (dress.withGust) {
        const QString twin = unit != u"mph" ? QStringLiteral("C") : QString();
        QString gust = CacheValue(section, gustKey + keySuffix + twin);
        if (!gust.isEmpty() && dress.round) gust = RoundedOrSame(gust);
        if (!gust.isEmpty() && gust != u"0" && gust != u"0.0" && gust != u"N/A")
            value += QStringLiteral(" gusting to ") + gust + u' ' + unit;
    }
    return value;
}

namespace
{

QString uvWord(double index)
{
    if (index >= 0 && index <= 2) return QStringLiteral(" (Low)");
    if (index >= 3 && index <= 5) return QStringLiteral(" (Moderate)");
    if (index >= 6 && index <= 7) return QStringLiteral(" (High)");
    if (index >= 8 && index <= 10) return QStringLiteral(" (Very High)");
    return QStringLiteral(" (Extreme)");
}

// Today's index of the UV forecast, when its first row is today's.
QString forecastUv()
{
    const std::optional<QDateTime> date =
        readDate(CacheValue(QStringLiteral("UV"), QStringLiteral("date1")));
    if (!date || date->date() != clock().now().date()) return {};
    const QString index = CacheValue(QStringLiteral("UV"), QStringLiteral("index1"));
    if (index.isEmpty() || index == u"N/A") return QStringLiteral("N/A");
    return RoundedOrSame(index);
}

} // namespace

QString FormatUv(bool withDescription)
{
    QString value = CacheValue(kCurrent, QStringLiteral("uv"));
    if (!isNumeric(value)) value = forecastUv();
    if (value.isEmpty()) return QStringLiteral("N/A");
    if (withDescription && isNumeric(value)) value += uvWord(readNumber(value).value_or(0));
    return value;
}

QString CompassToDegrees(const QString &compass, bool reversed, bool degreeSign)
{
    static const std::array<const char *, 16> words{"N",  "NNE", "NE", "ENE", "E",  "ESE",
                                                    "SE", "SSE", "S",  "SSW", "SW", "WSW",
                                                    "W",  "WNW", "NW", "NNW"};
    int degrees = 0;
    for (int i = 0; i < int(words.size()); ++i) {
        if (compass == QLatin1StringView(words[i]))
            degrees = int(i * 22.5); // truncated on purpose: NNE is 22
    }
    if (reversed) {
        degrees += 180;
        if (degrees > 359) degrees -= 360;
    }
    QString text = QString::number(degrees);
    return degreeSign ? text + kDegree : text;
}

QString FormatCompass(const QString &section, const QString &key, bool afterBlank, bool naIfEmpty,
                      bool keepCompass)
{
    const QString value = ReadCacheValue(section, key, afterBlank, naIfEmpty);
    return keepCompass ? value : directionText(value);
}

QString CurrentCondition()
{
    QString condition = CacheValue(kCurrent, QStringLiteral("description"));
    if (condition.isEmpty() &&
        IsInternational(SettingValue(QStringLiteral("CityCode"), QStringLiteral("ZipCode"))))
        condition = CacheValue(QStringLiteral("Daily"), QStringLiteral("short-title11"));
    if (condition.isEmpty() || condition == u"N/A")
        condition =
            CacheValue(QStringLiteral("Hourly"), QStringLiteral("weather-icon-description1"));
    return condition.isEmpty() ? QStringLiteral("N/A") : condition;
}

QString IconStyle(const QString &iconSet, const QString &extraCss)
{
    QString style;
    if (iconSet == u"Maine Today" || iconSet == u"Weather Network" || iconSet == u"TWC")
        style = QStringLiteral("border:solid 1px #F1F1F1;");
    if (iconSet == u"DD Pictures") style.prepend(QStringLiteral("width:70px;"));
    return style + (iconSet == u"TWC" ? QStringLiteral(" background-color:#FFFFFF;") : extraCss);
}

QString FormatChance(const QString &section, const QString &key, bool showPercent, bool valueGiven)
{
    QString value = valueGiven ? key : CacheValue(section, key);
    value.replace(QStringLiteral("chance"), QStringLiteral("Chance"));
    if (value.isEmpty()) return QStringLiteral("N/A");
    if (value == u"N/A" || value == u"Chance" || !showPercent) return value;
    return value + u'%';
}

namespace
{

// The number of a chance ("40%", "chance 40") or a cover ("40%").
std::optional<double> levelNumber(const QString &section, const QString &key, const QString &value,
                                  bool isChance)
{
    QString text = value.isEmpty() ? CacheValue(section, key) : value;
    if (isChance) text.remove(QStringLiteral("chance"), Qt::CaseInsensitive);
    text.remove(u'%');
    text = text.trimmed();
    return isNumeric(text) ? readNumber(text) : std::nullopt;
}

} // namespace

QString ChanceLevel(const QString &section, const QString &key, const QString &value)
{
    const double chance = levelNumber(section, key, value, true).value_or(0);
    if (chance >= 70) return QStringLiteral("3");
    if (chance >= 30) return QStringLiteral("2");
    return chance > 14 ? QStringLiteral("1") : QStringLiteral("0");
}

QString CloudLevel(const QString &section, const QString &key, const QString &value)
{
    const double cover = levelNumber(section, key, value, false).value_or(0);
    if (cover >= 70) return QStringLiteral("2");
    return cover > 29 ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace Tarnby
