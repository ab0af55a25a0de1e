#include "template/tokentext.h"

#include <algorithm>

namespace Tarnby
{

namespace
{

// Longer words are no token of any pass; parameter forms such as "[DATE dddd d mmmm]"
// stay well below it.
constexpr qsizetype kMaxWord = 128;

bool isBracket(QChar c)
{
    return c == u'[' || c == u']';
}

bool hasBracket(QStringView text)
{
    // Tokens are short: a plain walk costs less than two vector searches.
    if (text.size() <= kMaxWord)
        return std::any_of(text.begin(), text.end(), [](QChar c) { return isBracket(c); });
    return text.contains(u'[') || text.contains(u']');
}

// "[NAME]": a closed word with no other bracket inside.
bool isWordForm(QStringView text)
{
    return text.size() >= 2 && text.size() <= kMaxWord && text.front() == u'[' &&
           text.back() == u']' && !hasBracket(text.mid(1, text.size() - 2));
}

// "[NAME": the start of a word.
bool isPrefixForm(QStringView text)
{
    return !text.isEmpty() && text.size() <= kMaxWord && text.front() == u'[' &&
           !hasBracket(text.mid(1));
}

// Walks every "[" of a text in order and tells where the next bracket character stands
// behind it. Each search runs from where the last one ended, so the walk is linear.
class BracketWalk
{
public:
    explicit BracketWalk(QStringView text) : m_text(text) { m_open = text.indexOf(u'['); }
    bool done() const { return m_open < 0; }
    qsizetype open() const { return m_open; }
    // The next "]" behind the current "[", or -1.
    qsizetype close()
    {
        if (!m_closeExhausted && m_close <= m_open) {
            m_close = m_text.indexOf(u']', m_open + 1);
            m_closeExhausted = m_close < 0;
        }
        return m_closeExhausted ? -1 : m_close;
    }
    // Where the first bracket character behind the current "[" stands (the text's size
    // when there is none), and whether it is a "]".
    qsizetype nextBracket()
    {
        const qsizetype c = close(), o = nextOpen();
        qsizetype next = c >= 0 ? c : m_text.size();
        if (o >= 0 && o < next) next = o;
        return next;
    }
    bool closesFirst() { return close() >= 0 && nextBracket() == close(); }
    // The next "[" behind the current one, or -1.
    qsizetype nextOpen()
    {
        if (m_nextOpen <= m_open) m_nextOpen = m_text.indexOf(u'[', m_open + 1);
        return m_nextOpen;
    }
    void advance() { m_open = nextOpen(); }
    // Moves on to the first "[" at or behind a position.
    void skipTo(qsizetype position) { m_open = m_text.indexOf(u'[', position); }

private:
    QStringView m_text;
    qsizetype m_open = -1;
    qsizetype m_close = -1;
    qsizetype m_nextOpen = -1;
    bool m_closeExhausted = false;
};

} // namespace

QString TextBetween(const QString &text, QStringView opening, QStringView closing,
                    const QString &fallback)
{
    const qsizetype start = text.indexOf(opening);
    if (start < 0) return fallback;
    const qsizetype from = start + opening.size();
    const qsizetype end = text.indexOf(closing, from);
    return end < 0 ? fallback : text.mid(from, end - from);
}

namespace
{
bool s_referenceMode = false;
} // namespace

void TokenText::setReferenceMode(bool on)
{
    s_referenceMode = on;
}

TokenText::TokenText(QString text) : m_text(std::move(text)), m_literal(s_referenceMode) {}

void TokenText::prepareIndex() const
{
    if (!m_literal) index();
}

void TokenText::dropIndex()
{
    m_index.reset();
    m_replaced.clear();
    m_segmentsTaken.clear();
}

const TokenText::Index &TokenText::index() const
{
    if (m_index) return *m_index;
    auto index = std::make_shared<Index>();
    const QStringView all(m_text);
    bool openBefore = false; // a "[" not yet closed stands before the current one
    for (BracketWalk walk(all); !walk.done(); walk.advance()) {
        const qsizetype open = walk.open();
        const qsizetype segmentEnd = walk.nextBracket();
        ++index->segments[all.mid(open, std::min(segmentEnd - open, kMaxWord))];
        const bool closedHere = walk.closesFirst();
        if (closedHere && segmentEnd - open + 1 <= kMaxWord) {
            const QStringView word = all.mid(open, segmentEnd - open + 1);
            ++index->words[word];
            if (openBefore) index->shadowed.insert(word, true);
        }
        openBefore = !closedHere;
    }
    m_index = std::move(index);
    return *m_index;
}

bool TokenText::isIndexedToken(QStringView token) const
{
    return index().words.value(token) > 0 && !m_replaced.contains(token);
}

bool TokenText::isIndexedPrefix(QStringView prefix) const
{
    const Index &index = this->index();
    if (!index.sorted) {
        index.sortedSegments = index.segments.keys();
        std::sort(index.sortedSegments.begin(), index.sortedSegments.end());
        index.sorted = true;
    }
    auto it = std::lower_bound(index.sortedSegments.cbegin(), index.sortedSegments.cend(), prefix);
    for (; it != index.sortedSegments.cend() && it->startsWith(prefix); ++it) {
        if (index.segments.value(*it) > m_segmentsTaken.value(*it)) return true;
    }
    return false;
}

bool TokenText::contains(QStringView token)
{
    if (!m_literal) {
        if (isWordForm(token)) return isIndexedToken(token);
        if (isPrefixForm(token)) return isIndexedPrefix(token);
    }
    return text().contains(token);
}

bool TokenText::containsIgnoringCase(QStringView token)
{
    if (m_literal || !isWordForm(token)) return text().contains(token, Qt::CaseInsensitive);
    const QHash<QStringView, qsizetype> &words = index().words;
    for (auto it = words.cbegin(); it != words.cend(); ++it) {
        if (it.key().compare(token, Qt::CaseInsensitive) == 0 && isIndexedToken(it.key()))
            return true;
    }
    return false;
}

void TokenText::replace(const QString &token, const QString &value)
{
    if (m_literal || !isWordForm(token) || hasBracket(value) || index().shadowed.contains(token)) {
        replaceLiterally(token, value, Qt::CaseSensitive);
        return;
    }
    const auto word = index().words.constFind(QStringView(token));
    if (word == index().words.cend() || m_replaced.contains(word.key())) return;
    const QStringView key = word.key();
    const qsizetype count = word.value();
    // The value has no bracket and the token closes no earlier "[": every other word,
    // and every segment but the token's own, stays as it is.
    m_segmentsTaken[key.chopped(1)] += count;
    m_replaced.insert(key, true);
    m_pending.insert(key, value);
    m_pendingGrowth += count * (value.size() - token.size());
}

void TokenText::replaceIgnoringCase(const QString &token, const QString &value)
{
    if (m_literal || !isWordForm(token) || hasBracket(value)) {
        replaceLiterally(token, value, Qt::CaseInsensitive);
        return;
    }
    QList<QString> spellings;
    const QHash<QStringView, qsizetype> &words = index().words;
    for (auto it = words.cbegin(); it != words.cend(); ++it) {
        if (it.key().compare(token, Qt::CaseInsensitive) == 0 && isIndexedToken(it.key()))
            spellings.append(it.key().toString());
    }
    const bool anyShadowed =
        std::any_of(spellings.cbegin(), spellings.cend(),
                    [this](const QString &s) { return index().shadowed.contains(QStringView(s)); });
    if (anyShadowed) {
        replaceLiterally(token, value, Qt::CaseInsensitive);
        return;
    }
    for (const QString &spelling : spellings)
        replace(spelling, value);
}

void TokenText::replaceLiterally(const QString &token, const QString &value, Qt::CaseSensitivity cs)
{
    if (token.isEmpty()) return;
    text();
    if (!m_text.contains(token, cs)) return;
    m_text.replace(token, value, cs);
    dropIndex();
}

QStringView TokenText::wordAt(qsizetype open) const
{
    const QStringView all(m_text);
    for (qsizetype i = open + 1; i < all.size() && i - open < kMaxWord; ++i) {
        if (isBracket(all[i])) return all[i] == u']' ? all.mid(open, i - open + 1) : QStringView();
    }
    return {};
}

QString TokenText::between(const QString &opening, const QString &closing, const QString &fallback)
{
    if (m_pending.isEmpty() || !isPrefixForm(opening) || closing != QStringLiteral("]"))
        return TextBetween(text(), opening, closing, fallback);
    // A pending token starts with its own "[", and none lies inside the word that the
    // opening begins (it would stand behind an open "[", and is then never pending), so
    // only hits that are pending tokens themselves must be passed over.
    for (qsizetype at = m_text.indexOf(opening); at >= 0; at = m_text.indexOf(opening, at + 1)) {
        if (m_pending.contains(wordAt(at))) continue;
        const qsizetype from = at + opening.size();
        const qsizetype end = m_text.indexOf(closing, from);
        return end < 0 ? fallback : m_text.mid(from, end - from);
    }
    return fallback;
}

void TokenText::applyPending()
{
    if (m_pending.isEmpty()) return;
    const QStringView all(m_text);
    QString out;
    out.reserve(m_text.size() + std::max<qsizetype>(0, m_pendingGrowth));
    qsizetype copied = 0;
    BracketWalk walk(all);
    while (!walk.done()) {
        const qsizetype open = walk.open();
        const qsizetype close = walk.close();
        const auto hit = walk.closesFirst() ? m_pending.constFind(all.mid(open, close - open + 1))
                                            : m_pending.cend();
        if (hit == m_pending.cend()) {
            walk.advance();
            continue;
        }
        out.append(all.mid(copied, open - copied));
        out.append(hit.value());
        copied = close + 1;
        walk.skipTo(copied);
    }
    out.append(all.mid(copied));
    m_pending.clear();
    m_pendingGrowth = 0;
    m_text = std::move(out);
    dropIndex();
}

const QString &TokenText::text()
{
    applyPending();
    return m_text;
}

QString TokenText::take()
{
    applyPending();
    QString out = std::move(m_text);
    m_text = QString();
    dropIndex();
    return out;
}

} // namespace Tarnby
