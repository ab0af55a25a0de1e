#pragma once
// How one live reading of any provider becomes keys of the Current branch and the
// argument list of the skin's refreshRealtimeData.
//
// The list has one form for every provider: the observed-time stamp, the observation
// time, then the rows below in their order, each as its key and, for a reading with a
// twin, the twin. A skin reads the list by place. A provider whose reading lacks a row
// (a METAR has no rain totals) leaves the row's keys alone and puts their cached values
// in the row's place.

#include <QDate>
#include <QString>

#include <functional>
#include <optional>

namespace Tarnby
{

class RealtimeArguments;

// The value a reading has for a row, by the row's cache key ("temp", "wind-direction",
// ...): the text as the service gave it, or no value for a row this kind of reading
// never has.
using LiveValueSource = std::function<std::optional<QString>(const QString &key)>;

// The observation time a skin shows beside the live values, with "'" escaped for the
// list's quotes.
QString ObservedStamp(const QString &observedText);

// Writes every row the source has into Current, through the readers' pipeline (number
// characters only, else the cached value, else "N/A", then the row's unit rule), and
// fills the list in row order. day is the observation's local date, for the database's
// day extremes.
void WriteLiveRows(const LiveValueSource &source, const QDate &day, RealtimeArguments &arguments);

} // namespace Tarnby
