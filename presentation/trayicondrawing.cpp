#include "presentation/trayicondrawing.h"

#include "core/log.h"
#include "derive/icons.h"
#include "providers/stationselection.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cmath>

namespace Tarnby
{

namespace
{

// A point on a 96-dpi screen, and the icon the stored size was chosen for.
constexpr qreal kPixelsPerPoint = 96.0 / 72.0;
constexpr int kReferenceSide = 16;
constexpr qreal kSmallestPixelSize = 5;
// A pixel kept clear on the left and right, so the digits never touch the next icon.
constexpr int kEdge = 1;

QFont digitFont(const TrayFontSpec &spec, qreal pixelSize)
{
    QFont font(spec.family);
    font.setPixelSize(std::max(1, int(std::lround(pixelSize))));
    font.setBold(spec.bold);
    font.setItalic(spec.italic);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setStyleStrategy(spec.smooth ? QFont::PreferAntialias : QFont::NoAntialias);
    return font;
}

// The largest font, up to the stored size scaled to the side, whose text fits the
// square (an italic slant needs a little room).
QFont fittingFont(const QString &text, const TrayFontSpec &spec, int pixels)
{
    qreal size = spec.pointSize * kPixelsPerPoint * pixels / kReferenceSide;
    for (;; size -= 0.5) {
        const QFont font = digitFont(spec, size);
        const QRectF box = QFontMetricsF(font).tightBoundingRect(text);
        if ((box.width() <= pixels - 2 * kEdge && box.height() <= pixels) ||
            size <= kSmallestPixelSize)
            return font;
    }
}

} // namespace

QList<int> standardTrayIconSizes()
{
    return {16, 22, 24, 32, 48, 64};
}

QImage DrawTrayDigits(const QString &text, const TrayFontSpec &spec, const TrayColourSet &colours,
                      int side, qreal devicePixelRatio)
{
    const int pixels = std::max(1, int(std::lround(side * devicePixelRatio)));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(colours.transparent ? QColor(Qt::transparent) : colours.background);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, spec.smooth);
    painter.setPen(colours.foreground);
    const QFont font = fittingFont(text, spec, pixels);
    painter.setFont(font);
    // Centred by the ink of the glyphs, not the line box, so digits sit in the middle.
    const QRectF ink = QFontMetricsF(font).tightBoundingRect(text);
    const qreal x = pixels / 2.0 - ink.width() / 2.0 - ink.left();
    const qreal y = pixels / 2.0 - ink.height() / 2.0 - ink.top();
    painter.drawText(QPointF(std::round(x), std::round(y)), text);
    painter.end();
    image.setDevicePixelRatio(devicePixelRatio);
    return image;
}

QIcon TrayDigitsIcon(const QString &text, const TrayFontSpec &font, const TrayColourSet &colours,
                     int traySide, qreal devicePixelRatio)
{
    QIcon icon;
    QList<int> sides = standardTrayIconSizes();
    if (traySide > 0 && !sides.contains(traySide)) sides.append(traySide);
    for (const int side : sides) {
        icon.addPixmap(QPixmap::fromImage(DrawTrayDigits(text, font, colours, side)));
        if (devicePixelRatio > 1.0)
            icon.addPixmap(
                QPixmap::fromImage(DrawTrayDigits(text, font, colours, side, devicePixelRatio)));
    }
    return icon;
}

TrayColourSet FlashColours(const TrayColourSet &colours)
{
    TrayColourSet flash = colours;
    flash.foreground = colours.transparent ? QColor(Qt::white) : colours.background;
    flash.background = colours.transparent ? QColor(0xD0, 0x10, 0x10) : colours.foreground;
    flash.transparent = false;
    return flash;
}

QString ConditionIconFile()
{
    return IconPath(QStringLiteral("Current"), QStringLiteral("image-icon"), true, false, false,
                    false, StationGroup());
}

QIcon ConditionIcon(const QString &file, int traySide, qreal devicePixelRatio)
{
    const QImage source(file);
    if (source.isNull()) {
        Log(QStringLiteral("Tray condition image not readable: ") + file +
            QStringLiteral(" (DrawConditionIcon)"));
        return {};
    }
    QIcon icon;
    QList<int> sides = standardTrayIconSizes();
    if (traySide > 0 && !sides.contains(traySide)) sides.append(traySide);
    for (const int side : sides) {
        const int pixels = int(std::lround(side * std::max<qreal>(1.0, devicePixelRatio)));
        QImage scaled =
            source.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        scaled.setDevicePixelRatio(pixels / qreal(side));
        icon.addPixmap(QPixmap::fromImage(scaled));
    }
    return icon;
}

} // namespace Tarnby
