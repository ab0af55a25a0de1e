#include "providers/stationlist.h"

#include "tests/providers/stationfixtures.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

using StationList = StationFileTest;

TEST_F(StationList, LineLayoutAndParsingFiveAndFourFieldLines)
{
    const QString line = desMoines().toLine();
    EXPECT_EQ(line, "Des Moines, IA" + QString(100, ' ') + "KDSM***50309***41.53***-93.65***NWS");
    EXPECT_EQ(StationEntry::parse(line), desMoines());

    const auto old =
        StationEntry::parse("Ames" + QString(100, ' ') + "KAMW***50010***42.0***-93.6");
    ASSERT_TRUE(old);
    EXPECT_EQ(old->StationType, "");
    EXPECT_FALSE(old->complete);

    EXPECT_FALSE(StationEntry::parse("Ames KAMW***50010***42.0***-93.6***NWS"));
    EXPECT_FALSE(StationEntry::parse("Ames" + QString(100, ' ') + "KAMW***50010***42.0"));
}

TEST_F(StationList, NameHoldingTheFieldMarkSurvives)
{
    StationEntry starred = desMoines();
    starred.City = "Star***City";
    EXPECT_EQ(StationEntry::parse(starred.toLine()), starred);
}

// Lines are compared exactly: another letter case is another station.
TEST_F(StationList, SaveAppendsOnceWithCrLfAndKeepsMalformedLines)
{
    writeStationFile("garbage line\r\n\r\n" + ames().toLine() + "\r\n");
    EXPECT_TRUE(SaveWeatherStation(desMoines().toLine()));
    EXPECT_FALSE(SaveWeatherStation(desMoines().toLine()));
    EXPECT_FALSE(SaveWeatherStation(QString()));
    EXPECT_EQ(ReadFile(StationFilePath()),
              "garbage line\r\n" + ames().toLine() + "\r\n" + desMoines().toLine() + "\r\n");
    EXPECT_TRUE(SaveWeatherStation(desMoines().toLine().toUpper()));
}

TEST_F(StationList, LoadSplitsTheNameAndSkipsIncompleteLines)
{
    StationEntry london{
        "London, United Kingdom (Heathrow)", "EGLL", "0", "51.47", "-0.45", "WeatherBug"};
    StationEntry noType = ames();
    noType.StationType.clear();
    writeStationFile("no separator\r\n" + noType.toLine().chopped(3) + "\r\n" +
                     desMoines().toLine() + "\r\n" + london.toLine() + "\r\n");

    const QList<clsWxStation> stations = LoadSavedStations();
    ASSERT_EQ(stations.size(), 2);
    const auto fields = [](const clsWxStation &s) {
        return QStringList{s.Id(),      s.City(),     s.State(),        s.Country(),
                           s.ZipCode(), s.latitude(), s.Neighborhood(), s.StationType()};
    };
    EXPECT_EQ(fields(stations.at(0)),
              (QStringList{"KDSM", "Des Moines", "IA", "", "50309", "41.53", "", "NWS"}));
    EXPECT_EQ(fields(stations.at(1)), (QStringList{"EGLL", "London", "", "United Kingdom", "0",
                                                   "51.47", "Heathrow", "WeatherBug"}));
    EXPECT_EQ(stations.at(1).Name(), london.City);
}

TEST_F(StationList, LoadStopsAtTheRecordLimit)
{
    QString text;
    for (int i = 0; i < kMaxSavedStations + 20; ++i) {
        StationEntry entry = desMoines();
        entry.Code = QString::number(i);
        text += entry.toLine() + "\r\n";
    }
    writeStationFile(text);
    const QList<clsWxStation> stations = LoadSavedStations();
    ASSERT_EQ(stations.size(), kMaxSavedStations);
    EXPECT_EQ(stations.last().Id(), QString::number(kMaxSavedStations - 1));
}

TEST_F(StationList, ReplaceChangesEveryOccurrence)
{
    writeStationFile("a***N/A***b\r\nc***N/A***d\r\n");
    EXPECT_TRUE(ReplaceInStationFile("***N/A***", "***50010***"));
    EXPECT_EQ(ReadFile(StationFilePath()), "a***50010***b\r\nc***50010***d\r\n");
    EXPECT_FALSE(ReplaceInStationFile("***N/A***", "***1***"));
    EXPECT_FALSE(ReplaceInStationFile("", "x"));
}

} // namespace
