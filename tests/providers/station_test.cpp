#include "providers/station.h"
#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

using S = clsWxStation;

TEST(Station, AccessorsCleanWhatIsWritten)
{
    const struct {
        void (S::*set)(const QString &);
        const char *written;
        QString (S::*get)() const;
        const char *read;
    } rows[] = {
        {&S::setCity, "  Des   Moines\\/Ames  ", &S::City, "Des Moines/Ames"},
        {&S::setDistance, "", &S::Distance, "9999999999"}, // unknown distance sorts last
        {&S::setNeighborhood, "Beaver  Creek   (hidden)", &S::Neighborhood, "Beaver Creek"},
        {&S::setCountry, "United  States", &S::Country, "US"},
        {&S::setZipCode, "SW1A 1AA", &S::ZipCode, "N/A"},
        {&S::setName, "Joe s  Place", &S::Name, "Joe's Place"},
        {&S::setName, "Lake shore", &S::Name, "Lake'shore"}}; // the repair fires inside words
    for (const auto &r : rows) {
        clsWxStation station;
        (station.*r.set)(QString::fromUtf8(r.written));
        EXPECT_EQ((station.*r.get)(), QString::fromUtf8(r.read)) << r.written;
    }
}

TEST(Station, RulesThatDependOnFormerValues)
{
    clsWxStation station;
    station.setDistance("0042.1");
    station.setDistance("abc");
    EXPECT_EQ(station.Distance(), "0042.1");

    station.setStationType("  "); // reads WeatherBug, but derives nothing from that
    EXPECT_EQ(station.DataSource(), "N/A");
    EXPECT_EQ(station.StationModel(), "N/A");

    station.setZipCode("12345");
    station.setCountry("US");
    EXPECT_EQ(station.ZipCode(), "12345");
    station.setCountry("Canada");
    EXPECT_EQ(station.ZipCode(), "0");
}

TEST(Station, TypeDerivesSourceAndModel)
{
    const struct {
        const char *type, *presetModel, *dataSource, *model;
    } rows[] = {{"WeatherBug", "", "WeatherBug", "WeatherBug Station"},
                {"NWS (WeatherBug)", "", "WeatherBug", "National Weather Service"},
                {"PWS (WUnderground)", "", "Weather Underground", "Personal Weather Station"},
                {"nws cwop", "", "N/A", "Personal Weather Station"}, // cwop is looked for first
                {"WeatherBug", "Davis Vantage", "WeatherBug", "Davis Vantage"}};
    for (const auto &r : rows) {
        clsWxStation station;
        station.setStationModel(r.presetModel);
        station.setStationType(r.type);
        EXPECT_EQ(station.DataSource(), r.dataSource) << r.type;
        EXPECT_EQ(station.StationModel(), r.model) << r.type;
    }
}

TEST(Station, LocationJoinsThePlaceParts)
{
    const struct {
        const char *source, *country, *city, *state, *neighborhood, *location;
    } rows[] = {{"CWOP", "US", "Ames", "", "Gilbert", "Gilbert"},
                {"", "USA", "Ames", "IA", "", "Ames, IA"},
                {"", "US", "", "IA", "", ""},
                {"", "France", "Paris", "IDF", "", "Paris, France"}};
    for (const auto &r : rows) {
        clsWxStation station;
        station.setDataSource(r.source);
        station.setCountry(r.country);
        station.setCity(r.city);
        station.setState(r.state);
        station.setNeighborhood(r.neighborhood);
        EXPECT_EQ(station.Location(), r.location) << r.city << ' ' << r.neighborhood;
    }
}

TEST(Station, NameAndLocationByDataSource)
{
    clsWxStation station;
    station.setCountry("US");
    station.setCity("Ames");
    station.setState("IA");
    station.setId("KAMW");
    station.setNeighborhood("Campus");
    EXPECT_EQ(station.NameAndLocation(), "Campus (Ames, IA)");
    station.setDataSource("CWOP");
    EXPECT_EQ(station.NameAndLocation(), "KAMW (Campus, IA)");
    station.setName("Ames Airport");
    EXPECT_EQ(station.NameAndLocation(), "Ames Airport");
}

TEST(Station, GroupOfTheType)
{
    const struct {
        const char *type, *family;
        int number;
    } rows[] = {{"", "WeatherBug", 1}, // what is not listed belongs to WeatherBug
                {"PWS (WUnderground)", "WUnderground", 2},
                {"cwop", "WeatherBug", 1}}; // the names are matched exactly
    for (const auto &r : rows) {
        EXPECT_EQ(StationGroup(r.type), r.family) << r.type;
        EXPECT_EQ(StationGroupNumber(r.type), r.number) << r.type;
    }
}

TEST(Station, IsInternationalByPostalCode)
{
    const struct {
        const char *zip;
        bool international;
    } cases[] = {{"50309", false}, {"00000", true}, {"N/A", false}};
    for (const auto &c : cases)
        EXPECT_EQ(IsInternational(c.zip), c.international) << c.zip;
}

} // namespace
