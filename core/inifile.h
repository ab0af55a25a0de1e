#pragma once
// A profile file in the manner of the Windows profile API: "[section]" lines and
// "key=value" lines; section and key names trimmed and compared without regard to
// case; a value in matching quotes loses them; lines starting with ";" are comments;
// any other line is skipped. The first of two equal keys wins.
//
// The file is parsed once and re-read when another process replaces it. Writes change
// the parsed copy at once and reach the disk at the next turn of the event loop, at
// flush() or on destruction, always by writing a new file beside the old one and
// renaming it over, so a crash never leaves half a file. When the file changed on disk
// meanwhile, the pending writes are applied to the new content, not over it.
//
// A value holding line breaks is stored as "@ml:" followed by the value with "%", CR
// and LF percent-encoded, so that one line stays one key.

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <sys/types.h>

namespace Tarnby
{

class IniFile
{
public:
    explicit IniFile(const QString &path);
    ~IniFile();
    IniFile(const IniFile &) = delete;
    IniFile &operator=(const IniFile &) = delete;

    const QString &path() const { return m_path; }
    QString value(const QString &section, const QString &key);
    void setValue(const QString &section, const QString &key, const QString &value);
    QStringList keys(const QString &section);
    QStringList sections();
    // Writes pending changes now. Returns false when the file could not be written
    // (the changes stay pending and are tried again at the next flush).
    bool flush();

    // The text of a file for a given content, and the reverse; exposed for tests.
    struct Entry {
        QString key; // as written; empty for a comment line kept verbatim in raw
        QString value;
        QString raw;
    };
    struct Section {
        QString name;
        QList<Entry> entries;
    };

private:
    struct PendingWrite {
        QString section, key, value;
    };
    void refreshIfChanged();
    void load();
    void apply(const PendingWrite &write);
    Section *findSection(const QString &name);
    QString render() const;
    void scheduleFlush();

    QString m_path;
    QList<Section> m_sections;
    QList<PendingWrite> m_pending;
    // Identity of the file as last read or written: a change means another writer.
    struct Stamp {
        ino_t inode = 0;
        off_t size = -1;
        qint64 mtimeNs = 0;
        bool operator==(const Stamp &) const = default;
    } m_stamp;
    Stamp statFile() const;
    QObject m_flushContext; // pending flush timers die with the file object
    bool m_flushScheduled = false;
};

// Encoding of one value on one line, and its reverse.
QString EncodeIniValue(const QString &value);
QString DecodeIniValue(const QString &stored);

} // namespace Tarnby
