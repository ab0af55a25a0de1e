#include "core/settingsstore.h"

#include "core/inifile.h"
#include "core/log.h"
#include "core/sqlitesettings.h"

#include <QFileInfo>

#include <map>

namespace Tarnby
{

QList<std::pair<QString, QString>> SettingsBackend::values(const QString &section)
{
    QList<std::pair<QString, QString>> result;
    for (const QString &key : keys(section))
        result.append({key, value(section, key)});
    return result;
}

namespace
{

// Values read from a profile file are cut here: the profile API reads into a buffer
// of 750 characters, one of which is the terminating NUL.
constexpr qsizetype kIniValueLimit = 749;

// The profile back end of the settings tree.
class IniSettings final : public SettingsBackend
{
public:
    explicit IniSettings(IniFile *file) : m_file(file) {}
    QString value(const QString &section, const QString &key) override
    {
        return m_file->value(section, key).left(kIniValueLimit);
    }
    bool setValue(const QString &section, const QString &key, const QString &value) override
    {
        m_file->setValue(section, key.toUpper(), value);
        return true;
    }
    // A profile file keeps a deleted section: DelPref works on the registry alone.
    bool removeSection(const QString &) override { return false; }
    QStringList keys(const QString &section) override { return m_file->keys(section); }
    QStringList sections() override { return m_file->sections(); }
    void flush() override { m_file->flush(); }

private:
    IniFile *m_file;
};

struct StoreState {
    std::unique_ptr<SqliteSettings> registry;
    QString iniPath;
    std::unique_ptr<IniSettings> ini;
    bool useIni = false;
    // Every profile file touched (the INI back end's and skins' Skin.ini), by path.
    std::map<QString, std::unique_ptr<IniFile>> files;
};

StoreState &state()
{
    static StoreState s;
    return s;
}

IniFile *iniFile(const QString &path)
{
    if (path.isEmpty()) return nullptr;
    const QString key = QFileInfo(path).absoluteFilePath();
    auto &files = state().files;
    auto found = files.find(key);
    if (found == files.end()) found = files.emplace(key, std::make_unique<IniFile>(key)).first;
    return found->second.get();
}

} // namespace

void SettingsStore::open(const QString &registryFile, const QString &iniFile_, bool useIni)
{
    close();
    StoreState &s = state();
    s.registry = std::make_unique<SqliteSettings>(registryFile);
    s.iniPath = iniFile_;
    s.ini = std::make_unique<IniSettings>(iniFile(iniFile_));
    s.useIni = useIni;
}

void SettingsStore::setUseIni(bool useIni)
{
    state().useIni = useIni;
}

bool SettingsStore::useIni()
{
    return state().useIni;
}

void SettingsStore::close()
{
    StoreState &s = state();
    s.ini.reset();
    s.files.clear(); // each file flushes as it goes
    s.registry.reset();
    s.iniPath.clear();
}

void SettingsStore::flush()
{
    for (auto &[path, file] : state().files)
        file->flush();
}

SettingsBackend *SettingsStore::registry()
{
    return state().registry.get();
}

SettingsBackend *SettingsStore::ini()
{
    return state().ini.get();
}

SettingsBackend *SettingsStore::active()
{
    return state().useIni ? ini() : registry();
}

QString GetPref(const QString &section, const QString &key, const QString &defaultValue)
{
    SettingsBackend *backend = SettingsStore::active();
    const QString value = backend ? backend->value(section, key) : QString();
    return value.isEmpty() ? defaultValue : value;
}

SettingsBatch::SettingsBatch() : m_backend(SettingsStore::registry())
{
    if (m_backend) m_backend->beginBatch();
}

SettingsBatch::~SettingsBatch()
{
    if (m_backend) m_backend->endBatch();
}

QList<std::pair<QString, QString>> GetPrefSection(const QString &section)
{
    SettingsBackend *backend = SettingsStore::active();
    return backend ? backend->values(section) : QList<std::pair<QString, QString>>();
}

void SavePref(const QString &section, const QString &key, const QString &value)
{
    if (SettingsBackend *backend = SettingsStore::active()) backend->setValue(section, key, value);
}

void DelPref(const QString &section)
{
    if (SettingsBackend *backend = SettingsStore::registry()) backend->removeSection(section);
}

QString GetIniValue(const QString &section, const QString &key, const QString &file)
{
    IniFile *ini = iniFile(file.isEmpty() ? state().iniPath : file);
    return ini ? ini->value(section, key.toLower()).left(kIniValueLimit) : QString();
}

void SetIniValue(const QString &section, const QString &key, const QString &value,
                 const QString &file)
{
    if (IniFile *ini = iniFile(file.isEmpty() ? state().iniPath : file))
        ini->setValue(section, key.toUpper(), value);
}

QString EncodeCredential(const QString &plain)
{
    QString stored = plain;
    for (qsizetype i = 0; i < stored.size(); ++i)
        stored[i] = QChar(char16_t(stored[i].unicode() + i + 1));
    return stored;
}

QString DecodeCredential(const QString &stored)
{
    QString plain = stored;
    for (qsizetype i = 0; i < plain.size(); ++i)
        plain[i] = QChar(char16_t(plain[i].unicode() - i - 1));
    return plain;
}

} // namespace Tarnby
