// The indexed working text against the literal sequence of replacements it stands for.

#include "template/stringbuilder.h"
#include "template/tokentext.h"

#include <QRandomGenerator>

#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

// Applies the same steps to the indexed and the literal text and compares after each.
struct Twin {
    explicit Twin(const QString &text) : fast(text), slow(reference(text)) {}
    static TokenText reference(const QString &text)
    {
        TokenText::setReferenceMode(true);
        TokenText literal(text);
        TokenText::setReferenceMode(false);
        return literal;
    }
    bool contains(const QString &t)
    {
        const bool a = fast.contains(t), b = slow.contains(t);
        EXPECT_EQ(a, b) << t.toStdString();
        return a;
    }
    void replace(const QString &t, const QString &v)
    {
        fast.replace(t, v);
        slow.replace(t, v);
    }
    void check() { ASSERT_EQ(fast.text(), slow.text()); }
    TokenText fast, slow;
};

TEST(TokenText, AnswersTokensAndPrefixes)
{
    TokenText t(QStringLiteral("a [TEMP] b [TEMP HIGH] c [SUNRISE] [open"));
    EXPECT_TRUE(t.contains(u"[TEMP]"));
    EXPECT_TRUE(t.contains(u"[TEMP HIGH]"));
    EXPECT_FALSE(t.contains(u"[TEMP LOW]"));
    EXPECT_TRUE(t.contains(u"[SUN"));
    EXPECT_FALSE(t.contains(u"[DAWN"));
    EXPECT_TRUE(t.contains(u"[op"));
    t.replace(QStringLiteral("[SUNRISE]"), QStringLiteral("6:01"));
    EXPECT_FALSE(t.contains(u"[SUN"));
    EXPECT_EQ(t.text(), QStringLiteral("a [TEMP] b [TEMP HIGH] c 6:01 [open"));
}

TEST(TokenText, ReplacingATokenBehindAnOpenBracketJoinsANewWord)
{
    Twin t(QStringLiteral("[TE[X]MP] and [TEMP]"));
    t.replace(QStringLiteral("[X]"), QString());
    EXPECT_TRUE(t.contains(QStringLiteral("[TEMP]")));
    t.replace(QStringLiteral("[TEMP]"), QStringLiteral("72"));
    t.check();
    EXPECT_EQ(t.fast.text(), QStringLiteral("72 and 72"));
}

// Random texts over a small alphabet rich in brackets, random token sequences: the
// indexed text must always read as the literal one.
TEST(TokenText, AgreesWithLiteralReplacementOnRandomTexts)
{
    QRandomGenerator rng(20240601);
    const QString alphabet = QStringLiteral("[[]]AB C");
    const QStringList tokens = {QStringLiteral("[A]"),  QStringLiteral("[B]"),
                                QStringLiteral("[AB]"), QStringLiteral("[A B]"),
                                QStringLiteral("[C]"),  QStringLiteral("[]")};
    const QStringList values = {QString(),           QStringLiteral("A"),   QStringLiteral("["),
                                QStringLiteral("]"), QStringLiteral("[A]"), QStringLiteral("x y"),
                                QStringLiteral("B]")};
    const QStringList prefixes = {QStringLiteral("[A"), QStringLiteral("[B"), QStringLiteral("[A "),
                                  QStringLiteral("[")};
    for (int round = 0; round < 3000; ++round) {
        QString text;
        const int length = rng.bounded(40);
        for (int i = 0; i < length; ++i)
            text += alphabet[rng.bounded(alphabet.size())];
        Twin t(text);
        for (int step = 0; step < 8; ++step) {
            for (const QString &p : prefixes)
                t.contains(p);
            const QString &token = tokens[rng.bounded(tokens.size())];
            if (t.contains(token)) t.replace(token, values[rng.bounded(values.size())]);
            if (rng.bounded(4) == 0) {
                EXPECT_EQ(t.fast.between(QStringLiteral("[A"), QStringLiteral("]")),
                          t.slow.between(QStringLiteral("[A"), QStringLiteral("]")));
            }
        }
        // A copy shares the index and the pending replacements, and goes its own way.
        TokenText copy = t.fast, literalCopy = t.slow;
        copy.replace(QStringLiteral("[B]"), QStringLiteral("b"));
        literalCopy.replace(QStringLiteral("[B]"), QStringLiteral("b"));
        EXPECT_EQ(copy.text(), literalCopy.text());
        t.check();
        if (HasFatalFailure()) return;
    }
}

TEST(StringBuilder, GrowsByChunksAndEdits)
{
    cStringBuilder b(4);
    b.Append(u"abc");
    b.Append(u"def");
    b.Insert(3, u"-");
    b.Insert(99, u"!");
    b.Remove(0, 1);
    b.Remove(50, 2);
    EXPECT_EQ(b.toString(), QStringLiteral("bc-def!"));
    EXPECT_EQ(b.Find(u"def"), 3);
    b.Clear();
    EXPECT_EQ(b.toString(), QString());
}

} // namespace
