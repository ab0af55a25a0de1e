#pragma once
// Condition codes and icons. Each provider names the sky its own way: WeatherBug by
// numbered conditions ("cond012", "nt_cond012", or a bare "012"), Weather Underground
// by names ("partlycloudy", "nt_partlycloudy"), the NWS by icon addresses with "/day/" or
// "/night/" in the path. Icon sets in <profile>/Skins/Icons/<set>/ are numbered in the
// base scheme ("32.png", "NA.png") or, in the set called "WeatherBug", in the condition
// scheme ("cond003.png"). These routines map every code onto a file of the user's set.
//
// All take any text. A code no table knows gives "NA" or "cond010", so a skin always has
// a file to show as long as its set holds an icon for no data.

#include <QString>

namespace Tarnby
{

// The path of an icon as template tokens insert it. The value is read from the Weather
// cache (section, key), or is the key itself with valueGiven. A key holding "MoonIcon" is
// a moon image of the icon set, under Moon/Northern or Moon/Southern by the sign of
// CityCode/Latitude. An empty "image-icon" falls back on Hourly/weather-icon1, made a
// night icon when the station's light is over. forTray takes the tray's set; preferPngSet
// swaps a set of .png icons for "WeatherBug". stationGroup is the station's family
// ("WeatherBug", "WUnderground", "NWS", "CWOP"), which decides how the code is read.
// The path is absolute with "/" separators; it is relative ("../../../Skins/Icons/...")
// when the profile folder's name holds an apostrophe, and relative to a page in the
// per-city folder ("../../../../../Skins/Icons/...") with relativeForExport.
QString IconPath(const QString &section, const QString &key, bool forTray, bool preferPngSet,
                 bool relativeForExport, bool valueGiven, const QString &stationGroup);

// The moon image (GetMoonPhaseImage) in the icon set's Moon folder of the station's
// hemisphere, placed as IconPath places icons.
QString MoonIconPath(const QString &imageName, bool relativeForExport);

// The icon set in use ("Skins"/"Icons", or "TrayIcons" for the tray); an empty setting
// becomes "Shiny", which is saved. The extension of a set is that of its first file
// (".png"), empty for a set without files.
QString IconSetName(bool forTray);
QString IconSetExtension(const QString &set);

// "N" for a night code, "D" otherwise.
QString DayOrNight(const QString &code);

// Base numbers ("32", "NA") from an NWS icon address, a Weather Underground name (night
// when it begins with "nt_" and useNight is on) and a WeatherBug condition ("012",
// "cond012" or "nt_cond012").
QString NwsIconToBase(const QString &address);
QString NameToBase(const QString &name, bool useNight);
QString CondToBase(const QString &code);
// The condition code ("cond003") for a base number; "cond033" for one without its own.
QString BaseToCond(const QString &number);
// Folds the WeatherBug conditions from 177 up back onto the lower numbers, as three
// digits ("181" gives "036"); a number below 177 is returned as it is, an unknown one
// gives "010", a text that is not a number is returned unchanged.
QString RemapCondNumber(const QString &number);

// The words for a Weather Underground icon name ("Partly Cloudy"); "N/A" when unknown.
QString ConditionFromIconName(const QString &name);

// Picks the member of a chance group (30, 40, 50 percent and more) for a forecast
// chance of precipitation. A code outside the groups, or a chance under 30 or not a
// number, leaves the code as it is.
QString AdjustCondByChance(const QString &code, const QString &chance);

} // namespace Tarnby
