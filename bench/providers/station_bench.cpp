// The station list at its largest (501 stations): discovery loads it whole, start-up
// looks a code up in it, and every selection change rewrites the selection keys.

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "providers/stationselection.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

class ProfileWithStations
{
public:
    ProfileWithStations()
    {
        process().ProfilePath = m_dir.path();
        SettingsStore::open(m_dir.filePath("settings.sqlite"), m_dir.filePath("Bench.ini"), false);
        QString text;
        for (int i = 0; i < kMaxSavedStations; ++i)
            text += entry(i).toLine() + "\r\n";
        WriteFileAtomic(StationFilePath(), text);
    }
    ~ProfileWithStations() { SettingsStore::close(); }

    static StationEntry entry(int i)
    {
        return {"Station " + QString::number(i) + ", IA (Quarter " + QString::number(i) + ")",
                "K" + QString::number(i),
                "50309",
                "41.53",
                "-93.65",
                "PWS (WUnderground)"};
    }

private:
    QTemporaryDir m_dir;
};

void BM_LoadSavedStations(benchmark::State &state)
{
    ProfileWithStations profile;
    for (auto _ : state)
        benchmark::DoNotOptimize(LoadSavedStations());
}
BENCHMARK(BM_LoadSavedStations)->Unit(benchmark::kMicrosecond);

void BM_SetWeatherStationByCodeLastLine(benchmark::State &state)
{
    ProfileWithStations profile;
    const QString code = "K" + QString::number(kMaxSavedStations - 1);
    for (auto _ : state)
        benchmark::DoNotOptimize(SetWeatherStationByCode(code));
}
BENCHMARK(BM_SetWeatherStationByCodeLastLine)->Unit(benchmark::kMicrosecond);

void BM_ChangeWeatherStation(benchmark::State &state)
{
    ProfileWithStations profile;
    const QString lines[] = {ProfileWithStations::entry(1).toLine(),
                             ProfileWithStations::entry(2).toLine()};
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(ChangeWeatherStation(lines[++i % 2]));
}
BENCHMARK(BM_ChangeWeatherStation)->Unit(benchmark::kMicrosecond);

} // namespace
