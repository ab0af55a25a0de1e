// Settings store speed: point reads and writes in both back ends, and the 500 keys
// that one retrieval writes.

#include "core/settingsstore.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

class Store
{
public:
    explicit Store(bool ini)
    {
        SettingsStore::open(m_dir.filePath("settings.sqlite"), m_dir.filePath("Bench.ini"), ini);
        for (int i = 0; i < 500; ++i)
            SavePref("Cache\\KDSM\\Current", QString("key-%1").arg(i), QString::number(i * 1.5));
        SettingsStore::flush();
    }
    ~Store() { SettingsStore::close(); }

private:
    QTemporaryDir m_dir;
};

void BM_GetPref(benchmark::State &state)
{
    Store store(state.range(0) == 1);
    const QString section = "Cache\\KDSM\\Current", key = "key-250";
    for (auto _ : state)
        benchmark::DoNotOptimize(GetPref(section, key));
}
BENCHMARK(BM_GetPref)->Arg(0)->Arg(1)->ArgName("ini");

void BM_SavePref(benchmark::State &state)
{
    Store store(false);
    const QString section = "Cache\\KDSM\\Current", key = "temp";
    int i = 0;
    for (auto _ : state)
        SavePref(section, key, QString::number(++i));
}
BENCHMARK(BM_SavePref);

// One retrieval: 500 keys written in one batch, as a parser writes them, and for the
// profile file the one rewrite that the next turn of the event loop makes.
void BM_Write500Keys(benchmark::State &state)
{
    Store store(state.range(0) == 1);
    QStringList keys;
    for (int i = 0; i < 500; ++i)
        keys << QString("key-%1").arg(i);
    int round = 0;
    for (auto _ : state) {
        ++round;
        const SettingsBatch batch;
        for (const QString &key : keys)
            SavePref("Cache\\KDSM\\Current", key, QString::number(round));
        SettingsStore::flush();
    }
}
BENCHMARK(BM_Write500Keys)->Arg(0)->Arg(1)->ArgName("ini")->Unit(benchmark::kMillisecond);

} // namespace
