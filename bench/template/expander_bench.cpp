// Template expansion speed: the interface skin of about 150 KB over a full cache in the
// SQLite store (target: a median of at most 5 ms), and templates made to be hard.

#include "alerts/alertformat.h"
#include "core/clock.h"
#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/units.h"
#include "template/alerttokens.h"
#include "template/expander.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimeZone>

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

QString dataFile(const char *name)
{
    return QStringLiteral(TARNBY_TEMPLATE_DATA "/") + QLatin1StringView(name);
}

// A profile with the settings store, the cache of the golden test and an icon set.
class Profile
{
public:
    Profile()
    {
        SettingsStore::open(m_dir.filePath("settings.sqlite"), m_dir.filePath("Bench.ini"), false);
        process() = ProcessValues{};
        process().ProfilePath = m_dir.path();
        process().CityCode = "KAMW";
        process().StationType = "NWS";
        setClock(&m_clock);
        setLocalTimeZone(QTimeZone::utc());
        LoadDatePatterns(QLocale(QLocale::English, QLocale::UnitedStates));
        for (const QString &line :
             ReadFile(dataFile("cache.tsv")).split(u'\n', Qt::SkipEmptyParts)) {
            const QStringList parts = line.split(u'\t');
            if (parts.size() == 3) SaveCache(parts[0], parts[1], parts[2]);
        }
        SavePref("Conversion", "Both", "True");
        SavePref("OnDownload", "ObservedDisplay", "True");
        SavePref("OnDownload", "TimeDisplay", "True");
        SavePref("CityCode", "City", "Ames, IA (Ames Municipal Airport)");
        SavePref("Skins", "Option1Splendid4", "blue");
        LoadConversionSettings();
        setAlertTextSource(&AlertTokenText);
        const QString icons = m_dir.filePath("Skins/Icons/Shiny");
        QDir().mkpath(icons);
        for (int i = 0; i < 48; ++i)
            WriteFileAtomic(icons + QStringLiteral("/%1.png").arg(i), QString());
        SettingsStore::flush();
    }
    ~Profile()
    {
        setClock(nullptr);
        SettingsStore::close();
    }

private:
    QTemporaryDir m_dir;
    FixedClock m_clock{QDateTime(QDate(2024, 6, 14), QTime(15, 30), Qt::UTC)};
};

void expandEach(benchmark::State &state, const QString &text, bool forceLoops)
{
    Profile profile;
    for (auto _ : state)
        benchmark::DoNotOptimize(ExpandTemplate(text, true, forceLoops));
    state.SetBytesProcessed(state.iterations() * text.size() * qsizetype(sizeof(QChar)));
}

QString skin()
{
    return ReadFile(dataFile("skin.tbt"));
}

void BM_ExpandSkin(benchmark::State &state)
{
    expandEach(state, skin(), false);
}
BENCHMARK(BM_ExpandSkin)->Unit(benchmark::kMillisecond)->Repetitions(9)->ReportAggregatesOnly(true);

void BM_ExpandFiveMegabytes(benchmark::State &state)
{
    const QString text = skin();
    expandEach(state, text.repeated(5 * 1024 * 1024 / text.size() + 1), false);
}
BENCHMARK(BM_ExpandFiveMegabytes)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ExpandRandomBytes(benchmark::State &state)
{
    QByteArray bytes(5 * 1024 * 1024, Qt::Uninitialized);
    QRandomGenerator rng(42);
    rng.fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
    expandEach(state, QString::fromLatin1(bytes), true);
}
BENCHMARK(BM_ExpandRandomBytes)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ExpandUnknownTokens(benchmark::State &state)
{
    QString text;
    for (int i = 0; i < 10000; ++i)
        text += QStringLiteral("[UNKNOWN TOKEN %1] ").arg(i);
    expandEach(state, text, true);
}
BENCHMARK(BM_ExpandUnknownTokens)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ExpandUnbalancedLoopHeads(benchmark::State &state)
{
    const QString text =
        QString("[DAILY LOOP COUNT=99][TEMPLATE][HOURLY LOOP COUNT=99]x").repeated(200) +
        QString("[/TEMPLATE][/DAILY LOOP]").repeated(3) + "[MOON LOOP COUNT=99]";
    expandEach(state, text, true);
}
BENCHMARK(BM_ExpandUnbalancedLoopHeads)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
