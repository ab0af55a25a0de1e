#include "providers/station.h"
#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

using Setter = void (clsWxStation::*)(const QString &);
using Getter = QString (clsWxStation::*)() const;

struct AccessorCase {
    const char *what;
    Setter set;
    const char *written;
    Getter get;
    const char *read;
};

void PrintTo(const AccessorCase &c, std::ostream *os)
{
    *os << c.what;
}

using AccessorRule = ::testing::TestWithParam<AccessorCase>;

TEST_P(AccessorRule, WriteThenRead)
{
    clsWxStation station;
    (station.*GetParam().set)(QString::fromUtf8(GetParam().written));
    EXPECT_EQ((station.*GetParam().get)(), QString::fromUtf8(GetParam().read));
}

using S = clsWxStation;
INSTANTIATE_TEST_SUITE_P(
    Station, AccessorRule,
    ::testing::Values(
        AccessorCase{"clean trims, unescapes, squeezes", &S::setCity, "  Des   Moines\\/Ames  ",
                     &S::City, "Des Moines/Ames"},
        AccessorCase{"empty model reads N/A", &S::setStationModel, "  ", &S::StationModel, "N/A"},
        AccessorCase{"unknown distance sorts last", &S::setDistance, "", &S::Distance,
                     "9999999999"},
        AccessorCase{"numeric distance kept", &S::setDistance, "0012.5", &S::Distance, "0012.5"},
        AccessorCase{"WORLD is no state", &S::setState, " WORLD ", &S::State, ""},
        AccessorCase{"neighborhood cut at three blanks", &S::setNeighborhood,
                     "Beaver  Creek   (hidden)", &S::Neighborhood, "Beaver Creek"},
        AccessorCase{"neighborhood loses parentheses", &S::setNeighborhood, "Downtown (North)",
                     &S::Neighborhood, "Downtown North"},
        AccessorCase{"neighborhood apostrophe repair", &S::setNeighborhood, "Joe s Farm",
                     &S::Neighborhood, "Joe's Farm"},
        AccessorCase{"empty id reads NA", &S::setId, "", &S::Id, "NA"},
        AccessorCase{"USA is US", &S::setCountry, "USA", &S::Country, "US"},
        AccessorCase{"United States is US", &S::setCountry, "United  States", &S::Country, "US"},
        AccessorCase{"negative latitude kept", &S::setLatitude, "-12.5", &S::latitude, "-12.5"},
        AccessorCase{"N/A latitude becomes empty", &S::setLatitude, "N/A", &S::latitude, ""},
        AccessorCase{"dots are removed before the test", &S::setLongitude, "1.2.3", &S::longitude,
                     "1.2.3"},
        AccessorCase{"empty type reads WeatherBug", &S::setStationType, "", &S::StationType,
                     "WeatherBug"},
        AccessorCase{"foreign postal code dropped", &S::setZipCode, "SW1A 1AA", &S::ZipCode, "N/A"},
        AccessorCase{"name apostrophe repair", &S::setName, "Joe s  Place", &S::Name,
                     "Joe's Place"},
        AccessorCase{"repair also fires inside words", &S::setName, "Lake shore", &S::Name,
                     "Lake'shore"}));

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

TEST(Station, NameFallsBackToNeighborhoodThenId)
{
    clsWxStation station;
    EXPECT_EQ(station.Name(), "NA");
    station.setId("KDSM");
    EXPECT_EQ(station.Name(), "KDSM");
    station.setNeighborhood("Airport");
    EXPECT_EQ(station.Name(), "Airport");
    station.setName("Des Moines");
    EXPECT_EQ(station.Name(), "Des Moines");
}

struct TypeEffect {
    const char *type;
    const char *presetModel;
    const char *dataSource;
    const char *model;
};

using StationTypeWrite = ::testing::TestWithParam<TypeEffect>;

TEST_P(StationTypeWrite, DerivesSourceAndModel)
{
    clsWxStation station;
    station.setStationModel(GetParam().presetModel);
    station.setStationType(GetParam().type);
    EXPECT_EQ(station.DataSource(), GetParam().dataSource) << GetParam().type;
    EXPECT_EQ(station.StationModel(), GetParam().model) << GetParam().type;
}

INSTANTIATE_TEST_SUITE_P(
    Station, StationTypeWrite,
    ::testing::Values(
        TypeEffect{"WeatherBug", "", "WeatherBug", "WeatherBug Station"},
        TypeEffect{"PWS (WeatherBug)", "", "WeatherBug", "Personal Weather Station"},
        TypeEffect{"NWS (WeatherBug)", "", "WeatherBug", "National Weather Service"},
        TypeEffect{"PWS (WUnderground)", "", "Weather Underground", "Personal Weather Station"},
        TypeEffect{"ICAO (WUnderground)", "", "Weather Underground", "ICAO (WUnderground)"},
        TypeEffect{"Weather Underground", "", "Weather Underground", "Weather Underground"},
        TypeEffect{"CWOP", "", "N/A", "Personal Weather Station"},
        TypeEffect{"NWS", "", "N/A", "National Weather Service"},
        // cwop is looked for before nws
        TypeEffect{"nws cwop", "", "N/A", "Personal Weather Station"},
        TypeEffect{"WeatherBug", "Davis Vantage", "WeatherBug", "Davis Vantage"}));

TEST(Station, NameAndIdAddsTheIdUnlessTheNameHoldsIt)
{
    clsWxStation station;
    station.setId("kdsm");
    station.setName("Airport KDSM");
    EXPECT_EQ(station.NameAndId(), "Airport KDSM");
    station.setName("Des Moines");
    EXPECT_EQ(station.NameAndId(), "Des Moines (kdsm)");
}

struct LocationCase {
    const char *source, *country, *city, *state, *neighborhood;
    const char *location;
};

using StationLocation = ::testing::TestWithParam<LocationCase>;

TEST_P(StationLocation, JoinsThePlaceParts)
{
    const LocationCase &c = GetParam();
    clsWxStation station;
    station.setDataSource(c.source);
    station.setCountry(c.country);
    station.setCity(c.city);
    station.setState(c.state);
    station.setNeighborhood(c.neighborhood);
    EXPECT_EQ(station.Location(), c.location);
}

INSTANTIATE_TEST_SUITE_P(
    Station, StationLocation,
    ::testing::Values(LocationCase{"CWOP", "US", "Ames", "IA", "Gilbert", "Gilbert, IA"},
                      LocationCase{"CWOP", "US", "Ames", "", "Gilbert", "Gilbert"},
                      LocationCase{"", "USA", "Ames", "IA", "", "Ames, IA"},
                      LocationCase{"", "US", "", "IA", "", ""},
                      LocationCase{"", "France", "Paris", "IDF", "", "Paris, France"}));

TEST(Station, NameAndLocationByDataSource)
{
    clsWxStation station;
    station.setCountry("US");
    station.setCity("Ames");
    station.setState("IA");
    station.setId("KAMW");
    EXPECT_EQ(station.NameAndLocation(), "KAMW (Ames, IA)");
    station.setNeighborhood("Campus");
    EXPECT_EQ(station.NameAndLocation(), "Campus (Ames, IA)");
    station.setDataSource("CWOP");
    EXPECT_EQ(station.NameAndLocation(), "KAMW (Campus, IA)");
    station.setName("Ames Airport");
    EXPECT_EQ(station.NameAndLocation(), "Ames Airport");
    station.setDataSource("WUnderground");
    EXPECT_EQ(station.NameAndLocation(), "Ames Airport (Ames, IA)");
}

struct GroupCase {
    const char *type;
    const char *family;
    int number;
};

using StationGroupTable = ::testing::TestWithParam<GroupCase>;

TEST_P(StationGroupTable, ClassifiesTheType)
{
    EXPECT_EQ(StationGroup(GetParam().type), GetParam().family);
    EXPECT_EQ(StationGroupNumber(GetParam().type), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(Station, StationGroupTable,
                         ::testing::Values(GroupCase{"", "WeatherBug", 1},
                                           GroupCase{"WeatherBug", "WeatherBug", 1},
                                           GroupCase{"PWS (WeatherBug)", "WeatherBug", 1},
                                           GroupCase{"NWS (WeatherBug)", "WeatherBug", 1},
                                           GroupCase{"WUnderground", "WUnderground", 2},
                                           GroupCase{"PWS (WUnderground)", "WUnderground", 2},
                                           GroupCase{"NWS (WUnderground)", "WUnderground", 2},
                                           GroupCase{"ICAO (WUnderground)", "WUnderground", 2},
                                           GroupCase{"NWS", "NWS", 3}, GroupCase{"CWOP", "CWOP", 4},
                                           GroupCase{"cwop", "WeatherBug", 1},
                                           GroupCase{"Metar", "WeatherBug", 1}));

TEST(Station, IsInternationalByPostalCode)
{
    const struct {
        const char *zip;
        bool international;
    } cases[] = {{"50309", false}, {"00501", false}, {"0", true},        {"00000", true},
                 {"123456", true}, {"N/A", false},   {"SW1A 1AA", true}, {"", true}};
    for (const auto &c : cases)
        EXPECT_EQ(IsInternational(c.zip), c.international) << c.zip;
}

} // namespace
