#pragma once
// Pictures of the tray to look at by eye: TARNBY_TRAY_SNAPSHOTS names a folder for them.

#include <QDir>
#include <QImage>
#include <QString>

namespace Tarnby::Test
{

inline void keepSnapshot(const QImage &image, const QString &name)
{
    const QString folder = qEnvironmentVariable("TARNBY_TRAY_SNAPSHOTS");
    if (folder.isEmpty()) return;
    QDir().mkpath(folder);
    image.save(folder + u'/' + name + QStringLiteral(".png"));
    // The same enlarged without smoothing, so single pixels can be judged.
    image.scaled(image.size() * 8).save(folder + u'/' + name + QStringLiteral("-zoom.png"));
}

} // namespace Tarnby::Test
