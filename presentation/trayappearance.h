#pragma once
// What the tray shows, decided without drawing anything: the icon mode, the digit text
// made from the current temperature, the colour set chosen by alerts and temperature,
// and the font the digits are drawn in. Everything here reads the settings and the
// Weather cache afresh at each call; nothing fails: a missing value gives "NA" and the
// normal colours.

#include <QColor>
#include <QString>

namespace Tarnby
{

// TrayIcon/TrayIconToDisplay (or the older TrayIcon/TrayIcon).
enum class TrayIconMode { Temperature = 1, Condition = 2, ConditionAndTemperature = 3 };

// The mode stored; any text but the two other choices is the temperature icon, and is
// then stored as "Display temperature icon".
TrayIconMode ReadTrayIconMode();
bool ShowsTemperature(TrayIconMode mode);
bool ShowsCondition(TrayIconMode mode);

// The switches of TrayIcon that shape the digit text.
struct TrayDigitOptions {
    bool tenths = true; // ShowTenthsPlace
    bool hideDigit = false;
    bool degree = false;
    bool hideSign = false;
    static TrayDigitOptions fromSettings();
};

// The digits for a temperature as the cache holds it in the user's unit: "NA" for a
// missing value, the whole degrees, or tenths where the value has them; a hundred or
// more loses its leading digit with hideDigit ("105" is "05", "-105" is "-05"); the
// degree sign; no minus with hideSign; never "-0".
QString TrayDigitText(const QString &temperature, const TrayDigitOptions &options);
// The same for the cached temp (or feels-like with TrayIcon/ShowFeels) of the station.
QString TrayDigitText();

// One of the colour sets of TrayIcon.
enum class TrayColourLevel { Normal, Freezing, BelowZero, Alert, Alert2, Alert3 };

struct TrayColourSet {
    QColor foreground;
    QColor background;
    bool transparent = false; // the background is not drawn
};

// The set in force, first match wins: an alert level by the words of the cached alert
// titles ("warning", "watch", any other), below zero in the display unit, freezing
// (32 °F or less), normal. Levels the user switched off are passed over.
TrayColourLevel ChooseTrayColourLevel();
// The stored colours of a level. Colours are stored as decimal numbers with red in the
// low byte (red + 256 × green + 65536 × blue).
TrayColourSet ReadTrayColourSet(TrayColourLevel level);
// SetTrayColours: the set of ChooseTrayColourLevel.
TrayColourSet SetTrayColours();
QColor colourFromStored(const QString &stored, QColor fallback);
QString storedFromColour(const QColor &colour);

// The font of the digits. The size is in points as the user sees it on a 16-pixel icon.
struct TrayFontSpec {
    QString family = QStringLiteral("Arial");
    double pointSize = 8;
    bool bold = false;
    bool italic = false;
    bool smooth = true; // BlendClearType not "False"
};
// SetTrayFont: the stored font, "Arial" and "8" stored when empty. italicFlip turns
// the slant the other way, which marks data of a failed retrieval.
TrayFontSpec SetTrayFont(bool italicFlip);

} // namespace Tarnby
