#pragma once
// Where the interface window opens: the saved place and size (Misc/IfaceLeft, IfaceTop,
// IfaceWidth, IfaceHeight, in pixels) or the skin's default size, never below the
// skin's minimum, and pulled back onto a screen when the saved place lies off every one.

#include "presentation/skinfolder.h"

#include <QList>
#include <QRect>

namespace Tarnby
{

// The size for the window: the saved one when both values are numbers, else the skin's
// default, else the current size; in each case at least the skin's minimum.
QSize WindowSizeFor(const SkinIni &ini, const QString &savedWidth, const QString &savedHeight,
                    const QSize &current);

// A window the user can still reach (at least a strip of it on some screen) stays
// where it is; any other is moved onto the first screen, as far as it fits there.
// Without screens the rectangle stays as it is.
QRect PullOntoScreen(const QRect &window, const QList<QRect> &screens);

} // namespace Tarnby
