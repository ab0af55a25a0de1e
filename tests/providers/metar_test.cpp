// The METAR decoder against real reports, the rules of its groups, its readers and the
// MesoWest XML form.

#include "core/clock.h"
#include "core/processvalues.h"
#include "providers/metar.h"
#include "tests/providers/metarcorpus.h"
#include "tests/support/testprofile.h"

#include <QMap>

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace Tarnby;
using Fields = QMap<QString, QString>;

// Decoding reads the clock (DateTimeUtc) and the user's units and decimal mark.
class MetarTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        process() = ProcessValues{};
        setClock(&m_clock);
    }
    void TearDown() override
    {
        setClock(nullptr);
        process() = ProcessValues{};
    }
    void setUtcNow(const char *isoTime)
    {
        m_clock.set(QDateTime::fromString(QLatin1String(isoTime), Qt::ISODate));
    }

    FixedClock m_clock{QDateTime(QDate(2023, 1, 21), QTime(0, 0), Qt::UTC)};
};

clsMetar decoded(const QString &report)
{
    clsMetar metar;
    metar.ParseMetarData(report);
    return metar;
}

Fields readings(const clsMetar &metar)
{
    Fields fields;
    for (const auto &[name, value] : MetarReadings(metar))
        fields.insert(name, value);
    return fields;
}

// Each expected field must read as given; fields not named are not looked at.
void expectFields(const clsMetar &metar, const Fields &expected, const QString &what)
{
    const Fields got = readings(metar);
    for (auto it = expected.begin(); it != expected.end(); ++it) {
        ASSERT_TRUE(got.contains(it.key())) << it.key().toStdString();
        EXPECT_EQ(got.value(it.key()), it.value())
            << what.toStdString() << " / " << it.key().toStdString();
    }
}

// The report of a data file whose line begins with `start`; the raw message of a JSON
// observation.
QString realReport(const char *file, const char *start)
{
    const QString name = QLatin1String(file);
    const QString text = Tarnby::Test::readDataFile(QStringLiteral("metar/") + name);
    if (name.endsWith(QLatin1String(".json"))) return Tarnby::Test::rawMessage(text);
    for (const QString &line : text.split(u'\n'))
        if (line.startsWith(QLatin1String(start))) return line.trimmed();
    return {};
}

// ---- Golden decodes of real reports ----------------------------------------------

struct GoldenCase {
    const char *file;
    const char *start;
    Fields expected;
};

class GoldenDecode : public MetarTest, public ::testing::WithParamInterface<GoldenCase>
{
};

TEST_P(GoldenDecode, ReadsAsExpected)
{
    const GoldenCase &c = GetParam();
    const QString report = realReport(c.file, c.start);
    ASSERT_FALSE(report.isEmpty()) << c.file << " " << c.start;
    expectFields(decoded(report), c.expected, report);
}

constexpr const char *kUsList = "metar-list-KLAX-KSTL-metar-scraper.txt";
constexpr const char *kWorldList = "metar-list-EXCERPT-intl-AGGH-to-CXHP-metar-notify.txt";
constexpr const char *kEditedList = "metar-list-MOCK-edited-metar-gui.txt";

INSTANTIATE_TEST_SUITE_P(
    RealReports, GoldenDecode,
    ::testing::Values(
        // Variable wind, remarks with "SCT V BKN" that must stay unread.
        GoldenCase{kUsList,
                   "KLAX",
                   {{"Clouds", "Partly Cloudy"},
                    {"CloudsHeight", "2100"},
                    {"Condition", "Partly Cloudy"},
                    {"DateTimeUtc", "2023-01-20T15:53"},
                    {"DewPointC", "11"},
                    {"DewPointF", "51.8"},
                    {"Humidity", "67.78538"},
                    {"IsAuto", "False"},
                    {"FeelsLikeF", "63"},
                    {"Pressure", "29.99"},
                    {"StationId", "KLAX"},
                    {"TemperatureC", "17"},
                    {"TemperatureF", "62.6"},
                    {"Time", "15:53"},
                    {"Visibility", "10"},
                    {"WindDirection", "VRB"},
                    {"WindGustSpeedMph", "0"},
                    {"WindGustSpeedKts", "0"},
                    {"WindSpeedMph", "5"},
                    {"WindSpeedKts", "4"}}},
        // "PK WND 12026/1511" in the remarks would otherwise overwrite the temperature.
        GoldenCase{kUsList,
                   "KSTL",
                   {{"Condition", "Light Rain"},
                    {"Clouds", "Mostly Cloudy"},
                    {"CloudsHeight", "6500"},
                    {"TemperatureC", "12"},
                    {"DewPointC", "03"},
                    {"TemperatureF", "53.6"},
                    {"DewPointF", "37.4"},
                    {"Pressure", "30.03"},
                    {"WindDirection", "130"},
                    {"WindSpeedMph", "16"}}},
        // Gusts and temperatures below zero; wind chill.
        GoldenCase{"tgftp-KMSN-2023-01-13.TXT",
                   "KMSN",
                   {{"Clouds", "Overcast"},     {"CloudsHeight", "2900"},
                    {"Condition", "Overcast"},  {"DateTimeUtc", "2023-01-13T15:53"},
                    {"DewPointC", "-08"},       {"DewPointF", "17.6"},
                    {"Humidity", "68.33714"},   {"IsAuto", "False"},
                    {"FeelsLikeF", "16"},       {"Pressure", "30.30"},
                    {"StationId", "KMSN"},      {"TemperatureC", "-03"},
                    {"TemperatureF", "26.6"},   {"Time", "15:53"},
                    {"Visibility", "10"},       {"WindDirection", "360"},
                    {"WindGustSpeedMph", "21"}, {"WindGustSpeedKts", "18"},
                    {"WindSpeedMph", "12"},     {"WindSpeedKts", "10"}}},
        GoldenCase{"tgftp-KRYV-2023-01-09.TXT",
                   "KRYV",
                   {{"IsAuto", "True"},
                    {"Clouds", "Clear"},
                    {"CloudsHeight", "0"},
                    {"Condition", "Clear"},
                    {"Visibility", "7"},
                    {"TemperatureF", "28.4"},
                    {"DewPointF", "24.8"},
                    {"WindSpeedMph", "7"},
                    {"FeelsLikeF", "21"}}},
        // Saturated air and calm wind: humidity exactly 100, feels-like the temperature.
        GoldenCase{"tgftp-KHNB-2023-01-12.TXT",
                   "KHNB",
                   {{"IsAuto", "True"},
                    {"Condition", "Mist"},
                    {"Clouds", "Mostly Cloudy"},
                    {"CloudsHeight", "3600"},
                    {"Humidity", "100"},
                    {"WindSpeedMph", "0"},
                    {"WindSpeedKts", "0"},
                    {"FeelsLikeF", "54"},
                    {"Pressure", "29.84"}}},
        GoldenCase{"tgftp-KMDW-2023-01-12.TXT",
                   "KMDW",
                   {{"Clouds", "Mostly Cloudy"},
                    {"CloudsHeight", "2100"},
                    {"TemperatureF", "48.2"},
                    {"WindSpeedMph", "3"},
                    {"FeelsLikeF", "48"}}},
        GoldenCase{"nws-obs-latest-KTIW-2021-09-18.json",
                   "",
                   {{"StationId", "KTIW"},
                    {"IsAuto", "True"},
                    {"Clouds", "Mostly Clear"},
                    {"CloudsHeight", "1100"},
                    {"Pressure", "29.70"},
                    {"Humidity", "100"}}},
        // A report without remarks ends on its altimeter group.
        GoldenCase{"nws-obs-latest-KSUA-2021-ldjson.json",
                   "",
                   {{"WindDirection", "340"},
                    {"WindSpeedKts", "12"},
                    {"WindGustSpeedKts", "21"},
                    {"WindGustSpeedMph", "24"},
                    {"Pressure", "29.98"},
                    {"Clouds", "Mostly Clear"},
                    {"CloudsHeight", "7500"}}},
        GoldenCase{"nws-obs-latest-KPWM-2019.json",
                   "",
                   {{"DateTimeUtc", "2023-01-21T09:51"},
                    {"Clouds", "Partly Cloudy"},
                    {"CloudsHeight", "25000"},
                    {"Pressure", "30.00"}}},
        // International forms: only "K" stations get an identifier; metres, "Q" pressure,
        // CAVOK and NOSIG read as nothing.
        GoldenCase{kWorldList,
                   "BIVM",
                   {{"StationId", ""},
                    {"Condition", "Rain, Mist"},
                    {"Clouds", "Indefinite"},
                    {"CloudsHeight", "100"},
                    {"Visibility", ""},
                    {"Pressure", ""},
                    {"WindGustSpeedKts", "27"}}},
        GoldenCase{
            kWorldList,
            "AZUH",
            {{"Condition", ""}, {"Clouds", ""}, {"TemperatureC", "31"}, {"DewPointC", "05"}}},
        GoldenCase{kWorldList,
                   "BKPR",
                   {{"Clouds", "Mostly Clear"},
                    {"CloudsHeight", "4000"},
                    {"DewPointC", "-01"},
                    {"Condition", "Mostly Clear"}}},
        // Cloud groups with "///" behind them count as slash groups and are dropped.
        GoldenCase{kWorldList,
                   "BGSF",
                   {{"IsAuto", "True"},
                    {"Condition", "Light Snow Showers"},
                    {"Clouds", ""},
                    {"DewPointC", "-07"}}},
        // A US-form altimeter: the "TSNO" remark would read as a thunderstorm.
        GoldenCase{kWorldList,
                   "BGTL",
                   {{"Condition", "Clear"}, {"Pressure", "29.67"}, {"TemperatureC", "-06"}}},
        // Without an altimeter the remarks are read too: a remark wind replaces the
        // report's, and a word of the remarks yields weather pairs.
        GoldenCase{kWorldList,
                   "BIAR",
                   {{"WindDirection", "160"},
                    {"WindSpeedKts", "11"},
                    {"Condition", "Light Rain, Volcanic Ash &  &  &  & "}}},
        // A Canadian automatic report without dew point.
        GoldenCase{kWorldList,
                   "CMGB",
                   {{"TemperatureC", "13"},
                    {"DewPointC", ""},
                    {"DewPointF", ""},
                    {"Humidity", ""},
                    {"FeelsLikeF", ""}}},
        GoldenCase{kEditedList,
                   "KMOR",
                   {{"IsAuto", "True"}, {"WindGustSpeedKts", "14"}, {"WindGustSpeedMph", "16"}}},
        GoldenCase{kEditedList,
                   "KBNA",
                   {{"Visibility", "1/2"}, {"Condition", ""}, {"Pressure", "29.97"}}}));

// ---- Group rules ------------------------------------------------------------------

struct RuleCase {
    const char *report;
    Fields expected;
};

class GroupRules : public MetarTest, public ::testing::WithParamInterface<RuleCase>
{
};

TEST_P(GroupRules, Apply)
{
    expectFields(decoded(QLatin1String(GetParam().report)), GetParam().expected,
                 QLatin1String(GetParam().report));
}

INSTANTIATE_TEST_SUITE_P(
    EdgeGroups, GroupRules,
    ::testing::Values(
        RuleCase{"M05/M07", {{"TemperatureC", "-05"}, {"DewPointC", "-07"}}},
        RuleCase{"VRB03KT", {{"WindDirection", "VRB"}, {"WindSpeedKts", "3"}}},
        // A speed of three digits keeps its first two; a gust only in ten characters.
        RuleCase{"120105KT", {{"WindDirection", "120"}, {"WindSpeedKts", "10"}}},
        RuleCase{"27007G114KT", {{"WindSpeedKts", "7"}, {"WindGustSpeedKts", "0"}}},
        RuleCase{"/////KT",
                 {{"WindDirection", "///"}, {"WindSpeedKts", "//"}, {"WindSpeedMph", ""}}},
        RuleCase{"1 1/2SM", {{"Visibility", "1/2"}, {"Condition", ""}}},
        RuleCase{"M1/4SM", {{"Visibility", "1/4"}, {"TemperatureC", ""}}},
        RuleCase{"P6SM", {{"Visibility", "6"}}}, RuleCase{"10/M01 A2992", {{"Pressure", "29.92"}}},
        // AUTO has four characters and is no altimeter.
        RuleCase{"KABC 011200Z AUTO",
                 {{"StationId", "KABC"}, {"IsAuto", "True"}, {"Pressure", ""}}},
        RuleCase{"METAR KABC 011200Z COR 00000KT", {{"StationId", "KABC"}, {"Condition", ""}}},
        RuleCase{"13/", {{"TemperatureC", "13"}, {"DewPointC", ""}}},
        RuleCase{"FEW130/// 1/2/3", {{"TemperatureC", ""}, {"DewPointC", ""}, {"Clouds", ""}}},
        // A runway group has one slash and is read as temperatures.
        RuleCase{"R28L/P1500FT", {{"TemperatureC", "R28L"}, {"DewPointC", "P1500FT"}}},
        // The altimeter is the first " A" behind the first "/".
        RuleCase{"10/05 A3001 RMK 12/34 RA", {{"TemperatureC", "10"}, {"Condition", ""}}},
        RuleCase{"10/05 A", {{"TemperatureC", "10"}}},
        RuleCase{"KXYZ X112Z5Z", {{"Time", "12:Z5"}, {"DateTimeUtc", ""}}},
        RuleCase{"0105Z00 KQQQ", {{"StationId", "KQQQ"}, {"Time", ""}}}));

// ---- Sky --------------------------------------------------------------------------

TEST_F(MetarTest, TheLowestLayerDescribesTheSky)
{
    const struct {
        const char *groups;
        const char *clouds;
        const char *height;
    } cases[] = {
        {"BKN012 OVC008", "Overcast", "800"},
        {"OVC008 BKN012", "Overcast", "800"},
        {"FEW005 SCT014 BKN025", "Mostly Clear", "500"},
        {"BKN012CB", "Mostly Cloudy", "1200"},
        {"SCT030 VV002", "Indefinite", "200"},
        {"VVXXX", "Indefinite", "0"},
        // Groups with a slash are taken by the temperature rule first.
        {"VV///", "", ""},
        {"FEW///", "", ""},
        {"CLR", "Clear", "0"},
        {"SKC", "Clear", "0"},
        {"CLR FEW050", "Clear", "0"},
        // A clear sky is taken whatever came before it.
        {"FEW050 CLR", "Clear", "0"},
        {"OVC", "", ""},
        {"few050", "", ""},
    };
    for (const auto &c : cases) {
        const clsMetar metar = decoded(QLatin1String(c.groups));
        EXPECT_EQ(metar.Clouds(), QLatin1String(c.clouds)) << c.groups;
        EXPECT_EQ(metar.CloudsHeight(), QLatin1String(c.height)) << c.groups;
    }
}

// ---- Weather groups ---------------------------------------------------------------

TEST_F(MetarTest, WeatherGroupsInWords)
{
    const struct {
        const char *groups;
        const char *condition;
    } cases[] = {
        {"-SHRA", "Light Rain Showers"},
        {"+TSRA", "Heavy Thunderstorm & Rain"},
        {"FZFG", "Freezing Fog"},
        {"MIFG", "Shallow Fog"},
        {"+BLSN", "Heavy Blowing Snow"},
        {"-VCTSRA", "Light Thunderstorm & Rain"},
        {"VCSH", ""},
        {"-DZ BR", "Light Drizzle, Mist"},
        {"HZ FU", "Haze, Smoke"},
        {"+FC", "Heavy Funnel Cloud"},
        {"UP", "Unknown Precipitation"},
        // A pair behind a phenomenon leaves " & " even when it is no phenomenon.
        {"RAFZ", "Freezing Rain & "},
        {"RASH", "Rain &  Showers"},
        {"RA99", "Rain & "},
        {"99RA", "Rain"},
        {"SH", ""},
        {"RMK", ""},
        {"9999", ""},
        {"CAVOK", ""},
        {"-ra", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(decoded(QLatin1String(c.groups)).Condition(), QLatin1String(c.condition))
            << c.groups;
}

// ---- Validity ---------------------------------------------------------------------

TEST(MetarValidity, OnlyUsReportsOfTheStationServicesPass)
{
    const struct {
        const char *text;
        bool valid;
    } cases[] = {
        {"METAR KLAX 201553Z VRB04KT 10SM SCT021 BKN140 17/11 A2999", true},
        {"METAR klax 201553z vrb04kt 10sm 17/11 a2999", true},
        {"KLAX 201553Z VRB04KT 10SM SCT021 BKN140 17/11 A2999", false},
        {"metar KLAX 201553Z 10SM 17/11 A2999", false},
        {"METAR AGGH 201100Z 00000KT 9999 -DZ FEW005 24/24 Q1012", false},
        {"METAR KLAX 201553Z 10SM 17/11 Q1013", false},
        {"METAR KLAX 201553Z 10SM 17/11 <b>A2999</b>", false},
        {"METAR KLAX 201553Z 10SM 1711 A2999", false},
        {"METAR ", false},
        {"", false},
    };
    for (const auto &c : cases)
        EXPECT_EQ(clsMetar::IsValidMetar(QString::fromLatin1(c.text)), c.valid) << c.text;
}

// What the station services deliver is the report with "METAR " put in front.
TEST(MetarValidity, EveryRealUsReportPasses)
{
    int usReports = 0;
    for (const QString &report :
         Tarnby::Test::metarCorpus(Tarnby::Test::dataFile(QStringLiteral("metar")), false)) {
        if (!report.startsWith(u'K')) continue;
        ++usReports;
        EXPECT_TRUE(clsMetar::IsValidMetar(QStringLiteral("METAR ") + report))
            << report.toStdString();
    }
    EXPECT_EQ(usReports, 9);
}

// ---- Readers ----------------------------------------------------------------------

TEST_F(MetarTest, HumidityFromTemperatureAndDewPoint)
{
    const struct {
        const char *group;
        double percent; // worked out in double precision
    } cases[] = {{"17/11", 67.785381}, {"12/03", 54.081016}, {"M03/M08", 68.337139},
                 {"09/06", 81.478230}, {"21/11", 52.833779}, {"05/M07", 41.487760}};
    for (const auto &c : cases) {
        const QString humidity = decoded(QLatin1String(c.group)).Humidity();
        // Single precision shows at most seven digits.
        EXPECT_LE(
            std::count_if(humidity.begin(), humidity.end(), [](QChar ch) { return ch.isDigit(); }),
            7)
            << c.group;
        EXPECT_NEAR(humidity.toDouble(), c.percent, 2e-4) << c.group;
    }
    EXPECT_EQ(decoded(QStringLiteral("12/12")).Humidity(), QStringLiteral("100"));
    EXPECT_EQ(decoded(QStringLiteral("12/")).Humidity(), QString());
    EXPECT_EQ(decoded(QStringLiteral("12/XX")).Humidity(), QString());
    // A dew point on the pole of the formula is no number.
    EXPECT_EQ(decoded(QStringLiteral("10/M237.7")).Humidity(), QString());
}

TEST_F(MetarTest, NumbersFollowTheUsersDecimalMark)
{
    process().DecimalSymbol = QStringLiteral(",");
    process().GroupSymbol = QStringLiteral(".");
    const clsMetar metar = decoded(QStringLiteral("27012KT 17/11"));
    EXPECT_EQ(metar.Humidity(), QStringLiteral("67,78538"));
    EXPECT_EQ(metar.TemperatureF(), QStringLiteral("62,6"));
    EXPECT_EQ(metar.FeelsLikeF(), QStringLiteral("63"));
}

TEST_F(MetarTest, FahrenheitHasNoLeadingZero)
{
    EXPECT_EQ(decoded(QStringLiteral("M18/00")).TemperatureF(), QStringLiteral("-.4"));
    EXPECT_EQ(decoded(QStringLiteral("M18/00")).DewPointF(), QStringLiteral("32.0"));
    // A Celsius text that is no number is passed on as it stands.
    EXPECT_EQ(decoded(QStringLiteral("XX/00")).TemperatureF(), QStringLiteral("XX"));
}

TEST_F(MetarTest, DateBelongsToThisMonthOrTheOneBefore)
{
    const struct {
        const char *utcNow;
        const char *group;
        const char *expected;
    } cases[] = {
        {"2023-03-01T00:30:00Z", "010015Z", "2023-03-01T00:15"},
        {"2023-01-01T00:30:00Z", "312350Z", "2022-12-31T23:50"},
        {"2023-01-15T12:00:00Z", "201200Z", "2023-01-20T12:00"},
        {"2023-01-15T12:00:00Z", "051200Z", "2023-01-05T12:00"},
        {"2023-01-15T12:00:00Z", "XX1200Z", ""},
    };
    for (const auto &c : cases) {
        setUtcNow(c.utcNow);
        EXPECT_EQ(decoded(QLatin1String(c.group)).DateTimeUtc(), QLatin1String(c.expected))
            << c.group;
    }
}

// ---- MesoWest XML -----------------------------------------------------------------

QString xmlObservation(const QString &variables, const char *station = "KSLC",
                       const char *utime = "1673628780")
{
    return QStringLiteral("<station id=\"%1\" name=\"Test\">\n<ob time=\"x\" "
                          "utime=\"%2\">\n%3</ob>\n</station>")
        .arg(QLatin1String(station), QLatin1String(utime), variables);
}

QString xmlVariable(const char *var, const char *value)
{
    return QStringLiteral("<variable var='%1' description='d' unit='u' value='%2'/>\n")
        .arg(QLatin1String(var), QLatin1String(value));
}

TEST_F(MetarTest, XmlDocumentReadsInUsUnits)
{
    clsMetar metar;
    EXPECT_TRUE(metar.ParseXmlData(
        Tarnby::Test::readDataFile(QStringLiteral("metar/mesowest-MADE-UP-KSLC.xml"))));
    expectFields(metar,
                 {{"StationId", "KSLC"},
                  {"DateTimeUtc", "2023-01-13T16:53"},
                  {"Time", "16:53"},
                  {"TemperatureF", "28"},
                  {"DewPointF", "19"},
                  {"TemperatureC", "28"},
                  {"DewPointC", "19"},
                  {"Humidity", "69"},
                  {"WindDirection", "330"},
                  {"WindSpeedMph", "10"},
                  {"WindSpeedKts", "8.69"},
                  {"WindGustSpeedMph", "18"},
                  {"WindGustSpeedKts", "15.64"},
                  {"Visibility", "10.00"},
                  {"Pressure", "30.12"},
                  {"Condition", "Light Snow"},
                  {"Clouds", "Mostly Cloudy"},
                  {"CloudsHeight", "4500"},
                  {"FeelsLikeF", "19"},
                  {"IsAuto", "False"}},
                 QStringLiteral("KSLC xml"));
}

// The Celsius reading of a Fahrenheit value is the rate conversion: times 1.8 for a
// user who sees Celsius.
TEST_F(MetarTest, XmlCelsiusReadingsForACelsiusUser)
{
    process().UnitTemp = QStringLiteral("C");
    clsMetar metar;
    metar.ParseXmlData(xmlObservation(xmlVariable("T", "28") + xmlVariable("TD", "19")));
    EXPECT_EQ(metar.TemperatureC(), QStringLiteral("50.4"));
    EXPECT_EQ(metar.DewPointC(), QStringLiteral("34.2"));
    metar.ParseXmlData(xmlObservation(xmlVariable("T", "warm")));
    EXPECT_EQ(metar.TemperatureC(), QString());
}

TEST_F(MetarTest, XmlWindIsMadeWholeWhenNumeric)
{
    const struct {
        const char *value;
        const char *mph;
    } cases[] = {{"9.5", "10"}, {"8.5", "8"}, {"12", "12"}, {"calm", "calm"}, {"", ""}};
    for (const auto &c : cases) {
        clsMetar metar;
        metar.ParseXmlData(xmlObservation(xmlVariable("FF", c.value)));
        EXPECT_EQ(metar.WindSpeedMph(), QLatin1String(c.mph)) << c.value;
    }
}

TEST_F(MetarTest, XmlStationAndTimeAreCheckedBeforeTheyAreTaken)
{
    const struct {
        const char *station;
        const char *utime;
        const char *id;
        const char *time;
    } cases[] = {
        {"KSLC", "1673628780", "KSLC", "16:53"},
        {"PANC", "1673628780", "", "16:53"},
        {"KSLCX", "yesterday", "", ""},
        {"K1", "99999999999999", "", ""},
    };
    for (const auto &c : cases) {
        clsMetar metar;
        metar.ParseXmlData(xmlObservation(xmlVariable("T", "28"), c.station, c.utime));
        EXPECT_EQ(metar.StationId(), QLatin1String(c.id)) << c.station;
        EXPECT_EQ(metar.Time(), QLatin1String(c.time)) << c.utime;
    }
}

TEST_F(MetarTest, FeelsLikeNeedsEveryInput)
{
    const struct {
        QString variables;
        const char *feelsLike;
    } cases[] = {
        {xmlVariable("T", "28") + xmlVariable("TD", "19") + xmlVariable("RH", "69") +
             xmlVariable("FF", "10"),
         "19"},
        {xmlVariable("T", "96") + xmlVariable("TD", "82") + xmlVariable("RH", "65") +
             xmlVariable("FF", "5"),
         "121"},
        {xmlVariable("T", "70") + xmlVariable("TD", "50") + xmlVariable("RH", "50") +
             xmlVariable("FF", "20"),
         "70"},
        {xmlVariable("T", "28") + xmlVariable("RH", "69") + xmlVariable("FF", "10"), ""},
        {xmlVariable("T", "28") + xmlVariable("TD", "19") + xmlVariable("RH", "69"), ""},
    };
    for (const auto &c : cases) {
        clsMetar metar;
        metar.ParseXmlData(xmlObservation(c.variables));
        EXPECT_EQ(metar.FeelsLikeF(), QLatin1String(c.feelsLike)) << c.variables.toStdString();
    }
}

} // namespace
