// The forecast rewrite runs for every half-day text after each retrieval and each change
// of units; number formatting runs for every value a skin shows. Target for the rewrite of
// a 600-character forecast: 50 µs median.
#include "core/processvalues.h"
#include "derive/forecasttext.h"
#include "derive/numberformat.h"
#include "derive/units.h"

#include <QString>

#include <benchmark/benchmark.h>

namespace
{

using namespace Tarnby;

// A long day of the kind the NWS writes, with every kind of phrase the rewrite touches.
QString longForecast()
{
    return QStringLiteral(
        "Rain showers likely before 1 PM, then a chance of showers and thunderstorms. "
        "Mostly cloudy, with a high in the low 50s. Highs in the upper teens on the ridges. "
        "Southwest wind 5 to 10 mph, with gusts as high as 25 MPH. Chance of precipitation "
        "is 60%. New rainfall amounts between a tenth and a quarter of an inch possible. "
        "Dew point will be around 45F. Temperatures falling to around 40. Snow. 2 to 4 inches "
        "of snow possible above 3000 feet. Lows in the mid 30s. Northwest wind 10 to 15 mph "
        "becoming calm after midnight. Winds could gust as high as 30 MPH. Less than an inch. "
        "Patchy fog after 4 AM.");
}

void setUnits(const char *temp, const char *wind, const char *rain, bool both)
{
    process() = ProcessValues{};
    process().UnitTemp = QString::fromLatin1(temp);
    process().UnitWind = QString::fromLatin1(wind);
    process().UnitPre = QString::fromLatin1(rain);
    conversionOptions().bothUnits = both;
}

void BM_RewriteForecastMetric(benchmark::State &state)
{
    setUnits("C", "km/h", "mm", true);
    const QString text = longForecast();
    for (auto _ : state)
        benchmark::DoNotOptimize(RewriteForecast(text));
    state.counters["chars"] = static_cast<double>(text.size());
}
BENCHMARK(BM_RewriteForecastMetric)->Unit(benchmark::kMicrosecond);

void BM_RewriteForecastUs(benchmark::State &state)
{
    setUnits("F", "mph", "inches", false);
    const QString text = longForecast();
    for (auto _ : state)
        benchmark::DoNotOptimize(RewriteForecast(text));
}
BENCHMARK(BM_RewriteForecastUs)->Unit(benchmark::kMicrosecond);

void BM_FixForecastCase(benchmark::State &state)
{
    const QString text = longForecast().toLower();
    for (auto _ : state)
        benchmark::DoNotOptimize(FixForecastCase(text));
}
BENCHMARK(BM_FixForecastCase)->Unit(benchmark::kMicrosecond);

void BM_FormatNumber(benchmark::State &state)
{
    process() = ProcessValues{};
    double value = 1234.5678;
    for (auto _ : state) {
        benchmark::DoNotOptimize(formatNumber(value, u"###,###.#"));
        value += 0.001;
    }
}
BENCHMARK(BM_FormatNumber);

void BM_ToCelsius(benchmark::State &state)
{
    setUnits("C", "mph", "inches", false);
    const QString value = QStringLiteral("72.5");
    for (auto _ : state)
        benchmark::DoNotOptimize(ToCelsius(value, true));
}
BENCHMARK(BM_ToCelsius);

} // namespace
