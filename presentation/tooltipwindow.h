#pragma once
// The skinned tooltip: a borderless window holding a browser that shows the tooltip
// skin's page, sized to the page's content and placed beside the tray icon (or at the
// user's own spot). It is created at the first show and hidden, not destroyed, between
// shows.

#include <QRect>
#include <QSize>
#include <QString>
#include <QWidget>

class QWebEngineView;

namespace Tarnby
{

class frmTooltipWindow : public QWidget
{
    Q_OBJECT

public:
    explicit frmTooltipWindow(QWidget *parent = nullptr);

    // The browser for the skin folder in force, made anew when the folder changed.
    // False, after the message about missing files, when the skin or its template is
    // missing; the caller then falls back on the standard tooltip.
    bool LoadTooltipWindow();
    // Writes Tooltip.html from the skin's template and the cache, shows it and sizes
    // the window to its content. False when the skin cannot be loaded.
    bool ReloadTooltipContent();
    // Loads when needed, places the window near iconRect (in screen coordinates; an
    // empty one means near the pointer) and shows it in front.
    bool ShowTooltip(const QRect &iconRect);
    void HideTooltip();
    bool isLoaded() const { return m_browser != nullptr; }
    QString pageFile() const;
    QWebEngineView *browser() const { return m_browser; }

    static QString missingFilesMessage();

signals:
    // The pointer went out of the window.
    void pointerLeft();

protected:
    void leaveEvent(QEvent *event) override;

private:
    bool showPage(const QString &page);
    QString runScript(const QString &script);
    QSize measureContent();

    QWebEngineView *m_browser = nullptr;
    QString m_folder;
    QString m_templateFile;
};

} // namespace Tarnby
