#pragma once
// Seeded text mutation for the randomized tests: a few random edits of a real document,
// drawing characters and pieces from the test's own alphabet.

#include <QString>
#include <QStringList>

#include <random>

namespace Tarnby::Test
{

class Mutator
{
public:
    // `pieces`: characters or fragments of the input's own layout, inserted whole.
    Mutator(std::uint32_t seed, QStringList pieces) : m_random(seed), m_pieces(std::move(pieces)) {}

    int pick(qsizetype high) { return std::uniform_int_distribution<int>(0, int(high))(m_random); }

    // Up to `maxEdits` edits: insert a piece, a copied run or any UTF-16 unit, remove, cut.
    QString mutated(QString text, int maxEdits = 4)
    {
        for (int edits = 1 + pick(maxEdits - 1); edits > 0; --edits) {
            const int at = pick(text.size());
            switch (pick(4)) {
            case 0:
                text.insert(at, m_pieces.at(pick(m_pieces.size() - 1)));
                break;
            case 1:
                text.remove(at, 1 + pick(7));
                break;
            case 2:
                text.insert(at, text.mid(pick(text.size()), 1 + pick(15)));
                break;
            case 3:
                text.insert(at, QChar(char16_t(1 + pick(0xFFFC))));
                break;
            default:
                text.truncate(at);
            }
        }
        return text;
    }

    // One time in three a random text of up to `maxLength` pieces, else one of `seeds` with
    // up to `maxEdits` edits.
    QString next(const QStringList &seeds, int maxLength, int maxEdits = 4)
    {
        if (pick(2) == 0) return randomText(maxLength);
        return mutated(seeds.at(pick(seeds.size() - 1)), maxEdits);
    }

    // Up to `maxLength` pieces in a row.
    QString randomText(int maxLength)
    {
        QString text;
        for (int length = pick(maxLength); length > 0; --length)
            text += m_pieces.at(pick(m_pieces.size() - 1));
        return text;
    }

private:
    std::mt19937 m_random;
    QStringList m_pieces;
};

// Every character of `alphabet` as a piece of its own.
inline QStringList characters(const QString &alphabet)
{
    QStringList pieces;
    for (const QChar c : alphabet)
        pieces << QString(c);
    return pieces;
}

} // namespace Tarnby::Test
