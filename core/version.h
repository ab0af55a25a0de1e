#pragma once
// Comparison of version texts of the form "<major>.<minor>.<revision>" ("7.0.12").

#include <QString>

namespace Tarnby
{

// -1 when the remote version is newer than the local one, else 0. An empty text on
// either side gives 0. The parts are compared as numbers from the left, as far as the
// local version has parts; a part that is no number counts as 0.
int IsNewerVersion(const QString &local, const QString &remote);

} // namespace Tarnby
