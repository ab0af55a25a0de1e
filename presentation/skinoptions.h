#pragma once
// Skin options: the user's choices that a skin keeps in its elements "<n>TB-SkinOption".
// Options 1 to 19 belong to the skin ("Skins"/"Option<n><skin>"); options from 20 on
// belong to the skin and the station ("Option<n><skin>-<code>"), so a map link chosen
// for one station does not follow the user to the next.

#include <QString>

namespace Tarnby
{

class SkinDocument;

inline constexpr int kFirstStationOption = 20;

QString SkinOptionKey(int n, const QString &skin, const QString &code);
QString SkinOptionElement(int n);

// Sets every option into its element: options 1 to 19 whether their element exists or
// not, then from 20 on as long as the element exists.
void LoadSkinOptions(SkinDocument &page, const QString &skin, const QString &code);
// Saves the content of every option element from 1 on, as long as the element exists.
// An element of the class "TB-Skin-MapZoomLevel" or "TB-Skin-MapType" also sets the map
// zoom ("Skins"/"MapZoomLevel") or the map type ("Skins"/"MapType").
void SaveSkinOptions(SkinDocument &page, const QString &skin, const QString &code);
// Saves one option of the skin, 1 to 19; other numbers are ignored.
void SaveSingleSkinOption(SkinDocument &page, const QString &skin, int n);

} // namespace Tarnby
