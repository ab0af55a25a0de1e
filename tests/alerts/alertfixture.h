#pragma once
// A profile with a selected station, a fixed date locale and time zone, and the alert
// documents of tests/data/alerts.

#include "alerts/alertingestion.h"
#include "core/processvalues.h"
#include "core/weathercache.h"
#include "tests/support/cachetext.h"
#include "tests/support/fixedtime.h"
#include "tests/support/testprofile.h"

namespace Tarnby::Test
{

inline QString alertDocument(const QString &name)
{
    return dataFile(QStringLiteral("alerts/") + name);
}

// The two alert services: how an answer is stored, a good answer and the mark that closes
// its list of alerts.
struct AlertService {
    const char *name;
    void (*process)(const QString &path);
    std::optional<AlertSet> (*read)(const QString &answer, const QString &source);
    const char *good;
    const char *listEnd;
};

inline const AlertService kNwsAlerts{"Nws", ProcessNwsAlerts, ReadNwsAlerts, "nws-mixed.json",
                                     "\"title\": \"current"};
inline const AlertService kPulseAlerts{"Pulse", ProcessWeatherBugAlerts, ReadWeatherBugAlerts,
                                       "pulse-three-alerts.json", "]"};

inline bool isNws(const AlertService &service)
{
    return service.process == ProcessNwsAlerts;
}

class AlertTest : public ProfileTest
{
protected:
    void SetUp() override
    {
        process().CityCode = QStringLiteral("KPQR");
        setAlertsFailed(false);
    }

    // What an earlier run left: a damaged answer must not touch it, a good one replaces it
    // whole (title3 lies beyond Count, as rows of a longer set may).
    static void seedEarlierAlerts()
    {
        saveCache("Alerts", "title1=Wind Advisory|msg-body1=Gusts to 50 mph.|title2=Frost Advisory|"
                            "msg-body2=Frost likely.|title3=Dense Fog Advisory|Type=NWS|Count=2|"
                            "AlertsAvailable=True|AlertEpoch=earlier-1,earlier-2");
    }

    static QStringList alertsBranch() { return CacheBranchLines(QStringLiteral("Alerts")); }

    FixedTime time{QTimeZone("America/Chicago")};
};

} // namespace Tarnby::Test
