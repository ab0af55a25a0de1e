#include "alerts/alerttables.h"

#include <QHash>

#include <array>

namespace Tarnby
{

namespace
{

const char *const kAlertTypeList =
    "911 Telephone Outage Emergency,311|Air Quality Alert,104|Administrative Message,300|"
    "Avalanche Warning,302|Avalanche Watch,301|Child Abduction Emergency,303|"
    "Civil Danger Warning,304|Civil Emergency Message,180|Coastal Flood Statement,29|"
    "Coastal Flood Warning,2|Coastal Flood Watch,28|Dust Storm Warning,103|"
    "Earthquake Summary,121|Earthquake Warning,305|Evacuation Immediate,306|"
    "Fire Warning,307|Fire Weather Message,241|Flash Flood Statement,31|"
    "Flash Flood Warning,3|Flash Flood Watch,30|Flood Statement,32|Flood Warning,21|"
    "High Surf Warning,161|Hazardous Materials Warning,308|Hurricane Discussion,284|"
    "Hurricane Forecast Advisory,282|Hurricane Local Statement,33|"
    "Hurricane Probabilities,285|Hurricane Public Advisory,283|"
    "Lakeshore Warning Statement,22|Law Enforcement Warning,309|Local Area Emergency,310|"
    "Local Forecast,221|Local Storm Report,262|Marine Advisory/Warning,23|"
    "Marine Weather Statement,34|Monthly Tropical Weather Summary,405|"
    "NBC StormCenter Update,201|Non-Precipitation Advisory,101|NOW Forecast,202|"
    "Nuclear Power Plant Warning,312|Radiological Hazard Warning,313|"
    "Severe Local Storm Watch,35,38,40|Severe Local Storm Watch Area Outline,36|"
    "Severe Thunderstorm Warning,25|Severe Thunderstorm Watch,182|"
    "Severe Weather Statement,37|Shelter In Place Warning,314|Special Marine Warning,24|"
    "Storm Information,261|Storm Warning Outline,102|Tornado Warning,26|Tornado Watch,181|"
    "Tropical Cyclone Update,402|Tropical Disturbance Statement,403|"
    "Tropical Position Estimate,401|Tropical Rainfall Estimate,400|"
    "Tropical Storm Warning,286|Tropical Storm Watch,287|Tropical Weather Discussion,406|"
    "Tropical Weather Outlook,404|Tsunami Watch/Warning,27|Volcano Warning,315|"
    "Watch by County Outline,39|Wind Speed Probabilities,407|Winter Storm Warning,81|"
    "Winter Storm Watch,122|Winter Weather Advisory,183|Special Weather Statement,900";

const char *const kDefaultSelectedAlerts =
    "101,302,301,29,2,28,121,305,306,307,241,3,31,30,32,21,161,284,282,33,285,283,310,23,34,"
    "312,313,35,38,40,36,25,182,37,26,181,402,403,286,287,27,315,81,122,183";

// Incoming names are a hazard and one of four endings; a row gives the code by ending,
// an empty cell means the name is not known. A whole-name row is matched as it stands
// and uses the first cell.
enum class RowKind { ByEnding, WholeName };

struct HazardRow {
    const char *hazard;
    std::array<const char *, 4> codes; // Warning, Watch, Advisory, Statement
    RowKind kind = RowKind::ByEnding;
};

const std::array<const char *, 4> kEndings = {" Warning", " Watch", " Advisory", " Statement"};

// clang-format off
const HazardRow kHazardRows[] = {
    {"Blizzard", {"81", "122", "183", "183"}},
    {"Winter Storm", {"81", "122", "183", "183"}},
    {"Winter Weather", {"81", "122", "183", "183"}},
    {"Snow", {"81", "122", "183", "183"}},
    {"Heavy Snow", {"81", "122", "183", "183"}},
    {"Lake Effect Snow", {"81", "122", "183", "183"}},
    {"Lake Effect Snow and Blowing Snow", {"81", "122", "183", "183"}},
    {"Blowing/Drifting Snow", {"81", "122", "183", "183"}},
    {"Snow and Blowing Snow", {"81", "122", "183", "183"}},
    {"Sleet", {"81", "122", "183", "183"}},
    {"Heavy Sleet", {"81", "122", "183", "183"}},
    {"Freezing Rain", {"81", "122", "183", "183"}},
    {"Ice Storm", {"81", "122", "183", "183"}},
    {"Freeze", {"81", "122", "183", "183"}},
    {"Freezing Fog", {"81", "122", "183", "183"}},
    {"Frost", {"81", "122", "183", "183"}},
    {"Wind Chill", {"81", "122", "183", "183"}},
    {"Extreme Cold", {"81", "122", "183", "183"}},
    {"Wind", {"407", "407", "407", "407"}},
    {"High Wind", {"407", "407", "407", "407"}},
    {"Lake Wind", {"407", "407", "407", "407"}},
    {"Dense Smoke", {"241", "241", "241", "241"}},
    {"Heat", {"104", "104", "104", "104"}},
    {"Excessive Heat", {"104", "104", "104", "104"}},
    {"Blowing Dust", {"103", "103", "103", "103"}},
    {"Dust Storm", {"103", "103", "103", "103"}},
    {"Flood", {"21", "32", "32", "32"}},
    {"Areal Flood", {"21", "32", "32", "32"}},
    {"Flash Flood", {"3", "30", "31", "31"}},
    {"Severe Thunderstorm", {"25", "182", "182", "182"}},
    {"Tornado", {"26", "181", "181", "181"}},
    {"Red Flag", {"307", "", "", ""}},
    {"Fire Weather", {"307", "307", "241", "241"}},
    {"Radiological Hazard", {"313", "313", "313", "313"}},
    {"Volcano", {"315", "315", "315", "315"}},
    {"Volcanic Ashfall", {"315", "315", "315", "315"}},
    {"Air Stagnation", {"104", "104", "104", "104"}},
    {"Avalanche", {"302", "301", "301", "301"}},
    {"Tsunami", {"27", "27", "27", "27"}},
    {"Marine", {"23", "24", "23", "23"}},
    {"Small Craft", {"23", "23", "23", "23"}},
    {"Gale", {"407", "407", "407", "407"}},
    {"Storm", {"261", "261", "261", "261"}},
    {"Hurricane Force Wind", {"407", "407", "407", "407"}},
    {"Lakeshore Flood", {"22", "22", "22", "22"}},
    {"Coastal Flood", {"2", "28", "29", "29"}},
    {"Beach Hazards", {"", "", "", "29"}},
    {"Ice Accretion", {"81", "122", "183", "183"}},
    {"Low Water", {"101", "101", "101", "101"}},
    {"High Surf", {"161", "161", "161", "161"}},
    {"Air Quality", {"104", "104", "104", "104"}},
    {"Air Quality Alert", {"104", "", "", ""}, RowKind::WholeName},
    {"Urban and Small Stream Flood", {"21", "32", "32", "32"}},
    {"Small Stream Flood", {"21", "32", "32", "32"}},
    {"Arroyo and Small Stream Flood", {"21", "32", "32", "32"}},
    {"Tropical Storm", {"286", "287", "287", "287"}},
    {"Hurricane", {"283", "283", "283", "283"}},
    {"Typhoon", {"283", "283", "283", "283"}},
    {"Inland Tropical Wind", {"407", "407", "407", "407"}},
};
// clang-format on

void addRow(QHash<QString, QString> &codes, const HazardRow &row)
{
    const QString hazard = QString::fromLatin1(row.hazard);
    if (row.kind == RowKind::WholeName) {
        codes.insert(hazard, QString::fromLatin1(row.codes[0]));
        return;
    }
    for (std::size_t i = 0; i < kEndings.size(); ++i) {
        if (*row.codes[i] != '\0')
            codes.insert(hazard + QLatin1String(kEndings[i]), QString::fromLatin1(row.codes[i]));
    }
}

const QHash<QString, QString> &codeByName()
{
    static const QHash<QString, QString> codes = [] {
        QHash<QString, QString> built;
        for (const HazardRow &row : kHazardRows)
            addRow(built, row);
        return built;
    }();
    return codes;
}

} // namespace

QString AlertTypeList()
{
    return QString::fromLatin1(kAlertTypeList);
}

QList<AlertType> AlertTypes()
{
    QList<AlertType> types;
    for (const QString &item : AlertTypeList().split(QLatin1Char('|'))) {
        const qsizetype comma = item.indexOf(QLatin1Char(','));
        types.append({item.left(comma), item.mid(comma + 1)});
    }
    return types;
}

QString DefaultSelectedAlerts()
{
    return QString::fromLatin1(kDefaultSelectedAlerts);
}

QString AlertNameCode(const QString &name)
{
    return codeByName().value(name.trimmed(), QStringLiteral("0"));
}

QStringList AlertCodeNames()
{
    return codeByName().keys();
}

} // namespace Tarnby
