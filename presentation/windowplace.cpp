#include "presentation/windowplace.h"

#include <algorithm>

namespace Tarnby
{

namespace
{

// How much of the window must lie on a screen for the user to grab it.
constexpr int kGraspWidth = 100;
constexpr int kGraspHeight = 40;

std::optional<int> number(const QString &text)
{
    bool numeric = false;
    const int value = text.trimmed().toInt(&numeric);
    return numeric && value > 0 ? std::optional<int>(value) : std::nullopt;
}

bool reachable(const QRect &window, const QRect &screen)
{
    const QRect visible = window.intersected(screen);
    return visible.width() >= std::min(kGraspWidth, window.width()) &&
           visible.height() >= std::min(kGraspHeight, window.height());
}

} // namespace

QSize WindowSizeFor(const SkinIni &ini, const QString &savedWidth, const QString &savedHeight,
                    const QSize &current)
{
    QSize size = current;
    if (number(savedWidth) && number(savedHeight))
        size = QSize(*number(savedWidth), *number(savedHeight));
    else if (ini.DefaultWidth && ini.DefaultHeight)
        size = QSize(*ini.DefaultWidth, *ini.DefaultHeight);
    return size.expandedTo(QSize(ini.MinWidth.value_or(0), ini.MinHeight.value_or(0)));
}

QRect PullOntoScreen(const QRect &window, const QList<QRect> &screens)
{
    if (screens.isEmpty()) return window;
    if (std::any_of(screens.cbegin(), screens.cend(),
                    [&window](const QRect &screen) { return reachable(window, screen); }))
        return window;
    const QRect &screen = screens.first();
    QRect placed = window;
    placed.moveLeft(std::clamp(window.left(), screen.left(),
                               std::max(screen.left(), screen.right() + 1 - window.width())));
    placed.moveTop(std::clamp(window.top(), screen.top(),
                              std::max(screen.top(), screen.bottom() + 1 - window.height())));
    return placed;
}

} // namespace Tarnby
