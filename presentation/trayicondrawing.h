#pragma once
// The tray's pictures, drawn at run time: the temperature digits in the chosen font and
// colours, and the condition image of the tray icon set. Pictures are drawn for the
// icon size the tray really uses (and for the usual sizes a tray may pick from), at the
// screen's pixel ratio, so the digits stay sharp from 16 to 64 pixels. Needs a
// QGuiApplication; nothing here touches a window.

#include "presentation/trayappearance.h"

#include <QIcon>
#include <QImage>
#include <QList>
#include <QString>

namespace Tarnby
{

// The sizes every icon is drawn at besides the tray's own.
QList<int> standardTrayIconSizes();

// The digits centred on a square of `side` logical pixels. The font size scales with
// the side (the stored size is meant for 16 pixels) and shrinks until the text fits
// the width. A transparent set leaves the background clear.
QImage DrawTrayDigits(const QString &text, const TrayFontSpec &font, const TrayColourSet &colours,
                      int side, qreal devicePixelRatio = 1.0);

// The digits at every standard size, and at traySide when it is above 0.
QIcon TrayDigitsIcon(const QString &text, const TrayFontSpec &font, const TrayColourSet &colours,
                     int traySide, qreal devicePixelRatio);

// The look of the flashing phase: the digits in the colours swapped.
TrayColourSet FlashColours(const TrayColourSet &colours);

// The condition image for the cached icon (Current/image-icon, else Hourly/weather-icon1)
// from the tray icon set (Skins/TrayIcons), as a file path; empty when it is missing.
QString ConditionIconFile();
// The image scaled to each standard size; a null icon when the file cannot be read.
QIcon ConditionIcon(const QString &file, int traySide, qreal devicePixelRatio);

} // namespace Tarnby
