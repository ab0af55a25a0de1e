#pragma once
// The words of the tray tooltip: one line for each letter of TrayTooltip/Values, in the
// letters' order, from the Weather cache of the current station. The standard tooltip
// shows the lines as they are (cut to the 128 characters a tray tip holds); the skinned
// tooltip turns them into the rows of its table.
//
// Letters: A station heading, B condition, C temperature, D feels like, E dew point,
// 9 humidex, F humidity, S precipitation, G wind (with gusts when "6" is also given),
// I pressure, U rain today, T monthly rain, V yearly rain, O forecast high, P forecast
// low, Y actual high, Z actual low, 7 visibility, 8 UV index, Q moon phase, X moon
// illumination, K sunrise, 3 dawn, L sunset, 4 dusk, R hours to sunset (or sunrise),
// 5 hours to dusk (or dawn), M last observed, N last downloaded. "1" and "2" ask for
// the skinned tooltip's icon strips and give no line. Unknown letters give no line.

#include <QChar>
#include <QString>
#include <QStringList>

namespace Tarnby
{

inline const QString kDefaultTooltipValues = QStringLiteral("ABCDE9FSGIUTVOPYZQXK3L4R5MN2");
inline constexpr int kTrayTipLength = 128;

// TrayTooltip/TooltipStyle and its three words.
inline const QString kTooltipDisabled = QStringLiteral("Disabled");
inline const QString kTooltipSkinned = QStringLiteral("Skinned tooltip");
inline const QString kTooltipStandard = QStringLiteral("Standard Windows tooltip");
QString TooltipStyle();

// The switches of TrayTooltip that shape a line.
struct TooltipOptions {
    bool names = true;                         // TooltipNames: "<label>: <value>"
    bool units = false;                        // ShowUnits
    bool hideTenths = false;                   // HideTempTenths, honoured only for °F
    bool hideDesc = false;                     // HideDesc: no condition line
    bool gusts = false;                        // Values holds "6"
    QString rising = QStringLiteral("\u2191"); // put behind a value whose rate is positive
    QString falling = QStringLiteral("\u2193");
    static TooltipOptions fromSettings(const QString &values);
};

// One line; empty when the letter gives none.
QString TooltipLine(QChar letter, const TooltipOptions &options);

// TrayTooltip/Values (the default when empty), with the hours-to-sunset and the
// hours-to-dusk letters swapped at night.
QString TooltipLetters();
// Whether the current icon (image-icon, else the first hour's) is a night one.
bool TooltipIsNight();

// The lines joined by CR LF, uncut; empty for the style "Disabled".
QString BuildTooltipText();
// What the tray's own tip shows: "Tarnby" when the style is not the standard one or
// there is no text, else the text cut to 128 characters.
QString StandardTrayTip();
// The lines as the table of the skinned tooltip, with arrows as HTML entities.
QString BuildTooltipRows();

} // namespace Tarnby
