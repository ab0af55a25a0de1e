#pragma once
// A throwaway profile for one test: a temporary folder holding the profile, the
// settings database and <Username>.ini, opened as the process-wide store, with the
// process values reset. Nothing touches the user's own profile.

#include "tests/support/printers.h"

#include <QString>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace Tarnby::Test
{

class TestProfile
{
public:
    explicit TestProfile(bool useIni = false);
    ~TestProfile();
    QString path() const { return m_dir.path(); }
    QString file(const QString &name) const { return m_dir.filePath(name); }
    QString registryFile() const { return file(QStringLiteral("settings.sqlite")); }
    QString iniFile() const { return file(QStringLiteral("Tester.ini")); }
    // Writes `text` (UTF-8, not synced) to a file of the profile; gives its path.
    QString writeFile(const QString &name, const QString &text) const;
    // Closes and reopens the store, as a new process would find it.
    void reopen(bool useIni);

private:
    QTemporaryDir m_dir;
};

// A fixture that gives each test its own profile.
class ProfileTest : public ::testing::Test
{
protected:
    TestProfile profile;
};

// A test data file: tests/data/<name>.
QString dataFile(const QString &name);
QString readDataFile(const QString &name);

} // namespace Tarnby::Test
