// iconrender MAP SVGPREFIX OUTDIR SIZE: renders every icon of the table in MAP from
// SVGPREFIX<name>.svg (the artwork folder and its file-name prefix) into OUTDIR/<set>/<file>.png,
// and draws the moon images of each set into OUTDIR/<set>/Moon/Northern and Moon/Southern, all SIZE
// pixels square. Exits 1 when the table or an SVG file is bad, so that the build stops.

#include "tools/iconrender/iconmap.h"
#include "tools/iconrender/moonimage.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

using namespace Tarnby::IconRender;

namespace
{

// The artwork leaves a wide empty border inside its 64-unit view box; this much of it is
// cut away on each side so that the weather fills the icon.
constexpr double kTrimUnits = 4.0;

bool savePng(const QImage &image, const QString &path, QTextStream &err)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    if (image.save(path, "PNG")) return true;
    err << "iconrender: cannot write " << path << Qt::endl;
    return false;
}

bool renderIcon(const IconEntry &icon, const QString &svgPrefix, const QString &outDir, int size,
                QTextStream &err)
{
    QSvgRenderer renderer(svgPrefix + icon.svg + QStringLiteral(".svg"));
    if (!renderer.isValid()) {
        err << "iconrender: no artwork " << icon.svg << " for " << icon.set << '/' << icon.file
            << Qt::endl;
        return false;
    }
    const QRectF box = renderer.viewBoxF();
    renderer.setViewBox(box.adjusted(kTrimUnits, kTrimUnits, -kTrimUnits, -kTrimUnits));
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    return savePng(image,
                   outDir + QLatin1Char('/') + icon.set + QLatin1Char('/') + icon.file +
                       QStringLiteral(".png"),
                   err);
}

bool drawMoon(const MoonEntry &moon, const QString &outDir, int size, QTextStream &err)
{
    bool ok = true;
    for (const bool southern : {false, true}) {
        const QString hemisphere =
            southern ? QStringLiteral("Southern") : QStringLiteral("Northern");
        const QString path = outDir + QLatin1Char('/') + moon.set + QStringLiteral("/Moon/") +
                             hemisphere + QLatin1Char('/') + moon.file + QStringLiteral(".png");
        ok = savePng(DrawMoon(size, moon.litPercent, moon.waxing, southern), path, err) && ok;
    }
    return ok;
}

} // namespace

int main(int argc, char *argv[])
{
    // Rendering needs no screen; the build machine may have none.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QTextStream err(stderr);
    const QStringList args = app.arguments();
    bool sizeOk = false;
    const int size = args.size() == 5 ? args[4].toInt(&sizeOk) : 0;
    if (!sizeOk || size < 8) {
        err << "usage: iconrender MAP SVGPREFIX OUTDIR SIZE" << Qt::endl;
        return 2;
    }
    QFile mapFile(args[1]);
    if (!mapFile.open(QIODevice::ReadOnly)) {
        err << "iconrender: cannot read " << args[1] << Qt::endl;
        return 1;
    }
    QStringList errors;
    const IconMap map = ReadIconMap(QString::fromUtf8(mapFile.readAll()), errors);
    for (const QString &error : errors)
        err << args[1] << ": " << error << Qt::endl;

    bool ok = errors.isEmpty();
    for (const IconEntry &icon : map.icons)
        ok = renderIcon(icon, args[2], args[3], size, err) && ok;
    for (const MoonEntry &moon : map.moons)
        ok = drawMoon(moon, args[3], size, err) && ok;
    return ok ? 0 : 1;
}
