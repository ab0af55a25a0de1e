// One sun-times computation (all four crossings) and one moon phase name with its
// illumination, over the days of a year, so that no one date's shortcut decides.

#include "derive/sunmoon.h"

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

void BM_SunTimes(benchmark::State &state)
{
    const QDate first(2024, 1, 1);
    int day = 0;
    for (auto _ : state) {
        const double latitude = -60.0 + (day % 121);
        SunTimes t = GetSunTimes(latitude, 13.4, first.addDays(day % 366), -60);
        benchmark::DoNotOptimize(t);
        ++day;
    }
}
BENCHMARK(BM_SunTimes);

void BM_MoonPhaseNameAndIllumination(benchmark::State &state)
{
    const QDate first(2024, 1, 1);
    int day = 0;
    for (auto _ : state) {
        const QDate date = first.addDays(day % 366);
        QString name = GetMoonPhaseName(date);
        std::optional<float> lit = GetMoonIllumination(date);
        benchmark::DoNotOptimize(name);
        benchmark::DoNotOptimize(lit);
        ++day;
    }
}
BENCHMARK(BM_MoonPhaseNameAndIllumination);

} // namespace
