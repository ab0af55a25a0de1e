#pragma once
// Fixtures of the live readers' tests: a throwaway profile with a fixed clock, US date
// and number conventions, a fixed local time zone, the base units, and the selection of
// one station. Golden cases compare the cache after a reading with
// tests/data/<folder>/<case>.expected: one "Section/key=value" line per key, sorted
// (for the live readers the sections Current, LastUpdated and Cache, plus
// "Result/arguments=<list>" where the reader returns one). An optional <case>.cache of the same
// form is the cache before. With TARNBY_UPDATE_GOLDEN set, a mismatching .expected is rewritten
// instead (review the diff before committing).

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/units.h"
#include "tests/support/fixedtime.h"
#include "tests/support/testprofile.h"

#include <QFile>

namespace Tarnby::Test
{

class LiveReadingTest : public ProfileTest
{
protected:
    LiveReadingTest()
    {
        conversionOptions() = {};
        selectStation("KDSM", "41.534", "-93.653");
    }
    ~LiveReadingTest() override { conversionOptions() = {}; }

    void selectStation(const QString &code, const QString &latitude, const QString &longitude)
    {
        process().CityCode = code;
        process().Latitude = latitude;
        process().Longitude = longitude;
        process().StationType = QStringLiteral("WeatherBug");
        SavePref("CityCode", "Code", code);
    }

    static QString current(const char *key) { return GetCache("Current", key); }

    // Loads "Section/key=value" lines into the cache of the selected station.
    static void loadCache(const QString &text)
    {
        for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            const qsizetype slash = line.indexOf(QLatin1Char('/'));
            const qsizetype equals = line.indexOf(QLatin1Char('='));
            SaveCache(line.left(slash), line.mid(slash + 1, equals - slash - 1),
                      line.mid(equals + 1));
        }
    }

    static QString dumpCache(const QString &result = QString())
    {
        QStringList lines;
        for (const char *name : {"Current", "LastUpdated", "Cache"}) {
            const QString section = QLatin1String(name);
            for (const QString &key : SettingsStore::active()->keys(CacheSection(section)))
                lines.append(section + QLatin1Char('/') + key + QLatin1Char('=') +
                             GetCache(section, key));
        }
        if (!result.isNull()) lines.append(QStringLiteral("Result/arguments=") + result);
        lines.sort();
        return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    }

    // Loads a test data file of "Section/key=value" lines when it exists.
    static void loadCacheFile(const QString &relativePath)
    {
        if (QFile::exists(dataFile(relativePath))) loadCache(readDataFile(relativePath));
    }

    // Compares with a test data file, or rewrites it under TARNBY_UPDATE_GOLDEN.
    static void expectGoldenFile(const QString &relativePath, const QString &actual)
    {
        const QString expected = readDataFile(relativePath);
        if (expected != actual && qEnvironmentVariableIsSet("TARNBY_UPDATE_GOLDEN")) {
            QFile file(dataFile(relativePath));
            if (file.open(QIODevice::WriteOnly)) file.write(actual.toUtf8());
            return;
        }
        EXPECT_EQ(actual, expected) << relativePath.toStdString();
    }

    FixedTime time{QTimeZone("America/Chicago"),
                   QDateTime(QDate(2024, 4, 15), QTime(20, 0), QTimeZone::utc())};
};

} // namespace Tarnby::Test
