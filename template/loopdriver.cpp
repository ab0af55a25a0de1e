#include "template/loopdriver.h"

#include "core/log.h"
#include "derive/numberformat.h"
#include "template/passtools.h"

#include <algorithm>

namespace Tarnby
{

namespace
{

const QString kPieceMark = QStringLiteral("!@#$%^&*");

std::optional<int> wholeNumber(QStringView text)
{
    if (!isNumeric(text)) return std::nullopt;
    const std::optional<qint16> whole = roundToInt16(readNumber(text).value_or(0));
    return whole ? std::optional<int>(*whole) : std::nullopt;
}

// The first occurrence at or behind `from`, or -1. Loop syntax begins with "[", which is
// rare in a text whose tokens are expanded: looking for that character alone, and
// comparing where it stands, is several times faster than a general search.
qsizetype findSyntax(QStringView text, QStringView needle, qsizetype from = 0)
{
    for (qsizetype at = text.indexOf(u'[', from); at >= 0; at = text.indexOf(u'[', at + 1)) {
        if (text.mid(at).startsWith(needle)) return at;
    }
    return -1;
}

bool isDigit(QStringView text)
{
    return text.size() == 1 && text.front().isDigit();
}

} // namespace

bool LoopOutput::append(QStringView row)
{
    if (m_text.size() + row.size() > m_limit) return false;
    if (m_text.capacity() < m_text.size() + row.size())
        m_text.reserve(std::max(m_text.size() * 2, m_text.size() + row.size()));
    m_text.append(row);
    return true;
}

QString ExpandLoopConstructs(QString text, bool forceLoops, const LoopKind &kind,
                             const LoopRows &rows)
{
    // A head begins with its gate prefix: none can stand before the first gate.
    qsizetype from = 0;
    if (!forceLoops) {
        from = findSyntax(text, kind.gate);
        if (from < 0) return text;
    }
    for (;;) {
        const qsizetype head = findSyntax(text, kind.head, from);
        if (head < 0) break;
        const qsizetype bracket = text.indexOf(u']', head);
        if (bracket < 0) break;
        const qsizetype close = findSyntax(text, kind.closing, bracket + 1);
        if (close < 0) break;
        const qsizetype resume = std::min(text.size(), close + kind.resumeLength);
        LoopOutput out(kMaxExpandedText - (text.size() - (resume - head)));
        if (!rows(text.mid(head, bracket - head + 1),
                  LoopPieces(text.mid(bracket + 1, close - bracket - 1)), out)) {
            Log(QStringLiteral(
                    "Loop output beyond %1 characters, %2 left as it stands (ExpandTemplate)")
                    .arg(kMaxExpandedText)
                    .arg(kind.head.trimmed()));
            break;
        }
        text.replace(head, resume - head, out.take());
        // Nothing before the construct has changed, so no head can start earlier than
        // one that reaches into the rows just put in.
        from = std::max<qsizetype>(0, head - kind.head.size() + 1);
    }
    return text;
}

QStringList LoopPieces(QString body)
{
    body.remove(QStringLiteral("[TEMPLATE]"));
    body.replace(QStringLiteral("[/TEMPLATE]"), kPieceMark);
    body.remove(QStringLiteral("\r\n"));
    return TrimBlanks(body).split(kPieceMark);
}

std::optional<int> HeadNumber(const QString &headText, QStringView name)
{
    const qsizetype at = headText.indexOf(name);
    if (at < 0) return std::nullopt;
    const QStringView value = QStringView(headText).mid(at + name.size());
    return wholeNumber(isDigit(value.mid(1, 1)) ? value.left(2) : value.left(1));
}

int PeriodHeadCount(const QString &headText)
{
    const QString name = QStringLiteral("COUNT=");
    const qsizetype at = headText.indexOf(name);
    if (at < 0) return 5;
    const QStringView value = QStringView(headText).mid(at + name.size());
    return wholeNumber(value.left(2)).value_or(wholeNumber(value.left(1)).value_or(5));
}

QList<TokenText> PiecePrototypes(const QStringList &pieces)
{
    QList<TokenText> prototypes;
    for (const QString &piece : pieces) {
        prototypes.append(TokenText(piece));
        prototypes.last().prepareIndex();
    }
    return prototypes;
}

void PieceCycle::advance()
{
    if (m_pieces.size() > 1 && ++m_index > m_pieces.size() - 2) m_index = 0;
}

} // namespace Tarnby
