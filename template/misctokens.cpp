#include "template/misctokens.h"

#include "core/clock.h"
#include "core/files.h"
#include "core/paths.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "derive/dateformat.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/station.h"
#include "template/alerttokens.h"
#include "template/cachereads.h"
#include "template/passtools.h"

#include <QRandomGenerator>

#include <cmath>

namespace Tarnby
{

namespace
{

const QString kCurrent = QStringLiteral("Current");

std::function<QString()> &stationWebPageSource()
{
    static std::function<QString()> source;
    return source;
}

QString profileFolder()
{
    return process().ProfilePath;
}

QString skinFolder()
{
    return profileFolder() + QStringLiteral("/Skins/Interface/") + InterfaceSkinName();
}

// The three forms of a folder token: as it stands, with doubled backslashes (ESC), with
// forward slashes (SLASH).
template <class Expand>
void expandFolderForms(TokenText &text, const QString &name, const QString &folder, Expand expand)
{
    expand(text, tokenName(name), [&] { return folder; });
    expand(text, tokenName(name, QStringLiteral("ESC")),
           [&] { return QString(folder).replace(u'\\', QStringLiteral("\\\\")); });
    expand(text, tokenName(name, QStringLiteral("SLASH")),
           [&] { return QString(folder).replace(u'\\', u'/'); });
}

const auto exact = [](TokenText &t, const QString &token, auto value) {
    expandToken(t, token, value);
};
const auto ignoringCase = [](TokenText &t, const QString &token, auto value) {
    expandTokenIgnoringCase(t, token, value);
};

// A "[NAME picture]" token: the picture of the first occurrence, applied to all of
// exactly that token.
template <class ValueFn>
void expandPictureToken(TokenText &text, const QString &opening, ValueFn value)
{
    if (!text.contains(opening)) return;
    const QString picture = text.between(opening, QStringLiteral("]"));
    text.replace(opening + picture + u']', value(picture));
}

// "date time" to the system's date in a known order and the display time.
QString stampText(const QString &stamp, const QString &dateOrder)
{
    const qsizetype blank = stamp.indexOf(u' ');
    if (blank < 0) return stamp;
    return NormaliseDate(stamp.left(blank), dateOrder) + u' ' + FormatTime(stamp.mid(blank + 1));
}

QString observedStamp()
{
    return CacheValue(kCurrent, QStringLiteral("observed"));
}

// [OBSERVED DATETIME n]: the observation moved by n minutes.
QString observedShifted(const QString &parameter)
{
    QString observed = observedStamp();
    const QString minutes = QString(parameter).remove(u' ');
    const std::optional<QDateTime> when = readDate(observed);
    if (when && isNumeric(minutes))
        observed = generalDateText(
            when->addSecs(qint64(std::llround(readNumber(minutes).value_or(0))) * 60));
    return stampText(observed, QStringLiteral("MDY"));
}

QString observedTimeZone()
{
    QString result =
        FormatTime(ReadCacheValue(kCurrent, QStringLiteral("observed"), true), false, false, true);
    if (process().StationType != u"WUnderground")
        result += u' ' + CacheValue(kCurrent, QStringLiteral("now-date-time-zone-abbrv")) +
                  CacheValue(kCurrent, QStringLiteral("ob-date-time-zone-abbrv"));
    if (result.endsWith(QStringLiteral("TT"))) result.chop(1); // kept as it has always been
    return QStringLiteral("Updated ") + result;
}

QString skinMapPath()
{
    const QString cacheFolder = skinFolder() + QStringLiteral("/Cache/") + process().CityCode;
    QString chosen = skinFolder() + QStringLiteral("/Images/Blank.gif");
    for (const char *extension : {"jpg", "gif", "png"}) {
        const QString map = cacheFolder + QStringLiteral("/map.") + QLatin1StringView(extension);
        if (FileExists(map)) {
            chosen = map;
            break;
        }
    }
    if (!FileExists(chosen)) return {};
    QString path = chosen.replace(u'\\', u'/');
    while (path.startsWith(u'/'))
        path.remove(0, 1);
    return QStringLiteral("file:///") + path + u'?' +
           QString::number(QRandomGenerator::global()->bounded(1, 1000000));
}

void expandSkinMapStyles(TokenText &text)
{
    if (!text.contains(u"[SKIN MAP STYLE ")) return;
    const QString choice = GetPref(QStringLiteral("Skins"),
                                   QStringLiteral("Option20") + InterfaceSkinName() + u'-' +
                                       GetPref(QStringLiteral("CityCode"), QStringLiteral("Code")));
    const QString &map = process().MapSource;
    const bool programMap = map == u"tb" || map == u"tb2" || map == u"tb3" || map == u"tb5";
    const bool showJpg = !choice.isEmpty() || !programMap;
    const QString hidden = QStringLiteral("display:none;");
    ignoringCase(text, QStringLiteral("[SKIN MAP STYLE GIF]"),
                 [&] { return showJpg ? QString() : hidden; });
    ignoringCase(text, QStringLiteral("[SKIN MAP STYLE JPG]"),
                 [&] { return showJpg ? hidden : QString(); });
}

QString stationName()
{
    return SettingValue(QStringLiteral("CityCode"), QStringLiteral("City")).trimmed();
}

QString stationFormatted()
{
    QString name = stationName();
    if (name.size() > 60) name = name.left(60) + QStringLiteral("...");
    name.replace(u'(', QStringLiteral("</STRONG>("));
    QString value = QStringLiteral("<STRONG STYLE=\"color:#FFFFFF; font-size:13px;\">") + name;
    if (!value.contains(QStringLiteral("</STRONG>"))) value += QStringLiteral("</STRONG>");
    return value;
}

void expandAlerts(TokenText &text)
{
    if (!text.contains(u"[ALERT")) return;
    const QString section = QStringLiteral("Alerts");
    const auto trimmedOrNa = [&section](const char *key) {
        const QString value = CacheValue(section, QLatin1StringView(key)).trimmed();
        return value.isEmpty() ? QStringLiteral("N/A") : value;
    };
    exact(text, QStringLiteral("[ALERTS AVAILABLE]"),
          [&] { return trimmedOrNa("AlertsAvailable"); });
    exact(text, QStringLiteral("[ALERTS COUNT]"), [&] { return trimmedOrNa("count"); });
    exact(text, QStringLiteral("[ALERTS FULL TEXT]"), [] { return AlertsTokenText(true, true); });
    exact(text, QStringLiteral("[ALERTS FULL TEXT PLAIN]"),
          [] { return AlertsTokenText(true, false); });
    exact(text, QStringLiteral("[ALERTS INFO]"), [] { return AlertsTokenText(false, true); });
    exact(text, QStringLiteral("[ALERTS INFO PLAIN]"),
          [] { return AlertsTokenText(false, false); });
}

void expandDatesAndPlaces(TokenText &text)
{
    const QDateTime now = clock().now();
    exact(text, QStringLiteral("[DATE]"),
          [&] { return formatDateTime(now, GetShortDatePattern(), dateLocale()); });
    expandPictureToken(text, QStringLiteral("[DATE "), [&](const QString &picture) {
        return formatDateTime(wallClock(now.date()), picture, dateLocale());
    });
    exact(text, QStringLiteral("[DOWNLOADED DATETIME]"), [] {
        return stampText(CacheValue(kCurrent, QStringLiteral("downloaded")), QStringLiteral("MDY"));
    });
    if (text.contains(u"[INSTALL "))
        expandFolderForms(text, QStringLiteral("INSTALL LOCATION"), ProgramFolder(), exact);
    exact(text, QStringLiteral("[IS INTERNATIONAL]"), [] {
        const bool abroad =
            IsInternational(SettingValue(QStringLiteral("CityCode"), QStringLiteral("ZipCode")));
        return abroad ? QStringLiteral("True") : QStringLiteral("False");
    });
    if (text.contains(u"[PROFILE "))
        expandFolderForms(text, QStringLiteral("PROFILE LOCATION"), profileFolder(), ignoringCase);
    exact(text, QStringLiteral("[SKIN MAP PATH]"), skinMapPath);
    expandSkinMapStyles(text);
    if (text.contains(u"[SKIN PATH")) {
        const QString cache = skinFolder() + QStringLiteral("/Cache/") + process().CityCode + u'/';
        expandFolderForms(text, QStringLiteral("SKIN PATH"), cache, exact);
        exact(text, QStringLiteral("[SKIN PATH BASE]"), skinFolder);
    }
}

void expandStation(TokenText &text)
{
    ignoringCase(text, QStringLiteral("[STATION]"), stationName);
    ignoringCase(text, QStringLiteral("[STATION URL]"), [] {
        const auto &source = stationWebPageSource();
        return source ? source().trimmed() : QString();
    });
    ignoringCase(text, QStringLiteral("[STATION FORMATTED]"), stationFormatted);
    exact(text, QStringLiteral("[STATION ID]"),
          [] { return CacheValue(kCurrent, QStringLiteral("station-id")).trimmed(); });
    exact(text, QStringLiteral("[STATION TYPE]"), [] { return process().StationType; });
    exact(text, QStringLiteral("[TAB]"), [] { return QStringLiteral("\t"); });
}

void expandTimes(TokenText &text)
{
    const QDateTime now = clock().now();
    exact(text, QStringLiteral("[TIME]"),
          [&] { return formatDateTime(now, GetTimePattern(), dateLocale()); });
    expandPictureToken(text, QStringLiteral("[TIME "), [&](const QString &picture) {
        return formatDateTime(wallClock(QDate(1899, 12, 30), now.time()), picture, dateLocale());
    });
    if (text.contains(u"[UPDATED")) {
        exact(text, QStringLiteral("[UPDATED]"), [] { return FormatUpdated(true); });
        exact(text, QStringLiteral("[UPDATED AGO]"), FormatUpdatedAgo);
        exact(text, QStringLiteral("[UPDATED PLAIN]"), [] { return FormatUpdated(false); });
    }
    if (text.contains(u"[OBSERVED")) {
        // The bare form wins: the two are never both expanded in one run.
        if (text.contains(u"[OBSERVED DATETIME]"))
            text.replace(QStringLiteral("[OBSERVED DATETIME]"),
                         stampText(observedStamp(), QString()));
        else if (text.contains(u"[OBSERVED DATETIME"))
            expandPictureToken(text, QStringLiteral("[OBSERVED DATETIME "), observedShifted);
        exact(text, QStringLiteral("[OBSERVED TIMEZONE]"), observedTimeZone);
    }
}

void expandSkinOptions(TokenText &text)
{
    if (!text.contains(u"[TBSKINOPTION")) return;
    const QString skin = InterfaceSkinName();
    for (int n = 1;; ++n) {
        const QString token = QStringLiteral("[TBSKINOPTION%1]").arg(n);
        if (!text.contains(token)) break;
        const QString value =
            GetPref(QStringLiteral("Skins"), QStringLiteral("Option%1").arg(n) + skin);
        text.replace(token, value.isEmpty() ? QStringLiteral("N/A") : value);
    }
}

// "date time" of a stamp as [UPDATED] shows it: the time is what stands between the first
// blank and the AM/PM letter "M", the text behind that letter is kept.
struct StampParts {
    QString date;
    QString time;  // formatted, with the text behind the "M"
    QString clock; // the time as it stands, for reading
};

std::optional<StampParts> stampParts(const QString &stamp)
{
    const qsizetype blank = stamp.indexOf(u' ');
    if (blank < 0) return std::nullopt;
    const qsizetype m = stamp.toUpper().indexOf(u'M', blank + 1);
    StampParts parts;
    parts.date = stamp.left(blank);
    parts.clock = m < 0 ? stamp.mid(blank + 1) : stamp.mid(blank + 1, m - blank);
    parts.time =
        FormatTime(parts.clock, false, false, true) + (m < 0 ? QString() : stamp.mid(m + 1));
    return parts;
}

QString updatedValue(const QString &stamp)
{
    if (stamp.isEmpty() || stamp.compare(QStringLiteral("N/A"), Qt::CaseInsensitive) == 0)
        return QStringLiteral("N/A");
    const std::optional<StampParts> parts = stampParts(stamp);
    return parts ? parts->date + QStringLiteral(" @ ") + parts->time : stamp;
}

} // namespace

QString InterfaceSkinName()
{
    const QString skin = SettingValue(QStringLiteral("Skins"), QStringLiteral("Interface"));
    return skin.isEmpty() ? QStringLiteral("Splendid4") : skin;
}

void setStationWebPageSource(std::function<QString()> source)
{
    stationWebPageSource() = std::move(source);
}

QString FormatUpdated(bool html)
{
    const QString section = QStringLiteral("OnDownload");
    const auto isOn = [&section](const char *key) {
        return GetPref(section, QLatin1StringView(key)) == u"True";
    };
    if (isOn("DualDisplay")) {
        SavePref(section, QStringLiteral("DualDisplay"), QString());
        SavePref(section, QStringLiteral("TimeDisplay"), QStringLiteral("True"));
        SavePref(section, QStringLiteral("ObservedDisplay"), QStringLiteral("True"));
    }
    const QString observed = isOn("ObservedDisplay") ? updatedValue(observedStamp()) : QString();
    const QString downloaded =
        isOn("TimeDisplay") ? updatedValue(CacheValue(kCurrent, QStringLiteral("downloaded")))
                            : QString();
    if (!observed.isEmpty() && !downloaded.isEmpty()) {
        if (!html)
            return QStringLiteral("Observed: ") + observed + QStringLiteral("<BR>Downloaded: ") +
                   downloaded;
        return QStringLiteral("<TABLE CELLPADDING='0' CELLSPACING='0'><TR><TD ALIGN='right'>"
                              "Observed:&nbsp;<BR />Downloaded:&nbsp;</TD><TD>") +
               observed + QStringLiteral("<BR />") + downloaded +
               QStringLiteral("</TD></TR></TABLE>");
    }
    const QString label =
        observed.isEmpty() ? QStringLiteral("Downloaded:") : QStringLiteral("Observed:");
    const QString value = observed.isEmpty() ? downloaded : observed;
    if (value.isEmpty()) return {};
    return html ? label + QStringLiteral("&nbsp;") + value + QStringLiteral("<BR />")
                : label + u' ' + value;
}

QString FormatUpdatedAgo()
{
    const std::optional<StampParts> parts = stampParts(observedStamp());
    const std::optional<QDateTime> when =
        parts ? readDate(parts->date + u' ' + parts->clock) : std::nullopt;
    if (!when) return QStringLiteral("N/A");
    const QDateTime now = clock().now();
    const qint64 seconds = std::max<qint64>(0, when->secsTo(wallClock(now.date(), now.time())));
    struct Step {
        qint64 below;
        qint64 size;
        const char *unit;
    };
    static constexpr Step steps[] = {
        {60, 1, "second"}, {3600, 60, "minute"}, {86400, 3600, "hour"}, {0, 86400, "day"}};
    for (const Step &step : steps) {
        if (step.below && seconds >= step.below) continue;
        const qint64 n = seconds / step.size;
        return QStringLiteral("Updated %1 %2%3 ago")
            .arg(n)
            .arg(QLatin1StringView(step.unit), n == 1 ? QString() : QStringLiteral("s"));
    }
    return {};
}

void ExpandMiscTokens(TokenText &text)
{
    expandAlerts(text);
    expandDatesAndPlaces(text);
    expandStation(text);
    expandTimes(text);
    expandSkinOptions(text);
}

QString ExpandMiscTokens(QString text)
{
    return runPass(std::move(text), [](TokenText &working) { ExpandMiscTokens(working); });
}

} // namespace Tarnby
