#pragma once
// The step every pass is made of: when the token occurs, compute its value once and
// replace every occurrence; when it does not, compute nothing.

#include "template/tokentext.h"

#include <QString>

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
    return suffix.isEmpty() ? u'[' + name + u']' : u'[' + name + u' ' + suffix + u']';
}

} // namespace Tarnby
