#pragma once
// The interface skins in the profile: <ProfilePath>/Skins/Interface/<skin>/, each with
// Skin.ini (its metadata), its templates (Skin.tbt and the per-provider ones),
// Default.html (shown until the first render) and Cache/<CityCode>/Skin.html, the page
// a render writes. Nothing here needs a window; nothing throws.

#include <QString>

#include <optional>

namespace Tarnby
{

inline constexpr auto kDefaultInterfaceSkin = u"Splendid4";

// <ProfilePath>/Skins/Interface/<skin>
QString InterfaceSkinFolder(const QString &skin);
// <skin folder>/Cache/<code> and the rendered page in it.
QString SkinCacheFolder(const QString &skinFolder, const QString &code);
QString SkinPagePath(const QString &skinFolder, const QString &code);

// Section "Skin" of Skin.ini. Sizes are in pixels; a size that is missing or not a
// whole number above zero is left unset, and the window then keeps its saved size.
struct SkinIni {
    QString MinVersion; // the lowest program version that can show the skin
    std::optional<int> MinHeight;
    std::optional<int> MinWidth;
    std::optional<int> DefaultHeight;
    std::optional<int> DefaultWidth;
};
SkinIni ReadSkinIni(const QString &skinFolder);

// A skin can be shown when its MinVersion is not above the program's version
// (Misc/Version). A skin without MinVersion always can.
bool SkinIsCompatible(const SkinIni &ini, const QString &programVersion);

// The interface skin in force, "Skins"/"Interface". When the setting is empty, the
// folder is missing or the skin needs a newer program, "Splendid4" is taken and saved,
// and the saved window size (Misc/IfaceWidth, IfaceHeight) is cleared so that the new
// skin opens at its own default size.
QString ChooseInterfaceSkin();

// GetSkinTemplateName: the template of the station's family ("Skin.tbt" for
// WeatherBug, "Skinwu.tbt", "Skincwop.tbt", "Skinnws.tbt") or, with international (the
// skin has Skini.tbt and the station lies outside the USA), the family's "Skini..."
// twin. A file the folder lacks falls back to "Skini.tbt" for an international name,
// else to "Skin.tbt". Returns the file name, not the path.
QString GetSkinTemplateName(const QString &skinFolder, const QString &stationType,
                            bool international);
// Whether the skin has its own template for stations outside the USA.
bool SkinHasInternationalTemplate(const QString &skinFolder);

// The installed font families, one a line, into <ProfilePath>/Fonts.tb for skins and
// the options window to read; only when the file is missing or force is set.
void WriteFontList(const QStringList &families, bool force);

} // namespace Tarnby
