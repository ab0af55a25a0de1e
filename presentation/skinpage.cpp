#include "presentation/skinpage.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "presentation/skinfolder.h"
#include "providers/stationselection.h"
#include "template/expander.h"

#include <QFile>

namespace Tarnby
{

bool RenderSkinPage(const QString &skinFolder)
{
    const QString code = process().CityCode;
    CreateFolder(SkinCacheFolder(skinFolder, code));
    const bool international = SkinHasInternationalTemplate(skinFolder) && IsInternational();
    const QString name = GetSkinTemplateName(skinFolder, process().StationType, international);
    const QString templateFile = skinFolder + u'/' + name;
    if (!FileExists(templateFile)) {
        Log(QStringLiteral("No skin template %1 (frmIface.RefreshInterface)").arg(templateFile));
        return false;
    }
    const QString page = ExpandTemplate(ReadFile(templateFile), true, false);
    return WriteFileAtomic(SkinPagePath(skinFolder, code), page);
}

QString EnsureSkinPage(const QString &skinFolder)
{
    const QString code = process().CityCode;
    const QString page = SkinPagePath(skinFolder, code);
    if (!FileExists(page)) {
        CreateFolder(SkinCacheFolder(skinFolder, code));
        QFile::copy(skinFolder + QStringLiteral("/Default.html"), page);
    }
    return page;
}

} // namespace Tarnby
