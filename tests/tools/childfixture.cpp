#include "tests/tools/childfixture.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

namespace Tarnby::Test
{

void ChildProgramTest::SetUp()
{
    ASSERT_TRUE(m_documents.isValid() && m_work.isValid());
    m_port = m_service.start(m_documents.path().toStdString());
    ASSERT_NE(m_port, 0);
}

QString ChildProgramTest::program(const QString &name)
{
    return QCoreApplication::applicationDirPath() + QLatin1Char('/') + name;
}

QProcessEnvironment ChildProgramTest::childEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY",
                             "ALL_PROXY", "TARNBY_USER_AGENT"})
        environment.remove(QString::fromLatin1(name));
    return environment;
}

void ChildProgramTest::writeDocument(const QString &relativePath, const QByteArray &content)
{
    const QString path = m_documents.filePath(relativePath);
    ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}

void ChildProgramTest::writeRoutes(const QByteArray &lines)
{
    writeDocument(QStringLiteral("routes.tsv"), lines);
}

QString ChildProgramTest::url(const QString &pathAndQuery) const
{
    return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(pathAndQuery);
}

ChildRun ChildProgramTest::finishedRun() const
{
    ChildRun result;
    QFile status(workFile(QStringLiteral("status")));
    result.statusWritten = status.open(QIODevice::ReadOnly);
    if (result.statusWritten) result.status = QString::fromLatin1(status.readAll());
    QFile output(workFile(QStringLiteral("output")));
    if (output.open(QIODevice::ReadOnly)) result.output = output.readAll();
    return result;
}

ChildRun ChildProgramTest::run(const QString &name, const QStringList &arguments,
                               const QProcessEnvironment &environment)
{
    for (const char *job : {"output", "status"}) // what an earlier run left
        QFile::remove(workFile(QLatin1String(job)));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_work.path());
    process.start(program(name), arguments);
    if (!process.waitForFinished(30000)) process.kill();
    process.waitForFinished();
    ChildRun result = finishedRun();
    result.crashed = process.exitStatus() != QProcess::NormalExit;
    result.exitCode = process.exitCode();
    result.errors = QString::fromLocal8Bit(process.readAllStandardError());
    return result;
}

QString ChildProgramTest::dlArgument(const QString &url) const
{
    return url + QLatin1Char('|') + workFile(QStringLiteral("output")) + QLatin1Char('|') +
           workFile(QStringLiteral("status"));
}

void ChildProgramTest::startDl(QProcess &process, const QString &pathAndQuery)
{
    process.setProcessEnvironment(childEnvironment());
    process.start(program(QStringLiteral("dl")), {dlArgument(url(pathAndQuery))});
}

ChildRun ChildProgramTest::runDl(const QString &url, const QProcessEnvironment &environment)
{
    return run(QStringLiteral("dl"), {dlArgument(url)}, environment);
}

ChildRun ChildProgramTest::runTbDownloader(const QString &url)
{
    return run(QStringLiteral("tbdownloader"),
               {url, workFile(QStringLiteral("output")), workFile(QStringLiteral("status"))});
}

} // namespace Tarnby::Test
