#include "providers/discovery.h"

#include "providers/textcutters.h"

#include <array>
#include <optional>

namespace Tarnby
{

bool IsInsideBounds(const QString &top, const QString &left, const QString &bottom,
                    const QString &right, const QString &latitude, const QString &longitude)
{
    std::array<double, 6> values{};
    const std::array<const QString *, 6> texts{&top, &left, &bottom, &right, &latitude, &longitude};
    for (size_t i = 0; i < texts.size(); ++i) {
        const std::optional<double> number = NumberInText(*texts[i]);
        if (!number) return false;
        values[i] = *number;
    }
    const auto [north, west, south, east, lat, lon] = values;
    return south <= lat && lat <= north && west <= lon && lon <= east;
}

} // namespace Tarnby
