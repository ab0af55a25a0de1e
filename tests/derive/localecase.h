#pragma once
// Runs a derive test under both number and date conventions the program meets: a
// dot-decimal month-first locale and a comma-decimal day-first one. Nothing is taken from
// the machine: the symbols go into the process values and the date patterns are loaded
// from the case's locale.

#include "core/processvalues.h"
#include "derive/dates.h"
#include "derive/units.h"
#include "tests/support/cachetext.h"
#include "tests/support/testprofile.h"

#include <QLocale>
#include <QString>

#include <gtest/gtest.h>

namespace Tarnby::Test
{

struct LocaleCase {
    const char *name;
    QString decimal;
    QString group;
    QLocale locale;
    QString april15; // 15 April 2024 in the locale's short form
};

inline const LocaleCase kDotMonthFirst{
    "DotMonthFirst", ".", ",", QLocale(QLocale::English, QLocale::UnitedStates), "4/15/2024"};
inline const LocaleCase kCommaDayFirst{"CommaDayFirst", ",", ".",
                                       QLocale(QLocale::German, QLocale::Germany), "15.04.2024"};

// An expected text written with "." decimals and "," groups, in the case's symbols. A mark
// is a number's when a digit stands on one side and no other mark on the other ("1.",
// ".30", "1,234.5"); sentence ends ("40°F.", "50...") stay.
inline QString inLocale(const QString &dotText, const LocaleCase &c)
{
    QString out = dotText;
    const auto at = [&](qsizetype i) {
        return i >= 0 && i < dotText.size() ? dotText[i] : QChar();
    };
    const auto isMark = [](QChar ch) { return ch == '.' || ch == ','; };
    for (qsizetype i = 0; i < out.size(); ++i) {
        const QChar before = at(i - 1), after = at(i + 1);
        if (!isMark(out[i]) || isMark(before) || isMark(after) ||
            !(before.isDigit() || after.isDigit()))
            continue;
        out[i] = out[i] == '.' ? c.decimal.front() : c.group.front();
    }
    return out;
}

inline void PrintTo(const LocaleCase &c, std::ostream *os)
{
    *os << c.name;
}

// A profile, the case's locale and default conversion settings for each test.
class LocaleTest : public ProfileTest, public ::testing::WithParamInterface<LocaleCase>
{
protected:
    void SetUp() override
    {
        process().DecimalSymbol = GetParam().decimal;
        process().GroupSymbol = GetParam().group;
        process().NonUsNumberFormat = GetParam().decimal != "." || GetParam().group != ",";
        conversionOptions() = {};
        LoadDatePatterns(GetParam().locale);
    }
    void TearDown() override
    {
        conversionOptions() = {};
        LoadDatePatterns(QLocale::c());
    }
    QString local(const QString &dotText) const { return inLocale(dotText, GetParam()); }
    void setUnits(const char *temp, const char *wind = "mph", const char *bar = "inches",
                  const char *pre = "inches", const char *vis = "miles")
    {
        process().UnitTemp = temp;
        process().UnitWind = wind;
        process().UnitBar = bar;
        process().UnitPre = pre;
        process().UnitVis = vis;
    }
};

inline std::string localeName(const ::testing::TestParamInfo<LocaleCase> &info)
{
    return info.param.name;
}

#define TARNBY_BOTH_LOCALES(Suite)                                                                 \
    INSTANTIATE_TEST_SUITE_P(                                                                      \
        Locales, Suite,                                                                            \
        ::testing::Values(::Tarnby::Test::kDotMonthFirst, ::Tarnby::Test::kCommaDayFirst),         \
        ::Tarnby::Test::localeName)

} // namespace Tarnby::Test
