#pragma once
// The "registry" back end: one SQLite file (WAL), table settings(section, key, value).

#include "core/settingsstore.h"

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
    void closeDb();
    sqlite3_stmt *prepare(const char *sql);

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
};

} // namespace Tarnby
