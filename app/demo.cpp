#include "app/demo.h"

#include "core/files.h"
#include "core/paths.h"
#include "core/settingsstore.h"
#include "providers/stationselection.h"
#include "tools/service/documentservice.h"

#include <QFile>
#include <QStandardPaths>

namespace Tarnby
{

namespace
{

QString documentsFolder()
{
    return ProgramFolder() + QStringLiteral("/demo");
}

// Tacoma Narrows Airport: the station whose real documents the demo holds.
StationEntry demoStation()
{
    StationEntry station;
    station.City = QStringLiteral("Tacoma, WA (Tacoma Narrows Airport)");
    station.Code = QStringLiteral("KTIW");
    station.ZipCode = QStringLiteral("98335");
    station.Latitude = QStringLiteral("47.2675");
    station.Longitude = QStringLiteral("-122.57611");
    station.StationType = QStringLiteral("NWS");
    return station;
}

} // namespace

Demo::Demo() = default;

Demo::~Demo()
{
    if (m_service) m_service->stop();
}

QString Demo::defaultProfile()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Tarnby-demo");
}

bool Demo::startService()
{
    if (!FolderExists(documentsFolder())) return false;
    m_service = std::make_unique<DocumentService>();
    m_port = m_service->start(QFile::encodeName(documentsFolder()).toStdString());
    return m_port > 0;
}

QString Demo::address() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}

void Demo::prepareProfile()
{
    SavePref(QStringLiteral("Hosts"), QStringLiteral("Override"), address());
    const QString entry = demoStation().toLine();
    SaveWeatherStation(entry);
    ChangeWeatherStation(entry);
}

} // namespace Tarnby
