#pragma once
// The rendered page of the interface skin: the skin's template for the station's
// family, expanded from the Weather cache into <skin>/Cache/<CityCode>/Skin.html.

#include <QString>

namespace Tarnby
{

// Expands the skin's template and writes the page. False when the skin has no
// template, in which case an earlier page stays as it is.
bool RenderSkinPage(const QString &skinFolder);
// Makes sure a page exists to be shown: when Skin.html is missing, the skin's
// Default.html is copied in its place. The page's path.
QString EnsureSkinPage(const QString &skinFolder);

} // namespace Tarnby
