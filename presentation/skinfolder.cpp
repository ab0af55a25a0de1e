#include "presentation/skinfolder.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/version.h"
#include "providers/station.h"

#include <QStringList>

namespace Tarnby
{

namespace
{

const QString kSkins = QStringLiteral("Skins");
const QString kMisc = QStringLiteral("Misc");

std::optional<int> pixels(const QString &file, const QString &key)
{
    bool numeric = false;
    const int value = GetIniValue(QStringLiteral("Skin"), key, file).trimmed().toInt(&numeric);
    if (!numeric || value <= 0) return std::nullopt;
    return value;
}

bool skinUsable(const QString &skin)
{
    if (skin.isEmpty() || !FolderExists(InterfaceSkinFolder(skin))) return false;
    return SkinIsCompatible(ReadSkinIni(InterfaceSkinFolder(skin)),
                            GetPref(kMisc, QStringLiteral("Version")));
}

// The two template names of a station family: the one for the USA and its twin.
std::pair<QString, QString> familyTemplates(const QString &stationType)
{
    const QString group = StationGroup(stationType);
    if (group == QStringLiteral("WUnderground"))
        return {QStringLiteral("Skinwu.tbt"), QStringLiteral("Skiniwu.tbt")};
    if (group == QStringLiteral("CWOP"))
        return {QStringLiteral("Skincwop.tbt"), QStringLiteral("Skinicwop.tbt")};
    if (group == QStringLiteral("NWS"))
        return {QStringLiteral("Skinnws.tbt"), QStringLiteral("Skininws.tbt")};
    return {QStringLiteral("Skin.tbt"), QStringLiteral("Skini.tbt")};
}

} // namespace

QString InterfaceSkinFolder(const QString &skin)
{
    return process().ProfilePath + QStringLiteral("/Skins/Interface/") + skin;
}

QString SkinCacheFolder(const QString &skinFolder, const QString &code)
{
    return skinFolder + QStringLiteral("/Cache/") + code;
}

QString SkinPagePath(const QString &skinFolder, const QString &code)
{
    return SkinCacheFolder(skinFolder, code) + QStringLiteral("/Skin.html");
}

SkinIni ReadSkinIni(const QString &skinFolder)
{
    const QString file = skinFolder + QStringLiteral("/Skin.ini");
    SkinIni ini;
    if (!FileExists(file)) return ini;
    ini.MinVersion =
        GetIniValue(QStringLiteral("Skin"), QStringLiteral("MinVersion"), file).trimmed();
    ini.MinHeight = pixels(file, QStringLiteral("MinHeight"));
    ini.MinWidth = pixels(file, QStringLiteral("MinWidth"));
    ini.DefaultHeight = pixels(file, QStringLiteral("DefaultHeight"));
    ini.DefaultWidth = pixels(file, QStringLiteral("DefaultWidth"));
    return ini;
}

bool SkinIsCompatible(const SkinIni &ini, const QString &programVersion)
{
    return IsNewerVersion(programVersion, ini.MinVersion) == 0;
}

QString ChooseInterfaceSkin()
{
    const QString skin = GetPref(kSkins, QStringLiteral("Interface"));
    const QString fallback = QString::fromUtf16(kDefaultInterfaceSkin);
    // The stock skin is kept even when it is damaged: there is nothing to fall back on.
    if (skin == fallback || skinUsable(skin)) return skin;
    Log(QStringLiteral("Interface skin \"%1\" cannot be shown; using %2 (frmIface.ChooseSkin)")
            .arg(skin, fallback));
    SavePref(kSkins, QStringLiteral("Interface"), fallback);
    SavePref(kMisc, QStringLiteral("IfaceWidth"), QString());
    SavePref(kMisc, QStringLiteral("IfaceHeight"), QString());
    return fallback;
}

QString GetSkinTemplateName(const QString &skinFolder, const QString &stationType,
                            bool international)
{
    const auto [national, abroad] = familyTemplates(stationType);
    const QString chosen = international ? abroad : national;
    if (FileExists(skinFolder + u'/' + chosen)) return chosen;
    return chosen.contains(QStringLiteral("skini"), Qt::CaseInsensitive)
               ? QStringLiteral("Skini.tbt")
               : QStringLiteral("Skin.tbt");
}

bool SkinHasInternationalTemplate(const QString &skinFolder)
{
    return FileExists(skinFolder + QStringLiteral("/Skini.tbt"));
}

void WriteFontList(const QStringList &families, bool force)
{
    const QString file = process().ProfilePath + QStringLiteral("/Fonts.tb");
    if (!force && FileExists(file)) return;
    WriteFileAtomic(file, families.join(QLatin1Char('\n')) + QLatin1Char('\n'));
}

} // namespace Tarnby
