#pragma once
// The hidden owner of the tray for the life of the process: the tray icons (the
// temperature digits, the condition image, or both), their tip and skinned tooltip,
// the tray menu with the station and map menus that other windows borrow, the click
// actions, the flashing of the icon and the desktop notifications.
//
// Clicks: a left click runs the single-click action once no second click follows
// within LeftSingleClickTimer; a double click runs only the double-click action. The
// right button opens TrayMenu. Trays that report the pointer over the icon (XEmbed
// trays) show the skinned tooltip after ShowTooltipTimer and hide it once the pointer
// leaves the icon; StatusNotifier trays report no hover, so there the middle button
// opens the skinned tooltip, which closes when the pointer leaves it.

#include "presentation/trayappearance.h"
#include "presentation/trayhooks.h"

#include <QObject>
#include <QPointer>
#include <QSystemTrayIcon>
#include <QTimer>

class QMenu;
class QAction;

namespace Tarnby
{

class frmTooltipWindow;
struct RetrievalHooks;
struct SchedulerHooks;
struct StationSelectionHooks;

class frmMisc : public QObject
{
    Q_OBJECT

public:
    explicit frmMisc(TrayHooks hooks = {}, QObject *parent = nullptr);
    ~frmMisc() override;
    void setHooks(TrayHooks hooks);

    // The tray's part of the run, the scheduler and the station switch, added to sets
    // that the program then installs.
    void addRetrievalHooks(RetrievalHooks &hooks);
    void addSchedulerHooks(SchedulerHooks &hooks);
    void addStationSelectionHooks(StationSelectionHooks &hooks);

    // Start: the menus, the icons of the stored mode, upright or slanted by
    // General/StartItalic, and the balloon of the change detection.
    void SetupTrayIcon();
    void DrawTrayIcon(bool italicFlip);
    void DrawConditionIcon();
    // A failed run slants the digits (italic true); a good one sets them back.
    void SwitchTrayItalic(bool italic);
    // Redraws the icons of the mode and renews the tip, keeping the slant.
    void RefreshTray();
    void RemoveTrayIcons();

    // Flashing between the digits and the alert look, until the interface window opens
    // or the icon is clicked.
    void startFlashing();
    void stopFlashing();
    void FlashTrayIcon();
    bool flashing() const;

    void BuildTrayMenu();
    void BuildStationMenu();
    void BuildMapMenu();
    QMenu *TrayMenu() const { return m_trayMenu; }
    QMenu *StationMenu() const { return m_stationMenu; }
    QMenu *MapMenu() const { return m_mapMenu; }
    // The tray menu's item of a name ("UpdateWeather", "ExitTB", ...).
    QAction *trayItem(const QString &name) const;

    // SwapCityCodes, then the retrieval of TimerUpdateWeather.
    void SwapCityCodes();

    // A notification beside the tray, for ten seconds.
    void ShowBalloon(const QString &title, const QString &text);
    // The change detection's balloon: the standard tooltip text.
    void PopConditionBalloon();

    // A message from a later start: "TarnbyLaunched" brings the interface window up.
    void onInstanceMessage(const QString &message);

    QSystemTrayIcon *temperatureIcon() const { return m_temperature; }
    QSystemTrayIcon *conditionIcon() const { return m_condition; }
    frmTooltipWindow *tooltipWindow() const { return m_tooltip; }
    bool italic() const { return m_italic; }
    TrayIconMode mode() const { return m_mode; }

    // The click events as the tray reports them; public so that any tray back end
    // (and a test) can feed them.
    void leftButtonDown();
    void leftDoubleClick();
    void rightButtonDown();
    void middleClick();
    void pointerOverIcon();

    // The timers of the tray, for the program and for tests.
    QTimer Timer3, Timer4, LeftSingleClickTimer, ShowTooltipTimer, TrayMouseOutTimer;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QSystemTrayIcon *makeIcon(const QString &name);
    void addIcons();
    void onActivated(QSystemTrayIcon::ActivationReason reason);
    void runClickAction(bool doubleClick);
    void showSkinnedTooltip();
    void hideTooltip();
    bool skinnedStyle() const;
    void onMouseOutTick();
    void onFlashTimer(QTimer &self, QTimer &next);
    void watchTrayHost();
    void refreshMenuState();
    QAction *addItem(QMenu *menu, const QString &name, const QString &caption,
                     const std::function<void()> &call);
    int traySide(const QSystemTrayIcon *icon) const;
    void stopSound();
    void exitTarnby();

    TrayHooks m_hooks;
    TrayIconMode m_mode = TrayIconMode::Temperature;
    QSystemTrayIcon *m_temperature = nullptr;
    QSystemTrayIcon *m_condition = nullptr;
    QMenu *m_trayMenu = nullptr;
    QMenu *m_stationMenu = nullptr;
    QMenu *m_mapMenu = nullptr;
    QPointer<frmTooltipWindow> m_tooltip;
    QTimer m_trayHostTimer;
    bool m_trayHostSeen = false;
    bool m_italic = false;
    bool m_flashPhase = false;
    bool m_skinnedFailed = false; // the skin could not be loaded: standard tip for the session
};

} // namespace Tarnby
