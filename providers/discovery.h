#pragma once
// Finding stations around a place.

#include <QString>

namespace Tarnby
{

// Whether a point lies in the box: bottom <= latitude <= top and left <= longitude <=
// right, every value read as a number in the user's locale. False when one is no number.
bool IsInsideBounds(const QString &top, const QString &left, const QString &bottom,
                    const QString &right, const QString &latitude, const QString &longitude);

} // namespace Tarnby
