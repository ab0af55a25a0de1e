#include "presentation/tooltippage.h"

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/icons.h"
#include "presentation/tooltiptext.h"
#include "template/cachereads.h"
#include "template/expander.h"
#include "template/formatters.h"

#include <QStringList>

#include <algorithm>
#include <functional>

namespace Tarnby
{

namespace
{

const QString kIconsStart = QStringLiteral("[ICONS START]");
const QString kIconsEnd = QStringLiteral("[ICONS END]");
constexpr int kStripColumnWidth = 44;
constexpr int kMinStripColumns = 4;
constexpr int kMaxStripColumns = 12;
constexpr int kMargin = 4;

QString pageHead()
{
    return QStringLiteral(
        "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\">\r\n"
        "<HTML><HEAD><META CHARSET=\"utf-8\"></HEAD><BODY STYLE=\"margin:0px;overflow:hidden;\">"
        "<DIV ID=\"TBTemplate-Content\" STYLE=\"display:inline-block;\">");
}

QString cell(const QString &text)
{
    return QStringLiteral("<TD ALIGN=\"center\">") + text + QStringLiteral("</TD>");
}

QString tableRow(const QStringList &cells)
{
    QString row = QStringLiteral("<TR>");
    for (const QString &text : cells)
        row += cell(text);
    return row + QStringLiteral("</TR>");
}

QString iconImage(const QString &code)
{
    return QStringLiteral("<IMG SRC=\"") + IconPathOfCode(code) +
           QStringLiteral("\" WIDTH=\"32\" HEIGHT=\"32\">");
}

QString degrees(const QString &section, const QString &key)
{
    TemperatureDress dress;
    dress.showUnit = false;
    dress.degree = true;
    dress.single = true;
    return FormatTemperature(section, key, dress);
}

int clampedColumns(int columns, int available)
{
    return std::clamp(std::min(columns, available), 0, kMaxStripColumns);
}

// One column of a strip: its heading, icon code, temperatures and the key of its chance.
struct StripColumn {
    QString head, icon, temperatures, chanceKey;
};

// A table of icons: the word "Now" over the first column, then the icons, temperatures
// and chances of precipitation of as many rows as fit and are cached.
QString stripOf(const QString &section, int columns,
                const std::function<StripColumn(const QString &row)> &columnOf)
{
    QStringList heads, icons, temps, chances;
    const int count = clampedColumns(columns, CacheCount(section));
    for (int n = 1; n <= count; ++n) {
        const StripColumn column = columnOf(QString::number(n));
        heads << (n == 1 ? QStringLiteral("Now") : column.head);
        icons << iconImage(column.icon);
        temps << column.temperatures;
        chances << FormatChance(section, column.chanceKey, true);
    }
    return QStringLiteral("<TABLE CLASS=\"IconStrip\">") + tableRow(heads) + tableRow(icons) +
           tableRow(temps) + tableRow(chances) + QStringLiteral("</TABLE>");
}

} // namespace

QString TooltipSkinName()
{
    const QString skin = GetPref(QStringLiteral("Skins"), QStringLiteral("Tooltip"));
    return skin.isEmpty() ? kDefaultTooltipSkin : skin;
}

QString TooltipSkinFolder()
{
    return process().ProfilePath + QStringLiteral("/Skins/Tooltip/") + TooltipSkinName() + u'/';
}

QString TooltipDayPart()
{
    QString icon = GetCache(QStringLiteral("Current"), QStringLiteral("image-icon"));
    if (icon.isEmpty() || icon == QLatin1String("N/A"))
        icon = GetCache(QStringLiteral("Hourly"), QStringLiteral("weather-icon1"));
    const bool lightOver = StationLocalNow(0) == QLatin1String("0:00");
    if (lightOver && !icon.startsWith(QLatin1String("nt_"))) icon.prepend(QStringLiteral("nt_"));
    const QString part = DayOrNight(icon);
    return part == QLatin1String("N") && !lightOver ? QStringLiteral("D") : part;
}

QString TooltipStripKind()
{
    const QString values =
        GetPref(QStringLiteral("TrayTooltip"), QStringLiteral("Values"), kDefaultTooltipValues);
    if (values.contains(u'1')) return QStringLiteral("Daily");
    if (values.contains(u'2')) return QStringLiteral("Hourly");
    return {};
}

QString TooltipTemplateFile(const QString &folder, const QString &dayPart)
{
    const QString own = folder + QStringLiteral("Skin.tbt");
    if (FileExists(own)) return own;
    const QString byPart = folder + (dayPart == QLatin1String("N") ? QStringLiteral("SkinNight.tbt")
                                                                   : QStringLiteral("SkinDay.tbt"));
    return FileExists(byPart) ? byPart : QString();
}

QString BuildTooltipPage(const QString &templateText, const QString &folder)
{
    QString text = templateText;
    text.replace(QStringLiteral("[CURRENTCONDITIONS]"), BuildTooltipRows());
    const QString skinPath =
        process().ProfilePath.contains(u'\'')
            ? QStringLiteral("../../../Skins/Tooltip/") + TooltipSkinName() + u'/'
            : folder;
    text.replace(QStringLiteral("[TOOLTIPSKINPATH]"), skinPath);
    text = ExpandTemplate(text, true, false);
    text += QStringLiteral("<DIV ID=\"TBTemplate-ContentHeight\" STYLE=\"display:none;\"></DIV>"
                           "<DIV ID=\"TBTemplate-ContentWidth\" STYLE=\"display:none;\"></DIV>");
    text.replace(u'\\', u'/');
    return pageHead() + text + QStringLiteral("</DIV></BODY></HTML>");
}

QString ApplyIconStrip(const QString &page, const QString &stripKind, int contentWidth)
{
    QString text = page;
    if (stripKind.isEmpty()) {
        const qsizetype start = text.indexOf(kIconsStart);
        const qsizetype end = text.indexOf(kIconsEnd, std::max<qsizetype>(start, 0));
        if (start >= 0 && end >= 0) text.remove(start, end + kIconsEnd.size() - start);
        return text.remove(kIconsToken);
    }
    text.remove(kIconsStart).remove(kIconsEnd);
    const int columns = std::max(kMinStripColumns, contentWidth / kStripColumnWidth);
    const QString icons =
        stripKind == QLatin1String("Daily") ? BuildDailyStrip(columns) : BuildHourlyStrip(columns);
    text.replace(kIconsToken, QString(icons).replace(QChar(0x00B0), QStringLiteral("&deg;")));
    return text.replace(u'\\', u'/');
}

QString BuildHourlyStrip(int columns)
{
    const QString hourly = QStringLiteral("Hourly");
    return stripOf(hourly, columns, [&](const QString &row) {
        return StripColumn{TimeText(CacheValue(hourly, QStringLiteral("hour") + row), false, true),
                           CacheValue(hourly, QStringLiteral("weather-icon") + row),
                           degrees(hourly, QStringLiteral("temperature") + row),
                           QStringLiteral("prob-of-precip") + row};
    });
}

QString BuildDailyStrip(int columns)
{
    const QString daily = QStringLiteral("Daily");
    return stripOf(daily, columns, [&](const QString &row) {
        return StripColumn{CacheValue(daily, QStringLiteral("day") + row).left(3),
                           CacheValue(daily, QStringLiteral("image1") + row),
                           degrees(daily, QStringLiteral("high") + row) + u'/' +
                               degrees(daily, QStringLiteral("low") + row),
                           QStringLiteral("pre1") + row};
    });
}

QString TooltipMeasureScript()
{
    return QStringLiteral(
        "try {document.getElementById('TBTemplate-ContentHeight').innerHTML = "
        "document.getElementById('TBTemplate-Content').clientHeight;"
        "document.getElementById('TBTemplate-ContentWidth').innerHTML = "
        "document.getElementById('TBTemplate-Content').scrollWidth;"
        "document.getElementById('TBTemplate-ContentHeight').innerHTML + ',' + "
        "document.getElementById('TBTemplate-ContentWidth').innerHTML} catch(err){}");
}

TooltipAnchor TooltipAnchor::fromSettings()
{
    const QString section = QStringLiteral("TrayTooltip");
    TooltipAnchor anchor;
    anchor.custom = GetPref(section, QStringLiteral("UseCustomLocation")) == QLatin1String("True");
    anchor.corner = GetPref(section, QStringLiteral("CustomLocation"), anchor.corner);
    anchor.point = QPoint(GetPref(section, QStringLiteral("CustomX")).toInt(),
                          GetPref(section, QStringLiteral("CustomY")).toInt());
    return anchor;
}

QPoint TooltipPosition(const TooltipAnchor &anchor, const QSize &size, const QRect &iconRect,
                       const QRect &available, const QPoint &pointer)
{
    QPoint at;
    if (anchor.custom) {
        const bool right = anchor.corner.endsWith(QLatin1String("Right"));
        const bool bottom = anchor.corner.startsWith(QLatin1String("Bottom"));
        at = QPoint(anchor.point.x() - (right ? size.width() : 0),
                    anchor.point.y() - (bottom ? size.height() : 0));
    } else {
        const QRect icon = iconRect.isValid() ? iconRect : QRect(pointer, QSize(1, 1));
        at = QPoint(icon.center().x() - size.width() / 2, icon.top() - size.height() - kMargin);
        if (icon.center().x() < available.left())
            at = QPoint(icon.right() + kMargin, icon.center().y() - size.height() / 2);
        else if (icon.center().x() > available.right())
            at =
                QPoint(icon.left() - size.width() - kMargin, icon.center().y() - size.height() / 2);
        else if (at.y() < available.top())
            at.setY(icon.bottom() + kMargin);
    }
    at.setX(std::clamp(at.x(), available.left(),
                       std::max(available.left(), available.right() - size.width() + 1)));
    at.setY(std::clamp(at.y(), available.top(),
                       std::max(available.top(), available.bottom() - size.height() + 1)));
    return at;
}

} // namespace Tarnby
