#include "template/stringbuilder.h"

#include <algorithm>

namespace Tarnby
{

cStringBuilder::cStringBuilder(qsizetype chunkSize) : m_chunkSize(std::max<qsizetype>(1, chunkSize))
{
}

void cStringBuilder::reserveFor(qsizetype extra)
{
    const qsizetype needed = m_text.size() + extra;
    if (needed <= m_text.capacity()) return;
    // Grow by at least a chunk and at least half of what is there, so that many small
    // appends cost a few copies in all.
    const qsizetype growth = std::max({m_chunkSize, extra, m_text.size() / 2});
    m_text.reserve(m_text.size() + growth);
}

void cStringBuilder::Append(QStringView text)
{
    reserveFor(text.size());
    m_text.append(text);
}

void cStringBuilder::Insert(qsizetype position, QStringView text)
{
    if (position < 0 || position > m_text.size()) {
        Append(text);
        return;
    }
    reserveFor(text.size());
    m_text.insert(position, text);
}

void cStringBuilder::Remove(qsizetype position, qsizetype length)
{
    if (position < 0 || position >= m_text.size() || length <= 0) return;
    m_text.remove(position, std::min(length, m_text.size() - position));
}

qsizetype cStringBuilder::Find(QStringView text, qsizetype from) const
{
    return m_text.indexOf(text, std::max<qsizetype>(0, from));
}

void cStringBuilder::Clear()
{
    m_text.resize(0);
}

QString cStringBuilder::take()
{
    QString out = std::move(m_text);
    m_text = QString();
    return out;
}

} // namespace Tarnby
