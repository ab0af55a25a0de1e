// The tarnby program itself: the demo start, the hand-over of a second start, and the
// orderly end on SIGTERM.

#include "tests/support/testprofile.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcess>

namespace
{

class ProgramTest : public ::testing::Test
{
protected:
    ~ProgramTest() override
    {
        for (QProcess *p : {&m_first, &m_second})
            if (p->state() != QProcess::NotRunning) {
                p->kill();
                p->waitForFinished();
            }
    }
    void start(QProcess &process, const QStringList &args)
    {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationDirPath() + "/tarnby",
                      QStringList{"--profile", m_dir.path()} + args);
        ASSERT_TRUE(process.waitForStarted());
    }
    // Reads the program's output until it holds the text or ten seconds pass.
    static QString waitFor(QProcess &process, QString &seen, const QString &text)
    {
        QDeadlineTimer deadline(10000);
        while (!seen.contains(text) && !deadline.hasExpired() && process.waitForReadyRead(500))
            seen += QString::fromUtf8(process.readAll());
        return seen;
    }

    QTemporaryDir m_dir;
    QProcess m_first, m_second;
};

TEST_F(ProgramTest, DemoShowsTheStationsObservationAndEndsOnSigterm)
{
    start(m_first, {"--demo"});
    QString seen;
    waitFor(m_first, seen, "Running");
    EXPECT_TRUE(seen.contains("station KTIW")) << seen.toStdString();
    EXPECT_TRUE(seen.contains("textDescription: Cloudy")) << seen.toStdString();
    // The demo moves its recorded documents to today.
    EXPECT_TRUE(seen.contains(QStringLiteral("rawMessage: KTIW %1")
                                  .arg(QDate::currentDate().day(), 2, 10, QLatin1Char('0'))))
        << seen.toStdString();

    start(m_second, {"station=OTHER"});
    ASSERT_TRUE(m_second.waitForFinished(10000));
    EXPECT_EQ(m_second.exitCode(), 0);
    EXPECT_TRUE(QString::fromUtf8(m_second.readAll()).contains("already running"));
    waitFor(m_first, seen, "TarnbyLaunched");
    EXPECT_TRUE(seen.contains("message from a second start: TarnbyLaunched"));

    m_first.terminate();
    ASSERT_TRUE(m_first.waitForFinished(10000));
    EXPECT_EQ(m_first.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_first.exitCode(), 0);
}

} // namespace
