#pragma once
// The table that drives the icon sets: which SVG artwork each icon file of a set is
// rendered from, and which moon images a set holds.
//
//   [icons Shiny]              a set of condition icons
//   32 clear-day               file name (no extension), SVG name (no extension)
//   [moon Shiny]               the moon images of a set
//   mphase08 50 waxing         file name, percent of the disc lit, waxing or waning
//
// Blank lines and lines starting with "#" are skipped.

#include <QList>
#include <QString>

namespace Tarnby::IconRender
{

struct IconEntry {
    QString set;
    QString file;
    QString svg;
};

struct MoonEntry {
    QString set;
    QString file;
    double litPercent = 0;
    bool waxing = true;
};

struct IconMap {
    QList<IconEntry> icons;
    QList<MoonEntry> moons;
};

// Reads the table; a malformed line is reported in errors and left out.
IconMap ReadIconMap(const QString &text, QStringList &errors);

} // namespace Tarnby::IconRender
