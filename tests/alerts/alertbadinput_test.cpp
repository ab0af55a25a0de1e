// Answers that are not whole alert documents leave the Alerts branch as it was and set the
// run's flag.

#include "core/files.h"
#include "tests/alerts/alertfixture.h"

#include <functional>

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

using Service = AlertService;

QString answerOf(const char *name)
{
    return ReadFile(alertDocument(name));
}

const std::pair<const char *, std::function<QString(const Service &)>> kBadAnswers[] = {
    {"EmptyFile", [](const Service &) { return QString(); }},
    {"ProblemDocument",
     [](const Service &) { return "{\n    \"title\": \"Not Found\",\n    \"status\": 404\n}"; }},
    {"OtherService",
     [](const Service &s) { return answerOf((isNws(s) ? kPulseAlerts : kNwsAlerts).good); }},
    // cut short just before the mark that closes the list of alerts
    {"CutInTheLastAlert",
     [](const Service &s) {
         const QString good = answerOf(s.good);
         return good.left(good.indexOf(s.listEnd) * 97 / 100);
     }},
    // a bulletin without text spoils the whole answer, also after good alerts
    {"AlertWithoutText", [](const Service &s) {
         return answerOf(s.good)
             .replace("\"Message\": \"An Air", "\"Message\": null, \"x\": \"An Air")
             .replace("\"description\": \"At 310 PM", "\"description\": null, \"x\": \"At");
     }}};

class BadAlertAnswerTest : public AlertTest,
                           public ::testing::WithParamInterface<std::tuple<Service, std::size_t>>
{
};

TEST_P(BadAlertAnswerTest, LeavesTheBranchAndSetsTheFlag)
{
    const auto &[service, bad] = GetParam();
    seedEarlierAlerts();
    const QStringList earlier = alertsBranch();
    service.process(profile.writeFile("answer.json", kBadAnswers[bad].second(service)));
    EXPECT_TRUE(AlertsFailed());
    EXPECT_EQ(alertsBranch(), earlier);
    service.process(profile.file("never-downloaded.json"));
    EXPECT_EQ(alertsBranch(), earlier);
}

INSTANTIATE_TEST_SUITE_P(Answers, BadAlertAnswerTest,
                         ::testing::Combine(::testing::Values(kNwsAlerts, kPulseAlerts),
                                            ::testing::Range<std::size_t>(0,
                                                                          std::size(kBadAnswers))),
                         [](const auto &info) {
                             return std::string(std::get<0>(info.param).name) +
                                    kBadAnswers[std::get<1>(info.param)].first;
                         });

} // namespace
