// Answers that are not whole alert documents leave the Alerts branch as it was and set the
// run's flag.

#include "core/files.h"
#include "tests/alerts/alertfixture.h"

#include <functional>

using namespace Tarnby;
using Tarnby::Test::alertDocument;
using Tarnby::Test::AlertTest;

namespace
{

struct Service {
    void (*process)(const QString &path);
    const char *good;    // a good answer
    const char *listEnd; // the mark that closes its list
    const char *other;   // the other service's answer
};

const Service kNws{ProcessNwsAlerts, "nws-mixed.json", "\"title\": \"current",
                   "pulse-three-alerts.json"};
const Service kPulse{ProcessWeatherBugAlerts, "pulse-three-alerts.json", "]",
                     "nws-floodwatch.json"};

QString answerOf(const char *name)
{
    return ReadFile(alertDocument(name));
}

// The good answer cut short at a share of the way to the mark that closes its list.
std::function<QString(const Service &)> truncatedAt(double share)
{
    return [share](const Service &s) {
        const QString good = answerOf(s.good);
        return good.left(qsizetype(share * double(good.indexOf(s.listEnd))));
    };
}

const std::pair<const char *, std::function<QString(const Service &)>> kBadAnswers[] = {
    {"EmptyFile", [](const Service &) { return QString(); }},
    {"HtmlErrorPage",
     [](const Service &) {
         return "<html><head><title>503 Service Unavailable</title></head></html>";
     }},
    {"ProblemDocument",
     [](const Service &) { return "{\n    \"title\": \"Not Found\",\n    \"status\": 404\n}"; }},
    {"OtherService", [](const Service &s) { return answerOf(s.other); }},
    {"CutInTheFirstAlert", truncatedAt(0.3)},
    {"CutInTheLastAlert", truncatedAt(0.97)},
    {"BinaryNoise", [](const Service &) { return QString::fromLatin1(QByteArray(512, '\xfe')); }},
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
    const QString path = profile.file("answer.json");
    ASSERT_TRUE(WriteFileAtomic(path, kBadAnswers[bad].second(service)));
    service.process(path);
    EXPECT_TRUE(AlertsFailed());
    EXPECT_EQ(alertsBranch(), earlier);
    service.process(profile.file("never-downloaded.json"));
    EXPECT_EQ(alertsBranch(), earlier);
}

INSTANTIATE_TEST_SUITE_P(Answers, BadAlertAnswerTest,
                         ::testing::Combine(::testing::Values(kNws, kPulse),
                                            ::testing::Range<std::size_t>(0,
                                                                          std::size(kBadAnswers))),
                         [](const auto &info) {
                             return std::string(std::get<0>(info.param).good[0] == 'n' ? "Nws"
                                                                                       : "Pulse") +
                                    kBadAnswers[std::get<1>(info.param)].first;
                         });

} // namespace
