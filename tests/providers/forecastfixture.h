#pragma once
// Fixtures of the forecast readers' tests: the live readers' profile (fixed clock at
// 2024-04-15 3 PM in Chicago, US conventions, station KDSM) and the readers by kind,
// with the branches each one writes. Documents are in tests/data/forecast.

#include "providers/forecasts.h"

#include "core/weathercache.h"
#include "tests/providers/livereadingtest.h"

#include <QStringList>

namespace Tarnby::Test
{

enum class Reader { Daily, Hourly, Uv, WuUv, NwsText };

struct ReaderInfo {
    void (*read)(const QString &documentPath);
    QStringList sections;
    ForecastDocument document;
    const char *goodDocument; // a document the reader takes
};

inline ReaderInfo readerInfo(Reader reader)
{
    switch (reader) {
    case Reader::Daily:
        return {[](const QString &path) { ReadDailyForecast(path); },
                {"Daily", "LastUpdated"},
                ForecastDocument::Daily,
                "forecast/daily-week.json"};
    case Reader::Hourly:
        return {[](const QString &path) { ReadHourlyForecast(path, false); },
                {"Hourly", "LastUpdated"},
                ForecastDocument::Hourly,
                "forecast/hourly-40.json"};
    case Reader::Uv:
        return {
            ReadUvForecast, {"UV", "LastUpdated"}, ForecastDocument::Uv, "forecast/uv-week.json"};
    case Reader::WuUv:
        return {ReadWeatherUndergroundUv,
                {"UV", "LastUpdated"},
                ForecastDocument::Uv,
                "forecast/wu-uv.xml"};
    case Reader::NwsText:
        return {ReadNwsForecastText, {"Daily"}, ForecastDocument::NwsText, "forecast/nws-text.xml"};
    }
    return {};
}

inline const char *readerName(Reader reader)
{
    static const char *const names[] = {"Daily", "Hourly", "Uv", "WuUv", "NwsText"};
    return names[static_cast<int>(reader)];
}

class ForecastTest : public LiveReadingTest
{
protected:
    static void read(Reader reader, const QString &document)
    {
        readerInfo(reader).read(dataFile(document));
    }

    // The branches as "Section/key=value" lines, each branch sorted by key.
    static QString dump(const QStringList &sections)
    {
        QStringList lines;
        for (const QString &section : sections) {
            for (const QString &line : CacheBranchLines(section))
                lines.append(section + QLatin1Char('/') + line);
        }
        return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    }

    // The state a reader starts from: its good document read (the NWS text on the
    // daily branch it amends).
    static void readGoodDocument(Reader reader)
    {
        if (reader == Reader::NwsText) loadCacheFile("forecast/nws-text.cache");
        read(reader, QLatin1String(readerInfo(reader).goodDocument));
    }
};

} // namespace Tarnby::Test
