// tbradar "<folder>" MapSource5 MapType<radar|satellite> <zoom>: draws the map image of
// the station's skin into <folder>/map.jpg. The picture comes from the address in
// TARNBY_RADAR_IMAGE or TARNBY_SATELLITE_IMAGE (the launcher sets both from the host
// settings). The file is replaced whole, so the run, which watches its time stamp,
// never sees half a picture. Exit code 0 when the picture was written, 1 when not.
#include "tools/childfetch/childsupport.h"
#include "tools/childfetch/fetch.h"

#include <cstdlib>
#include <string>

using namespace Tarnby::Child;

namespace
{

constexpr const char *Program = "tbradar";
constexpr long long MaxPictureBytes = 16 * 1024 * 1024;

std::string pictureAddress(const std::string &mapTypeArgument)
{
    const bool satellite = mapTypeArgument == "MapTypesatellite";
    const char *address = std::getenv(satellite ? "TARNBY_SATELLITE_IMAGE" : "TARNBY_RADAR_IMAGE");
    return address ? address : "";
}

int run(int argc, char **argv)
{
    if (argc != 5) {
        complain(Program, "usage: tbradar \"<folder>\" MapSource5 MapType<radar|satellite> <zoom>");
        return 1;
    }
    const std::string address = pictureAddress(argv[3]);
    if (address.empty()) {
        complain(Program, "no picture address for " + std::string(argv[3]));
        return 1;
    }
    std::string picture;
    FetchLimits limits;
    limits.maxBytes = MaxPictureBytes;
    const FetchResult result = fetch(
        address,
        [&picture](const char *data, std::size_t size) {
            picture.append(data, size);
            return true;
        },
        limits);
    if (result.status != StatusOk || picture.empty()) {
        complain(Program, address + " answered with status " + std::to_string(result.status));
        return 1;
    }
    return writeFileAtomic(std::string(argv[1]) + "/map.jpg", picture) ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    return childMain(Program, argc, argv, run);
}
