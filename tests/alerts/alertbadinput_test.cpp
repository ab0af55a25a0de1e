// Answers that are not whole alert documents leave the Alerts branch as it was and set
// the run's flag.

#include "core/files.h"
#include "tests/alerts/alertfixture.h"

#include <QRegularExpression>

#include <functional>

using namespace Tarnby;
using Tarnby::Test::alertDocument;
using Tarnby::Test::AlertTest;

namespace
{

struct Service {
    const char *name;
    void (*process)(const QString &path);
    const char *document; // a good answer
    const char *listEnd;  // the mark that closes its list
    const char *otherDocument;
};

const Service kServices[] = {
    {"NWS", ProcessNwsAlerts, "nws-mixed.json", "\"title\": \"current", "pulse-three-alerts.json"},
    {"Pulse", ProcessWeatherBugAlerts, "pulse-three-alerts.json", "]", "nws-floodwatch.json"},
};

QString goodAnswer(const Service &service)
{
    return ReadFile(alertDocument(QString::fromLatin1(service.document)));
}

// The good answer cut short at a share of the way to the mark that closes its list.
QString truncated(const Service &service, double share)
{
    const QString answer = goodAnswer(service);
    return answer.left(qsizetype(share * double(answer.indexOf(QLatin1String(service.listEnd)))));
}

struct BadAnswer {
    const char *what;
    std::function<QString(const Service &)> text;
};

const BadAnswer kBadAnswers[] = {
    {"empty file", [](const Service &) { return QString(); }},
    {"HTML error page",
     [](const Service &) {
         return QStringLiteral("<html><head><title>503 Service Unavailable</title></head>"
                               "<body><h1>Service Unavailable</h1></body></html>");
     }},
    {"problem document",
     [](const Service &) {
         return QStringLiteral(
             "{\n    \"correlationId\": \"2f8e1c\",\n    \"title\": \"Not Found\",\n"
             "    \"type\": \"https://api.weather.gov/problems/NotFound\",\n"
             "    \"status\": 404,\n    \"detail\": \"Not Found\"\n}");
     }},
    {"another service's answer",
     [](const Service &s) {
         return ReadFile(alertDocument(QString::fromLatin1(s.otherDocument)));
     }},
    {"cut in the list's opening", [](const Service &s) { return truncated(s, 0.05); }},
    {"cut in the first alert", [](const Service &s) { return truncated(s, 0.3); }},
    {"cut in the middle", [](const Service &s) { return truncated(s, 0.5); }},
    {"cut in the last alert", [](const Service &s) { return truncated(s, 0.97); }},
    {"binary noise", [](const Service &) { return QString::fromLatin1(QByteArray(512, '\xfe')); }},
    // a bulletin without text spoils the whole answer, also after alerts that were good
    {"alert without text",
     [](const Service &s) {
         return goodAnswer(s)
             .replace(QStringLiteral("\"Message\": \"An Air Quality"),
                      QStringLiteral("\"Message\": null, \"x\": \"An Air Quality"))
             .replace(QStringLiteral("\"description\": \"At 310 PM"),
                      QStringLiteral("\"description\": null, \"x\": \"At 310 PM"));
     }},
};

class BadAlertAnswerTest : public AlertTest,
                           public ::testing::WithParamInterface<std::tuple<Service, BadAnswer>>
{
};

TEST_P(BadAlertAnswerTest, LeavesTheBranchAndSetsTheFlag)
{
    const auto &[service, bad] = GetParam();
    seedEarlierAlerts();
    const QStringList earlier = alertsBranch();
    const QString path = profile.file(QStringLiteral("answer.json"));
    ASSERT_TRUE(WriteFileAtomic(path, bad.text(service)));
    service.process(path);
    EXPECT_TRUE(AlertsFailed());
    EXPECT_EQ(alertsBranch(), earlier);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, BadAlertAnswerTest,
    ::testing::Combine(::testing::ValuesIn(kServices), ::testing::ValuesIn(kBadAnswers)),
    [](const auto &info) {
        QString name = QString::fromLatin1(std::get<0>(info.param).name) + u'_' +
                       QString::fromLatin1(std::get<1>(info.param).what);
        name.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9]")), QStringLiteral("_"));
        return name.toStdString();
    });

TEST_F(AlertTest, AMissingFileIsADamagedAnswer)
{
    seedEarlierAlerts();
    const QStringList earlier = alertsBranch();
    ProcessNwsAlerts(profile.file(QStringLiteral("never-downloaded.json")));
    EXPECT_TRUE(AlertsFailed());
    EXPECT_EQ(alertsBranch(), earlier);
}

} // namespace
