#include "presentation/skinoptions.h"

#include "core/settingsstore.h"
#include "presentation/skindocument.h"

#include <QStringList>

namespace Tarnby
{

namespace
{

const QString kSkins = QStringLiteral("Skins");
// A page cannot hold more options than this; it ends a load or save that a page
// answering "exists" to everything would never end.
constexpr int kMaxOptions = 1000;

bool hasClass(const QString &classes, const QString &name)
{
    return classes.split(QLatin1Char(' '), Qt::SkipEmptyParts).contains(name);
}

} // namespace

QString SkinOptionKey(int n, const QString &skin, const QString &code)
{
    const QString key = QStringLiteral("Option%1").arg(n) + skin;
    return n < kFirstStationOption ? key : key + u'-' + code;
}

QString SkinOptionElement(int n)
{
    return QString::number(n) + QStringLiteral("TB-SkinOption");
}

void LoadSkinOptions(SkinDocument &page, const QString &skin, const QString &code)
{
    for (int n = 1; n < kMaxOptions; ++n) {
        const QString element = SkinOptionElement(n);
        if (n >= kFirstStationOption && !page.elementExists(element)) break;
        page.setInnerHtml(element, GetPref(kSkins, SkinOptionKey(n, skin, code)));
    }
}

void SaveSkinOptions(SkinDocument &page, const QString &skin, const QString &code)
{
    for (int n = 1; n < kMaxOptions; ++n) {
        const QString element = SkinOptionElement(n);
        if (!page.elementExists(element)) break;
        const QString value = page.innerHtml(element);
        SavePref(kSkins, SkinOptionKey(n, skin, code), value);
        const QString classes = page.className(element);
        if (hasClass(classes, QStringLiteral("TB-Skin-MapZoomLevel")))
            SavePref(kSkins, QStringLiteral("MapZoomLevel"), value);
        if (hasClass(classes, QStringLiteral("TB-Skin-MapType")))
            SavePref(kSkins, QStringLiteral("MapType"), value);
    }
}

void SaveSingleSkinOption(SkinDocument &page, const QString &skin, int n)
{
    if (n < 1 || n >= kFirstStationOption) return;
    SavePref(kSkins, SkinOptionKey(n, skin, QString()), page.innerHtml(SkinOptionElement(n)));
}

} // namespace Tarnby
