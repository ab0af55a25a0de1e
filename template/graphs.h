#pragma once
// HTML blocks over the hourly forecast: bar charts of temperature with a strip of the
// chance of precipitation, and a grid of the chance by day and hour. They need no script
// and no image: a bar is a DIV whose height is computed, coloured by temperature, with a
// tooltip in its TITLE.

#include "template/periods.h"

#include <QString>

namespace Tarnby
{

struct GraphStyle {
    QString height = QStringLiteral("60"); // pixels; not a number gives 40
    QString background = QStringLiteral("#F8F8F6");
    QString fontSize = QStringLiteral("11"); // pixels; not a number gives 11
    bool showLabels = true;                  // the strip of chances
};

// [GRAPH HOURLY] and [PERIOD GRAPH]: one column an hour.
QString GraphHourly(const HourSpan &span, const GraphStyle &style);
// [GRAPH DAILY]: the same with weekday tooltips, marks at day boundaries and a label per day.
QString GraphDaily(const HourSpan &span, const GraphStyle &style);
// [TABLE HOURLY POP]: rows for up to 11 days, columns for the 24 hours from 12 AM.
QString TableHourlyPop(const HourSpan &span, const GraphStyle &style);

// A lighter shade of "#RRGGBB" (or "#RGB"): each channel becomes channel x factor +
// channel, at most FF. A text that is no such colour comes back unchanged.
QString ShadeColour(const QString &colour, double factor);

} // namespace Tarnby
