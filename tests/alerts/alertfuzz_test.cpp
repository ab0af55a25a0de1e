// Mutated alert answers through both parsers: nothing crashes or hangs, a damaged answer
// sets the run's flag and leaves the branch, and what is read is well formed. Most rounds
// go through the readers alone; every hundredth is stored and formatted as well.

#include "alerts/alertformat.h"
#include "core/files.h"
#include "tests/alerts/alertfixture.h"
#include "tests/support/mutator.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

constexpr int kRoundsPerService = 40000;
constexpr int kStoredEvery = 100;

// Pieces of the answers' own layout, so that mutations reach past the first marks.
const QStringList kTokens =
    QStringLiteral("}|]|,|\"|\r\n|\n|\\n|...|* WHAT...|<br>|null|12.5|\"properties\": {|"
                   "\"features\": [|\"alertList\": [|\"title\"|\"description\": |\"effective\": |"
                   "\"Message\": |\"event\": \"Test Message\",\n|\"NWSheadline\": [| issued |"
                   "Abduction|\\nNational Weather Service |\\n\\n...| remains |expired")
        .split(u'|');

QString flawOf(const AlertSet &set, bool nws)
{
    for (const AlertRecord &alert : set.alerts) {
        if (!QStringList{"warning", "watch", "other"}.contains(alert.severity))
            return "severity " + alert.severity;
        if (GetAlertShortTitle(alert.title).size() > alert.title.size())
            return "a short title longer than " + alert.title;
        if (nws && (alert.issued.size() > 16 || alert.title.contains(" issued ")))
            return "NWS fields not cut: " + alert.issued + " / " + alert.title;
    }
    return {};
}

QString flawOfBranch(const QStringList &before)
{
    GetAlertsFullText(true, true);
    GetAlertsFullText(false, false);
    GetAlertsInfo(true);
    if (AlertsFailed())
        return CacheBranchLines("Alerts") == before ? QString()
                                                    : "a damaged answer changed the branch";
    const int count = GetCache("Alerts", "Count").toInt();
    if (GetCache("Alerts", "AlertsAvailable") != (count > 0 ? "True" : "False") ||
        GetCache("Alerts", "Type").isEmpty() == (count > 0) ||
        !GetCache("Alerts", "severity" + QString::number(count + 1)).isEmpty())
        return "a branch that disagrees with its Count " + QString::number(count);
    return {};
}

class AlertFuzzTest : public AlertTest, public ::testing::WithParamInterface<AlertService>
{
};

TEST_P(AlertFuzzTest, MutatedAnswersKeepTheirPromises)
{
    const AlertService &service = GetParam();
    const bool nws = isNws(service);
    const QString good = ReadFile(alertDocument(service.good));
    Mutator mutator(nws ? 20191220 : 20240112, kTokens);
    for (int round = 0; round < kRoundsPerService; ++round) {
        const QString answer = mutator.mutated(good, 6);
        setAlertsFailed(false);
        QString flaw;
        if (round % kStoredEvery == 0) {
            const QStringList before = CacheBranchLines("Alerts");
            service.process(profile.writeFile("answer.json", answer));
            flaw = flawOfBranch(before);
        } else {
            const auto set = service.read(answer, "fuzz");
            flaw = set ? flawOf(*set, nws) : AlertsFailed() ? QString() : "damaged, flag clear";
        }
        ASSERT_TRUE(flaw.isEmpty()) << "round " << round << ": " << flaw.toStdString() << "\n"
                                    << answer.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Services, AlertFuzzTest, ::testing::Values(kNwsAlerts, kPulseAlerts),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
