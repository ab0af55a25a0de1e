#pragma once
// The "registry" back end: one SQLite file (WAL) with a row for each section, holding
// the section's keys and values in one value. A parser rewrites a branch of thousands of
// keys as one row, and a reader holds a section it has read until another process
// commits a change to the file.

#include "core/settingsstore.h"
#include "core/storedsection.h"

#include <QSet>
#include <QString>

#include <unordered_map>

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
    bool moveKeyRowsIntoSections();
    // The first column of the first row of a query; -1 when it fails.
    int pragmaValue(const char *sql);
    bool exec(const char *sql);
    void closeDb();
    sqlite3_stmt *prepare(const char *sql);

    // The section as the file holds it, read on first use.
    StoredSection &sectionNamed(const QString &name);
    StoredSection readSection(const QString &name, const QString &fold);
    // Drops what was read when another connection has committed since.
    void forgetIfChangedElsewhere();
    void forgetLoaded();
    // A write of its own takes the write lock, and with it the file's latest state.
    bool beginWrite();
    bool commitWrite();
    bool writeDirtySections();

    QString m_file;
    sqlite3 *m_db = nullptr;
    sqlite3_stmt *m_read = nullptr;
    sqlite3_stmt *m_write = nullptr;
    sqlite3_stmt *m_remove = nullptr;
    sqlite3_stmt *m_sections = nullptr;
    sqlite3_stmt *m_dataVersion = nullptr;
    int m_batchDepth = 0;
    bool m_inTransaction = false;
    int m_seenDataVersion = -1;

    // Sections read or written, by folded name; written ones wait in m_dirty for the
    // end of the batch. Node addresses stay put, so the last one used is remembered.
    std::unordered_map<QString, StoredSection> m_loaded;
    QSet<QString> m_dirty;
    QString m_lastName;
    QString m_lastFold;
    StoredSection *m_last = nullptr;
};

} // namespace Tarnby
