// Mutated alert answers through both readers: nothing crashes or hangs, a damaged answer
// sets the run's flag, and what is read is well formed. (That a damaged answer leaves the
// branch is shown by the bad-answer tests.)

#include "alerts/alertformat.h"
#include "core/files.h"
#include "tests/alerts/alertfixture.h"
#include "tests/support/mutator.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

constexpr int kRoundsPerService = 40000;

// Pieces of the answers' own layout, so that mutations reach past the first marks.
const QStringList kTokens =
    QStringLiteral("}|]|,|\"|\n|\\n|...|null|\"features\": [|\"alertList\": [|\"title\"|"
                   "\"description\": |\"Message\": |\"NWSheadline\": [| issued | remains ")
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
        const auto set = service.read(answer, "fuzz");
        const QString flaw = set              ? flawOf(*set, nws)
                             : AlertsFailed() ? QString()
                                              : "damaged, flag clear";
        ASSERT_TRUE(flaw.isEmpty()) << "round " << round << ": " << flaw.toStdString() << "\n"
                                    << answer.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Services, AlertFuzzTest, ::testing::Values(kNwsAlerts, kPulseAlerts),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
