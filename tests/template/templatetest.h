#pragma once
// A throwaway profile for template tests: the store open, the clock fixed at Friday
// 14 June 2024, 15:30 (UTC, the machine's zone for the test), US English dates, °F
// with one unit shown, and the Weather cache filled as a test asks.

#include "core/clock.h"
#include "tests/support/testprofile.h"

#include <QString>

namespace Tarnby::Test
{

class TemplateTest : public ProfileTest
{
protected:
    void SetUp() override;
    void TearDown() override;

    static void cache(const QString &section, const QString &key, const QString &value);
    // Every "section<TAB>key<TAB>value" line of a data file into the cache.
    static void loadCache(const QString &dataName = QStringLiteral("template/cache.tsv"));
    static void setUnits(const QString &temperature, bool bothUnits);
    static QString expand(const QString &text, bool entities = false, bool forceLoops = false);

    FixedClock m_clock{QDateTime(QDate(2024, 6, 14), QTime(15, 30), Qt::UTC)};
};

} // namespace Tarnby::Test
