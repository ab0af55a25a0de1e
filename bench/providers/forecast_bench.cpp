// Reading forecasts: the hourly document of 240 periods (ten days) into the Hourly branch
// with its twins and humidex, all cache writes included, and the daily document of 14
// periods picked against those hours. The store also holds options and the forecast of
// a station seen earlier, as a user's store does.

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "derive/dates.h"
#include "providers/forecasts.h"

#include <QDateTime>
#include <QStringList>
#include <QTemporaryDir>
#include <QTimeZone>

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

const QString kLineEnd = QStringLiteral("\r\n");

// One period in the service's verbose layout, about 900 characters.
QString hourlyPeriod(const QDateTime &local, int hour)
{
    const QDateTime utc = local.addSecs(5 * 3600);
    const QString temperature = QString::number(55 + hour % 24 / 2);
    const QStringList lines = {
        QStringLiteral("        {"),
        QStringLiteral("            \"adjustedPrecipProbability\": %1,").arg(hour % 7 * 10),
        QStringLiteral("            \"cloudCoverPercent\": %1,").arg(hour % 100),
        QStringLiteral("            \"description\": \"%1% Chance of Rain\",").arg(hour % 7 * 10),
        QStringLiteral("            \"dewPoint\": %1,").arg(40 + hour % 9),
        QStringLiteral("            \"feelsLike\": %1,").arg(temperature),
        QStringLiteral("            \"forecastDateLocalStr\": \"%1\",")
            .arg(local.toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss"))),
        QStringLiteral("            \"forecastDateUtcStr\": \"%1\",")
            .arg(utc.toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss'Z'"))),
        QStringLiteral("            \"iconCode\": %1,").arg(hour % 3 == 0 ? 181 : 14),
        QStringLiteral("            \"precipCode\": 1,"),
        QStringLiteral("            \"precipProbability\": %1,").arg(hour % 7 * 10),
        QStringLiteral("            \"precipRate\": 0.02,"),
        QStringLiteral("            \"relativeHumidity\": %1,").arg(50 + hour % 40),
        QStringLiteral("            \"temperature\": %1,").arg(temperature),
        QStringLiteral("            \"thunderstormProbability\": 10,"),
        QStringLiteral("            \"windDirectionDegrees\": %1,").arg(hour * 13 % 360),
        QStringLiteral("            \"windSpeed\": %1,").arg(4 + hour % 11),
        QStringLiteral("            \"surfacePressure\": 29.92,"),
        QStringLiteral("            \"snowRate\": 0,"),
        QStringLiteral("            \"globeTemperature\": 71,"),
        QStringLiteral("            \"wetBulbTemperature\": 52"),
        QStringLiteral("        }"),
    };
    return lines.join(kLineEnd);
}

QString hourlyDocument(int periods)
{
    const QDateTime first(QDate(2024, 4, 15), QTime(19, 0), Qt::UTC);
    QStringList list;
    for (int hour = 0; hour < periods; ++hour)
        list.append(hourlyPeriod(first.addSecs(hour * 3600), hour));
    return QStringLiteral("{\r\n    \"hourlyForecastPeriod\": [\r\n") +
           list.join(QStringLiteral(",") + kLineEnd) +
           QStringLiteral("\r\n    ],\r\n    \"forecastCreatedUtcStr\": "
                          "\"2024-04-15T23:35:00.0000000Z\"\r\n}\r\n");
}

QString dailyPeriod(const QDate &date, bool night)
{
    const QString local = date.toString(Qt::ISODate) +
                          (night ? QStringLiteral("T19:00:00") : QStringLiteral("T07:00:00"));
    const QStringList lines = {
        QStringLiteral("        {"),
        QStringLiteral("            \"cloudCoverPercent\": 40,"),
        QStringLiteral("            \"dewPoint\": 45,"),
        QStringLiteral("            \"iconCode\": 14,"),
        QStringLiteral("            \"precipCode\": 1,"),
        QStringLiteral("            \"precipProbability\": 30,"),
        QStringLiteral("            \"relativeHumidity\": 62,"),
        QStringLiteral("            \"summaryDescription\": \"30% Chance of Rain\","),
        QStringLiteral("            \"temperature\": %1,").arg(night ? 45 : 68),
        QStringLiteral("            \"thunderstormProbability\": 5,"),
        QStringLiteral("            \"windDirectionDegrees\": 160,"),
        QStringLiteral("            \"windSpeed\": 12,"),
        QStringLiteral(
            "            \"detailedDescription\": \"Showers. %1 in the mid %2s. Winds 10 to "
            "15mph from the SSE. Chance of precipitation 30 percent.\",")
            .arg(night ? QStringLiteral("Lows") : QStringLiteral("Highs"),
                 night ? QStringLiteral("40") : QStringLiteral("60")),
        QStringLiteral("            \"forecastDateLocalStr\": \"%1\",").arg(local),
        QStringLiteral("            \"forecastDateUtcStr\": \"%1Z\",").arg(local),
        QStringLiteral("            \"isNightTimePeriod\": %1")
            .arg(night ? QStringLiteral("true") : QStringLiteral("false")),
        QStringLiteral("        }"),
    };
    return lines.join(kLineEnd);
}

QString dailyDocument()
{
    QStringList list;
    for (int period = 0; period < 14; ++period)
        list.append(dailyPeriod(QDate(2024, 4, 15).addDays(period / 2), period % 2 == 1));
    return QStringLiteral("{\r\n    \"dailyForecastPeriods\": [\r\n") +
           list.join(QStringLiteral(",") + kLineEnd) + QStringLiteral("\r\n    ]\r\n}\r\n");
}

// A profile with the settings store open, a station selected and US conventions.
class Profile
{
public:
    Profile()
    {
        SettingsStore::open(m_dir.filePath(QStringLiteral("settings.sqlite")),
                            m_dir.filePath(QStringLiteral("Bench.ini")), false);
        fillStore();
        process().CityCode = QStringLiteral("KDSM");
        setLocalTimeZone(QTimeZone("America/Chicago"));
        LoadDatePatterns(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    ~Profile() { SettingsStore::close(); }

    QString write(const QString &name, const QString &text) const
    {
        const QString path = m_dir.filePath(name);
        WriteFileAtomic(path, text);
        return path;
    }

private:
    // What a store holds beside the branch: options, and the forecasts of a station seen
    // earlier, which stay until the cache is deleted.
    static void fillStore()
    {
        const SettingsBatch batch;
        for (int i = 0; i < 300; ++i)
            SavePref(QStringLiteral("Options"), QStringLiteral("Option%1").arg(i),
                     QStringLiteral("True"));
        for (int i = 0; i < 5000; ++i)
            SavePref(QStringLiteral("Cache\\KCID\\Hourly"), QStringLiteral("temperature%1").arg(i),
                     QStringLiteral("71"));
    }

    QTemporaryDir m_dir;
};

void BM_ReadHourlyForecast(benchmark::State &state)
{
    const Profile profile;
    const QString path =
        profile.write(QStringLiteral("hourly.json"), hourlyDocument(int(state.range(0))));
    for (auto _ : state)
        ReadHourlyForecast(path, true);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_ReadHourlyForecast)->Arg(240)->Unit(benchmark::kMillisecond);

void BM_ReadDailyForecast(benchmark::State &state)
{
    const Profile profile;
    ReadHourlyForecast(profile.write(QStringLiteral("hourly.json"), hourlyDocument(240)), true);
    const QString path = profile.write(QStringLiteral("daily.json"), dailyDocument());
    for (auto _ : state)
        ReadDailyForecast(path, true);
}
BENCHMARK(BM_ReadDailyForecast)->Unit(benchmark::kMillisecond);

} // namespace
