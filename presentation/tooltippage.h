#pragma once
// The page of the skinned tooltip, made from the tooltip skin's template
// (<ProfilePath>/Skins/Tooltip/<skin>/): the rows of the tooltip text, the skin's
// folder, the template tokens, hidden elements for measuring, and the optional strip
// of forecast icons. Also where the window goes on the screen. No window here.

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

namespace Tarnby
{

inline const QString kDefaultTooltipSkin = QStringLiteral("Day And Night");
inline const QString kTooltipPageName = QStringLiteral("Tooltip.html");

// Skins/Tooltip ("Day And Night" when empty) and its folder, ending in "/".
QString TooltipSkinName();
QString TooltipSkinFolder();

// "N" or "D" for the skin's template: night only while the sun is down.
QString TooltipDayPart();
// "Daily" when TrayTooltip/Values holds "1", else "Hourly" when it holds "2", else empty.
QString TooltipStripKind();
// Skin.tbt of the folder when it exists, else SkinNight.tbt or SkinDay.tbt by the part;
// empty when that file is missing.
QString TooltipTemplateFile(const QString &folder, const QString &dayPart);

// The page from a template text: [CURRENTCONDITIONS] and [TOOLTIPSKINPATH] replaced, the
// template expanded, the measuring elements added, backslashes turned to slashes, and
// the whole framed in the page head and foot.
QString BuildTooltipPage(const QString &templateText, const QString &folder);
inline const QString kIconsToken = QStringLiteral("[ICONS]");
// The icon strip put in place of [ICONS] (or, without a strip, everything from
// [ICONS START] through [ICONS END] cut out). contentWidth tells how many columns fit.
QString ApplyIconStrip(const QString &page, const QString &stripKind, int contentWidth);
QString BuildHourlyStrip(int columns);
QString BuildDailyStrip(int columns);

// The script that answers the content's height and width as "height,width".
QString TooltipMeasureScript();

// TrayTooltip/UseCustomLocation with CustomLocation, CustomX, CustomY.
struct TooltipAnchor {
    bool custom = false;
    QString corner = QStringLiteral("BottomRight"); // TopLeft, TopRight, BottomLeft, BottomRight
    QPoint point;
    static TooltipAnchor fromSettings();
};

// The window's top left corner. With a custom anchor the named corner of the window
// sits on the point. Otherwise the window goes beside the icon, on the side of the
// screen's free area that faces it (the panel's edge), kept inside that area. An icon
// whose place is unknown (an empty rectangle) puts the window near the pointer.
QPoint TooltipPosition(const TooltipAnchor &anchor, const QSize &size, const QRect &iconRect,
                       const QRect &available, const QPoint &pointer);

} // namespace Tarnby
