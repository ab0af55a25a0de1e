#pragma once
// A throwaway profile with the test skins of tests/data/presentation/skins installed
// under Skins/Interface, and a station selected.

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "presentation/skinfolder.h"
#include "tests/support/testprofile.h"

namespace Tarnby::Test
{

class SkinTest : public ProfileTest
{
protected:
    // Copies a test skin into the profile and makes it the interface skin.
    QString installSkin(const QString &name, bool select = true)
    {
        const QString folder = InterfaceSkinFolder(name);
        CopyTree(dataFile(QStringLiteral("presentation/skins/") + name), folder);
        if (select) SavePref(QStringLiteral("Skins"), QStringLiteral("Interface"), name);
        return folder;
    }

    void selectStation(const QString &code, const QString &type, const QString &zip = "50011")
    {
        process().CityCode = code;
        process().StationType = type;
        process().Latitude = QStringLiteral("42.03");
        process().Longitude = QStringLiteral("-93.62");
        SavePref(QStringLiteral("CityCode"), QStringLiteral("Code"), code);
        SavePref(QStringLiteral("CityCode"), QStringLiteral("StationType"), type);
        SavePref(QStringLiteral("CityCode"), QStringLiteral("ZipCode"), zip);
    }
};

} // namespace Tarnby::Test
