#pragma once
// Where things are on disk.

#include <QString>

namespace Tarnby
{

// The read-only install folder: <executable dir>/../share/tarnby, which exists both in
// an installed tree and in the build tree.
QString ProgramFolder();
// A helper program (dl, tbdownloader, tbradar) beside the running executable, or in
// the folder named by the environment variable TARNBY_HELPER_FOLDER when it is set
// (tests put stand-ins for the helpers there).
QString HelperProgram(const QString &name);
// The settings folder ($XDG_CONFIG_HOME/Tarnby) and the default profile folder
// ($XDG_DATA_HOME/Tarnby); a --profile DIR override puts both under DIR.
QString DefaultConfigFolder();
QString DefaultProfileFolder();
void setProfileOverride(const QString &dir);
QString profileOverride();

} // namespace Tarnby
