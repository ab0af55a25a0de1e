#include "retrieval/servicesettings.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"

#include <QDomDocument>

#include <array>

namespace Tarnby
{

namespace
{

constexpr int kVendorSeconds = 30;
constexpr qint64 kTokenLifeSeconds = 23 * 3600;
constexpr qint64 kSettingsRetrySeconds = 3600;

const QString kMisc = QStringLiteral("Misc");
const QString kToken = QStringLiteral("Token");
const QString kTokenFetched = QStringLiteral("TokenExpiration");

QString vendorRequest(const QString &path)
{
    return HostUrl(Host::Vendor) + path + QStringLiteral("?Version=") +
           GetPref(kMisc, QStringLiteral("Version"));
}

bool tokenIsStale()
{
    const QDateTime fetched = QDateTime::fromString(GetPref(kMisc, kTokenFetched), Qt::ISODate);
    return !fetched.isValid() || clock().now() > fetched.addSecs(kTokenLifeSeconds);
}

bool anyValue(const QString &)
{
    return true;
}
bool wbOrWu(const QString &value)
{
    return value == QStringLiteral("wb") || value == QStringLiteral("wu");
}
bool mesowestOrNws(const QString &value)
{
    return value == QStringLiteral("mesowest") || value == QStringLiteral("nws");
}
bool mapSourceName(const QString &value)
{
    static const QStringList names{QStringLiteral("wu"), QStringLiteral("tb"),
                                   QStringLiteral("tb2"), QStringLiteral("tb3"),
                                   QStringLiteral("tb5")};
    return names.contains(value);
}
bool httpAddress(const QString &value)
{
    return value.startsWith(QStringLiteral("http"), Qt::CaseInsensitive);
}

struct ServiceSetting {
    const char *name; // the element's base name in lower case
    bool (*accepts)(const QString &);
    QString ProcessValues::*value;
    bool stored; // kept in "Misc"/"Setting<name as written>"
};

const std::array<ServiceSetting, 8> kServiceSettings{{
    {"intldailyforecastsource", wbOrWu, &ProcessValues::IntlDailyForecastSource, true},
    {"pulseurl", httpAddress, &ProcessValues::PulseUrl, true},
    {"wukey", anyValue, &ProcessValues::WuKey, false},
    {"nwssource", mesowestOrNws, &ProcessValues::NwsSource, true},
    {"wusource", wbOrWu, &ProcessValues::WuSource, true},
    {"mapsource", mapSourceName, &ProcessValues::MapSource, true},
    {"googlegeocodekey", anyValue, &ProcessValues::GoogleGeocodeKey, false},
    {"googlemapkey", anyValue, &ProcessValues::GoogleMapKey, false},
}};

const ServiceSetting *findSetting(const QString &lowerName)
{
    for (const ServiceSetting &setting : kServiceSettings)
        if (lowerName == QLatin1String(setting.name)) return &setting;
    return nullptr;
}

// The element's name without a namespace prefix, as written.
QString baseName(const QDomElement &element)
{
    return element.tagName().section(QLatin1Char(':'), -1);
}

void applySetting(const QDomElement &element)
{
    const QString name = baseName(element);
    const ServiceSetting *setting = findSetting(name.toLower());
    const QString value = element.text().trimmed();
    if (!setting || !setting->accepts(value)) return;
    const QString key = QStringLiteral("Setting") + name;
    if (setting->value == &ProcessValues::PulseUrl && value != GetPref(kMisc, key)) ClearApiToken();
    process().*(setting->value) = value;
    if (setting->stored) SavePref(kMisc, key, value);
}

} // namespace

QString GetApiToken()
{
    QString token = GetPref(kMisc, kToken);
    if (!token.isEmpty() && !tokenIsStale()) return token;
    token = DownloadIt(vendorRequest(QStringLiteral("/GetPulseApiKey")), kVendorSeconds).trimmed();
    SavePref(kMisc, kToken, token);
    SavePref(kMisc, kTokenFetched, clock().now().toString(Qt::ISODate));
    if (token.isEmpty()) Log(QStringLiteral("No API token from the vendor service (GetApiToken)"));
    return token;
}

void ClearApiToken()
{
    SavePref(kMisc, kToken, QString());
    SavePref(kMisc, kTokenFetched, QString());
}

void LoadServiceSettings()
{
    const QString document =
        DownloadIt(vendorRequest(QStringLiteral("/GetTbSettings")), kVendorSeconds);
    QDomDocument dom;
    QString error;
    int line = 0;
    if (!dom.setContent(document, &error, &line)) {
        Log(QStringLiteral("Service settings not loaded: %1 at line %2 (LoadServiceSettings)")
                .arg(error)
                .arg(line));
        return;
    }
    process().SettingsLoaded = true;
    const QDomElement root = dom.documentElement();
    if (root.tagName() != QStringLiteral("settings")) return;
    for (QDomElement element = root.firstChildElement(); !element.isNull();
         element = element.nextSiblingElement())
        applySetting(element);
}

void ReloadServiceSettingsIfDue()
{
    ProcessValues &values = process();
    const QDateTime now = clock().now();
    if (values.SettingsLoaded || (values.SettingsLastAttempt.isValid() &&
                                  values.SettingsLastAttempt.secsTo(now) <= kSettingsRetrySeconds))
        return;
    values.SettingsLastAttempt = now;
    LoadServiceSettings();
}

bool HttpsProbe()
{
    const QString path = QStringLiteral("/tarnby/app/downloadtest");
    const QString ok = QStringLiteral("ok");
    if (DownloadIt(HostUrl(Host::Vendor) + path, kVendorSeconds).trimmed() == ok) return false;
    return DownloadIt(HostUrl(Host::VendorPlain) + path + QStringLiteral("?ssl=0"), kVendorSeconds)
               .trimmed() == ok;
}

} // namespace Tarnby
