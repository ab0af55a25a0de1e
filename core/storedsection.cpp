#include "core/storedsection.h"

#include <QStringEncoder>
#include <QtEndian>

#include <algorithm>

namespace Tarnby
{

namespace
{

// The stored form: for each key in order, the UTF-8 of the key and of the value, each
// behind its length in bytes as a little-endian 32-bit number. It reads back in one pass,
// with no escaping: a value may hold any character.
// Writes straight into the body: a section is encoded whole at each write of its own.
void appendText(QByteArray &body, QStringEncoder &toUtf8, const QString &text)
{
    const qsizetype lengthAt = body.size();
    body.resize(lengthAt + qsizetype(sizeof(quint32)) + toUtf8.requiredSpace(text.size()));
    char *const textAt = body.data() + lengthAt + sizeof(quint32);
    char *const end = toUtf8.appendToBuffer(textAt, text);
    qToLittleEndian(quint32(end - textAt), body.data() + lengthAt);
    body.truncate(end - body.constData());
}

class BodyReader
{
public:
    explicit BodyReader(const QByteArray &body) : m_body(body) {}
    bool atEnd() const { return m_at == m_body.size(); }
    std::optional<QString> text()
    {
        if (m_body.size() - m_at < qsizetype(sizeof(quint32))) return std::nullopt;
        const qsizetype length = qFromLittleEndian<quint32>(m_body.constData() + m_at);
        m_at += sizeof(quint32);
        if (m_body.size() - m_at < length) return std::nullopt;
        const QString text = QString::fromUtf8(m_body.constData() + m_at, length);
        m_at += length;
        return text;
    }

private:
    const QByteArray &m_body;
    qsizetype m_at = 0;
};

} // namespace

QString FoldedName(const QString &name)
{
    const auto upper = [](QChar c) { return c >= u'A' && c <= u'Z'; };
    if (std::none_of(name.cbegin(), name.cend(), upper)) return name;
    QString folded = name;
    for (QChar &c : folded)
        if (upper(c)) c = QChar(c.unicode() + (u'a' - u'A'));
    return folded;
}

std::optional<StoredSection> StoredSection::decode(const QString &name, const QByteArray &body)
{
    StoredSection section(name);
    BodyReader reader(body);
    while (!reader.atEnd()) {
        const std::optional<QString> key = reader.text();
        const std::optional<QString> value = key ? reader.text() : std::nullopt;
        if (!value) return std::nullopt;
        section.setValue(*key, *value);
    }
    return section;
}

QByteArray StoredSection::encode() const
{
    qsizetype size = 0;
    for (const auto &[key, value] : m_entries)
        size += 2 * qsizetype(sizeof(quint32)) + key.size() + value.size();
    QByteArray body;
    body.reserve(size + size / 8);
    QStringEncoder toUtf8(QStringEncoder::Utf8);
    for (const auto &[key, value] : m_entries) {
        appendText(body, toUtf8, key);
        appendText(body, toUtf8, value);
    }
    return body;
}

QString StoredSection::value(const QString &key) const
{
    const auto found = m_index.constFind(FoldedName(key));
    return found == m_index.cend() ? QString() : m_entries.at(*found).second;
}

void StoredSection::setValue(const QString &key, const QString &value)
{
    const QString folded = FoldedName(key);
    const auto found = m_index.constFind(folded);
    if (found != m_index.cend()) {
        m_entries[*found].second = value;
        return;
    }
    m_index.insert(folded, m_entries.size());
    m_entries.append({key, value});
}

QStringList StoredSection::keys() const
{
    QStringList keys;
    keys.reserve(m_entries.size());
    for (const auto &entry : m_entries)
        keys.append(entry.first);
    return keys;
}

} // namespace Tarnby
