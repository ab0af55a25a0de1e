#pragma once
// The step every pass is made of: when the token occurs, compute its value once and
// replace every occurrence; when it does not, compute nothing.

#include "template/cachereads.h"
#include "template/tokentext.h"

#include <QList>
#include <QString>

#include <initializer_list>

namespace Tarnby
{

template <class ValueFn> void expandToken(TokenText &text, const QString &token, ValueFn &&value)
{
    if (text.contains(token)) text.replace(token, value());
}

template <class ValueFn>
void expandTokenIgnoringCase(TokenText &text, const QString &token, ValueFn &&value)
{
    if (text.containsIgnoringCase(token)) text.replaceIgnoringCase(token, value());
}

// A family behind its gate: run only when a token beginning with the gate occurs.
template <class ExpandFn> void gated(TokenText &text, const char16_t *gate, ExpandFn expand)
{
    if (text.contains(QStringView(gate))) expand();
}

// A pass run on a whole text by itself, with the cache kept for its length.
template <class PassFn> QString runPass(QString text, PassFn pass)
{
    const ExpansionCache cache;
    TokenText working(std::move(text));
    pass(working);
    return working.take();
}

// The text without the blanks (spaces only) at either end.
inline QString TrimBlanks(const QString &text)
{
    qsizetype first = 0, last = text.size();
    while (first < last && text.at(first) == u' ')
        ++first;
    while (last > first && text.at(last - 1) == u' ')
        --last;
    return text.mid(first, last - first);
}

// "[" + name + "]" or "[" + name + " " + suffix + "]".
inline QString tokenName(const QString &name, const QString &suffix = QString())
{
    if (suffix.isEmpty()) return QString(u'[' + name + u']');
    return QString(u'[' + name + u' ' + suffix + u']');
}

// The tokens of one stem with a list of suffixes ("[TEMP]", "[TEMP ROUND]", ...), made
// once: a family is declared as a constant and tried for every row.
class TokenFamily
{
public:
    struct Member {
        QString token;
        QString suffix;
    };
    TokenFamily(const char *stem, const QList<const char *> &suffixes)
    {
        for (const char *suffix : suffixes) {
            const QString words = QString::fromLatin1(suffix);
            m_members.append({tokenName(QString::fromLatin1(stem), words), words});
        }
    }
    const QList<Member> &members() const { return m_members; }

private:
    QList<Member> m_members;
};

// The suffixes of the highs, lows and spans of a temperature, here and in forecast periods.
inline const QList<const char *> kHighLowSuffixes{"",
                                                  "DEGREE",
                                                  "PLAIN",
                                                  "PLAIN SINGLE",
                                                  "PLAIN ROUND",
                                                  "PLAIN ROUND SINGLE",
                                                  "PLAIN NOT CONVERTED",
                                                  "RETURN",
                                                  "PARENS"};

// Every member of the family that occurs, with value(suffix) as its value.
template <class ValueFn>
void expandFamily(TokenText &text, const TokenFamily &family, ValueFn value)
{
    for (const TokenFamily::Member &member : family.members())
        expandToken(text, member.token, [&] { return value(member.suffix); });
}

} // namespace Tarnby
