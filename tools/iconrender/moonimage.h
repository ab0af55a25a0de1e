#pragma once
// Moon phase images, drawn rather than taken from artwork: a phase set needs 26 steps,
// and the light's side depends on the hemisphere.

#include <QImage>

namespace Tarnby::IconRender
{

// A square image of the moon with litPercent of its disc lit (0 new, 100 full). A
// waxing moon is lit on the right as seen from the northern hemisphere; southern
// mirrors the picture.
QImage DrawMoon(int size, double litPercent, bool waxing, bool southern);

} // namespace Tarnby::IconRender
