#include "tests/template/templatetest.h"

#include "alerts/alertformat.h"
#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/units.h"
#include "template/alerttokens.h"
#include "template/expander.h"

#include <QTimeZone>

#include <ctime>

namespace Tarnby::Test
{

namespace
{

// Local time is UTC in every template test, whatever the machine's zone.
const bool kUtc = [] {
    qputenv("TZ", "UTC");
    tzset();
    return true;
}();

} // namespace

void TemplateTest::SetUp()
{
    setClock(&m_clock);
    setLocalTimeZone(QTimeZone::utc());
    LoadDatePatterns(QLocale(QLocale::English, QLocale::UnitedStates));
    conversionOptions() = ConversionOptions{};
    process().CityCode = QStringLiteral("KAMW");
    // The program reads the alert tokens through the alert formatters.
    setAlertTextSource(&AlertTokenText);
}

void TemplateTest::TearDown()
{
    setClock(nullptr);
    setAlertTextSource(nullptr);
}

void TemplateTest::cache(const QString &section, const QString &key, const QString &value)
{
    SaveCache(section, key, value);
}

void TemplateTest::loadCache(const QString &dataName)
{
    const QStringList lines = readDataFile(dataName).split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QStringList parts = line.split(u'\t');
        if (parts.size() == 3) SaveCache(parts[0], parts[1], parts[2]);
    }
}

void TemplateTest::setUnits(const QString &temperature, bool bothUnits)
{
    process().UnitTemp = temperature;
    conversionOptions().bothUnits = bothUnits;
}

QString TemplateTest::expand(const QString &text, bool entities, bool forceLoops)
{
    return ExpandTemplate(text, entities, forceLoops);
}

} // namespace Tarnby::Test
