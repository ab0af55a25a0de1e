// Reading a live observation: the 35 values of a Pulse observation, each cut from the
// start of the document (no index is built), and the pipe-delimited live record written
// into a fresh Current branch of the settings store.

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "providers/conditions.h"
#include "providers/textcutters.h"

#include <QStringList>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

const QStringList kKeys =
    QStringLiteral("key stationId providerId observationTimeLocalStr observationTimeUtcStr "
                   "iconCode dewPoint humidity humidityRate pressureSeaLevel pressureSeaLevelRate "
                   "rainDaily rainRate rainMonthly rainYearly temperature temperatureLow "
                   "temperatureHigh temperatureRate windSpeed windDirection windSpeedAvg "
                   "windDirectionAvg windGustHourly windGustDaily feelsLike wetBulbTemperature "
                   "pressureSeaLevelLow pressureSeaLevelHigh humidityLow humidityHigh rainRateMax "
                   "windGustDirectionDaily windGustDirectionHourly stationName")
        .split(u' ');

// An observation of the service's verbose layout, with quality flags beside the values
// as the service sends them: about 2.4 kB.
QString observationDocument()
{
    QStringList lines{"{", "    \"observation\": {"};
    int n = 0;
    for (const QString &key : kKeys) {
        const QString value = QString::number(10.25 + ++n);
        lines << QStringLiteral("        \"%1\": %2,").arg(key, value)
              << QStringLiteral("        \"%1Qc\": \"C\",").arg(key);
    }
    lines << "        \"end\": null"
          << "    }"
          << "}";
    return lines.join("\r\n");
}

void BM_ReadObservationValues(benchmark::State &state)
{
    const QString document = observationDocument();
    for (auto _ : state) {
        for (const QString &key : kKeys)
            benchmark::DoNotOptimize(ReadJsonValue(document, key));
    }
    state.SetLabel(QStringLiteral("%1 bytes").arg(document.size()).toStdString());
}
BENCHMARK(BM_ReadObservationValues);

void BM_ProcessPwsConditions(benchmark::State &state)
{
    QTemporaryDir dir;
    process().ProfilePath = dir.path();
    SettingsStore::open(dir.filePath("settings.sqlite"), dir.filePath("Bench.ini"), false);
    const QString record = dir.filePath("record.txt");
    WriteFileAtomic(record, "0|3:05p|4/07/2024|71.6|200|12.4|225|21|0.10|0.00|29.92|41|73.5|52.1|"
                            "48.2|71|1.23|1.6|-2|+0.02|39|45|30.01|29.90|0.04|0|190|10\r\n");
    for (auto _ : state)
        ProcessPwsConditions(record);
    SettingsStore::close();
}
BENCHMARK(BM_ProcessPwsConditions)->Unit(benchmark::kMillisecond);

} // namespace
