#pragma once
// One section of the settings database as the program holds it: its keys in the order
// first written, found without regard to case, and the one-value form it is stored in.

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace Tarnby
{

// A name with A-Z made a-z: names compare as the desktop the program was first written
// for compares them, and as SQLite's NOCASE does.
QString FoldedName(const QString &name);

class StoredSection
{
public:
    using Entries = QList<std::pair<QString, QString>>;

    explicit StoredSection(const QString &name = QString()) : m_name(name) {}
    // The section read back from its stored form; nullopt when the bytes are not one.
    static std::optional<StoredSection> decode(const QString &name, const QByteArray &body);
    QByteArray encode() const;

    // The spelling the section was first written with.
    const QString &name() const { return m_name; }
    bool isEmpty() const { return m_entries.isEmpty(); }
    QString value(const QString &key) const;
    // Keeps the spelling of a key already present.
    void setValue(const QString &key, const QString &value);
    QStringList keys() const;
    const Entries &entries() const { return m_entries; }

private:
    QString m_name;
    Entries m_entries;
    QHash<QString, qsizetype> m_index; // folded key -> position in m_entries
};

} // namespace Tarnby
