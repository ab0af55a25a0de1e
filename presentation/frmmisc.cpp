#include "presentation/frmmisc.h"

#include "core/log.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "presentation/tooltiptext.h"
#include "presentation/tooltipwindow.h"
#include "presentation/trayicondrawing.h"
#include "presentation/traymenus.h"
#include "providers/conditions.h"
#include "providers/stationselection.h"
#include "run/runhooks.h"
#include "run/scheduler.h"

#include <QApplication>
#include <QCursor>
#include <QDesktopServices>
#include <QEvent>
#include <QMenu>
#include <QUrl>

#include <utility>

namespace Tarnby
{

namespace
{

constexpr int kFlashMs = 700;
constexpr int kShowTooltipMs = 200;
constexpr int kMouseOutMs = 20;
constexpr int kTrayHostCheckMs = 2000;
constexpr int kBalloonMs = 10000;
constexpr int kFallbackDoubleClickMs = 750;

// A caption as the menu shows it: "&" is a character, not a shortcut mark.
QString menuText(const QString &caption)
{
    return QString(caption).replace(u'&', QStringLiteral("&&"));
}

void call(const std::function<void()> &hook)
{
    if (hook) hook();
}

void setUpTimer(QTimer &timer, int intervalMs, QObject *owner, std::function<void()> tick)
{
    timer.setInterval(intervalMs);
    timer.setSingleShot(false);
    QObject::connect(&timer, &QTimer::timeout, owner, std::move(tick));
}

} // namespace

frmMisc::frmMisc(TrayHooks hooks, QObject *parent) : QObject(parent), m_hooks(std::move(hooks))
{
    setObjectName(QStringLiteral("frmMisc"));
    setUpTimer(Timer3, kFlashMs, this, [this] { onFlashTimer(Timer3, Timer4); });
    setUpTimer(Timer4, kFlashMs, this, [this] { onFlashTimer(Timer4, Timer3); });
    const int doubleClick = QApplication::doubleClickInterval();
    setUpTimer(LeftSingleClickTimer, (doubleClick > 0 ? doubleClick : kFallbackDoubleClickMs) / 2,
               this, [this] {
                   LeftSingleClickTimer.stop();
                   runClickAction(false);
               });
    setUpTimer(ShowTooltipTimer, kShowTooltipMs, this, [this] {
        ShowTooltipTimer.stop();
        showSkinnedTooltip();
    });
    setUpTimer(TrayMouseOutTimer, kMouseOutMs, this, [this] { onMouseOutTick(); });
    setUpTimer(m_trayHostTimer, kTrayHostCheckMs, this, [this] { watchTrayHost(); });
    m_trayMenu = new QMenu();
    m_stationMenu = new QMenu();
    m_mapMenu = new QMenu();
    connect(m_trayMenu, &QMenu::aboutToShow, this, &frmMisc::refreshMenuState);
}

frmMisc::~frmMisc()
{
    setConditionBalloonHandler({});
    RemoveTrayIcons();
    delete m_tooltip;
    delete m_trayMenu;
    delete m_stationMenu;
    delete m_mapMenu;
}

void frmMisc::setHooks(TrayHooks hooks)
{
    m_hooks = std::move(hooks);
    BuildTrayMenu();
    BuildStationMenu();
}

void frmMisc::addRetrievalHooks(RetrievalHooks &hooks)
{
    hooks.switchTrayItalic = [this](bool slanted) { SwitchTrayItalic(slanted); };
    hooks.rebuildMapMenu = [this] { BuildMapMenu(); };
}

void frmMisc::addSchedulerHooks(SchedulerHooks &hooks)
{
    hooks.refreshTray = [this] { RefreshTray(); };
    hooks.rebuildMapMenu = [this] { BuildMapMenu(); };
}

void frmMisc::addStationSelectionHooks(StationSelectionHooks &hooks)
{
    hooks.rebuildStationMenu = [this] { BuildStationMenu(); };
}

// ---- icons ---------------------------------------------------------------------------

QSystemTrayIcon *frmMisc::makeIcon(const QString &name)
{
    auto *icon = new QSystemTrayIcon(this);
    icon->setObjectName(name);
    icon->setContextMenu(m_trayMenu);
    icon->installEventFilter(this);
    connect(icon, &QSystemTrayIcon::activated, this, &frmMisc::onActivated);
    return icon;
}

void frmMisc::SetupTrayIcon()
{
    BuildTrayMenu();
    BuildStationMenu();
    BuildMapMenu();
    m_mode = ReadTrayIconMode();
    if (ShowsTemperature(m_mode) && !m_temperature)
        m_temperature = makeIcon(QStringLiteral("IconTemp"));
    if (ShowsCondition(m_mode) && !m_condition)
        m_condition = makeIcon(QStringLiteral("IconCondition"));
    m_italic =
        GetPref(QStringLiteral("General"), QStringLiteral("StartItalic")) == QLatin1String("True");
    RefreshTray();
    addIcons();
    m_trayHostSeen = QSystemTrayIcon::isSystemTrayAvailable();
    m_trayHostTimer.start();
    setConditionBalloonHandler([this] { PopConditionBalloon(); });
}

void frmMisc::addIcons()
{
    for (QSystemTrayIcon *icon : {m_condition, m_temperature}) {
        if (!icon) continue;
        icon->hide();
        icon->show();
    }
}

int frmMisc::traySide(const QSystemTrayIcon *icon) const
{
    const QRect where = icon ? icon->geometry() : QRect();
    return where.isValid() ? std::min(where.width(), where.height()) : 0;
}

void frmMisc::DrawTrayIcon(bool italicFlip)
{
    if (!m_temperature) return;
    LogFaults(QStringLiteral("modTrayIcon.DrawTrayIcon"), [&] {
        const QIcon icon =
            TrayDigitsIcon(TrayDigitText(), SetTrayFont(italicFlip), SetTrayColours(),
                           traySide(m_temperature), qApp->devicePixelRatio());
        m_temperature->setIcon(icon);
        m_temperature->setToolTip(StandardTrayTip());
    });
}

void frmMisc::DrawConditionIcon()
{
    if (!m_condition) return;
    LogFaults(QStringLiteral("modTrayIcon.DrawConditionIcon"), [&] {
        const QIcon icon =
            ConditionIcon(ConditionIconFile(), traySide(m_condition), qApp->devicePixelRatio());
        if (!icon.isNull())
            m_condition->setIcon(icon);
        else if (m_condition->icon().isNull()) // never leave the tray without a picture
            m_condition->setIcon(TrayDigitsIcon(QStringLiteral("NA"), SetTrayFont(false),
                                                ReadTrayColourSet(TrayColourLevel::Normal), 0,
                                                1.0));
        m_condition->setToolTip(StandardTrayTip());
    });
}

void frmMisc::SwitchTrayItalic(bool slanted)
{
    m_italic = slanted;
    switch (m_mode) {
    case TrayIconMode::Temperature:
        DrawTrayIcon(slanted);
        break;
    case TrayIconMode::Condition:
        break;
    case TrayIconMode::ConditionAndTemperature:
        DrawTrayIcon(slanted);
        DrawConditionIcon();
        break;
    }
}

void frmMisc::RefreshTray()
{
    DrawTrayIcon(m_italic);
    DrawConditionIcon();
    if (m_tooltip && m_tooltip->isLoaded() && !m_tooltip->isVisible())
        m_tooltip->ReloadTooltipContent();
}

void frmMisc::RemoveTrayIcons()
{
    m_trayHostTimer.stop();
    for (QSystemTrayIcon *icon : {m_condition, m_temperature})
        if (icon) icon->hide();
    delete m_temperature;
    delete m_condition;
    m_temperature = nullptr;
    m_condition = nullptr;
}

// A tray that comes (back) gets the icons again, drawn for its icon size.
void frmMisc::watchTrayHost()
{
    const bool available = QSystemTrayIcon::isSystemTrayAvailable();
    if (available && !m_trayHostSeen) {
        Log(QStringLiteral("The tray came back: icons added again (TaskbarCreated)"));
        addIcons();
        RefreshTray();
    }
    m_trayHostSeen = available;
}

// ---- flashing ------------------------------------------------------------------------

void frmMisc::startFlashing()
{
    m_flashPhase = false;
    Timer4.stop();
    Timer3.start();
}

void frmMisc::stopFlashing()
{
    const bool wasFlashing = flashing() || m_flashPhase;
    Timer3.stop();
    Timer4.stop();
    m_flashPhase = false;
    if (wasFlashing) RefreshTray();
}

bool frmMisc::flashing() const
{
    return Timer3.isActive() || Timer4.isActive();
}

void frmMisc::FlashTrayIcon()
{
    m_flashPhase = !m_flashPhase;
    QSystemTrayIcon *target = m_temperature ? m_temperature : m_condition;
    if (!target) return;
    if (!m_flashPhase) {
        RefreshTray();
        return;
    }
    const QString text = m_temperature ? TrayDigitText() : QStringLiteral("!");
    target->setIcon(TrayDigitsIcon(text, SetTrayFont(m_italic), FlashColours(SetTrayColours()),
                                   traySide(target), qApp->devicePixelRatio()));
}

// Timer3 and Timer4 take turns; the turn passes back to Timer3 only while the
// interface window is closed.
void frmMisc::onFlashTimer(QTimer &self, QTimer &next)
{
    self.stop();
    FlashTrayIcon();
    const bool windowOpen = m_hooks.interfaceShown && m_hooks.interfaceShown();
    if (&next == &Timer3 && windowOpen) {
        if (m_flashPhase) FlashTrayIcon();
        return;
    }
    next.start();
}

// ---- clicks --------------------------------------------------------------------------

void frmMisc::onActivated(QSystemTrayIcon::ActivationReason reason)
{
    switch (reason) {
    case QSystemTrayIcon::Trigger:
        leftButtonDown();
        break;
    case QSystemTrayIcon::DoubleClick:
        leftDoubleClick();
        break;
    case QSystemTrayIcon::Context:
        rightButtonDown();
        break;
    case QSystemTrayIcon::MiddleClick:
        middleClick();
        break;
    case QSystemTrayIcon::Unknown:
        break;
    }
}

void frmMisc::leftButtonDown()
{
    hideTooltip();
    stopFlashing();
    stopSound();
    LeftSingleClickTimer.start();
}

void frmMisc::leftDoubleClick()
{
    TrayMouseOutTimer.stop();
    stopSound();
    LeftSingleClickTimer.stop();
    hideTooltip();
    runClickAction(true);
}

void frmMisc::rightButtonDown()
{
    stopSound();
    hideTooltip();
    refreshMenuState();
}

void frmMisc::middleClick()
{
    if (m_tooltip && m_tooltip->isVisible()) {
        hideTooltip();
        return;
    }
    showSkinnedTooltip();
}

void frmMisc::pointerOverIcon()
{
    if (!skinnedStyle()) return;
    TrayMouseOutTimer.start();
    if (!m_tooltip || !m_tooltip->isVisible()) ShowTooltipTimer.start();
}

bool frmMisc::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ToolTip && (watched == m_temperature || watched == m_condition) &&
        skinnedStyle()) {
        pointerOverIcon();
        return true; // the skinned window stands in for the plain tip
    }
    return QObject::eventFilter(watched, event);
}

void frmMisc::runClickAction(bool doubleClick)
{
    switch (ClickActionFor(StoredClickAction(doubleClick), doubleClick)) {
    case TrayClickAction::None:
        break;
    case TrayClickAction::OpenLastMap: {
        const QString map = GetPref(QStringLiteral("Maps"), QStringLiteral("LastMap"));
        if (!map.isEmpty() && m_hooks.openMap) m_hooks.openMap(map, IsMapPage(map));
        break;
    }
    case TrayClickAction::OpenTarnby:
        call(m_hooks.showTarnby);
        break;
    case TrayClickAction::OpenOptions:
        if (m_hooks.openOptions) m_hooks.openOptions(QString());
        break;
    case TrayClickAction::RefreshWeather:
        call(m_hooks.updateWeather);
        break;
    case TrayClickAction::RefreshWallpaper:
        call(m_hooks.refreshWallpaper);
        break;
    case TrayClickAction::SwapStations:
        SwapCityCodes();
        break;
    case TrayClickAction::WeatherBugSite:
        call(m_hooks.stationWebsite);
        break;
    case TrayClickAction::WUndergroundSite:
        QDesktopServices::openUrl(QUrl(QStringLiteral("https://www.wunderground.com/")));
        break;
    case TrayClickAction::VendorSite:
        call(m_hooks.vendorWebsite);
        break;
    }
}

void frmMisc::stopSound()
{
    call(m_hooks.stopSound);
}

void frmMisc::exitTarnby()
{
    if (m_hooks.exitTarnby)
        m_hooks.exitTarnby();
    else
        QCoreApplication::quit();
}

// ---- tooltip -------------------------------------------------------------------------

bool frmMisc::skinnedStyle() const
{
    return !m_skinnedFailed && TooltipStyle() == kTooltipSkinned;
}

void frmMisc::showSkinnedTooltip()
{
    if (!skinnedStyle()) return;
    if (!m_tooltip) {
        m_tooltip = new frmTooltipWindow();
        connect(m_tooltip, &frmTooltipWindow::pointerLeft, this, &frmMisc::hideTooltip);
    }
    if (m_tooltip->isVisible()) return;
    QSystemTrayIcon *icon = m_temperature ? m_temperature : m_condition;
    const QRect where = icon ? icon->geometry() : QRect();
    if (!m_tooltip->isLoaded() && !m_tooltip->ReloadTooltipContent()) {
        m_skinnedFailed = true; // the message was shown; the plain tip serves from now on
        RefreshTray();
        return;
    }
    m_tooltip->ShowTooltip(where);
}

void frmMisc::hideTooltip()
{
    ShowTooltipTimer.stop();
    if (m_tooltip) m_tooltip->HideTooltip();
}

// The pointer left the icon (and the window, which it may have entered): hide.
void frmMisc::onMouseOutTick()
{
    const QPoint pointer = QCursor::pos();
    for (const QSystemTrayIcon *icon : {m_temperature, m_condition})
        if (icon && icon->geometry().contains(pointer)) return;
    if (m_tooltip && m_tooltip->isVisible() && m_tooltip->geometry().contains(pointer)) return;
    TrayMouseOutTimer.stop();
    hideTooltip();
    for (QSystemTrayIcon *icon : {m_temperature, m_condition})
        if (icon) icon->setToolTip(StandardTrayTip());
}

// ---- menus ---------------------------------------------------------------------------

QAction *frmMisc::addItem(QMenu *menu, const QString &name, const QString &caption,
                          const std::function<void()> &hook)
{
    QAction *action = menu->addAction(menuText(caption));
    action->setObjectName(name);
    action->setEnabled(bool(hook));
    if (hook) connect(action, &QAction::triggered, this, hook);
    return action;
}

void frmMisc::BuildTrayMenu()
{
    m_trayMenu->clear();
    const TrayHooks &h = m_hooks;
    addItem(m_trayMenu, QStringLiteral("OpenTarnby"), QStringLiteral("Open Tarnby"), h.showTarnby);
    m_trayMenu->addSeparator();
    addItem(m_trayMenu, QStringLiteral("UpdateWeather"), QStringLiteral("Update Weather"),
            h.updateWeather);
    addItem(m_trayMenu, QStringLiteral("Options"), QStringLiteral("Options..."),
            h.openOptions ? std::function<void()>([this] { m_hooks.openOptions(QString()); })
                          : std::function<void()>());
    addItem(m_trayMenu, QStringLiteral("ViewAlerts"), QStringLiteral("View Weather Alerts..."),
            h.viewAlerts);
    addItem(m_trayMenu, QStringLiteral("RefreshWallpaper"), QStringLiteral("Refresh Wallpaper"),
            h.refreshWallpaper);
    m_trayMenu->addSeparator();
    addItem(m_trayMenu, QStringLiteral("CreateDesktopMagnet"),
            QStringLiteral("Create Desktop Magnet..."), h.createDesktopMagnet);
    QAction *maps = m_trayMenu->addMenu(m_mapMenu);
    maps->setText(QStringLiteral("Maps"));
    maps->setObjectName(QStringLiteral("MapManager"));
    addItem(m_trayMenu, QStringLiteral("MapManager2"), QStringLiteral("Map Manager..."),
            h.mapManager);
    addItem(m_trayMenu, QStringLiteral("MapBrowser"), QStringLiteral("Map Browser..."),
            h.mapBrowser);
    addItem(m_trayMenu, QStringLiteral("LocalObservations"),
            QStringLiteral("Local Observations..."), h.localObservations);
    addItem(m_trayMenu, QStringLiteral("MonthlyObservations"),
            QStringLiteral("Monthly Observations..."), h.monthlyObservations);
    addItem(m_trayMenu, QStringLiteral("WeatherStationWebsite"),
            QStringLiteral("Weather Station Website"), h.stationWebsite);
    m_trayMenu->addSeparator();
    addItem(m_trayMenu, QStringLiteral("HelpManual"), QStringLiteral("Help"), h.helpManual);
    addItem(m_trayMenu, QStringLiteral("TBManual"), QStringLiteral("Tarnby Manual"),
            h.tarnbyManual);
    addItem(m_trayMenu, QStringLiteral("CheckForUpdate22"), QStringLiteral("Check for Update..."),
            h.checkForUpdate);
    addItem(m_trayMenu, QStringLiteral("AboutTB"), QStringLiteral("About Tarnby..."), h.about);
    m_trayMenu->addSeparator();
    addItem(m_trayMenu, QStringLiteral("ExitTB"), QStringLiteral("Exit"), [this] { exitTarnby(); });
    refreshMenuState();
}

QAction *frmMisc::trayItem(const QString &name) const
{
    for (QAction *action : m_trayMenu->actions())
        if (action->objectName() == name) return action;
    return nullptr;
}

void frmMisc::refreshMenuState()
{
    if (QAction *alerts = trayItem(QStringLiteral("ViewAlerts")))
        alerts->setEnabled(m_hooks.viewAlerts &&
                           GetCache(QStringLiteral("Alerts"), QStringLiteral("AlertsAvailable")) ==
                               QLatin1String("True"));
    if (QAction *wallpaper = trayItem(QStringLiteral("RefreshWallpaper"))) {
        const QString rate = GetPref(QStringLiteral("Wallpaper"), QStringLiteral("Rate"))
                                 .remove(QStringLiteral("True"));
        wallpaper->setVisible(!rate.isEmpty() && rate != QLatin1String("Never auto update"));
    }
}

void frmMisc::BuildStationMenu()
{
    m_stationMenu->clear();
    m_stationMenu->setTitle(QStringLiteral("Change Weather Station"));
    QAction *heading = m_stationMenu->addAction(QStringLiteral("Change Weather Station"));
    heading->setEnabled(false);
    m_stationMenu->addSeparator();
    for (const StationMenuItem &item : LoadStationList()) {
        QAction *action = m_stationMenu->addAction(menuText(item.caption));
        action->setCheckable(true);
        action->setChecked(item.checked);
        const QString entry = item.entry;
        connect(action, &QAction::triggered, this, [this, entry] {
            if (!ChangeWeatherStation(entry)) return;
            BuildStationMenu();
            call(m_hooks.updateAfterStationChange);
        });
    }
    m_stationMenu->addSeparator();
    addItem(m_stationMenu, QStringLiteral("StationMenu_AddNewStation"),
            QStringLiteral("Add New Weather Station..."), m_hooks.addNewStation);
}

void frmMisc::BuildMapMenu()
{
    m_mapMenu->clear();
    for (const MapMenuItem &item : BuildMapMenuItems()) {
        if (item.separator) {
            m_mapMenu->addSeparator();
            continue;
        }
        QAction *action = m_mapMenu->addAction(menuText(item.caption));
        action->setEnabled(bool(m_hooks.openMap));
        connect(action, &QAction::triggered, this, [this, item] {
            if (m_hooks.openMap) m_hooks.openMap(item.url, item.page);
        });
    }
    m_mapMenu->addSeparator();
    addItem(m_mapMenu, QStringLiteral("AddMoreMaps"), QStringLiteral("Add More Maps..."),
            m_hooks.mapManager);
}

// ---- the rest ------------------------------------------------------------------------

void frmMisc::SwapCityCodes()
{
    if (!Tarnby::SwapCityCodes()) return;
    BuildStationMenu();
    call(m_hooks.updateAfterStationChange);
}

void frmMisc::ShowBalloon(const QString &title, const QString &text)
{
    QSystemTrayIcon *icon = m_mode == TrayIconMode::Condition ? m_condition : m_temperature;
    if (!icon) icon = m_condition;
    if (icon) icon->showMessage(title, text, QSystemTrayIcon::Information, kBalloonMs);
}

void frmMisc::PopConditionBalloon()
{
    const QString text = BuildTooltipText();
    ShowBalloon(QStringLiteral("Tarnby"), text.isEmpty() ? TrayDigitText() : text);
}

void frmMisc::onInstanceMessage(const QString &message)
{
    if (message == QLatin1String("TarnbyLaunched")) call(m_hooks.showTarnby);
}

} // namespace Tarnby
