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

// Section and key names compare without regard to case; "\" separates levels. The
// primary key holds the names folded to lower case (ASCII, as SQLite's NOCASE folds),
// so that a lookup compares bytes: a NOCASE compare of the long common prefix of cache
// sections ("Cache\KDSM\Hourly") was most of the cost of a write. The names as first
// written are kept for listing.
constexpr int kSchemaVersion = 1;
constexpr const char *kSchema = "CREATE TABLE IF NOT EXISTS settings ("
                                " section_fold TEXT NOT NULL,"
                                " key_fold TEXT NOT NULL,"
                                " section TEXT NOT NULL,"
                                " key TEXT NOT NULL,"
                                " value TEXT NOT NULL,"
                                " PRIMARY KEY (section_fold, key_fold)) WITHOUT ROWID";

// Files of the first form kept the names under NOCASE; their rows move over as they are.
constexpr const char *kUpgradeFromFirstForm =
    "ALTER TABLE settings RENAME TO settings_v0;"
    "CREATE TABLE settings ("
    " section_fold TEXT NOT NULL, key_fold TEXT NOT NULL, section TEXT NOT NULL,"
    " key TEXT NOT NULL, value TEXT NOT NULL,"
    " PRIMARY KEY (section_fold, key_fold)) WITHOUT ROWID;"
    "INSERT OR REPLACE INTO settings"
    " SELECT lower(section), lower(key), section, key, value FROM settings_v0;"
    "DROP TABLE settings_v0;";

// The UTF-8 of a name with A-Z made a-z.
QByteArray folded(const QString &name)
{
    QByteArray utf8 = name.toUtf8();
    for (char &c : utf8)
        if (c >= 'A' && c <= 'Z') c = char(c - 'A' + 'a');
    return utf8;
}

QString columnText(sqlite3_stmt *stmt, int column)
{
    const void *data = sqlite3_column_text16(stmt, column);
    const int bytes = sqlite3_column_bytes16(stmt, column);
    return data ? QString(static_cast<const QChar *>(data), bytes / int(sizeof(QChar))) : QString();
}

// One execution of a statement: the texts bound to it, kept in UTF-8 for as long as the
// binding lasts (SQLite neither copies nor converts them), and the reset of the statement
// when the scope ends, whatever path leaves it.
class Execution
{
public:
    explicit Execution(sqlite3_stmt *stmt) : m_stmt(stmt) {}
    ~Execution()
    {
        if (m_stmt) {
            sqlite3_reset(m_stmt);
            sqlite3_clear_bindings(m_stmt);
        }
    }
    Execution(const Execution &) = delete;
    Execution &operator=(const Execution &) = delete;

    // Parameter index from 1; a null text is bound as the empty text.
    void bind(int index, const QString &text) { bindUtf8(index, text.toUtf8()); }
    // A name as the primary key holds it.
    void bindName(int index, const QString &name) { bindUtf8(index, folded(name)); }
    // Bytes that outlive the execution.
    void bindKept(int index, const QByteArray &utf8)
    {
        sqlite3_bind_text(m_stmt, index, utf8.isNull() ? "" : utf8.constData(), int(utf8.size()),
                          SQLITE_STATIC);
    }

private:
    void bindUtf8(int index, QByteArray utf8)
    {
        QByteArray &kept = m_texts[size_t(index - 1)];
        kept = std::move(utf8);
        sqlite3_bind_text(m_stmt, index, kept.isNull() ? "" : kept.constData(), int(kept.size()),
                          SQLITE_STATIC);
    }

    sqlite3_stmt *m_stmt;
    std::array<QByteArray, 5> m_texts;
};

} // namespace

SqliteSettings::SqliteSettings(const QString &file) : m_file(file)
{
    if (openFile(file) && isSound()) return;
    closeDb();
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
    sqlite3_exec(m_db, "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL;", nullptr, nullptr,
                 nullptr);
    if (!createSchema()) return false;
    m_get = prepare("SELECT value FROM settings WHERE section_fold = ?1 AND key_fold = ?2");
    m_set = prepare("INSERT INTO settings VALUES (?1, ?2, ?3, ?4, ?5) "
                    "ON CONFLICT (section_fold, key_fold) DO UPDATE SET value = excluded.value");
    // A section and its sub-sections ("a\..."), found in the primary key's range from "a"
    // up to "a]", "]" being the character after "\": a test of each name's start would
    // read the whole table. Names such as "a[" in the range are left by the condition.
    m_remove = prepare("DELETE FROM settings WHERE section_fold >= ?1 AND section_fold < ?1 || ']' "
                       "AND (section_fold = ?1 OR section_fold >= ?1 || '\\')");
    m_keys = prepare("SELECT key FROM settings WHERE section_fold = ?1");
    m_sections = prepare("SELECT min(section) FROM settings GROUP BY section_fold "
                         "ORDER BY section_fold");
    m_values = prepare("SELECT key, value FROM settings WHERE section_fold = ?1");
    return m_get && m_set && m_remove && m_keys && m_sections && m_values;
}

bool SqliteSettings::createSchema()
{
    const int version = pragmaValue("PRAGMA user_version");
    const bool firstForm =
        version == 0 &&
        pragmaValue("SELECT count(*) FROM pragma_table_info('settings') "
                    "WHERE name = 'section_fold'") == 0 &&
        pragmaValue("SELECT count(*) FROM sqlite_master WHERE name = 'settings'") == 1;
    if (firstForm) {
        const bool moved =
            sqlite3_exec(m_db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK &&
            sqlite3_exec(m_db, kUpgradeFromFirstForm, nullptr, nullptr, nullptr) == SQLITE_OK;
        sqlite3_exec(m_db, moved ? "COMMIT" : "ROLLBACK", nullptr, nullptr, nullptr);
        if (!moved) return false;
        Log(QStringLiteral("Settings database moved to its folded-name form (SqliteSettings)"));
    }
    if (sqlite3_exec(m_db, kSchema, nullptr, nullptr, nullptr) != SQLITE_OK) return false;
    const QByteArray setVersion = "PRAGMA user_version = " + QByteArray::number(kSchemaVersion);
    return sqlite3_exec(m_db, setVersion.constData(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

int SqliteSettings::pragmaValue(const char *sql)
{
    sqlite3_stmt *stmt = prepare(sql);
    if (!stmt) return -1;
    const int value = sqlite3_step(stmt) == SQLITE_ROW ? sqlite3_column_int(stmt, 0) : -1;
    sqlite3_finalize(stmt);
    return value;
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
    for (sqlite3_stmt **stmt : {&m_get, &m_set, &m_remove, &m_keys, &m_sections, &m_values}) {
        sqlite3_finalize(*stmt);
        *stmt = nullptr;
    }
    if (m_db) sqlite3_close(m_db);
    m_db = nullptr;
}

sqlite3_stmt *SqliteSettings::prepare(const char *sql)
{
    sqlite3_stmt *stmt = nullptr;
    if (sqlite3_prepare_v3(m_db, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK)
        return nullptr;
    return stmt;
}

QString SqliteSettings::value(const QString &section, const QString &key)
{
    if (!m_db) return {};
    Execution run(m_get);
    run.bindKept(1, sectionBytes(section).folded);
    run.bindName(2, key);
    return sqlite3_step(m_get) == SQLITE_ROW ? columnText(m_get, 0) : QString();
}

bool SqliteSettings::setValue(const QString &section, const QString &key, const QString &value)
{
    if (!m_db) return false;
    const SectionBytes &bytes = sectionBytes(section);
    Execution run(m_set);
    run.bindKept(1, bytes.folded);
    run.bindName(2, key);
    run.bindKept(3, bytes.utf8);
    run.bind(4, key);
    run.bind(5, value);
    if (sqlite3_step(m_set) == SQLITE_DONE) return true;
    Log(QStringLiteral("Settings write %1/%2 failed: %3 (SqliteSettings)")
            .arg(section, key, QString::fromUtf8(sqlite3_errmsg(m_db))));
    return false;
}

const SqliteSettings::SectionBytes &SqliteSettings::sectionBytes(const QString &section)
{
    if (section != m_section.name || m_section.utf8.isNull()) {
        m_section.name = section;
        m_section.utf8 = section.toUtf8();
        m_section.folded = folded(section);
    }
    return m_section;
}

bool SqliteSettings::removeSection(const QString &section)
{
    if (!m_db || section.isEmpty()) return false;
    Execution run(m_remove);
    run.bindName(1, section);
    return sqlite3_step(m_remove) == SQLITE_DONE;
}

QStringList SqliteSettings::keys(const QString &section)
{
    QStringList result;
    if (!m_db) return result;
    Execution run(m_keys);
    run.bindName(1, section);
    while (sqlite3_step(m_keys) == SQLITE_ROW)
        result << columnText(m_keys, 0);
    return result;
}

QList<std::pair<QString, QString>> SqliteSettings::values(const QString &section)
{
    QList<std::pair<QString, QString>> result;
    if (!m_db) return result;
    Execution run(m_values);
    run.bindName(1, section);
    // The file stores UTF-8: reading it as such spares SQLite a conversion of every row.
    const auto utf8 = [this](int column) {
        return QString::fromUtf8(
            reinterpret_cast<const char *>(sqlite3_column_text(m_values, column)),
            sqlite3_column_bytes(m_values, column));
    };
    while (sqlite3_step(m_values) == SQLITE_ROW)
        result.append({utf8(0), utf8(1)});
    return result;
}

QStringList SqliteSettings::sections()
{
    QStringList result;
    if (!m_db) return result;
    Execution run(m_sections);
    while (sqlite3_step(m_sections) == SQLITE_ROW)
        result << columnText(m_sections, 0);
    return result;
}

void SqliteSettings::beginBatch()
{
    if (m_db && m_batchDepth++ == 0)
        m_inTransaction =
            sqlite3_exec(m_db, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) == SQLITE_OK;
}

void SqliteSettings::endBatch()
{
    if (m_batchDepth == 0 || --m_batchDepth > 0 || !m_inTransaction) return;
    m_inTransaction = false;
    if (sqlite3_exec(m_db, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK) return;
    Log(QStringLiteral("Settings batch not committed: %1 (SqliteSettings)")
            .arg(QString::fromUtf8(sqlite3_errmsg(m_db))));
    sqlite3_exec(m_db, "ROLLBACK", nullptr, nullptr, nullptr);
}

} // namespace Tarnby
