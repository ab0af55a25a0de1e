#include "core/sqlitesettings.h"

#include "core/log.h"

#include <QDateTime>
#include <QFile>

#include <sqlite3.h>

#include <array>

namespace Tarnby
{

namespace
{

// Section names compare without regard to case and "\" separates levels: the table is
// keyed by the folded name, and keeps the spelling first written for listing.
constexpr int kSchemaVersion = 2;
constexpr const char *kSchema = "CREATE TABLE IF NOT EXISTS sections ("
                                " fold TEXT PRIMARY KEY,"
                                " name TEXT NOT NULL,"
                                " body BLOB NOT NULL)";
constexpr const char *kWriteSection = "INSERT INTO sections VALUES (?1, ?2, ?3) ON CONFLICT (fold) "
                                      "DO UPDATE SET body = excluded.body";

QString columnText(sqlite3_stmt *stmt, int column)
{
    return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(stmt, column)),
                             sqlite3_column_bytes(stmt, column));
}

QByteArray columnBytes(sqlite3_stmt *stmt, int column)
{
    return QByteArray(static_cast<const char *>(sqlite3_column_blob(stmt, column)),
                      sqlite3_column_bytes(stmt, column));
}

// One execution of a statement: the values bound to it, kept for as long as the binding
// lasts (SQLite neither copies nor converts them), and the reset of the statement when
// the scope ends, whatever path leaves it.
class Execution
{
public:
    explicit Execution(sqlite3_stmt *stmt) : m_stmt(stmt) {}
    ~Execution()
    {
        sqlite3_reset(m_stmt);
        sqlite3_clear_bindings(m_stmt);
    }
    Execution(const Execution &) = delete;
    Execution &operator=(const Execution &) = delete;

    // Parameter index from 1; a null text is bound as the empty text.
    void bind(int index, const QString &text)
    {
        QByteArray &kept = keep(index, text.toUtf8());
        sqlite3_bind_text(m_stmt, index, kept.isNull() ? "" : kept.constData(), int(kept.size()),
                          SQLITE_STATIC);
    }
    void bindBlob(int index, QByteArray bytes)
    {
        const QByteArray &kept = keep(index, std::move(bytes));
        sqlite3_bind_blob(m_stmt, index, kept.constData(), int(kept.size()), SQLITE_STATIC);
    }
    bool step() { return sqlite3_step(m_stmt) == SQLITE_ROW; }
    bool run() { return sqlite3_step(m_stmt) == SQLITE_DONE; }

private:
    QByteArray &keep(int index, QByteArray bytes)
    {
        QByteArray &kept = m_kept[size_t(index - 1)];
        kept = std::move(bytes);
        return kept;
    }

    sqlite3_stmt *m_stmt;
    std::array<QByteArray, 3> m_kept;
};

// Whether a folded section name is the folded name given or lies beneath it.
bool isSameOrBeneath(const QString &fold, const QString &top)
{
    return fold.startsWith(top) && (fold.size() == top.size() || fold.at(top.size()) == u'\\');
}

} // namespace

SqliteSettings::SqliteSettings(const QString &file) : m_file(file)
{
    if (openFile(file) && isSound()) return;
    // A file of an earlier form is rewritten when opened; another program holding the
    // write lock all that time leaves it as it is, for the next start.
    const bool held = m_db && sqlite3_errcode(m_db) == SQLITE_BUSY;
    closeDb();
    if (held) {
        Log(QStringLiteral("Settings database %1 is held by another program; starting on "
                           "defaults (SqliteSettings)")
                .arg(file));
        return;
    }
    if (QFile::exists(file)) {
        const QString aside =
            file + QStringLiteral(".corrupt-") +
            QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddHHmmss"));
        QFile::rename(file, aside);
        QFile::remove(file + QStringLiteral("-wal"));
        QFile::remove(file + QStringLiteral("-shm"));
        Log(QStringLiteral(
                "Settings database %1 could not be read; kept as %2, starting on defaults "
                "(SqliteSettings)")
                .arg(file, aside));
    }
    if (!openFile(file) || !isSound()) {
        Log(QStringLiteral("Settings database %1 cannot be opened (SqliteSettings)").arg(file));
        closeDb();
    }
}

SqliteSettings::~SqliteSettings()
{
    closeDb();
}

bool SqliteSettings::openFile(const QString &file)
{
    if (sqlite3_open_v2(file.toUtf8().constData(), &m_db,
                        SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                        nullptr) != SQLITE_OK)
        return false;
    // Another process (tarnby-cli beside the running program) may hold a write lock
    // for a moment; wait for it rather than fail.
    sqlite3_busy_timeout(m_db, 2000);
    // WAL with NORMAL sync: a crash of the program never loses a committed value or
    // leaves a torn file; only a power cut may lose the last moments.
    exec("PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;");
    if (!createSchema()) return false;
    m_read = prepare("SELECT name, body FROM sections WHERE fold = ?1");
    m_write = prepare(kWriteSection);
    // A section and its sub-sections ("a\..."), found in the key's range from "a" up to
    // "a]", "]" being the character after "\": a test of each name's start would read
    // the whole table. Names such as "a[" in the range are left by the condition.
    m_remove = prepare("DELETE FROM sections WHERE fold >= ?1 AND fold < ?1 || ']' "
                       "AND (fold = ?1 OR fold >= ?1 || '\\')");
    m_sections = prepare("SELECT name FROM sections ORDER BY fold");
    m_dataVersion = prepare("PRAGMA data_version");
    return m_read && m_write && m_remove && m_sections && m_dataVersion;
}

bool SqliteSettings::createSchema()
{
    if (!exec(kSchema) || !moveKeyRowsIntoSections()) return false;
    // Opening a file of this form writes nothing, so it never waits for another writer.
    if (pragmaValue("PRAGMA user_version") == kSchemaVersion) return true;
    const QByteArray setVersion = "PRAGMA user_version = " + QByteArray::number(kSchemaVersion);
    return exec(setVersion.constData());
}

// Earlier files held a row for each key in the table "settings", with the section and the
// key as first written; their rows move into sections, in one transaction.
bool SqliteSettings::moveKeyRowsIntoSections()
{
    if (pragmaValue("SELECT count(*) FROM sqlite_master WHERE name = 'settings'") != 1) return true;
    if (!exec("BEGIN IMMEDIATE")) return false;
    std::map<QString, StoredSection> moved;
    sqlite3_stmt *rows = prepare("SELECT section, key, value FROM settings");
    while (rows && sqlite3_step(rows) == SQLITE_ROW) {
        const QString section = columnText(rows, 0);
        const QString fold = FoldedName(section);
        moved.try_emplace(fold, section)
            .first->second.setValue(columnText(rows, 1), columnText(rows, 2));
    }
    sqlite3_finalize(rows);
    sqlite3_stmt *write = prepare(kWriteSection);
    bool ok = rows && write;
    for (auto it = moved.cbegin(); ok && it != moved.cend(); ++it) {
        Execution run(write);
        run.bind(1, it->first);
        run.bind(2, it->second.name());
        run.bindBlob(3, it->second.encode());
        ok = run.run();
    }
    sqlite3_finalize(write);
    ok = ok && exec("DROP TABLE settings") && exec("COMMIT");
    if (!ok) {
        exec("ROLLBACK");
        return false;
    }
    Log(QStringLiteral("Settings database moved to one row per section (SqliteSettings)"));
    return true;
}

int SqliteSettings::pragmaValue(const char *sql)
{
    sqlite3_stmt *stmt = prepare(sql);
    if (!stmt) return -1;
    const int value = sqlite3_step(stmt) == SQLITE_ROW ? sqlite3_column_int(stmt, 0) : -1;
    sqlite3_finalize(stmt);
    return value;
}

bool SqliteSettings::exec(const char *sql)
{
    return sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool SqliteSettings::isSound()
{
    if (!m_db) return false;
    sqlite3_stmt *check = prepare("PRAGMA quick_check");
    if (!check) return false;
    const bool ok =
        sqlite3_step(check) == SQLITE_ROW && columnText(check, 0) == QStringLiteral("ok");
    sqlite3_finalize(check);
    return ok;
}

void SqliteSettings::closeDb()
{
    for (sqlite3_stmt **stmt : {&m_read, &m_write, &m_remove, &m_sections, &m_dataVersion}) {
        sqlite3_finalize(*stmt);
        *stmt = nullptr;
    }
    if (m_db) sqlite3_close(m_db);
    m_db = nullptr;
    forgetLoaded();
}

sqlite3_stmt *SqliteSettings::prepare(const char *sql)
{
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v3(m_db, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK)
        return nullptr;
    return stmt;
}

StoredSection &SqliteSettings::sectionNamed(const QString &name)
{
    forgetIfChangedElsewhere();
    if (m_last && name == m_lastName) return *m_last;
    const QString fold = FoldedName(name);
    auto found = m_loaded.find(fold);
    if (found == m_loaded.end()) found = m_loaded.emplace(fold, readSection(name, fold)).first;
    m_lastName = name;
    m_lastFold = fold;
    m_last = &found->second;
    return found->second;
}

StoredSection SqliteSettings::readSection(const QString &name, const QString &fold)
{
    Execution run(m_read);
    run.bind(1, fold);
    if (!run.step()) return StoredSection(name);
    const QString stored = columnText(m_read, 0);
    if (std::optional<StoredSection> section =
            StoredSection::decode(stored, columnBytes(m_read, 1)))
        return *section;
    Log(QStringLiteral("Settings section %1 could not be read; it starts empty (SqliteSettings)")
            .arg(stored));
    return StoredSection(stored);
}

void SqliteSettings::forgetIfChangedElsewhere()
{
    // Under the write lock nobody else commits; the check was made when it was taken.
    if (m_inTransaction) return;
    Execution run(m_dataVersion);
    const int version = run.step() ? sqlite3_column_int(m_dataVersion, 0) : -1;
    if (version != m_seenDataVersion) forgetLoaded();
    m_seenDataVersion = version;
}

void SqliteSettings::forgetLoaded()
{
    m_loaded.clear();
    m_dirty.clear();
    m_last = nullptr;
}

QString SqliteSettings::value(const QString &section, const QString &key)
{
    return m_db ? sectionNamed(section).value(key) : QString();
}

QStringList SqliteSettings::keys(const QString &section)
{
    return m_db ? sectionNamed(section).keys() : QStringList();
}

QList<std::pair<QString, QString>> SqliteSettings::values(const QString &section)
{
    return m_db ? sectionNamed(section).entries() : StoredSection::Entries();
}

bool SqliteSettings::setValue(const QString &section, const QString &key, const QString &value)
{
    if (!m_db) return false;
    const bool ownWrite = !m_inTransaction;
    if (ownWrite && !beginWrite()) {
        Log(QStringLiteral("Settings write %1/%2 failed: %3 (SqliteSettings)")
                .arg(section, key, QString::fromUtf8(sqlite3_errmsg(m_db))));
        return false;
    }
    sectionNamed(section).setValue(key, value);
    m_dirty.insert(m_lastFold);
    return !ownWrite || commitWrite();
}

bool SqliteSettings::removeSection(const QString &section)
{
    if (!m_db || section.isEmpty()) return false;
    const QString top = FoldedName(section);
    for (auto it = m_loaded.begin(); it != m_loaded.end();) {
        if (isSameOrBeneath(it->first, top)) {
            m_dirty.remove(it->first);
            it = m_loaded.erase(it);
        } else {
            ++it;
        }
    }
    m_last = nullptr;
    Execution run(m_remove);
    run.bind(1, top);
    return run.run();
}

QStringList SqliteSettings::sections()
{
    QStringList result;
    if (!m_db || (m_inTransaction && !writeDirtySections())) return result;
    Execution run(m_sections);
    while (run.step())
        result << columnText(m_sections, 0);
    return result;
}

bool SqliteSettings::beginWrite()
{
    if (!exec("BEGIN IMMEDIATE")) return false;
    forgetIfChangedElsewhere();
    m_inTransaction = true;
    return true;
}

bool SqliteSettings::commitWrite()
{
    const bool committed = writeDirtySections() && exec("COMMIT");
    m_inTransaction = false;
    if (committed) return true;
    Log(QStringLiteral("Settings not committed: %1 (SqliteSettings)")
            .arg(QString::fromUtf8(sqlite3_errmsg(m_db))));
    exec("ROLLBACK");
    // What the memory holds beyond the file is gone with the rollback.
    forgetLoaded();
    return false;
}

bool SqliteSettings::writeDirtySections()
{
    bool ok = true;
    for (const QString &fold : std::as_const(m_dirty)) {
        const auto found = m_loaded.find(fold);
        if (found == m_loaded.end()) continue;
        Execution run(m_write);
        run.bind(1, fold);
        run.bind(2, found->second.name());
        run.bindBlob(3, found->second.encode());
        ok = run.run() && ok;
    }
    m_dirty.clear();
    return ok;
}

void SqliteSettings::beginBatch()
{
    if (m_db && m_batchDepth++ == 0) beginWrite();
}

void SqliteSettings::endBatch()
{
    if (m_batchDepth == 0 || --m_batchDepth > 0 || !m_inTransaction) return;
    commitWrite();
}

} // namespace Tarnby
