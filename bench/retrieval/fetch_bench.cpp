// DownloadIt of a 5 KB document from the loopback service: the whole round of two
// temporary files, the dl child, the pumped wait and the read.
#include "core/processvalues.h"
#include "retrieval/fetch.h"
#include "tools/service/documentservice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{

void BM_DownloadIt5KB(benchmark::State &state)
{
    QTemporaryDir root;
    QFile document(root.filePath("doc.txt"));
    document.open(QIODevice::WriteOnly);
    document.write(QByteArray(5 * 1024, 'x'));
    document.close();
    Tarnby::process().ProfilePath = root.path();
    Tarnby::DocumentService service;
    const int port = service.start(root.path().toStdString());
    const QString url = QStringLiteral("http://127.0.0.1:%1/doc.txt").arg(port);
    for (auto _ : state) {
        const QString body = Tarnby::DownloadIt(url, 30);
        if (body.size() != 5 * 1024) state.SkipWithError("download failed");
    }
    service.stop();
}
BENCHMARK(BM_DownloadIt5KB)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(50)
    ->ReportAggregatesOnly(true);

} // namespace
