// An NWS answer of 200 KB (the real flood watch repeated, each copy with its own id), as
// a busy day in a large county brings: parsed into the Alerts branch with its cache
// writes, read alone, and made into the popup's bulletin text.

#include "alerts/alertformat.h"
#include "alerts/alertingestion.h"
#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace Tarnby;

namespace
{

constexpr qsizetype kDocumentSize = 200 * 1024;

// The features of the real answer, repeated until the answer holds kDocumentSize.
QString largeNwsAnswer()
{
    const QString real = ReadFile(QStringLiteral(TARNBY_NWS_ALERT_DOCUMENT));
    const QString open = QStringLiteral("\"features\": [\n");
    const qsizetype from = real.indexOf(open) + open.size();
    const qsizetype to = real.indexOf(QStringLiteral("\n    ],\n    \"title\""));
    const QString feature = real.mid(from, to - from);
    QStringList features;
    for (int copy = 0; real.size() + features.join(",\n").size() < kDocumentSize; ++copy)
        features.append(QString(feature).replace(QStringLiteral("3369046"), QString::number(copy)));
    return real.left(from) + features.join(QStringLiteral(",\n")) + real.mid(to);
}

class BenchProfile
{
public:
    BenchProfile()
    {
        process().ProfilePath = m_dir.path();
        process().CityCode = QStringLiteral("KPQR");
        SettingsStore::open(m_dir.filePath("settings.sqlite"), m_dir.filePath("Bench.ini"), false);
        m_answer = largeNwsAnswer();
        m_path = m_dir.filePath("alerts.json");
        WriteFileAtomic(m_path, m_answer);
    }
    ~BenchProfile() { SettingsStore::close(); }
    const QString &answer() const { return m_answer; }
    const QString &path() const { return m_path; }

private:
    QTemporaryDir m_dir;
    QString m_answer;
    QString m_path;
};

void BM_ProcessNwsAlerts200K(benchmark::State &state)
{
    BenchProfile profile;
    for (auto _ : state)
        ProcessNwsAlerts(profile.path());
    state.counters["bytes"] = double(profile.answer().toUtf8().size());
    state.counters["alerts"] = GetPref("Cache\\KPQR\\Alerts", "Count").toDouble();
}
BENCHMARK(BM_ProcessNwsAlerts200K)->Unit(benchmark::kMillisecond);

void BM_ReadNwsAlerts200K(benchmark::State &state)
{
    BenchProfile profile;
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadNwsAlerts(profile.answer(), QStringLiteral("bench")));
}
BENCHMARK(BM_ReadNwsAlerts200K)->Unit(benchmark::kMillisecond);

void BM_AlertsFullTextHtml200K(benchmark::State &state)
{
    BenchProfile profile;
    ProcessNwsAlerts(profile.path());
    for (auto _ : state)
        benchmark::DoNotOptimize(GetAlertsFullText(true, true));
}
BENCHMARK(BM_AlertsFullTextHtml200K)->Unit(benchmark::kMillisecond);

} // namespace
