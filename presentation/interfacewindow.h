#pragma once
// frmIface, the program's main window: a frameless frame holding nothing but the skin,
// an HTML page made from the skin's template and shown in an embedded browser.
//
// Two browsers take turns: a new page loads in the hidden one while the old page stays
// on screen, and the two change places when the load is done. The skin talks back by
// writing action words into its element TB-RunAction (see skinbridge.h); the program
// calls the skin's script functions in the guarded form of skinscripts.h.
//
// The window is made once and lives as long as the program; closing it hides it. Its
// browsers start with the first showing, so a program started to the tray alone does
// not start a browser. Nothing here throws; a failed step is logged and the rest goes on.
//
// A text-only skin (its name begins with "TextOnly") is a page of text for screen
// readers: a new render goes into its Body element instead of a new load, so that the
// reader keeps its place.

#include "presentation/runaction.h"
#include "presentation/skindocument.h"
#include "presentation/skinfolder.h"

#include <QPoint>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QVariant>
#include <QWebEnginePage>
#include <QWidget>

#include <functional>

class QStackedLayout;
class QWebEngineView;

namespace Tarnby
{

class SkinBridge;

// What the window asks of the rest of the desktop: the owner of the timers, menus and
// the other windows. Whatever is not installed is logged as not available.
struct InterfaceHooks {
    // A retrieval now, through the forced-update timer of the timers' owner.
    std::function<void()> updateWeather;
    // The tray's map and station menus, popped up at the pointer.
    std::function<void(const QPoint &)> showMapMenu;
    std::function<void(const QPoint &)> showStationMenu;
    std::function<void()> showOptions;
    std::function<void()> showLocal;
    std::function<void()> showMonthly;
    std::function<void()> showMapBrowser;
    std::function<void()> showMapManager;
    std::function<void()> showStationSearch;
    // ShowAlerts with the map: the alert map, when one exists.
    std::function<void()> showAlertsMap;
    // The program's one way out (the close mode "Close").
    std::function<void()> exitProgram;
    // The skinned tooltip renders anew after the interface did.
    std::function<void()> refreshTooltip;
};

class frmIface : public QWidget, public SkinDocument
{
    Q_OBJECT

public:
    explicit frmIface(QWidget *parent = nullptr);
    ~frmIface() override;

    void setHooks(InterfaceHooks hooks);

    // The browser operations, on the page on screen. Element operations take the
    // element's id; a missing element is no error. The reads wait for the page's answer
    // while the event loop runs on.
    void WebBrowserExecWb(QWebEnginePage::WebAction command);
    // True while a page is loading.
    bool WebBrowserGetBusy() const;
    void WebBrowserExecuteScript(const QString &script);
    void WebBrowserSetWidth(const QString &id, const QString &width);
    QString WebBrowserGetDisplay(const QString &id);
    void WebBrowserSetDisplay(const QString &id, const QString &display);
    void WebBrowserSetInnerHtml(const QString &id, const QString &html);
    QString WebBrowserGetInnerHtml(const QString &id);
    bool WebBrowserElementExists(const QString &id);
    QString WebBrowserGetClassName(const QString &id);

    // Carries out the action word that the page took from TB-RunAction (any case).
    // While a modal window is up the word is dropped. Actions that open windows or menus,
    // or start a retrieval, run from IfaceEventFireTimer, outside the browser's event.
    void RunAction(const QString &content);
    // Opens the address in TB-Link ("&amp;" read as "&").
    void LaunchLink();
    void WindowDrag();
    void ShowMapMenu();
    void ShowStationMenu();
    // With alerts in the cache the window comes up on the skin's alert view; without
    // them the alerts page opens in the user's browser.
    void ShowAlerts(bool withMap = false);
    void ShowOptions();
    // By the close mode (General/GUIx): "Close" ends the program, "Minimize" minimises
    // the window, anything else hides it.
    void WindowMinimize();
    void ShowHelp();
    void ShowCurrent();
    void ShowHourly();
    void ShowDaily();
    void ShowPop();
    void ShowStationSearch();
    void ShowLocal();
    void ShowMapBrowser();
    void ShowMonthly();
    void WindowResize();
    void UpdateNewsStoryLink();
    // Shows Skin.html of the skin in force (Default.html until the first render). A
    // text-only skin shown before gets the new page in its Body element instead, unless
    // fullReload is asked for.
    void ReloadWeatherData(bool fullReload = false);

    // The render: with reuseHtml the page already written is shown again (or, when
    // there is none, a retrieval is asked for); otherwise the template is expanded
    // anew. While the skin's TB-SuspendUpdate holds anything the new page is not shown.
    // With notify the tooltip follows.
    void RefreshInterface(bool reuseHtml, bool notify);

    // Brings the window up (the part of ShowTarnby that concerns it).
    void ShowInterface();
    // A realtime reading: the skin's refreshRealtimeData (a text-only skin renders
    // anew). Nothing while the window is not shown.
    void ShowRealtimeReading(const QString &readings);

    IfacePage currentPage() const { return m_page; }
    QString skinName() const { return m_skin; }

    // SkinDocument, on the page on screen.
    bool elementExists(const QString &id) override { return WebBrowserElementExists(id); }
    QString innerHtml(const QString &id) override { return WebBrowserGetInnerHtml(id); }
    void setInnerHtml(const QString &id, const QString &html) override
    {
        WebBrowserSetInnerHtml(id, html);
    }
    QString className(const QString &id) override { return WebBrowserGetClassName(id); }

signals:
    // A page is on screen, its options set and its load procedures run.
    void pageShown();

protected:
    void closeEvent(QCloseEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void ensureBrowsers();
    QWebEngineView *makeBrowser();
    void applySkin(const QString &skin);
    void placeWindow();
    void pageLoaded(QWebEngineView *browser, bool ok);
    void swapIn(QWebEngineView *browser);
    void preparePage();
    void showPage(IfacePage page);
    void showProgressBar();
    // Runs a job on the page once it is on screen: at once, or after the load under way.
    void whenPageReady(std::function<void()> job);
    QVariant evaluate(const QString &script);
    void runOnPage(const QString &script);
    void dispatch(const ActionRequest &request);
    void dispatchOther(const ActionRequest &request);
    // IfaceEventFireTimer: a job by its tag ("UpdateWeather", "LoadOptions", ...) or a
    // job of its own, run from a zero-delay timer outside the browser's event.
    void fireLater(const QString &tag);
    void fireLater(std::function<void()> job);
    void IfaceEventFireTimer_Timer();
    void updateWeather();
    void showMapManager();
    void callHook(const std::function<void()> &hook, const char *what);
    void followPointer();
    void saveGeometrySoon();
    void saveGeometryNow();

    InterfaceHooks m_hooks;
    SkinBridge *m_bridge = nullptr;
    QStackedLayout *m_stack = nullptr;
    QWebEngineView *m_browsers[2] = {nullptr, nullptr};
    int m_active = 0;                    // the browser on screen
    QWebEngineView *m_loading = nullptr; // the browser loading the next page
    QWebEngineView *m_target = nullptr;  // the one the element operations reach
    QString m_skin;
    QString m_skinFolder;
    SkinIni m_ini;
    bool m_loadedOnce = false; // a page of this skin has been shown
    bool m_stale = false;      // a render came while the window was not shown
    IfacePage m_page = IfacePage::Current;
    QList<std::function<void()>> m_afterLoad;

    QTimer m_eventFireTimer; // IfaceEventFireTimer
    QList<std::function<void()>> m_eventFireJobs;
    QTimer m_followTimer; // drag or resize by hand where the platform cannot
    bool m_resizing = false;
    QPoint m_grab;
    QTimer m_saveGeometryTimer;
    bool m_placing = false;
};

} // namespace Tarnby
