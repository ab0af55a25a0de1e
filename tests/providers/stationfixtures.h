#pragma once
// Stations and a profile with a station list, shared by the station tests.

#include "core/files.h"
#include "providers/stationlist.h"
#include "tests/support/testprofile.h"

namespace Tarnby::Test
{

inline StationEntry desMoines()
{
    return {"Des Moines, IA", "KDSM", "50309", "41.53", "-93.65", "NWS"};
}

inline StationEntry ames()
{
    return {"Ames, IA", "KAMW", "50010", "41.99", "-93.62", "WeatherBug"};
}

class StationFileTest : public ProfileTest
{
protected:
    static void writeStationFile(const QString &text) { WriteFileAtomic(StationFilePath(), text); }
};

} // namespace Tarnby::Test
