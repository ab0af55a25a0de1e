#pragma once
// A growing text buffer for template output. Rows of a forecast loop and the cells of a
// graph are appended piece by piece; the buffer grows by whole chunks, so a long output
// is not copied again at every append.

#include <QString>
#include <QStringView>

namespace Tarnby
{

class cStringBuilder
{
public:
    // chunkSize: how many characters the buffer grows by at least; below 1 it is 1.
    explicit cStringBuilder(qsizetype chunkSize = 8192);

    void Append(QStringView text);
    // Appends each part in turn: Append(u"<TD STYLE='width:", width, u"%;'>").
    template <class... Parts> void Append(const Parts &...parts)
    {
        reserveFor((QStringView(parts).size() + ...));
        (m_text.append(QStringView(parts)), ...);
    }
    // Inserts at a position from 0; a position outside the text appends.
    void Insert(qsizetype position, QStringView text);
    // Removes up to length characters from position; what lies outside is ignored.
    void Remove(qsizetype position, qsizetype length);
    // The position of the first occurrence from `from` on, or -1.
    qsizetype Find(QStringView text, qsizetype from = 0) const;
    void Clear();
    qsizetype size() const { return m_text.size(); }
    QString toString() const { return m_text; }
    // Moves the text out and leaves the builder empty.
    QString take();

    qsizetype Capacity() const { return m_text.capacity(); }
    qsizetype ChunkSize() const { return m_chunkSize; }

private:
    void reserveFor(qsizetype extra);

    QString m_text;
    qsizetype m_chunkSize;
};

} // namespace Tarnby
