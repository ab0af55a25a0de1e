#pragma once
// Program start and shutdown without windows: the steps of Main that decide where
// settings and the profile live, migrate old settings, refresh program files into the
// profile and load the process values. The desktop layer adds the windows, the tray
// and the timers on top of this; tarnby-cli uses the parts that open the store.

#include <QString>
#include <QStringList>

namespace Tarnby
{

class Scheduler;

// What start-up decided, for the steps that follow and for the report of a headless start.
struct StartupState {
    bool Upgrade = false; // the program file is newer than at the last start
    bool VersionChanged = false;
    bool SkinReset = false;
    bool FirstRun = false;
    bool DelayedStart = false;
    int Runs = 0;     // Misc/Runs as step 17 read it, before this start was counted
    QStringList done; // one line per thing start-up did, in order
};

// Steps 5 and 6: "-i" anywhere in the line selects the profile file ("-id" also sets
// the user name "Default"); otherwise a probe write to the database decides. Fills
// process().UseINI, Username and ConfigFolder and opens the store.
void OpenSettingsStore(const QString &commandLine);

// Step 8: the profile folder, created when missing.
void ChooseProfileFolder();

// The process values read from settings (locale symbols, proxy, units, the selected
// station, service settings kept from the last load). Start-up and tarnby-cli call it.
void LoadProcessValues();

// "<major>.<minor>.<revision as two digits>".
QString ProgramVersion();

// The headless part of Main after the single-instance guard, in its order.
StartupState RunStartup(const QString &commandLine);

// Steps 42, 47 and 50: the timers by the update rate, the first retrieval (at once on
// a first run or when one was asked for, or 30 seconds later with the Pause option),
// and the delayed start jobs.
void StartTimersAndFirstRetrieval(Scheduler &scheduler, const StartupState &state);

// ParseCommandLine: "monthlydb=<path>" and "station=<code>"; other words are ignored.
void ParseCommandLine(const QString &line);

// The steps of ExitTB_Click that are not about windows: RetWx, temporary files, the
// profile's Cache folder, helper processes, settings flushed.
void ExitTB();

} // namespace Tarnby
