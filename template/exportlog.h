#pragma once
// The export and the log: after each retrieval the weather can be written to files of the
// user's making, from templates kept in the settings and expanded by the same engine as
// the skins (with the loops forced on).
//
//   "Export": Enable ("True"), ExportFile, ExportTemplate - a file replaced each time
//   "Log":    Enable ("True"), LogFile, LogTemplate       - a file that grows a line a run
//
// The export replaces its file atomically, so a web server or a status bar that reads it
// never sees half a file; the log appends whole lines. Failures are logged and pass.

#include <QString>

namespace Tarnby
{

// The export, when enabled: "[CRLF]" and "[TAB]" in the template become a line end and a
// tab; a file whose lower-cased name ends in ".htm" or "html" gets HTML entities.
void RunExport();
// The log, when enabled: one expanded line added to the file.
void RunLog();
// Trims the template, expands it (loops forced) and writes the result with a closing
// line end: replacing the file, or with append adding to its end. False on failure.
bool WriteTemplateFile(const QString &templateText, const QString &path, bool append,
                       bool useEntities);

} // namespace Tarnby
