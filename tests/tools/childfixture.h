#pragma once
// Runs the real downloader children (built beside the test program) against a document
// service started in-process on a free loopback port.

#include "tests/support/printers.h"
#include "tools/service/documentservice.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace Tarnby::Test
{

struct ChildRun {
    bool crashed = false;
    int exitCode = -1;
    bool statusWritten = false;
    QString status;
    QByteArray output;
    QString errors;
};

class ChildProgramTest : public ::testing::Test
{
protected:
    void SetUp() override;

    // A program built beside the test program.
    static QString program(const QString &name);
    // The test's own environment without proxies or a User-Agent override.
    static QProcessEnvironment childEnvironment();

    void writeDocument(const QString &relativePath, const QByteArray &content);
    void writeRoutes(const QByteArray &lines);
    QString url(const QString &pathAndQuery) const;
    QString workFile(const QString &name) const { return m_work.filePath(name); }

    // "<url>|<output>|<status>" with the job files below.
    QString dlArgument(const QString &url) const;
    // Starts dl on the document at pathAndQuery without waiting for it.
    void startDl(QProcess &process, const QString &pathAndQuery);
    // Runs a child in the work folder; its job files are workFile("output") and
    // workFile("status").
    ChildRun run(const QString &name, const QStringList &arguments,
                 const QProcessEnvironment &environment = childEnvironment());
    ChildRun runDl(const QString &url, const QProcessEnvironment &environment = childEnvironment());
    ChildRun runTbDownloader(const QString &url);
    ChildRun finishedRun() const;

    QTemporaryDir m_documents;
    QTemporaryDir m_work;
    DocumentService m_service;
    int m_port = 0;
};

} // namespace Tarnby::Test
