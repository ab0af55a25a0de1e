#pragma once
// The text that a pass of the expander works on.
//
// Expansion is a fixed sequence of whole-text replacements, each of one literal token,
// each tested first ("is the token there?"). Done literally, a skin of a few hundred
// kilobytes with some hundred tokens is searched and copied hundreds of times. TokenText
// gives the same result with one scan: it indexes every bracket word (from a "[" to the
// next "]"), answers "is the token there" and "is a word with this prefix there" from the
// index, and keeps replacements aside to apply them together when the text is read.
//
// A replacement whose effect the index cannot predict (a value that holds a bracket, or a
// token that stands behind a "[" still open, so that removing its "]" joins text into a
// new word) is carried out literally at once and the index made anew. The text read back
// is therefore always the text the literal sequence of replacements would give.

#include <QHash>
#include <QList>
#include <QString>
#include <QStringView>

#include <memory>

namespace Tarnby
{

// What stands between the first `opening` and the next `closing` behind it; `fallback`
// when either is missing.
QString TextBetween(const QString &text, QStringView opening, QStringView closing,
                    const QString &fallback = QString());

class TokenText
{
public:
    explicit TokenText(QString text = QString());
    // A copy shares the original's index: cheap to make for each row of a loop.
    // Makes the index now, so that copies made afterwards share it.
    void prepareIndex() const;

    // While on, texts made afterwards work on the plain text with plain searches and
    // replacements: the reference that the indexed form must agree with (for tests).
    static void setReferenceMode(bool on);

    // Whether the exact text occurs (case-sensitive). A token ("[NAME]") or a prefix of one
    // ("[NAME") is answered from the index; any other text makes the text whole first.
    bool contains(QStringView token);
    bool containsIgnoringCase(QStringView token);
    // Replaces every occurrence, left to right, as QString::replace does.
    void replace(const QString &token, const QString &value);
    void replaceIgnoringCase(const QString &token, const QString &value);
    // TextBetween on the text as it stands now.
    QString between(const QString &opening, const QString &closing,
                    const QString &fallback = QString());

    // The text with every replacement made.
    const QString &text();
    QString take();

private:
    // Where the bracket words of a text stand. Made once for a text and shared by its
    // copies (a loop's piece is copied for every row); replacements are kept beside it.
    struct Index {
        // Closed bracket words without another "[" inside, by occurrence count.
        QHash<QStringView, qsizetype> words;
        // Words of which some occurrence stands behind a "[" not yet closed.
        QHash<QStringView, bool> shadowed;
        // From each "[" up to the next bracket character, cut at a bound: every prefix
        // that holds no bracket but its first character occurs in the text exactly when
        // it is the start of one of these. By occurrence count.
        QHash<QStringView, qsizetype> segments;
        mutable QList<QStringView> sortedSegments;
        mutable bool sorted = false;
    };

    bool isIndexedToken(QStringView token) const;
    bool isIndexedPrefix(QStringView prefix) const;
    // The index of m_text, made when first asked for after the text changed.
    const Index &index() const;
    void dropIndex();
    void applyPending();
    void replaceLiterally(const QString &token, const QString &value, Qt::CaseSensitivity cs);
    QStringView wordAt(qsizetype open) const;

    QString m_text; // without the pending replacements; the index's views point into it
    bool m_literal;
    mutable std::shared_ptr<const Index> m_index;
    // Words replaced since the index was made, and what that took from their segments.
    QHash<QStringView, bool> m_replaced;
    QHash<QStringView, qsizetype> m_segmentsTaken;
    // Token (a key view of the index) to its value, not yet applied to m_text.
    QHash<QStringView, QString> m_pending;
    qsizetype m_pendingGrowth = 0;
};

} // namespace Tarnby
