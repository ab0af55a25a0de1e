// Mutated alert answers through both parsers: nothing crashes or hangs, a damaged answer
// sets the run's flag, and what is read is well formed. Most rounds go through the
// readers alone; every hundredth one is stored and formatted as well.

#include "alerts/alertformat.h"
#include "core/files.h"
#include "tests/alerts/alertfixture.h"

#include <QFile>
#include <QSet>

#include <random>

using namespace Tarnby;
using Tarnby::Test::alertDocument;
using Tarnby::Test::AlertTest;

namespace
{

constexpr int kRounds = 300000;
constexpr int kStoredEvery = 100;

// Pieces of the answers' own layout, so that mutations reach past the first mark.
const char *const kTokens[] = {
    "}",
    "]",
    "{",
    "[",
    ",",
    "\"",
    "\r\n",
    "\n",
    "\\n",
    "\\r",
    "...",
    "* WHAT...",
    "<br>",
    "null",
    "true",
    "12.5",
    "\"properties\": {",
    "\"features\": [",
    "\"alertList\": [",
    "\"title\"",
    "\"description\": ",
    "\"effective\": ",
    "\"expires\": ",
    "\"headline\": ",
    "\"Message\": ",
    "\"AlertTypeName\": \"Tornado Warning\",\r\n",
    "\"event\": \"Test Message\",\n",
    "\"status\": \"Test\",\n",
    "\"NWSheadline\": [",
    " issued ",
    "Abduction",
    "\\nNational Weather Service ",
    "\\n\\n...",
    "\\n\\n&&\\r\\n\\r\\n",
    " remains ",
    " in effect ",
    "cancelled",
    "THE ",
    "ozone action day",
};

class Mutator
{
public:
    explicit Mutator(unsigned seed) : m_random(seed) {}

    QString mutate(QString text)
    {
        const int steps = pick(1, 6);
        for (int i = 0; i < steps; ++i)
            mutateOnce(text);
        return text;
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }
    qsizetype position(const QString &text) { return pick(0, int(text.size())); }

    void mutateOnce(QString &text)
    {
        const qsizetype at = position(text);
        switch (pick(0, 5)) {
        case 0:
            text.remove(at, pick(1, 64));
            break;
        case 1:
            text.insert(at, text.mid(position(text), pick(1, 256)));
            break;
        case 2:
            text.insert(at, QString::fromLatin1(kTokens[pick(0, std::size(kTokens) - 1)]));
            break;
        case 3:
            if (at < text.size()) text[at] = QChar(char16_t(pick(1, 0xFFFD)));
            break;
        case 4:
            text.truncate(at);
            break;
        default:
            text.insert(at, QChar(char16_t(pick(32, 126))));
        }
    }

    std::mt19937 m_random;
};

// Returns what is wrong with a read set, or an empty text.
QString flawOf(const AlertSet &set, bool nws)
{
    static const QSet<QString> severities = {"warning", "watch", "other"};
    for (const AlertRecord &alert : set.alerts) {
        if (!severities.contains(alert.severity)) return "severity " + alert.severity;
        if (GetAlertShortTitle(alert.title).size() > alert.title.size())
            return "short title longer than " + alert.title;
        if (nws && (alert.issued.size() > 16 || alert.expires.size() > 16))
            return "NWS time " + alert.issued + " / " + alert.expires;
        if (nws && alert.title.contains(" issued ")) return "event not cut: " + alert.title;
    }
    return {};
}

// A damaged answer left the branch as it was; a good one wrote a branch that agrees with
// itself. Either way the texts made of it can be made.
QString flawOfBranch(const QStringList &before)
{
    GetAlertsFullText(true, true);
    GetAlertsFullText(false, false);
    GetAlertsInfo(true);
    if (AlertsFailed())
        return CacheBranchLines("Alerts") == before ? QString()
                                                    : "a damaged answer changed the branch";
    const int count = GetCache("Alerts", "Count").toInt();
    if (GetCache("Alerts", "AlertsAvailable") != (count > 0 ? "True" : "False"))
        return "AlertsAvailable against Count " + QString::number(count);
    if (GetCache("Alerts", "Type").isEmpty() == (count > 0))
        return "Type against Count " + QString::number(count);
    if (!GetCache("Alerts", "severity" + QString::number(count + 1)).isEmpty())
        return "a row beyond Count";
    return {};
}

// A plain write: the rounds need no crash safety, and a synced write each would
// dominate the run.
void writeAnswer(const QString &path, const QString &answer)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(answer.toUtf8());
}

class AlertFuzzTest : public AlertTest
{
protected:
    void runRounds(const char *seedFile, bool nws, unsigned seed)
    {
        const QString good = ReadFile(alertDocument(seedFile));
        const QString path = profile.file("answer.json");
        Mutator mutator(seed);
        for (int round = 0; round < kRounds / 2; ++round) {
            const QString answer = mutator.mutate(good);
            setAlertsFailed(false);
            QString flaw;
            if (round % kStoredEvery == 0) {
                const QStringList before = CacheBranchLines("Alerts");
                writeAnswer(path, answer);
                nws ? ProcessNwsAlerts(path) : ProcessWeatherBugAlerts(path);
                flaw = flawOfBranch(before);
            } else {
                const std::optional<AlertSet> set =
                    nws ? ReadNwsAlerts(answer, "fuzz") : ReadWeatherBugAlerts(answer, "fuzz");
                flaw = set ? flawOf(*set, nws) : AlertsFailed() ? QString() : "damaged, flag clear";
            }
            ASSERT_TRUE(flaw.isEmpty()) << "round " << round << " of seed " << seed << ": "
                                        << flaw.toStdString() << "\nanswer:\n"
                                        << answer.left(2000).toStdString();
        }
    }
};

TEST_F(AlertFuzzTest, NwsAnswers)
{
    runRounds("nws-floodwatch.json", true, 20191220);
}

TEST_F(AlertFuzzTest, PulseAnswers)
{
    runRounds("pulse-three-alerts.json", false, 20240112);
}

} // namespace
