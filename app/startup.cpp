#include "app/startup.h"

#include "app/screenreader.h"
#include "core/files.h"
#include "core/log.h"
#include "core/paths.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/units.h"
#include "providers/stationselection.h"
#include "retrieval/children.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"
#include "retrieval/servicesettings.h"
#include "run/retrievalrun.h"
#include "run/scheduler.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QUrl>

namespace Tarnby
{

namespace
{

const QString kMisc = QStringLiteral("Misc");
const QString kGeneral = QStringLiteral("General");
const QString kSkins = QStringLiteral("Skins");
const QString kCityCode = QStringLiteral("CityCode");
const QString kTrue = QStringLiteral("True");
const QString kDefaultSkin = QStringLiteral("Splendid4");
const QString kDefaultTooltipSkin = QStringLiteral("Day And Night");

bool isTrue(const QString &section, const QString &key)
{
    return GetPref(section, key) == kTrue;
}

QString profileFile(const QString &name)
{
    return process().ProfilePath + QLatin1Char('/') + name;
}

QString programFolderFile(const QString &name)
{
    return ProgramFolder() + QLatin1Char('/') + name;
}

// Step 7: the remote log may go on; the token never survives a restart.
void resetLoggingAndToken()
{
    if (isTrue(kMisc, QStringLiteral("EnableLogging"))) {
        process().LogEnabled = true;
        process().LogStartedAt = QDateTime::currentDateTime();
    }
    ClearApiToken();
}

// Step 9: a program file with another time stamp than at the last start is an upgrade.
void detectUpgrade(StartupState &state)
{
    const QString program =
        QCoreApplication::instance() ? QCoreApplication::applicationFilePath() : QString();
    const QString stamp = FhFileLastModified(program);
    if (stamp.isEmpty() || stamp == GetPref(kMisc, QStringLiteral("Installed"))) return;
    state.Upgrade = true;
    SavePref(kMisc, QStringLiteral("Installed"), stamp);
    SavePref(kMisc, QStringLiteral("Location"), QString()); // step 10
    state.done << QStringLiteral("program file changed since the last start: upgrade steps run");
}

// Step 14: the two old tooltip icon switches become letters of TrayTooltip/Values.
void migrateTooltipIcons(const QString &switchKey, QChar wanted, QChar dropped)
{
    const QString section = QStringLiteral("TrayTooltip");
    if (!isTrue(section, switchKey)) return;
    QString values = GetPref(section, QStringLiteral("Values"));
    if (!values.contains(wanted)) values = wanted + values.remove(dropped);
    SavePref(section, QStringLiteral("Values"), values);
    SavePref(section, switchKey, QString());
}

// Step 13: the default skin, or the text skin when a screen reader is running.
void migrateDefaultSkin(StartupState &state)
{
    if (ScreenReaderActive()) {
        SavePref(kMisc, QStringLiteral("LastPage"), QStringLiteral("Current"));
        SavePref(kSkins, QStringLiteral("Interface"), QStringLiteral("TextOnly"));
        state.done << QStringLiteral("screen reader active: interface skin TextOnly");
        return;
    }
    // A migration done once: the user's later choice of skin stands.
    if (GetPref(kMisc, QStringLiteral("LatestSkin")) == kDefaultSkin) return;
    SavePref(kMisc, QStringLiteral("LatestSkin"), kDefaultSkin);
    if (GetPref(kSkins, QStringLiteral("Interface")).left(8) == QStringLiteral("TextOnly")) return;
    state.SkinReset = true;
    SavePref(kMisc, QStringLiteral("LastPage"), QStringLiteral("Current"));
    SavePref(kSkins, QStringLiteral("Interface"), kDefaultSkin);
    SavePref(kMisc, QStringLiteral("IfaceHeight"), QString());
    SavePref(kMisc, QStringLiteral("IfaceWidth"), QString());
    SavePref(kMisc, QStringLiteral("Runs"), QStringLiteral("0"));
}

// Steps 12 to 15: one-off migrations of stored settings.
void migrateSettings(StartupState &state)
{
    if (isTrue(kMisc, QStringLiteral("UpgradeSkins"))) {
        state.Upgrade = true;
        SavePref(kMisc, QStringLiteral("UpgradeSkins"), QStringLiteral("False"));
    }
    migrateDefaultSkin(state);
    migrateTooltipIcons(QStringLiteral("DisplayDailyIcons"), u'1', u'2');
    migrateTooltipIcons(QStringLiteral("DisplayHourlyIcons"), u'2', u'1');
    SavePref(kCityCode, QStringLiteral("CheckedZipCode"), QStringLiteral("False"));
}

// Step 16.
void loadLocaleSymbols()
{
    const QLocale locale = QLocale::system();
    ProcessValues &pv = process();
    pv.DecimalSymbol = locale.decimalPoint();
    pv.GroupSymbol = locale.groupSeparator();
    pv.NonUsNumberFormat =
        pv.DecimalSymbol != QStringLiteral(".") || pv.GroupSymbol != QStringLiteral(",");
}

// Step 19. With auto-detection the system's proxy is the one of the environment.
void loadProxy()
{
    ProcessValues &pv = process();
    pv.ProxyServer = pv.ProxyPort = pv.ProxyUser = pv.ProxyPassword = QString();
    const QString section = QStringLiteral("Proxy");
    if (isTrue(section, QStringLiteral("AutoDetect"))) {
        QString system = qEnvironmentVariable("https_proxy", qEnvironmentVariable("http_proxy"));
        if (system.isEmpty()) return;
        const QUrl url = QUrl::fromUserInput(system);
        pv.ProxyServer = url.host();
        pv.ProxyPort = url.port() > 0 ? QString::number(url.port()) : QString();
        return;
    }
    pv.ProxyServer = GetPref(section, QStringLiteral("Server"));
    pv.ProxyPort = GetPref(section, QStringLiteral("Port"));
    pv.ProxyUser = DecodeCredential(GetPref(section, QStringLiteral("Username")));
    pv.ProxyPassword = DecodeCredential(GetPref(section, QStringLiteral("Password")));
}

// Step 11: the service settings last stored, each checked.
void loadStoredServiceSettings()
{
    ProcessValues &pv = process();
    const QString pulse = GetPref(kMisc, QStringLiteral("SettingPulseUrl"));
    pv.PulseUrl = pulse.startsWith(QStringLiteral("http"), Qt::CaseInsensitive)
                      ? pulse
                      : HostUrl(Host::PulseApi);
    auto oneOf = [](const QString &key, const QStringList &allowed, const QString &fallback) {
        const QString value = GetPref(kMisc, key);
        return allowed.contains(value) ? value : fallback;
    };
    pv.IntlDailyForecastSource =
        oneOf(QStringLiteral("SettingIntlDailyForecastSource"),
              {QStringLiteral("wb"), QStringLiteral("wu")}, QStringLiteral("wb"));
    pv.WuSource = oneOf(QStringLiteral("SettingWuSource"),
                        {QStringLiteral("wb"), QStringLiteral("wu")}, QStringLiteral("wu"));
    pv.NwsSource =
        oneOf(QStringLiteral("SettingNwsSource"),
              {QStringLiteral("mesowest"), QStringLiteral("nws")}, QStringLiteral("nws"));
}

// Step 35: the display units and the flags read once.
void loadUnits()
{
    ProcessValues &pv = process();
    LoadConversionSettings();
    pv.RememberMapSize =
        GetPref(kGeneral, QStringLiteral("RememberMapSize")) != QStringLiteral("False");
    pv.ShowFeels = isTrue(QStringLiteral("TrayIcon"), QStringLiteral("ShowFeels"));
    pv.UpdateWhenConnected = isTrue(QStringLiteral("AutoUpdate"), QStringLiteral("WhenConnected"));
}

QString skinFolder(const QString &kind, const QString &skin)
{
    return profileFile(QStringLiteral("Skins/") + kind + QLatin1Char('/') + skin);
}

// Steps 23 and 32: a skin whose folder is missing falls back to the stock skin.
void checkSkins()
{
    const QString skin = GetPref(kSkins, QStringLiteral("Interface"), kDefaultSkin);
    if (!FolderExists(skinFolder(QStringLiteral("Interface"), skin)) && skin != kDefaultSkin) {
        SavePref(kSkins, QStringLiteral("Interface"), kDefaultSkin);
        SavePref(kMisc, QStringLiteral("IfaceWidth"), QString());
        SavePref(kMisc, QStringLiteral("IfaceHeight"), QString());
    }
    const QString tooltip = GetPref(kSkins, QStringLiteral("Tooltip"));
    if (tooltip.isEmpty() || !FolderExists(skinFolder(QStringLiteral("Tooltip"), tooltip)))
        SavePref(kSkins, QStringLiteral("Tooltip"), kDefaultTooltipSkin);
}

// Step 24: the cache and the skins' cached pages go when asked or after an upgrade.
void deleteCacheIfAsked(const StartupState &state)
{
    if (!isTrue(kMisc, QStringLiteral("DeleteCache")) && !state.Upgrade) return;
    DeleteTempFiles(QStringLiteral("TBL"));
    DeleteFolderTree(skinFolder(QStringLiteral("Interface"),
                                GetPref(kSkins, QStringLiteral("Interface"), kDefaultSkin)) +
                     QStringLiteral("/Cache"));
    DeleteWholeCache();
    SavePref(kMisc, QStringLiteral("DeleteCache"), QStringLiteral("False"));
}

// Step 26 for a stored station: a cached page older than its template is stale.
void dropStaleSkinPage()
{
    const QString skin = skinFolder(QStringLiteral("Interface"),
                                    GetPref(kSkins, QStringLiteral("Interface"), kDefaultSkin));
    const QString page =
        skin + QStringLiteral("/Cache/") + process().CityCode + QStringLiteral("/Skin.html");
    const QString tbt = skin + QStringLiteral("/Skin.tbt");
    if (FileExists(page) && FileExists(tbt) &&
        QFileInfo(page).lastModified() < QFileInfo(tbt).lastModified())
        DeleteFile(page);
}

void copyFileIf(bool condition, const QString &name, StartupState &state)
{
    if (!condition || !FileExists(programFolderFile(name))) return;
    DeleteFile(profileFile(name));
    if (QFile::copy(programFolderFile(name), profileFile(name)))
        state.done << QStringLiteral("copied %1 into the profile").arg(name);
}

void copyFolderIf(const QString &name, bool replace, StartupState &state)
{
    const QString from = programFolderFile(name);
    const QString to = profileFile(name);
    if (!FolderExists(from)) return;
    if (replace) DeleteFolderTree(to);
    if (FolderExists(to)) return;
    if (CopyTree(from, to, QStringLiteral("*.*"), [] { QCoreApplication::processEvents(); }))
        state.done << QStringLiteral("copied folder %1 into the profile").arg(name);
}

// Step 31: program files into the profile, missing ones always, all after an upgrade.
void refreshProgramFiles(StartupState &state)
{
    const bool upgrade = state.Upgrade;
    for (const QString &name : {QStringLiteral("FMMain.swf"), QStringLiteral("Map.wtp")})
        copyFileIf(!FileExists(profileFile(name)) || upgrade, name, state);
    copyFolderIf(QStringLiteral("HTML"), upgrade, state);
    copyFolderIf(QStringLiteral("LatestChanges"), upgrade, state);
    copyFileIf(!FileExists(profileFile(QStringLiteral("FavoriteMaps.tb"))),
               QStringLiteral("FavoriteMaps.tb"), state);
    if (!FileExists(profileFile(QStringLiteral("UserMaps.tb"))) &&
        FileExists(profileFile(QStringLiteral("FavoriteMaps.tb"))))
        QFile::copy(profileFile(QStringLiteral("FavoriteMaps.tb")),
                    profileFile(QStringLiteral("UserMaps.tb")));
    const bool mapsMissing = !FileExists(profileFile(QStringLiteral("Maps.tb")));
    if ((mapsMissing || upgrade) && FileExists(programFolderFile(QStringLiteral("Maps.tb")))) {
        if (!mapsMissing) {
            DeleteFile(profileFile(QStringLiteral("Maps.Backup")));
            RenameFile(profileFile(QStringLiteral("Maps.tb")),
                       profileFile(QStringLiteral("Maps.Backup")));
        }
        copyFileIf(true, QStringLiteral("Maps.tb"), state);
    }
    // The stock skins are merged into the profile's: the user's own skins stay.
    const QString skins = programFolderFile(QStringLiteral("Skins"));
    if (FolderExists(skins) && (!FolderExists(profileFile(QStringLiteral("Skins"))) || upgrade) &&
        CopyTree(skins, profileFile(QStringLiteral("Skins")), QStringLiteral("*.*"),
                 [] { QCoreApplication::processEvents(); }))
        state.done << QStringLiteral("copied the stock skins into the profile");
}

// Step 33.
void recordVersion(StartupState &state)
{
    if (GetPref(kMisc, QStringLiteral("Version")) == ProgramVersion()) return;
    SavePref(kMisc, QStringLiteral("Version"), ProgramVersion());
    state.VersionChanged = true;
}

// Steps 28 and 29.
void loadTrayChoices()
{
    ProcessValues &pv = process();
    pv.LeftSingleClickAction =
        GetPref(QStringLiteral("TrayIcon"), QStringLiteral("LeftSingleClickAction"),
                QStringLiteral("Open Tarnby"));
    pv.LeftDoubleClickAction =
        GetPref(QStringLiteral("TrayIcon"), QStringLiteral("LeftDoubleClickAction"),
                QStringLiteral("No Action"));
    const QString close = GetPref(kGeneral, QStringLiteral("GUIx"));
    pv.GuiCloseMode = close == QStringLiteral("Close") || close == QStringLiteral("Taskbar")
                          ? close
                          : QStringLiteral("Minimize");
    pv.TooltipStyle = GetPref(QStringLiteral("TrayTooltip"), QStringLiteral("TooltipStyle"));
    if (pv.TooltipStyle.isEmpty()) { // step 38
        pv.TooltipStyle = GetPref(QStringLiteral("TrayTooltip"),
                                  QStringLiteral("UseSkinnedTooltip")) == QStringLiteral("False")
                              ? QStringLiteral("Standard Windows tooltip")
                              : QStringLiteral("Skinned tooltip");
        SavePref(QStringLiteral("TrayTooltip"), QStringLiteral("TooltipStyle"), pv.TooltipStyle);
    }
}

// Step 54: the map template follows the Maps/Stretch choice.
void alignMapTemplate()
{
    const QString path = profileFile(QStringLiteral("Map.wtp"));
    if (!FileExists(path)) return;
    const bool stretch =
        GetPref(QStringLiteral("Maps"), QStringLiteral("Stretch")) != QStringLiteral("False");
    SavePref(QStringLiteral("Maps"), QStringLiteral("Stretch"),
             stretch ? kTrue : QStringLiteral("False"));
    const QString plain = QStringLiteral("onResize=''");
    const QString zoom = QStringLiteral("onResize='zoomMap();'");
    QString text = ReadFile(path);
    text.replace(stretch ? plain : zoom, stretch ? zoom : plain, Qt::CaseInsensitive);
    WriteFileAtomic(path, text);
}

// Steps 52 and 53.
void countRunAndSetDefaults(StartupState &state)
{
    bool numeric = false;
    const int runs = GetPref(kMisc, QStringLiteral("Runs")).toInt(&numeric);
    if (numeric && runs > 0) {
        SavePref(kMisc, QStringLiteral("Runs"), QString::number(runs + 1));
    } else {
        state.FirstRun = true;
        SavePref(kMisc, QStringLiteral("Runs"), QStringLiteral("1"));
    }
    if (GetPref(QStringLiteral("TrayIcon"), QStringLiteral("ShowTenthsPlace")).isEmpty())
        SavePref(QStringLiteral("TrayIcon"), QStringLiteral("ShowTenthsPlace"), kTrue);
    if (GetPref(QStringLiteral("OnDownload"), QStringLiteral("TimeDisplay")).isEmpty() &&
        GetPref(QStringLiteral("OnDownload"), QStringLiteral("DualDisplay")).isEmpty())
        SavePref(QStringLiteral("OnDownload"), QStringLiteral("DualDisplay"), kTrue);
}

} // namespace

QString ProgramVersion()
{
    return QStringLiteral("%1.%2.%3")
        .arg(PROJECT_VERSION_MAJOR)
        .arg(PROJECT_VERSION_MINOR)
        .arg(PROJECT_VERSION_PATCH, 2, 10, QLatin1Char('0'));
}

void OpenSettingsStore(const QString &commandLine)
{
    ProcessValues &pv = process();
    pv.ConfigFolder = DefaultConfigFolder();
    CreateFolder(pv.ConfigFolder);
    pv.UseINI = commandLine.contains(QStringLiteral("-i"));
    if (pv.UseINI && commandLine.contains(QStringLiteral("-id")))
        pv.Username = QStringLiteral("Default");
    if (pv.Username.isEmpty()) // step 6
        pv.Username = qEnvironmentVariable("USER", QStringLiteral("Default"));
    if (pv.Username.isEmpty()) pv.Username = QStringLiteral("Default");
    SettingsStore::open(pv.ConfigFolder + QStringLiteral("/settings.sqlite"),
                        pv.ConfigFolder + QLatin1Char('/') + pv.Username + QStringLiteral(".ini"),
                        pv.UseINI);
    if (pv.UseINI) return;
    // A store that cannot be written sends the whole run to the profile file.
    SavePref(kMisc, QStringLiteral("RegTest"), QStringLiteral("Test"));
    if (GetPref(kMisc, QStringLiteral("RegTest")) != QStringLiteral("Test")) {
        pv.UseINI = true;
        SettingsStore::setUseIni(true);
        Log(QStringLiteral("The settings database cannot be written; using %1.ini (modMain.Main)")
                .arg(pv.Username));
    } else {
        SavePref(kMisc, QStringLiteral("RegTest"), QString());
    }
}

void ChooseProfileFolder()
{
    ProcessValues &pv = process();
    if (isTrue(kGeneral, QStringLiteral("StoreFilesInProgramFolder"))) {
        CreateFolder(ProgramFolder() + QStringLiteral("/Users"));
        pv.ProfilePath = ProgramFolder() + QStringLiteral("/Users/") + pv.Username;
    } else {
        pv.ProfilePath = DefaultProfileFolder();
    }
    CreateFolder(pv.ProfilePath);
}

void LoadProcessValues()
{
    loadStoredServiceSettings();
    loadLocaleSymbols();
    loadProxy();
    loadUnits();
    CopySelectionToProcess();
}

void ParseCommandLine(const QString &line)
{
    const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        const qsizetype eq = word.indexOf(QLatin1Char('='));
        QString name = (eq < 0 ? word : word.left(eq)).toLower();
        const QString value = eq < 0 ? QString() : word.mid(eq + 1);
        if (name.startsWith(QLatin1Char('-'))) name.remove(0, 1);
        if (name == QStringLiteral("monthlydb") && value.toLower().endsWith(QStringLiteral(".mdb")))
            process().DbPath = value;
        else if (name == QStringLiteral("station"))
            SetWeatherStationByCode(value);
    }
}

StartupState RunStartup(const QString &commandLine)
{
    StartupState state;
    resetLoggingAndToken();
    ChooseProfileFolder();
    state.done << QStringLiteral("profile folder %1").arg(process().ProfilePath);
    InstallRemoteLog();
    // Step 3, here because its downloads need the profile's Temp folder.
    process().VendorPlainHttp = HttpsProbe();
    detectUpgrade(state);
    migrateSettings(state);
    state.Runs = GetPref(kMisc, QStringLiteral("Runs")).toInt(); // step 17: not numeric reads 0
    LoadProcessValues();
    SavePref(kMisc, QStringLiteral("UseINI"), process().UseINI ? kTrue : QStringLiteral("False"));
    ParseCommandLine(commandLine);
    if (process().DbPath.isEmpty()) process().DbPath = profileFile(QStringLiteral("tbl.mdb"));
    process().DbBackupPath =
        process().DbPath.left(process().DbPath.size() - 4) + QStringLiteral(".backup");
    checkSkins();
    deleteCacheIfAsked(state);
    CopySelectionToProcess();
    if (process().CityCode != QStringLiteral("na"))
        dropStaleSkinPage();
    else
        SavePref(kMisc, QStringLiteral("ForceUpdate"), kTrue); // first run: fetch at once
    state.done << QStringLiteral("station %1").arg(process().CityCode);
    SavePref(kMisc, QStringLiteral("RetWx"), QString());
    loadTrayChoices();
    refreshProgramFiles(state);
    recordVersion(state);
    state.DelayedStart = isTrue(kGeneral, QStringLiteral("Pause"));
    countRunAndSetDefaults(state);
    alignMapTemplate();
    return state;
}

void StartTimersAndFirstRetrieval(Scheduler &scheduler, const StartupState &state)
{
    scheduler.startAutoUpdate();
    bool wanted = state.Runs == 0;
    if (!wanted) {
        const QString asked = isTrue(kGeneral, QStringLiteral("Ret"))
                                  ? kTrue
                                  : GetPref(kMisc, QStringLiteral("ForceUpdate"));
        if (asked == kTrue) {
            SavePref(kMisc, QStringLiteral("ForceUpdate"), QStringLiteral("False"));
            wanted = IsOnline() || !process().UpdateWhenConnected;
        }
        if (wanted && state.DelayedStart) {
            scheduler.addTimer5Job(QStringLiteral("Update"));
            wanted = false;
        }
    }
    if (wanted) UpdateTheWeather(false, false, false);
    scheduler.startTimer5();
}

void ExitTB()
{
    SavePref(kMisc, QStringLiteral("RetWx"), kTrue);
    EndAllChildren();
    DeleteTempFiles(QStringLiteral("TBL"));
    EmptyFolder(profileFile(QStringLiteral("Cache")));
    SettingsStore::flush();
}

} // namespace Tarnby
