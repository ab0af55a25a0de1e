// One retrieval run of a WeatherBug station, end to end: with children that answer at
// once (the run's own cost: its pumped waits and bookkeeping) and with the real dl
// against the loopback document service (four downloads, at most four in flight).
#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "retrieval/children.h"
#include "retrieval/fetch.h"
#include "run/mapfile.h"
#include "run/retrievalrun.h"
#include "run/useractivity.h"
#include "tools/service/documentservice.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{

using namespace Tarnby;

struct AwayUser : UserActivity {
    int idleSeconds() override { return 600; }
    bool screenSaverRunning() override { return false; }
};

// Children that write status 0 and a small body the moment they are started.
struct InstantChildren : ChildLauncher {
    qint64 start(const QString &, const QStringList &arguments) override
    {
        const QStringList parts = arguments.first().split(QLatin1Char('|'));
        WriteFileAtomic(parts.value(1), QStringLiteral("{}"));
        WriteFileAtomic(parts.value(2), QStringLiteral("0"));
        return ++m_pid;
    }
    bool isRunning(qint64) override { return false; }
    void end(qint64) override {}
    qint64 m_pid = 1000;
};

// A throwaway profile with a selected station and a stand-in map drawer.
class BenchProfile
{
public:
    BenchProfile()
    {
        SettingsStore::open(m_dir.filePath("settings.sqlite"), m_dir.filePath("bench.ini"), false);
        process().ProfilePath = m_dir.path();
        process().SettingsLoaded = true;
        process().CityCode = QStringLiteral("KAMW");
        const QString drawer = m_dir.filePath(kMapDrawer);
        WriteFileAtomic(drawer, QStringLiteral("#!/bin/sh\n"));
        QFile::setPermissions(drawer, QFile::ReadOwner | QFile::ExeOwner);
        QFile::link(QCoreApplication::applicationDirPath() + QStringLiteral("/dl"),
                    m_dir.filePath("dl"));
        qputenv("TARNBY_HELPER_FOLDER", m_dir.path().toLocal8Bit());
        for (const auto &[key, value] :
             {std::pair{"Code", "KAMW"}, std::pair{"ZipCode", "50010"},
              std::pair{"Latitude", "41.53389"}, std::pair{"Longitude", "-93.64889"},
              std::pair{"StationType", "WeatherBug"}})
            SavePref(QStringLiteral("CityCode"), QLatin1String(key), QLatin1String(value));
        SavePref(QStringLiteral("Misc"), QStringLiteral("Token"), QStringLiteral("TOKEN"));
        SavePref(QStringLiteral("Misc"), QStringLiteral("TokenExpiration"),
                 QDateTime::currentDateTime().toString(Qt::ISODate));
        setUserActivity(&m_user);
    }
    ~BenchProfile()
    {
        setUserActivity(nullptr);
        qunsetenv("TARNBY_HELPER_FOLDER");
        SettingsStore::close();
    }

private:
    QTemporaryDir m_dir;
    AwayUser m_user;
};

void BM_RunWithInstantChildren(benchmark::State &state)
{
    BenchProfile profile;
    InstantChildren children;
    setChildLauncher(&children);
    for (auto _ : state)
        DownloadTheWeather(true, false, false);
    setChildLauncher(nullptr);
}
BENCHMARK(BM_RunWithInstantChildren)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);

void BM_RunAgainstLoopbackService(benchmark::State &state)
{
    BenchProfile profile;
    DocumentService service;
    const int port = service.start(TARNBY_RUN_SERVICE);
    SavePref(QStringLiteral("Hosts"), QStringLiteral("Override"),
             QStringLiteral("http://127.0.0.1:%1").arg(port));
    for (auto _ : state)
        DownloadTheWeather(true, false, false);
    service.stop();
}
BENCHMARK(BM_RunAgainstLoopbackService)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);

} // namespace
