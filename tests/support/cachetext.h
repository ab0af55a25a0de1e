#pragma once
// Cache values written and checked as text: "key=value|key=value" for one section of the
// current station's cache.

#include "core/weathercache.h"
#include "tests/support/printers.h"

#include <QString>

#include <gtest/gtest.h>

namespace Tarnby::Test
{

inline void saveCache(const QString &section, const QString &pairs)
{
    for (const QString &pair : pairs.split('|'))
        SaveCache(section, pair.section('=', 0, 0), pair.section('=', 1));
}

// Expects each key to hold its value in the section.
inline void expectCache(const QString &section, const QString &pairs)
{
    for (const QString &pair : pairs.split('|'))
        EXPECT_EQ(GetCache(section, pair.section('=', 0, 0)), pair.section('=', 1))
            << pair.toStdString();
}

} // namespace Tarnby::Test
