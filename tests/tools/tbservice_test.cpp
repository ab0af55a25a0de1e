// The tbservice program: the offline demo's document service.
#include "tests/tools/childfixture.h"

#include <QFile>

namespace Tarnby::Test
{
namespace
{

using TbServiceTest = ChildProgramTest;

TEST_F(TbServiceTest, ServesUntilTerminatedAndTellsItsPort)
{
    writeDocument(QStringLiteral("doc.txt"), "offline");
    const QString portFile = workFile(QStringLiteral("port"));
    QProcess service;
    service.start(
        program(QStringLiteral("tbservice")),
        {QStringLiteral("--root"), m_documents.path(), QStringLiteral("--port-file"), portFile});
    ASSERT_TRUE(service.waitForReadyRead(5000));
    const QByteArray printed = service.readLine().trimmed();
    QFile written(portFile);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(written.readAll(), printed);

    const ChildRun fetched =
        runDl(QStringLiteral("http://127.0.0.1:%1/doc.txt").arg(QString::fromLatin1(printed)));
    EXPECT_EQ(fetched.output, QByteArray("offline"));
    service.terminate();
    ASSERT_TRUE(service.waitForFinished(5000));
    EXPECT_EQ(service.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(service.exitCode(), 0);
}

TEST_F(TbServiceTest, RefusesBadCommandLines)
{
    for (const QStringList &arguments :
         {QStringList{}, QStringList{QStringLiteral("--root")},
          QStringList{QStringLiteral("--root"), QStringLiteral("/no/such/folder")},
          QStringList{QStringLiteral("--root"), m_documents.path(), QStringLiteral("--port"),
                      QStringLiteral("99999")}}) {
        const ChildRun result = run(QStringLiteral("tbservice"), arguments);
        EXPECT_EQ(result.exitCode, 2) << arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_FALSE(result.errors.isEmpty());
    }
}

} // namespace
} // namespace Tarnby::Test
