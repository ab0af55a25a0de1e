#include "tests/derive/textinvariants.h"

#include "core/processvalues.h"
#include "derive/dates.h"
#include "derive/forecasttext.h"
#include "derive/numberformat.h"
#include "derive/units.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>

namespace Tarnby::Test
{

namespace
{

struct Units {
    const char *temp, *wind, *bar, *rain;
};
constexpr std::array<Units, 3> kUnits = {
    {{"C", "km/h", "hPa", "mm"}, {"F", "bft", "mm", "cm"}, {"C", "kts", "kPa", "inches"}}};
constexpr std::array<const char16_t *, 5> kPictures = {u"###.#", u"###,###.#", u"0.00", u"##0.#0",
                                                       u""};

QString brokenNumberPromise(const QString &text, unsigned variant)
{
    const std::optional<double> value = readNumber(text);
    if (isNumeric(text) && !value) return QStringLiteral("numeric but unreadable");
    if (value && !std::isfinite(*value)) return QStringLiteral("read a value that is not finite");
    const QStringView picture = kPictures[variant % kPictures.size()];
    const QString shown = value ? formatNumber(*value, picture) : QString();
    const NumberSymbols s = localeSymbols();
    const auto numberForm = [&](QChar c) {
        return (c >= u'0' && c <= u'9') || c == u'-' || c == s.decimal || c == s.group;
    };
    if (!picture.isEmpty() && !std::all_of(shown.begin(), shown.end(), numberForm))
        return QStringLiteral("formatted to \"%1\"").arg(shown);
    if (shown.startsWith(u'-') &&
        !std::any_of(shown.begin(), shown.end(), [](QChar c) { return c >= u'1' && c <= u'9'; }))
        return QStringLiteral("signed zero \"%1\"").arg(shown);
    const QString tidy = TidyNumberText(text);
    if (tidy.size() > text.size() + 2 ||
        (!tidy.isEmpty() && QStringLiteral("., ").contains(tidy.front())))
        return QStringLiteral("tidied to \"%1\"").arg(tidy);
    return {};
}

QString brokenConversionPromise(const QString &text, const Units &units)
{
    for (const QString &result :
         {ToCelsius(text, true), WindFromMph(text, units.wind), PressureFromInches(text, units.bar),
          RainFromInches(text, units.rain), ToLocaleNumber(text), ToInvariantNumber(text)})
        if (IsMissingValue(text) && result != text)
            return QStringLiteral("missing value became \"%1\"").arg(result);
    return {};
}

QString brokenForecastPromise(const QString &text)
{
    const QString forecast = RewriteForecast(text);
    if ((text.isEmpty() || text == u"N/A") && forecast != text)
        return QStringLiteral("rewrote a missing text");
    if (forecast.size() > 20 * text.size() + 100)
        return QStringLiteral("rewrite grew to %1 characters").arg(forecast.size());
    const QString chance = ChanceFromForecast(text);
    if (!chance.isEmpty() && !isNumeric(chance)) return QStringLiteral("chance \"%1\"").arg(chance);
    if (!QStringList{"", "D", "N"}.contains(DayPartOfHour(text)))
        return QStringLiteral("day part \"%1\"").arg(DayPartOfHour(text));
    return {};
}

// A date read by NormaliseDate comes back as the text itself or a date in the system's form
// that reads again unchanged; FixDateFormat keeps only numbers, FormatTime only clock times.
QString brokenDatePromise(const QString &text, unsigned variant)
{
    static const char *const orders[] = {"", "DMY", "MDY", "YMD", "xyz"};
    const QString normal = NormaliseDate(text, QLatin1String(orders[variant % std::size(orders)]));
    if (normal != text && (!readDate(normal) || NormaliseDate(normal, QString()) != normal))
        return QStringLiteral("normalised to \"%1\"").arg(normal);
    const QRegularExpression dateOnly(QStringLiteral("^[0-9]*(%1[0-9]*)*$")
                                          .arg(QRegularExpression::escape(systemDateSeparator())));
    const QString fixed = FixDateFormat(text, false);
    if (fixed != text && !dateOnly.match(fixed).hasMatch())
        return QStringLiteral("fixed to \"%1\"").arg(fixed);
    if (FixDateFormat(text, true).size() > text.size() + 8)
        return QStringLiteral("fixed with its time to \"%1\"").arg(FixDateFormat(text, true));
    static const QRegularExpression clockTime(QStringLiteral("^\\d{1,2}:\\d\\d:\\d\\d [AP]M$"));
    const QString time = FormatTime(text);
    if (time != text && !clockTime.match(time).hasMatch())
        return QStringLiteral("time \"%1\"").arg(time);
    return {};
}

} // namespace

QString brokenTextPromise(const QString &text, unsigned variant)
{
    const Units &units = kUnits[variant % kUnits.size()];
    process().UnitTemp = QString::fromLatin1(units.temp);
    process().UnitWind = QString::fromLatin1(units.wind);
    process().UnitPre = QString::fromLatin1(units.rain);
    conversionOptions().bothUnits = variant % 3 == 0;
    conversionOptions().useTenths = variant % 5 == 0;
    QString broken = brokenNumberPromise(text, variant);
    if (broken.isEmpty()) broken = brokenConversionPromise(text, units);
    if (broken.isEmpty()) broken = brokenForecastPromise(text);
    return broken.isEmpty() ? brokenDatePromise(text, variant) : broken;
}

} // namespace Tarnby::Test
