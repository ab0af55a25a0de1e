#pragma once
// What the five forecast loops share: finding a construct, reading its COUNT= and
// START=, cutting its body into row pieces, and putting the rows in its place.
//
//   [DAILY LOOP COUNT=7 START=1][TEMPLATE]row[/TEMPLATE][TEMPLATE]row[/TEMPLATE][/DAILY LOOP]
//
// A loop searches the whole text from the beginning each time, so several constructs of
// one kind may follow one another; the first closing token ends a body, so they do not
// nest. A head without its "]" or its closing token ends that kind of loop and leaves
// the text as it stands. Output that would grow the text beyond kMaxExpandedText (a
// template whose bodies hold further heads multiplies itself) ends the loop the same way.

#include "template/tokentext.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace Tarnby
{

inline constexpr qsizetype kMaxExpandedText = 16 * 1024 * 1024;

// Every field begins with "[".
struct LoopKind {
    QString gate;    // "[DAILY "
    QString head;    // "[DAILY LOOP "
    QString closing; // "[/DAILY LOOP]"
    // From the closing token's start to where the text resumes; the moon loop drops the
    // two characters behind its token (a line end in a normal skin).
    qsizetype resumeLength;
};

// Collects a construct's rows and refuses to grow past a bound.
class LoopOutput
{
public:
    explicit LoopOutput(qsizetype limit) : m_limit(limit) {}
    // False once the output would pass the bound; the construct is then abandoned.
    bool append(QStringView row);
    QString take() { return std::move(m_text); }

private:
    QString m_text;
    qsizetype m_limit;
};

// Builds a construct's rows from its head text ("[DAILY LOOP COUNT=7]") and its pieces;
// false when the output refused a row.
using LoopRows =
    std::function<bool(const QString &headText, const QStringList &pieces, LoopOutput &out)>;

QString ExpandLoopConstructs(QString text, bool forceLoops, const LoopKind &kind,
                             const LoopRows &rows);

// The body cut into pieces: "[TEMPLATE]" removed, "[/TEMPLATE]" a separator, CR LF pairs
// removed, blanks trimmed. n tagged pieces give n + 1 entries, the last one empty; a body
// without tags gives one entry.
QStringList LoopPieces(QString body);

// A head parameter ("COUNT=", "START="): two characters when the second one is a digit,
// else one; no value (the default) when it is missing, "*" or unreadable. Counts and
// starts over two digits are therefore not understood.
std::optional<int> HeadNumber(const QString &headText, QStringView name);
// The period loop's COUNT=: the two characters behind it when they read as a number, else
// the one, else 5.
int PeriodHeadCount(const QString &headText);

// The pieces as working texts, indexed once: each row works on a copy.
QList<TokenText> PiecePrototypes(const QStringList &pieces);

// Steps through the pieces of a sequence loop, one a row: past the second-to-last entry
// (the last being the empty one) it returns to the first; a single entry repeats.
class PieceCycle
{
public:
    explicit PieceCycle(const QStringList &pieces) : m_pieces(PiecePrototypes(pieces)) {}
    // A fresh copy of the current piece.
    TokenText current() const { return m_pieces.at(m_index); }
    void advance();

private:
    QList<TokenText> m_pieces;
    qsizetype m_index = 0;
};

// The rows of a sequence loop: for i from 1 to count, the next piece with its tokens
// expanded by fill(row, i). False when the output refused a row.
template <class FillFn>
bool SequenceRows(const QStringList &pieces, int count, LoopOutput &out, FillFn fill)
{
    PieceCycle cycle(pieces);
    for (int i = 1; i <= count; ++i, cycle.advance()) {
        TokenText row = cycle.current();
        fill(row, i);
        if (!out.append(row.take())) return false;
    }
    return true;
}

} // namespace Tarnby
