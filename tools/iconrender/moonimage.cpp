#include "tools/iconrender/moonimage.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <algorithm>
#include <cmath>

namespace Tarnby::IconRender
{

namespace
{

// The lit part: the half disc on the sunny side, less (crescent) or plus (gibbous) the
// half ellipse that the terminator draws across the disc.
QPainterPath litPart(const QPointF &centre, double radius, double litFraction, bool litRight)
{
    QPainterPath disc;
    disc.addEllipse(centre, radius, radius);
    QPainterPath side;
    side.addRect(litRight ? QRectF(centre.x(), centre.y() - radius, radius, 2 * radius)
                          : QRectF(centre.x() - radius, centre.y() - radius, radius, 2 * radius));
    const QPainterPath halfDisc = disc.intersected(side);
    QPainterPath terminator;
    terminator.addEllipse(centre, radius * std::fabs(1 - 2 * litFraction), radius);
    return litFraction <= 0.5 ? halfDisc.subtracted(terminator) : halfDisc.united(terminator);
}

void drawCraters(QPainter &painter, const QPointF &centre, double radius)
{
    struct Crater {
        double dx, dy, r;
    };
    // Placed by eye, in parts of the radius.
    constexpr Crater craters[] = {{-0.35, -0.30, 0.16}, {0.25, -0.45, 0.10}, {0.30, 0.20, 0.20},
                                  {-0.20, 0.40, 0.12},  {0.55, -0.05, 0.08}, {-0.55, 0.10, 0.09}};
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0, 0, 0, 22));
    for (const Crater &c : craters)
        painter.drawEllipse(centre + QPointF(c.dx, c.dy) * radius, c.r * radius, c.r * radius);
}

} // namespace

QImage DrawMoon(int size, double litPercent, bool waxing, bool southern)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(size / 2.0, size / 2.0);
    const double radius = size * 0.42;

    QRadialGradient dark(centre, radius);
    dark.setColorAt(0, QColor(0x4a, 0x55, 0x6e));
    dark.setColorAt(1, QColor(0x2b, 0x33, 0x45));
    painter.setPen(Qt::NoPen);
    painter.setBrush(dark);
    painter.drawEllipse(centre, radius, radius);

    const double litFraction = std::clamp(litPercent / 100.0, 0.0, 1.0);
    const QPainterPath lit = litPart(centre, radius, litFraction, waxing != southern);
    QRadialGradient light(centre - QPointF(radius, radius) * 0.3, radius * 1.6);
    light.setColorAt(0, QColor(0xff, 0xfb, 0xe8));
    light.setColorAt(1, QColor(0xf1, 0xd6, 0x84));
    painter.setBrush(light);
    painter.drawPath(lit);
    painter.setClipPath(lit);
    drawCraters(painter, centre, radius);
    painter.setClipping(false);

    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0x1f, 0x26, 0x35, 90), std::max(1.0, size / 64.0)));
    painter.drawEllipse(centre, radius, radius);
    return image;
}

} // namespace Tarnby::IconRender
