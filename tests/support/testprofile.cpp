#include "tests/support/testprofile.h"

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"

#include <QFile>

namespace Tarnby::Test
{

TestProfile::TestProfile(bool useIni)
{
    process() = ProcessValues{};
    process().ProfilePath = m_dir.path();
    process().ConfigFolder = m_dir.path();
    process().Username = QStringLiteral("Tester");
    process().UseINI = useIni;
    SettingsStore::open(registryFile(), iniFile(), useIni);
}

TestProfile::~TestProfile()
{
    SettingsStore::close();
    process() = ProcessValues{};
}

void TestProfile::reopen(bool useIni)
{
    SettingsStore::close();
    SettingsStore::open(registryFile(), iniFile(), useIni);
    process().UseINI = useIni;
}

QString TestProfile::writeFile(const QString &name, const QString &text) const
{
    QFile out(file(name));
    if (out.open(QIODevice::WriteOnly | QIODevice::Truncate)) out.write(text.toUtf8());
    return out.fileName();
}

QString dataFile(const QString &name)
{
    return QStringLiteral(TARNBY_TEST_DATA "/") + name;
}

QString readDataFile(const QString &name)
{
    return ReadFile(dataFile(name));
}

} // namespace Tarnby::Test
