#pragma once
// Diagnostics. Log(message) is the program's one diagnostic call: one line per event,
// the routine's name in parentheses, faults as
// "Error <number>: <description> at line <line> (<module>.<routine>)".
//
// A line goes to the Qt logging category "tarnby", to the local diagnostic log file
// (<ProfilePath>/Logs/tarnby.log, rotated, written when Misc/LocalLog is "True" or the
// environment variable TARNBY_LOG is set) and, while remote logging is on, to the
// remote sink that the fetch layer installs.

#include <QString>

#include <exception>
#include <functional>

namespace Tarnby
{

void Log(const QString &message);

// The remote half of Log. The fetch layer installs it; it is called only while
// process().LogEnabled holds, and never re-entered from within itself.
void setRemoteLogSink(std::function<void(const QString &)> sink);

// Builds the fault line "Error <number>: <description> at line <line> (<where>)".
QString ErrorLine(int number, const QString &description, int line, const QString &where);

// Runs work; an exception that escapes it is logged as a fault of `where`
// ("<module>.<routine>") and goes no further.
template <class Work> void LogFaults(const QString &where, Work &&work)
{
    try {
        work();
    } catch (const std::exception &fault) {
        Log(ErrorLine(0, QString::fromLocal8Bit(fault.what()), 0, where));
    } catch (...) {
        Log(ErrorLine(0, QStringLiteral("unknown fault"), 0, where));
    }
}

} // namespace Tarnby
