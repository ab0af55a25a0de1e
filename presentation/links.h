#pragma once
// OpenLink: the named links of skins, tray and menus, turned into addresses on the
// services' hosts (retrieval/hosts.h) and opened in the user's browser.

#include <QString>
#include <QUrl>

#include <functional>

namespace Tarnby
{

// Opens an address outside the program. The default is QDesktopServices::openUrl;
// tests install their own. nullptr restores the default.
using LinkOpener = std::function<void(const QUrl &)>;
void setLinkOpener(LinkOpener opener);

// The address of a named link (compared in lower case) for the current station; empty
// when the station's family has none. With isRadar, "radarmap" takes the skin's own map
// link first. Any other name is no address of its own and falls back on the family's
// page of local conditions or home page.
QString LinkAddress(const QString &name, bool isRadar);

// Opens LinkAddress(name, isRadar) when it is not empty.
void OpenLink(const QString &name, bool isRadar);
// Opens an address as it stands; an empty or unreadable one is logged and dropped.
void OpenAddress(const QString &address);

} // namespace Tarnby
