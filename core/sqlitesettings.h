#pragma once
// The "registry" back end: one SQLite file (WAL), table settings(section, key, value).

#include "core/settingsstore.h"

#include <QByteArray>
#include <QString>

struct sqlite3;
struct sqlite3_stmt;

namespace Tarnby
{

class SqliteSettings final : public SettingsBackend
{
public:
    // Opens or creates the file. A file that is not a sound database is moved aside
    // as <file>.corrupt-<stamp> (kept, never deleted), logged, and a new one is made.
    explicit SqliteSettings(const QString &file);
    ~SqliteSettings() override;
    SqliteSettings(const SqliteSettings &) = delete;
    SqliteSettings &operator=(const SqliteSettings &) = delete;

    bool isOpen() const { return m_db != nullptr; }
    QString value(const QString &section, const QString &key) override;
    bool setValue(const QString &section, const QString &key, const QString &value) override;
    bool removeSection(const QString &section) override;
    QStringList keys(const QString &section) override;
    QStringList sections() override;
    void beginBatch() override;
    void endBatch() override;
    QList<std::pair<QString, QString>> values(const QString &section) override;

private:
    bool openFile(const QString &file);
    bool isSound();
    // Creates the table, or brings a file of an earlier form up to this one.
    bool createSchema();
    // The first column of the first row of a query; -1 when it fails.
    int pragmaValue(const char *sql);
    void closeDb();
    sqlite3_stmt *prepare(const char *sql);
    // The section of the last access in the two forms a statement binds. Readers and
    // writers walk one section at a time, so its conversion is done once for a run of keys.
    struct SectionBytes {
        QString name;
        QByteArray folded;
        QByteArray utf8;
    };
    const SectionBytes &sectionBytes(const QString &section);

    QString m_file;
    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_get = nullptr;
    sqlite3_stmt *m_set = nullptr;
    sqlite3_stmt *m_remove = nullptr;
    sqlite3_stmt *m_keys = nullptr;
    sqlite3_stmt *m_sections = nullptr;
    int m_batchDepth = 0;
    bool m_inTransaction = false;
    sqlite3_stmt *m_values = nullptr;
    SectionBytes m_section;
};

} // namespace Tarnby
