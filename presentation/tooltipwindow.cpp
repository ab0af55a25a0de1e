#include "presentation/tooltipwindow.h"

#include "core/files.h"
#include "core/log.h"
#include "presentation/tooltippage.h"
#include "retrieval/fetch.h"

#include <QCursor>
#include <QEventLoop>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <QWebEngineView>

#include <algorithm>

namespace Tarnby
{

namespace
{

constexpr int kStartSize = 200;
constexpr int kLayoutSize = 1000;
constexpr int kWaitMs = 10000;

// Waits, serving events, until `done` is set or the time is up.
void waitFor(const bool &done)
{
    QEventLoop loop;
    QTimer limit;
    limit.setSingleShot(true);
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    limit.start(kWaitMs);
    while (!done && limit.isActive())
        loop.processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

frmTooltipWindow::frmTooltipWindow(QWidget *parent)
    : QWidget(parent, Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("frmTooltipWindow"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    resize(kStartSize, kStartSize);
}

QString frmTooltipWindow::missingFilesMessage()
{
    return QStringLiteral("The tooltip window could not be loaded because a few files are missing "
                          "from your Tarnby installation.\n\nPlease download and run the latest "
                          "Tarnby installer to restore them.");
}

QString frmTooltipWindow::pageFile() const
{
    return m_folder + kTooltipPageName;
}

bool frmTooltipWindow::LoadTooltipWindow()
{
    const QString folder = TooltipSkinFolder();
    const QString templateFile = TooltipTemplateFile(folder, TooltipDayPart());
    if (!FolderExists(folder) || templateFile.isEmpty()) {
        Log(QStringLiteral("Tooltip skin missing: ") + folder +
            QStringLiteral(" (LoadTooltipWindow)"));
        ShowMessageBox(missingFilesMessage());
        return false;
    }
    m_templateFile = templateFile;
    if (m_browser && folder == m_folder) return true;
    delete m_browser;
    m_browser = new QWebEngineView(this);
    m_browser->setObjectName(QStringLiteral("browser"));
    m_browser->setContextMenuPolicy(Qt::NoContextMenu);
    layout()->addWidget(m_browser);
    m_folder = folder;
    return true;
}

bool frmTooltipWindow::ReloadTooltipContent()
{
    if (!LoadTooltipWindow()) return false;
    const QString page = BuildTooltipPage(ReadFile(m_templateFile), m_folder);
    // Laid out on a roomy page, the content takes its natural size, which is measured.
    resize(kLayoutSize, kLayoutSize);
    layout()->activate();
    if (!showPage(page)) return false;
    QSize size = measureContent();
    if (page.contains(kIconsToken) || page.contains(QStringLiteral("[ICONS START]"))) {
        if (!showPage(ApplyIconStrip(page, TooltipStripKind(), size.width()))) return false;
        size = measureContent();
    }
    resize(size);
    return true;
}

bool frmTooltipWindow::showPage(const QString &page)
{
    if (!WriteFileAtomic(pageFile(), page)) {
        Log(QStringLiteral("Cannot write ") + pageFile() +
            QStringLiteral(" (ReloadTooltipContent)"));
        return false;
    }
    bool done = false;
    bool ok = false;
    const auto connection = connect(m_browser, &QWebEngineView::loadFinished, this, [&](bool good) {
        ok = good;
        done = true;
    });
    m_browser->load(QUrl::fromLocalFile(pageFile()));
    waitFor(done);
    disconnect(connection);
    return ok;
}

QString frmTooltipWindow::runScript(const QString &script)
{
    bool done = false;
    QString answer;
    m_browser->page()->runJavaScript(script, [&](const QVariant &result) {
        answer = result.toString();
        done = true;
    });
    waitFor(done);
    return answer;
}

QSize frmTooltipWindow::measureContent()
{
    const QStringList parts = runScript(TooltipMeasureScript()).split(u',');
    QSize size(kStartSize, kStartSize);
    if (parts.size() == 2) {
        const int height = parts.at(0).toInt();
        const int width = parts.at(1).toInt();
        if (height > 0) size.setHeight(height);
        if (width > 0) size.setWidth(width);
    }
    return size;
}

bool frmTooltipWindow::ShowTooltip(const QRect &iconRect)
{
    if (!isLoaded() && !ReloadTooltipContent()) return false;
    const QPoint pointer = QCursor::pos();
    const QScreen *screen =
        QGuiApplication::screenAt(iconRect.isValid() ? iconRect.center() : pointer);
    if (!screen) screen = QGuiApplication::primaryScreen();
    const QRect available = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
    move(TooltipPosition(TooltipAnchor::fromSettings(), size(), iconRect, available, pointer));
    show();
    raise();
    return true;
}

void frmTooltipWindow::HideTooltip()
{
    hide();
}

void frmTooltipWindow::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    emit pointerLeft();
}

} // namespace Tarnby
