#pragma once
// The settings tree: every option, window position, the selected station and the
// whole Weather cache, as text values addressed by section and key.
//
// Two back ends serve it. The "registry" back end is an SQLite file; the INI back end
// is <Username>.ini with the semantics of a Windows profile file. The process picks
// one for the whole run (ProcessValues::UseINI). A missing key and an empty value are
// the same thing. No call ever throws or reports: a failed read gives the default,
// a failed write is dropped and logged.

#include <QString>
#include <QStringList>

#include <memory>
#include <utility>

namespace Tarnby
{

// One back end of the tree. Sections may hold backslashes ("Cache\\KDSM\\Current");
// section and key names compare case-insensitively, as they do on the desktop the
// program was first written for.
class SettingsBackend
{
public:
    virtual ~SettingsBackend() = default;
    // The stored text, or an empty text when the key is missing.
    virtual QString value(const QString &section, const QString &key) = 0;
    virtual bool setValue(const QString &section, const QString &key, const QString &value) = 0;
    // Removes the section and every section beneath it ("A" takes "A\\B" with it).
    virtual bool removeSection(const QString &section) = 0;
    // Keys of one section, in no promised order.
    virtual QStringList keys(const QString &section) = 0;
    // Every section name that holds at least one key.
    virtual QStringList sections() = 0;
    // Every key of one section with its value, as value() reads them, in no promised
    // order. Back ends that can read a section at once do so; this one asks key by key.
    virtual QList<std::pair<QString, QString>> values(const QString &section);
    // Makes pending writes durable. Back ends that write through do nothing.
    virtual void flush() {}
    // Everything written between the two calls is committed as one step; the calls nest.
    // Back ends that gather their writes anyway do nothing.
    virtual void beginBatch() {}
    virtual void endBatch() {}
};

// The process-wide store. open() is called once by start-up (and by tests); before
// that every read gives the default and every write is dropped.
class SettingsStore
{
public:
    // registryFile: the SQLite file; iniFile: <Username>.ini. Both may be created.
    static void open(const QString &registryFile, const QString &iniFile, bool useIni);
    // Switches the mode after the probe of start-up without reopening the files.
    static void setUseIni(bool useIni);
    static bool useIni();
    static void close();
    static void flush();
    static SettingsBackend *registry();
    static SettingsBackend *ini();
    // The back end of the mode in force.
    static SettingsBackend *active();
};

// Holds the registry's writes of its lifetime together: one commit instead of one per
// value, so a parser that rewrites a whole cache branch is fast, and a reader in another
// process sees the whole branch or none of it. The store must stay open meanwhile.
class SettingsBatch
{
public:
    SettingsBatch();
    ~SettingsBatch();
    SettingsBatch(const SettingsBatch &) = delete;
    SettingsBatch &operator=(const SettingsBatch &) = delete;

private:
    SettingsBackend *m_backend;
};

// Reads a setting; an empty stored value gives the default.
QString GetPref(const QString &section, const QString &key,
                const QString &defaultValue = QString());
// Writes a setting; an empty value is stored as such.
void SavePref(const QString &section, const QString &key, const QString &value);
// Every key of a section with its value, read at once: for readers that use many keys
// of one section (the template engine reads a whole forecast).
QList<std::pair<QString, QString>> GetPrefSection(const QString &section);
// Deletes a section with all its sub-sections. This works on the registry back end
// alone, in both modes: in INI mode the file keeps the section's old keys.
void DelPref(const QString &section);

// Profile-file access: an empty file means the INI back end's file. Values read are
// cut at 749 characters; keys are case-insensitive.
QString GetIniValue(const QString &section, const QString &key, const QString &file = QString());
void SetIniValue(const QString &section, const QString &key, const QString &value,
                 const QString &file = QString());

// The stored form of Proxy/Username and Proxy/Password: character n (from 1) is
// shifted up by n on encoding and down by n on decoding.
QString EncodeCredential(const QString &plain);
QString DecodeCredential(const QString &stored);

} // namespace Tarnby
