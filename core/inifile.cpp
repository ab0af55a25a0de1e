#include "core/inifile.h"

#include "core/files.h"
#include "core/log.h"

#include <QFile>
#include <QTimer>

#include <sys/stat.h>

namespace Tarnby
{

namespace
{

const QString kMultiLine = QStringLiteral("@ml:");

bool sameName(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString stripQuotes(const QString &value)
{
    if (value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
        value.back() == value.front())
        return value.mid(1, value.size() - 2);
    return value;
}

QList<IniFile::Section> parse(const QString &text)
{
    QList<IniFile::Section> sections;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (QString line : lines) {
        if (line.endsWith(u'\r')) line.chop(1);
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(u'[')) {
            const qsizetype close = trimmed.indexOf(u']');
            if (close > 0) sections.append({trimmed.mid(1, close - 1).trimmed(), {}});
            continue;
        }
        if (sections.isEmpty()) continue; // lines before the first section belong to nothing
        if (trimmed.isEmpty() || trimmed.startsWith(u';')) {
            sections.last().entries.append({QString(), QString(), line});
            continue;
        }
        const qsizetype eq = line.indexOf(u'=');
        if (eq <= 0 || line.left(eq).trimmed().isEmpty())
            continue; // malformed: skipped, as the profile API does
        sections.last().entries.append({line.left(eq).trimmed(),
                                        DecodeIniValue(stripQuotes(line.mid(eq + 1).trimmed())),
                                        QString()});
    }
    return sections;
}

} // namespace

QString EncodeIniValue(const QString &value)
{
    if (!value.contains(u'\n') && !value.contains(u'\r') && !value.startsWith(kMultiLine))
        return value;
    QString encoded = value;
    encoded.replace(u'%', QStringLiteral("%25"))
        .replace(u'\r', QStringLiteral("%0D"))
        .replace(u'\n', QStringLiteral("%0A"));
    return kMultiLine + encoded;
}

QString DecodeIniValue(const QString &stored)
{
    if (!stored.startsWith(kMultiLine)) return stored;
    QString decoded = stored.mid(kMultiLine.size());
    decoded.replace(QStringLiteral("%0A"), QStringLiteral("\n"))
        .replace(QStringLiteral("%0D"), QStringLiteral("\r"))
        .replace(QStringLiteral("%25"), QStringLiteral("%"));
    return decoded;
}

IniFile::IniFile(const QString &path) : m_path(path)
{
    load();
}

IniFile::~IniFile()
{
    flush();
}

IniFile::Stamp IniFile::statFile() const
{
    struct stat st {
    };
    if (::stat(QFile::encodeName(m_path).constData(), &st) != 0) return {};
    return {st.st_ino, st.st_size, qint64(st.st_mtim.tv_sec) * 1000000000 + st.st_mtim.tv_nsec};
}

void IniFile::load()
{
    m_stamp = statFile();
    m_sections = parse(ReadFile(m_path));
    for (const PendingWrite &write : std::as_const(m_pending))
        apply(write);
}

void IniFile::refreshIfChanged()
{
    if (!(statFile() == m_stamp)) load();
}

IniFile::Section *IniFile::findSection(const QString &name)
{
    for (Section &section : m_sections)
        if (sameName(section.name, name)) return &section;
    return nullptr;
}

void IniFile::apply(const PendingWrite &write)
{
    Section *section = findSection(write.section);
    if (!section) {
        m_sections.append({write.section, {}});
        section = &m_sections.last();
    }
    for (Entry &entry : section->entries) {
        if (!entry.key.isEmpty() && sameName(entry.key, write.key)) {
            entry.key = write.key;
            entry.value = write.value;
            return;
        }
    }
    section->entries.append({write.key, write.value, QString()});
}

QString IniFile::value(const QString &section, const QString &key)
{
    refreshIfChanged();
    if (const Section *found = findSection(section))
        for (const Entry &entry : found->entries)
            if (!entry.key.isEmpty() && sameName(entry.key, key)) return entry.value;
    return {};
}

void IniFile::setValue(const QString &section, const QString &key, const QString &value)
{
    if (section.trimmed().isEmpty() || key.trimmed().isEmpty()) return;
    refreshIfChanged();
    const PendingWrite write{section.trimmed(), key.trimmed(), value};
    m_pending.append(write);
    apply(write);
    scheduleFlush();
}

QStringList IniFile::keys(const QString &section)
{
    refreshIfChanged();
    QStringList result;
    if (const Section *found = findSection(section))
        for (const Entry &entry : found->entries)
            if (!entry.key.isEmpty()) result << entry.key;
    return result;
}

QStringList IniFile::sections()
{
    refreshIfChanged();
    QStringList result;
    for (const Section &section : std::as_const(m_sections))
        result << section.name;
    return result;
}

QString IniFile::render() const
{
    QString text;
    for (const Section &section : m_sections) {
        text += QLatin1Char('[') + section.name + QStringLiteral("]\r\n");
        for (const Entry &entry : section.entries)
            text += entry.key.isEmpty() ? entry.raw + QStringLiteral("\r\n")
                                        : entry.key + QLatin1Char('=') +
                                              EncodeIniValue(entry.value) + QStringLiteral("\r\n");
    }
    return text;
}

void IniFile::scheduleFlush()
{
    if (m_flushScheduled) return;
    m_flushScheduled = true;
    QTimer::singleShot(0, &m_flushContext, [this] { flush(); });
}

bool IniFile::flush()
{
    m_flushScheduled = false;
    if (m_pending.isEmpty()) return true;
    refreshIfChanged(); // another writer's keys survive; ours are laid over them
    if (!WriteFileAtomic(m_path, render())) {
        Log(QStringLiteral("Settings file %1 could not be written (IniFile)").arg(m_path));
        return false;
    }
    m_pending.clear();
    m_stamp = statFile();
    return true;
}

} // namespace Tarnby
