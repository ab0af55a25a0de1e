// Decoding speed over the real reports of tests/data/metar: the live step decodes one
// report a tick, station windows decode hundreds at once.

#include "providers/metar.h"
#include "tests/providers/metarcorpus.h"

#include <QFile>

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

const QStringList &corpus()
{
    static const QStringList reports = Test::metarCorpus(QStringLiteral(TARNBY_METAR_DATA), false);
    return reports;
}

void countReports(benchmark::State &state)
{
    state.SetItemsProcessed(state.iterations() * corpus().size());
}

void BM_ParseMetarData(benchmark::State &state)
{
    for (auto _ : state) {
        for (const QString &report : corpus()) {
            clsMetar metar;
            benchmark::DoNotOptimize(metar.ParseMetarData(report));
            benchmark::DoNotOptimize(metar);
        }
    }
    countReports(state);
}
BENCHMARK(BM_ParseMetarData);

// What the live step reads after a decode.
void BM_ParseAndReadEveryField(benchmark::State &state)
{
    for (auto _ : state) {
        for (const QString &report : corpus()) {
            clsMetar metar;
            metar.ParseMetarData(report);
            for (const QString &field :
                 {metar.DateTimeUtc(), metar.Condition(), metar.TemperatureF(), metar.FeelsLikeF(),
                  metar.DewPointF(), metar.Humidity(), metar.WindDirection(), metar.WindSpeedMph(),
                  metar.WindGustSpeedMph(), metar.Pressure(), metar.Visibility()})
                benchmark::DoNotOptimize(field);
        }
    }
    countReports(state);
}
BENCHMARK(BM_ParseAndReadEveryField);

void BM_IsValidMetar(benchmark::State &state)
{
    QStringList prefixed;
    for (const QString &report : corpus())
        prefixed << QStringLiteral("METAR ") + report;
    for (auto _ : state)
        for (const QString &report : prefixed)
            benchmark::DoNotOptimize(clsMetar::IsValidMetar(report));
    state.SetItemsProcessed(state.iterations() * prefixed.size());
}
BENCHMARK(BM_IsValidMetar);

void BM_ParseXmlData(benchmark::State &state)
{
    QFile file(QStringLiteral(TARNBY_METAR_DATA "/mesowest-MADE-UP-KSLC.xml"));
    file.open(QIODevice::ReadOnly);
    const QString document = QString::fromUtf8(file.readAll());
    for (auto _ : state) {
        clsMetar metar;
        benchmark::DoNotOptimize(metar.ParseXmlData(document));
        benchmark::DoNotOptimize(metar);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ParseXmlData);

} // namespace
