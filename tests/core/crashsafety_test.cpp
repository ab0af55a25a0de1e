// A writer killed in the middle of its work never leaves a store that fails to open
// or that lost a value it had committed.

#include "core/settingsstore.h"
#include "tests/support/testprofile.h"

#include <QCoreApplication>
#include <QProcess>
#include <QThread>

using namespace Tarnby;

namespace
{

class CrashSafety : public ::testing::TestWithParam<bool>
{
};

TEST_P(CrashSafety, KilledWriterLeavesEveryCommittedValue)
{
    const bool ini = GetParam();
    QTemporaryDir dir;
    const QString registry = dir.filePath("settings.sqlite");
    const QString iniFile = dir.filePath("Tester.ini");
    for (int round = 0; round < 3; ++round) {
        QProcess writer;
        writer.start(QCoreApplication::applicationDirPath() + "/test_core_storewriter",
                     {registry, iniFile, ini ? "ini" : "registry"});
        ASSERT_TRUE(writer.waitForStarted());
        ASSERT_TRUE(writer.waitForReadyRead(10000));
        QThread::msleep(30 + 40 * round);
        writer.kill();
        writer.waitForFinished();

        SettingsStore::open(registry, iniFile, ini);
        bool numeric = false;
        const qint64 last = GetPref("Crash", "last").toLongLong(&numeric);
        ASSERT_TRUE(numeric);
        ASSERT_GE(last, 20);
        for (qint64 n = 1; n <= last; ++n)
            ASSERT_EQ(GetPref("Crash", QString("k%1").arg(n)), QString::number(n)) << "key " << n;
        SettingsStore::close();
    }
}

INSTANTIATE_TEST_SUITE_P(Backends, CrashSafety, ::testing::Values(false, true),
                         [](const auto &info) { return info.param ? "Ini" : "Registry"; });

} // namespace
