#include "presentation/trayappearance.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/numberformat.h"
#include "derive/units.h"

#include <array>
#include <cmath>
#include <optional>

namespace Tarnby
{

namespace
{

const QString kTrayIcon = QStringLiteral("TrayIcon");
const QString kNotAvailable = QStringLiteral("NA");
constexpr QChar kDegree = QChar(0x00B0);

bool isTrue(const QString &key)
{
    return GetPref(kTrayIcon, key) == QLatin1String("True");
}

bool notFalse(const QString &key)
{
    return GetPref(kTrayIcon, key) != QLatin1String("False");
}

struct ModeName {
    TrayIconMode mode;
    const char *text;
};
constexpr std::array<ModeName, 3> kModeNames{{
    {TrayIconMode::Temperature, "Display temperature icon"},
    {TrayIconMode::Condition, "Display condition icon"},
    {TrayIconMode::ConditionAndTemperature, "Display condition & temperature icon"},
}};

// The whole part with tenths where the value has them; "0" for a zero that the
// picture leaves empty.
QString withTenths(double value)
{
    const QString text = TidyNumberText(formatNumber(value, u"###.#"));
    return text.isEmpty() || text == QLatin1String("-") ? QStringLiteral("0") : text;
}

// A hundred or more does not fit a 16-pixel icon: the leading digit goes.
QString hideHundreds(const QString &text)
{
    if (!text.startsWith(u'-') && text.size() == 3) return text.mid(1);
    if (text.startsWith(u'-') && text.size() == 4) return u'-' + text.mid(2);
    return text;
}

// "-0" (a value above -0.5 cut to its whole part) has no sign, whatever follows it.
QString dropMinusOfZero(const QString &text)
{
    if (!text.startsWith(QLatin1String("-0"))) return text;
    const QStringView rest = QStringView(text).mid(2);
    for (const QChar c : rest)
        if (c.isDigit() || c == localeSymbols().decimal) return text;
    return text.mid(1);
}

QString displayTemperatureKey()
{
    const QString key = process().ShowFeels || isTrue(QStringLiteral("ShowFeels"))
                            ? QStringLiteral("feels-like")
                            : QStringLiteral("temp");
    return process().UnitTemp == QLatin1String("C") ? key + u'C' : key;
}

// Rounded after a nudge of 0.1 away from zero, so that -0.4 counts as below zero
// and 32.4 °F is not freezing.
std::optional<long> nudgedWhole(const QString &value)
{
    if (!isNumeric(value)) return std::nullopt;
    const double v = readNumber(value).value_or(0);
    const double nudged = v > 0 ? v + 0.1 : (v < 0 ? v - 0.1 : v);
    return std::lround(nudged);
}

QString joinedAlertTitles()
{
    const int count = GetCache(QStringLiteral("Alerts"), QStringLiteral("Count")).toInt();
    QString titles;
    for (int n = 1; n <= count && n <= kMaxCacheRows; ++n)
        titles += GetCache(QStringLiteral("Alerts"), QStringLiteral("title%1").arg(n)) + u' ';
    return titles.toLower();
}

std::optional<TrayColourLevel> alertLevel()
{
    if (GetCache(QStringLiteral("Alerts"), QStringLiteral("AlertsAvailable")) !=
            QLatin1String("True") ||
        GetCache(QStringLiteral("Alerts"), QStringLiteral("Count")).toInt() <= 0)
        return std::nullopt;
    const QString titles = joinedAlertTitles();
    if (titles.contains(QLatin1String("warning")) && notFalse(QStringLiteral("EnableAlertColors")))
        return TrayColourLevel::Alert;
    if (titles.contains(QLatin1String("watch")) && notFalse(QStringLiteral("EnableAlertColors2")))
        return TrayColourLevel::Alert2;
    if (notFalse(QStringLiteral("EnableAlertColors3"))) return TrayColourLevel::Alert3;
    return std::nullopt;
}

bool belowZero()
{
    if (!isTrue(QStringLiteral("EnableBelowZeroColors"))) return false;
    const std::optional<long> whole =
        nudgedWhole(GetCache(QStringLiteral("Current"), displayTemperatureKey()));
    return whole && *whole <= 0;
}

bool freezing()
{
    if (!isTrue(QStringLiteral("EnableFreezingColors"))) return false;
    const QString key = process().ShowFeels || isTrue(QStringLiteral("ShowFeels"))
                            ? QStringLiteral("feels-like")
                            : QStringLiteral("temp");
    const std::optional<long> whole = nudgedWhole(GetCache(QStringLiteral("Current"), key));
    return whole && *whole <= 32;
}

struct LevelKeys {
    const char *suffix;
    QRgb foreground, background; // what a fresh profile shows
};

LevelKeys keysOf(TrayColourLevel level)
{
    switch (level) {
    case TrayColourLevel::Freezing:
        return {"Freezing", 0xFFFFFF, 0x1E50C8};
    case TrayColourLevel::BelowZero:
        return {"BelowZero", 0xFFFFFF, 0x6A1B9A};
    case TrayColourLevel::Alert:
        return {"Alert", 0xFFFFFF, 0xD01010};
    case TrayColourLevel::Alert2:
        return {"Alert2", 0x000000, 0xFFA500};
    case TrayColourLevel::Alert3:
        return {"Alert3", 0x000000, 0xFFE000};
    case TrayColourLevel::Normal:
        break;
    }
    return {"", 0xFFFFFF, 0x000000};
}

} // namespace

TrayIconMode ReadTrayIconMode()
{
    QString stored = GetPref(kTrayIcon, QStringLiteral("TrayIconToDisplay"));
    if (stored.isEmpty()) stored = GetPref(kTrayIcon, QStringLiteral("TrayIcon"));
    for (const ModeName &name : kModeNames)
        if (stored == QLatin1String(name.text)) return name.mode;
    SavePref(kTrayIcon, QStringLiteral("TrayIconToDisplay"), QLatin1String(kModeNames[0].text));
    return TrayIconMode::Temperature;
}

bool ShowsTemperature(TrayIconMode mode)
{
    return mode != TrayIconMode::Condition;
}

bool ShowsCondition(TrayIconMode mode)
{
    return mode != TrayIconMode::Temperature;
}

TrayDigitOptions TrayDigitOptions::fromSettings()
{
    TrayDigitOptions options;
    options.tenths = isTrue(QStringLiteral("ShowTenthsPlace"));
    options.hideDigit = isTrue(QStringLiteral("HideDigit"));
    options.degree = isTrue(QStringLiteral("ShowDegree"));
    options.hideSign = isTrue(QStringLiteral("HideSign"));
    return options;
}

QString TrayDigitText(const QString &temperature, const TrayDigitOptions &options)
{
    QString text = temperature.trimmed();
    if (text.isEmpty() || text == QLatin1String("N/A") || text == kNotAvailable) {
        text = kNotAvailable;
    } else {
        const qsizetype decimal = text.indexOf(localeSymbols().decimal);
        if (decimal >= 0) text.truncate(decimal);
        const std::optional<double> value = readNumber(temperature);
        if (options.tenths && isNumeric(temperature) && value) text = withTenths(*value);
        if (options.hideDigit && value && std::fabs(*value) > 99) text = hideHundreds(text);
    }
    if (options.degree) text += kDegree;
    if (options.hideSign) text.remove(u'-');
    return dropMinusOfZero(text);
}

QString TrayDigitText()
{
    return TrayDigitText(GetCache(QStringLiteral("Current"), displayTemperatureKey()),
                         TrayDigitOptions::fromSettings());
}

TrayColourLevel ChooseTrayColourLevel()
{
    if (const std::optional<TrayColourLevel> alert = alertLevel()) return *alert;
    if (belowZero()) return TrayColourLevel::BelowZero;
    if (freezing()) return TrayColourLevel::Freezing;
    return TrayColourLevel::Normal;
}

QColor colourFromStored(const QString &stored, QColor fallback)
{
    bool numeric = false;
    const qlonglong number = stored.trimmed().toLongLong(&numeric);
    if (!numeric || number < 0 || number > 0xFFFFFF) return fallback;
    return QColor(int(number & 0xFF), int((number >> 8) & 0xFF), int((number >> 16) & 0xFF));
}

QString storedFromColour(const QColor &colour)
{
    return QString::number(colour.red() + 256 * colour.green() + 65536 * colour.blue());
}

TrayColourSet ReadTrayColourSet(TrayColourLevel level)
{
    const LevelKeys keys = keysOf(level);
    const QString suffix = QLatin1String(keys.suffix);
    TrayColourSet set;
    set.foreground = colourFromStored(GetPref(kTrayIcon, QStringLiteral("ForeColor") + suffix),
                                      QColor::fromRgb(keys.foreground));
    set.background = colourFromStored(GetPref(kTrayIcon, QStringLiteral("BackColor") + suffix),
                                      QColor::fromRgb(keys.background));
    set.transparent = isTrue(QStringLiteral("MakeTrans") + suffix);
    return set;
}

TrayColourSet SetTrayColours()
{
    return ReadTrayColourSet(ChooseTrayColourLevel());
}

TrayFontSpec SetTrayFont(bool italicFlip)
{
    TrayFontSpec font;
    QString family = GetPref(kTrayIcon, QStringLiteral("FontName"));
    if (family.isEmpty()) {
        family = font.family;
        SavePref(kTrayIcon, QStringLiteral("FontName"), family);
    }
    QString size = GetPref(kTrayIcon, QStringLiteral("FontSize"));
    if (size.isEmpty()) {
        size = QStringLiteral("8");
        SavePref(kTrayIcon, QStringLiteral("FontSize"), size);
    }
    font.family = family;
    const std::optional<double> points = readNumber(size);
    if (points && *points >= 4 && *points <= 72) font.pointSize = *points;
    font.bold = isTrue(QStringLiteral("FontBold"));
    font.italic = isTrue(QStringLiteral("FontItalic")) != italicFlip;
    font.smooth = notFalse(QStringLiteral("BlendClearType"));
    return font;
}

} // namespace Tarnby
