#include "presentation/interfacewindow.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "presentation/links.h"
#include "presentation/newslink.h"
#include "presentation/skinbridge.h"
#include "presentation/skinoptions.h"
#include "presentation/skinpage.h"
#include "presentation/skinscripts.h"
#include "presentation/windowplace.h"
#include "providers/stationselection.h"
#include "retrieval/hosts.h"
#include "run/mapfile.h"
#include "run/runprogress.h"
#include "run/runstate.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QEventLoop>
#include <QHash>
#include <QScreen>
#include <QStackedLayout>
#include <QWebEngineScript>
#include <QWebEngineSettings>
#include <QWebEngineView>
#include <QWindow>

#include <memory>

namespace Tarnby
{

namespace
{

const QString kMisc = QStringLiteral("Misc");
// How long a read from the page may take before it counts as empty.
constexpr int kScriptWaitMs = 3000;
// The geometry is saved once the window has stood still this long.
constexpr int kSaveGeometryDelayMs = 500;
// The pace of a drag or resize that the program carries out itself.
constexpr int kFollowIntervalMs = 16;

// A script that finds the element and runs body with it as `e` (null when missing).
// The text-only skins name their whole page "Body"; a page without such an element
// gets its body instead.
QString elementScript(const QString &id, const QString &body)
{
    const QString fallback = id == u"Body" ? QStringLiteral(" || document.body") : QString();
    return QStringLiteral("(function(){var e = document.getElementById(") + ScriptString(id) +
           u')' + fallback + QStringLiteral(";") + body + QStringLiteral("})()");
}

// displayCurrent(), displayHour(), displayDay() or displayPop().
QString pageFunction(IfacePage page)
{
    const QString name = page == IfacePage::Pop ? QStringLiteral("Pop") : PageName(page);
    return QStringLiteral("display") + name + QStringLiteral("()");
}

QString observedStampScript()
{
    return GuardedCall(QStringLiteral("refreshObservedTimeStamp(") +
                       ScriptString(ObservedTimeStampText()) + u')');
}

} // namespace

frmIface::frmIface(QWidget *parent) : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setWindowTitle(QStringLiteral("Tarnby"));
    m_stack = new QStackedLayout(this);
    m_stack->setStackingMode(QStackedLayout::StackAll);
    m_stack->setContentsMargins(0, 0, 0, 0);

    m_eventFireTimer.setSingleShot(true);
    m_eventFireTimer.setInterval(0);
    connect(&m_eventFireTimer, &QTimer::timeout, this, &frmIface::IfaceEventFireTimer_Timer);
    m_saveGeometryTimer.setSingleShot(true);
    m_saveGeometryTimer.setInterval(kSaveGeometryDelayMs);
    connect(&m_saveGeometryTimer, &QTimer::timeout, this, &frmIface::saveGeometryNow);
    m_followTimer.setInterval(kFollowIntervalMs);
    connect(&m_followTimer, &QTimer::timeout, this, &frmIface::followPointer);

    RetrievalProgress &progress = retrievalProgress();
    connect(&progress, &RetrievalProgress::progressBarShown, this,
            [this] { runOnPage(GuardedCall(QStringLiteral("displayProgressBar()"))); });
    // The bar itself grows; its colour part (TB-ProgressBarColor) is the skin's matter.
    connect(&progress, &RetrievalProgress::progressBarWidthChanged, this,
            [this](const QString &width) {
                WebBrowserSetWidth(QStringLiteral("TB-ProgressBar"), width);
            });
    connect(&progress, &RetrievalProgress::progressBarHidden, this, [this] {
        WebBrowserSetDisplay(QStringLiteral("TB-ProgressBar"), QStringLiteral("none"));
    });

    applySkin(ChooseInterfaceSkin());
    placeWindow();
}

frmIface::~frmIface() = default;

void frmIface::setHooks(InterfaceHooks hooks)
{
    m_hooks = std::move(hooks);
}

// ---- the browser operations ----

void frmIface::WebBrowserExecWb(QWebEnginePage::WebAction command)
{
    if (m_target) m_target->page()->triggerAction(command);
}

bool frmIface::WebBrowserGetBusy() const
{
    return m_loading != nullptr;
}

void frmIface::WebBrowserExecuteScript(const QString &script)
{
    runOnPage(script);
}

void frmIface::WebBrowserSetWidth(const QString &id, const QString &width)
{
    runOnPage(
        elementScript(id, QStringLiteral("if (e) e.style.width = ") + ScriptString(width) + u';'));
}

QString frmIface::WebBrowserGetDisplay(const QString &id)
{
    return evaluate(elementScript(id, QStringLiteral("return e ? e.style.display : '';")))
        .toString();
}

void frmIface::WebBrowserSetDisplay(const QString &id, const QString &display)
{
    runOnPage(elementScript(id, QStringLiteral("if (e) e.style.display = ") +
                                    ScriptString(display) + u';'));
}

void frmIface::WebBrowserSetInnerHtml(const QString &id, const QString &html)
{
    runOnPage(
        elementScript(id, QStringLiteral("if (e) e.innerHTML = ") + ScriptString(html) + u';'));
}

QString frmIface::WebBrowserGetInnerHtml(const QString &id)
{
    return evaluate(elementScript(id, QStringLiteral("return e ? e.innerHTML : '';"))).toString();
}

bool frmIface::WebBrowserElementExists(const QString &id)
{
    return evaluate(elementScript(id, QStringLiteral("return e !== null;"))).toBool();
}

QString frmIface::WebBrowserGetClassName(const QString &id)
{
    return evaluate(elementScript(id, QStringLiteral("return e ? e.className : '';"))).toString();
}

// ---- the action bridge ----

void frmIface::RunAction(const QString &content)
{
    if (QApplication::activeModalWidget()) {
        Log(QStringLiteral("Action %1 dropped while a dialogue is open (frmIface.RunAction)")
                .arg(content));
        return;
    }
    LogFaults(QStringLiteral("frmIface.RunAction"), [&] { dispatch(ParseRunAction(content)); });
}

void frmIface::dispatch(const ActionRequest &request)
{
    // The actions that are one operation of the window, or one job for the timer.
    static const QHash<IfaceAction, void (frmIface::*)()> operations{
        {IfaceAction::LaunchLink, &frmIface::LaunchLink},
        {IfaceAction::ShowCurrent, &frmIface::ShowCurrent},
        {IfaceAction::ShowHourly, &frmIface::ShowHourly},
        {IfaceAction::ShowDaily, &frmIface::ShowDaily},
        {IfaceAction::ShowPop, &frmIface::ShowPop},
        {IfaceAction::WindowDrag, &frmIface::WindowDrag},
        {IfaceAction::WindowMinimize, &frmIface::WindowMinimize},
        {IfaceAction::WindowResize, &frmIface::WindowResize},
    };
    static const QHash<IfaceAction, QString> jobs{
        {IfaceAction::ShowMapMenu, QStringLiteral("LoadMapMenu")},
        {IfaceAction::ShowStationMenu, QStringLiteral("LoadStationMenu")},
        {IfaceAction::ShowOptions, QStringLiteral("LoadOptions")},
        {IfaceAction::ShowLocal, QStringLiteral("LoadLocal")},
        {IfaceAction::ShowMonthly, QStringLiteral("LoadMonthly")},
    };
    if (const auto operation = operations.value(request.action)) {
        (this->*operation)();
        return;
    }
    if (jobs.contains(request.action)) {
        fireLater(jobs.value(request.action));
        return;
    }
    dispatchOther(request);
}

void frmIface::dispatchOther(const ActionRequest &request)
{
    switch (request.action) {
    case IfaceAction::LaunchNamed:
        OpenLink(request.link, request.radar);
        break;
    case IfaceAction::NextNews:
    case IfaceAction::PreviousNews:
        StepNewsPointer(request.action == IfaceAction::NextNews ? 1 : -1);
        UpdateNewsStoryLink();
        break;
    case IfaceAction::RetrieveWeather:
        if (runState().RetrievalRunning) break;
        if (WebBrowserElementExists(QStringLiteral("TB-ProgressBar"))) showProgressBar();
        fireLater(QStringLiteral("UpdateWeather"));
        break;
    case IfaceAction::SaveSkinSettings:
        SaveSkinOptions(*this, m_skin, process().CityCode);
        break;
    case IfaceAction::SaveSingleSkinSetting:
        SaveSingleSkinOption(*this, m_skin, request.option);
        break;
    case IfaceAction::ShowAlerts:
    case IfaceAction::ShowAlertsMap:
        ShowAlerts(request.action == IfaceAction::ShowAlertsMap);
        break;
    case IfaceAction::LogError:
        Log(WebBrowserGetInnerHtml(QStringLiteral("TB-Error")) + QStringLiteral(" (skin)"));
        break;
    case IfaceAction::ToggleSection:
        showPage(NextSection(m_page));
        break;
    case IfaceAction::TogglePreviousSection:
        showPage(PreviousSection(m_page));
        break;
    default:
        Log(QStringLiteral("Unknown skin action (frmIface.RunAction)"));
        break;
    }
}

void frmIface::fireLater(const QString &tag)
{
    static const QList<std::pair<QString, void (frmIface::*)()>> jobs{
        {QStringLiteral("UpdateWeather"), &frmIface::updateWeather},
        {QStringLiteral("LoadOptions"), &frmIface::ShowOptions},
        {QStringLiteral("LoadLocal"), &frmIface::ShowLocal},
        {QStringLiteral("LoadMapBrowser"), &frmIface::ShowMapBrowser},
        {QStringLiteral("LoadMapManager"), &frmIface::showMapManager},
        {QStringLiteral("LoadMapMenu"), &frmIface::ShowMapMenu},
        {QStringLiteral("LoadMonthly"), &frmIface::ShowMonthly},
        {QStringLiteral("LoadStationMenu"), &frmIface::ShowStationMenu},
        {QStringLiteral("LoadStationSearch"), &frmIface::ShowStationSearch},
    };
    for (const auto &[name, job] : jobs)
        if (tag == name) fireLater([this, job] { (this->*job)(); });
}

void frmIface::fireLater(std::function<void()> job)
{
    m_eventFireJobs << std::move(job);
    m_eventFireTimer.start();
}

void frmIface::IfaceEventFireTimer_Timer()
{
    for (const std::function<void()> &job : std::exchange(m_eventFireJobs, {}))
        job();
}

void frmIface::updateWeather()
{
    callHook(m_hooks.updateWeather, "A retrieval");
}

void frmIface::showMapManager()
{
    callHook(m_hooks.showMapManager, "The map manager");
}

void frmIface::callHook(const std::function<void()> &hook, const char *what)
{
    if (hook)
        hook();
    else
        Log(QStringLiteral("%1 is not available yet (frmIface)").arg(QLatin1String(what)));
}

// ---- the operations of the skin's actions ----

void frmIface::LaunchLink()
{
    OpenAddress(WebBrowserGetInnerHtml(QStringLiteral("TB-Link"))
                    .replace(QStringLiteral("&amp;"), QStringLiteral("&")));
}

void frmIface::WindowDrag()
{
    if (windowHandle() && windowHandle()->startSystemMove()) return;
    m_resizing = false;
    m_grab = QCursor::pos() - pos();
    m_followTimer.start();
}

void frmIface::WindowResize()
{
    if (windowHandle() && windowHandle()->startSystemResize(Qt::BottomEdge | Qt::RightEdge)) return;
    m_resizing = true;
    m_grab = QPoint(width(), height()) - (QCursor::pos() - pos());
    m_followTimer.start();
}

// Where the platform cannot move or size the window itself, it follows the pointer
// until the button is let go, within the screen's edges.
void frmIface::followPointer()
{
    if (!(QGuiApplication::mouseButtons() & Qt::LeftButton)) {
        m_followTimer.stop();
        saveGeometryNow();
        return;
    }
    const QPoint pointer = QCursor::pos();
    if (m_resizing) {
        const QPoint corner = pointer - pos() + m_grab;
        resize(QSize(corner.x(), corner.y()).expandedTo(minimumSize()));
        return;
    }
    QRect placed(pointer - m_grab, size());
    if (const QScreen *screen = QGuiApplication::screenAt(pointer)) {
        const QRect edges = screen->availableGeometry();
        placed.moveLeft(std::clamp(placed.left(), edges.left(),
                                   std::max(edges.left(), edges.right() + 1 - width())));
        placed.moveTop(std::clamp(placed.top(), edges.top(),
                                  std::max(edges.top(), edges.bottom() + 1 - height())));
    }
    move(placed.topLeft());
}

void frmIface::ShowMapMenu()
{
    if (m_hooks.showMapMenu)
        m_hooks.showMapMenu(QCursor::pos());
    else
        callHook({}, "The map menu");
}

void frmIface::ShowStationMenu()
{
    if (m_hooks.showStationMenu)
        m_hooks.showStationMenu(QCursor::pos());
    else
        callHook({}, "The station menu");
}

void frmIface::ShowAlerts(bool withMap)
{
    if (GetCache(QStringLiteral("Alerts"), QStringLiteral("AlertsAvailable")) ==
        QStringLiteral("True")) {
        ShowInterface();
        whenPageReady([this] { runOnPage(GuardedCall(QStringLiteral("showAlerts()"))); });
        if (withMap) callHook(m_hooks.showAlertsMap, "The alert map");
        return;
    }
    OpenAddress(IsInternational() ? StationWebPage() : HostUrl(Host::NwsWeb) + u'/');
}

void frmIface::ShowOptions()
{
    callHook(m_hooks.showOptions, "The options window");
}

void frmIface::WindowMinimize()
{
    const QString mode = process().GuiCloseMode;
    if (mode == u"Close") {
        if (m_hooks.exitProgram)
            m_hooks.exitProgram();
        else
            QCoreApplication::quit();
    } else if (mode == u"Minimize") {
        showMinimized();
    } else {
        close();
    }
}

void frmIface::ShowHelp()
{
    whenPageReady([this] { runOnPage(GuardedCall(QStringLiteral("showHelp()"))); });
}

void frmIface::ShowCurrent()
{
    showPage(IfacePage::Current);
}

void frmIface::ShowHourly()
{
    showPage(IfacePage::Hour);
}

void frmIface::ShowDaily()
{
    showPage(IfacePage::Day);
}

void frmIface::ShowPop()
{
    showPage(IfacePage::Pop);
}

void frmIface::showPage(IfacePage page)
{
    runOnPage(GuardedCall(pageFunction(page)));
    m_page = page;
    SavePref(kMisc, QStringLiteral("LastPage"), PageName(page));
}

void frmIface::ShowStationSearch()
{
    callHook(m_hooks.showStationSearch, "The station search window");
}

void frmIface::ShowLocal()
{
    callHook(m_hooks.showLocal, "The local observations window");
}

void frmIface::ShowMapBrowser()
{
    callHook(m_hooks.showMapBrowser, "The map browser");
}

void frmIface::ShowMonthly()
{
    callHook(m_hooks.showMonthly, "The monthly observations window");
}

void frmIface::UpdateNewsStoryLink()
{
    WebBrowserSetInnerHtml(QStringLiteral("TB-NewsStoryLink"), NewsStoryLinkHtml());
}

// ---- render and show ----

void frmIface::RefreshInterface(bool reuseHtml, bool notify)
{
    const QString skin = ChooseInterfaceSkin();
    const QString folder = InterfaceSkinFolder(skin);
    CreateFolder(SkinCacheFolder(folder, process().CityCode));
    if (reuseHtml && !FileExists(SkinPagePath(folder, process().CityCode))) {
        fireLater(QStringLiteral("UpdateWeather"));
        return;
    }
    if (!reuseHtml) RenderSkinPage(folder);
    if (m_target && !WebBrowserGetInnerHtml(QStringLiteral("TB-SuspendUpdate")).isEmpty()) {
        Log(QStringLiteral("The skin holds its page (frmIface.RefreshInterface)"));
        return;
    }
    ReloadWeatherData();
    if (notify && m_hooks.refreshTooltip) m_hooks.refreshTooltip();
}

void frmIface::ReloadWeatherData(bool fullReload)
{
    const QString skin = ChooseInterfaceSkin();
    if (skin != m_skin) {
        // Another skin opens at its own default size, not at the last skin's.
        SavePref(kMisc, QStringLiteral("IfaceWidth"), QString());
        SavePref(kMisc, QStringLiteral("IfaceHeight"), QString());
        applySkin(skin);
        placeWindow();
        fullReload = true;
    }
    if (!isVisible()) {
        m_stale = true;
        return;
    }
    ensureBrowsers();
    m_stale = false;
    const QString page = EnsureSkinPage(m_skinFolder);
    if (IsTextOnlySkin(m_skin) && m_loadedOnce && !fullReload && !m_loading) {
        WebBrowserSetInnerHtml(QStringLiteral("Body"), ReadFile(page));
        preparePage();
        emit pageShown();
        return;
    }
    m_loading = m_browsers[1 - m_active];
    m_loading->load(QUrl::fromLocalFile(page));
}

void frmIface::pageLoaded(QWebEngineView *browser, bool ok)
{
    if (browser != m_loading) return; // a load that a newer one replaced
    if (!ok) {
        Log(QStringLiteral("The skin page did not load (frmIface.ReloadWeatherData)"));
        m_loading = nullptr;
        return;
    }
    // Out of the browser's event: making the page ready reads from it.
    fireLater([this, browser] { swapIn(browser); });
}

// The new page is made ready underneath the old one, then raised.
void frmIface::swapIn(QWebEngineView *browser)
{
    if (browser != m_loading) return;
    m_target = browser;
    preparePage();
    evaluate(QStringLiteral("true")); // the scripts above have run
    m_active = browser == m_browsers[0] ? 0 : 1;
    m_stack->setCurrentWidget(browser);
    m_loading = nullptr;
    for (const std::function<void()> &job : std::exchange(m_afterLoad, {}))
        job();
    emit pageShown();
}

void frmIface::whenPageReady(std::function<void()> job)
{
    if (m_loadedOnce && !m_loading)
        job();
    else
        m_afterLoad << std::move(job);
}

void frmIface::preparePage()
{
    LoadSkinOptions(*this, m_skin, process().CityCode);
    showPage(PageFromName(GetPref(kMisc, QStringLiteral("LastPage"))));
    runOnPage(observedStampScript());
    runOnPage(GuardedCall(QStringLiteral("runLoadProcedures()")));
    UpdateNewsStoryLink();
    if (runState().RetrievalRunning) showProgressBar();
    m_loadedOnce = true;
}

void frmIface::showProgressBar()
{
    runOnPage(GuardedCall(QStringLiteral("displayProgressBar()")));
    WebBrowserSetWidth(QStringLiteral("TB-ProgressBar"),
                       QString::number(runState().ProgressPercent) + u'%');
}

void frmIface::ShowInterface()
{
    process().InterfaceShown = true;
    if (isMinimized())
        showNormal();
    else
        show();
    raise();
    activateWindow();
    if (!m_loadedOnce || m_stale) ReloadWeatherData();
}

void frmIface::ShowRealtimeReading(const QString &readings)
{
    if (!isVisible() || !m_loadedOnce) return;
    if (IsTextOnlySkin(m_skin)) {
        RefreshInterface(false, false);
        return;
    }
    runOnPage(GuardedCall(QStringLiteral("refreshRealtimeData(") +
                          RealtimeScriptArguments(readings) + u')'));
    runOnPage(observedStampScript());
    if (StationGroup() != u"NWS") return;
    const QString description = GetCache(QStringLiteral("Current"), QStringLiteral("description"));
    const QString icon = GetCache(QStringLiteral("Current"), QStringLiteral("image"));
    runOnPage(GuardedCall(QStringLiteral("refreshRealtimeCondition(") + ScriptString(description) +
                          u',' + ScriptString(icon) + u')'));
}

// ---- the browsers ----

void frmIface::ensureBrowsers()
{
    if (m_browsers[0]) return;
    m_bridge = new SkinBridge(this);
    // The word arrives inside the browser's own message handling, where the browser
    // cannot answer the reads that some actions make of the page: the action runs from
    // the timer instead. (A queued call would not do: it runs in the same round of
    // posted events, which the browser's work waits behind.)
    connect(m_bridge, &SkinBridge::actionRequested, this,
            [this](const QString &word) { fireLater([this, word] { RunAction(word); }); });
    for (QWebEngineView *&browser : m_browsers) {
        browser = makeBrowser();
        m_stack->addWidget(browser);
    }
    m_active = 0;
    m_target = m_browsers[0];
    m_stack->setCurrentWidget(m_target);
}

QWebEngineView *frmIface::makeBrowser()
{
    auto *browser = new QWebEngineView(this);
    browser->setContextMenuPolicy(Qt::NoContextMenu);
    QWebEngineSettings *settings = browser->page()->settings();
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    settings->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, true);
    m_bridge->attach(browser->page());
    connect(browser, &QWebEngineView::loadFinished, this,
            [this, browser](bool ok) { pageLoaded(browser, ok); });
    return browser;
}

QVariant frmIface::evaluate(const QString &script)
{
    if (!m_target) return {};
    struct Answer {
        QVariant value;
        bool done = false;
        QEventLoop loop;
    };
    const auto answer = std::make_shared<Answer>();
    m_target->page()->runJavaScript(script, QWebEngineScript::MainWorld,
                                    [answer](const QVariant &value) {
                                        answer->value = value;
                                        answer->done = true;
                                        answer->loop.quit();
                                    });
    if (!answer->done) {
        QTimer::singleShot(kScriptWaitMs, &answer->loop, &QEventLoop::quit);
        answer->loop.exec();
    }
    if (!answer->done) Log(QStringLiteral("The skin page did not answer (frmIface)"));
    return answer->value;
}

void frmIface::runOnPage(const QString &script)
{
    if (m_target) m_target->page()->runJavaScript(script, QWebEngineScript::MainWorld);
}

// ---- the window ----

void frmIface::applySkin(const QString &skin)
{
    m_skin = skin;
    m_skinFolder = InterfaceSkinFolder(skin);
    m_ini = ReadSkinIni(m_skinFolder);
    m_loadedOnce = false;
}

void frmIface::placeWindow()
{
    m_placing = true;
    setMinimumSize(m_ini.MinWidth.value_or(0), m_ini.MinHeight.value_or(0));
    const QSize size = WindowSizeFor(m_ini, GetPref(kMisc, QStringLiteral("IfaceWidth")),
                                     GetPref(kMisc, QStringLiteral("IfaceHeight")), this->size());
    QList<QRect> screens;
    for (const QScreen *screen : QGuiApplication::screens())
        screens << screen->availableGeometry();
    bool hasLeft = false;
    bool hasTop = false;
    const int left = GetPref(kMisc, QStringLiteral("IfaceLeft")).toInt(&hasLeft);
    const int top = GetPref(kMisc, QStringLiteral("IfaceTop")).toInt(&hasTop);
    QRect wanted(QPoint(left, top), size);
    if ((!hasLeft || !hasTop) && !screens.isEmpty()) wanted.moveCenter(screens.first().center());
    setGeometry(PullOntoScreen(wanted, screens));
    m_placing = false;
}

void frmIface::closeEvent(QCloseEvent *event)
{
    // The window is hidden, never destroyed: the program lives on in the tray.
    event->ignore();
    saveGeometryNow();
    hide();
    process().InterfaceShown = false;
}

void frmIface::hideEvent(QHideEvent *event)
{
    m_followTimer.stop();
    QWidget::hideEvent(event);
}

void frmIface::moveEvent(QMoveEvent *event)
{
    QWidget::moveEvent(event);
    saveGeometrySoon();
}

void frmIface::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    saveGeometrySoon();
}

void frmIface::saveGeometrySoon()
{
    if (!m_placing && isVisible()) m_saveGeometryTimer.start();
}

void frmIface::saveGeometryNow()
{
    m_saveGeometryTimer.stop();
    if (!isVisible() || isMinimized()) return;
    SavePref(kMisc, QStringLiteral("IfaceLeft"), QString::number(x()));
    SavePref(kMisc, QStringLiteral("IfaceTop"), QString::number(y()));
    SavePref(kMisc, QStringLiteral("IfaceWidth"), QString::number(width()));
    SavePref(kMisc, QStringLiteral("IfaceHeight"), QString::number(height()));
}

} // namespace Tarnby
