#include "core/version.h"
#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

struct VersionCase {
    const char *local;
    const char *remote;
    int expected;
};

class IsNewerVersionTest : public ::testing::TestWithParam<VersionCase>
{
};

TEST_P(IsNewerVersionTest, ComparesPartByPartFromTheLeft)
{
    const VersionCase &c = GetParam();
    EXPECT_EQ(IsNewerVersion(QString::fromLatin1(c.local), QString::fromLatin1(c.remote)),
              c.expected)
        << c.local << " against " << c.remote;
}

INSTANTIATE_TEST_SUITE_P(
    Table, IsNewerVersionTest,
    ::testing::Values(VersionCase{"7.0.12", "7.0.13", -1}, VersionCase{"7.0.12", "7.0.12", 0},
                      VersionCase{"7.0.12", "7.0.9", 0},
                      // a greater later part does not count once an earlier part is less
                      VersionCase{"7.1.00", "7.0.99", 0}, VersionCase{"7.1.00", "8.0.00", -1},
                      // numbers, not texts: "10" is above "9"
                      VersionCase{"7.9.00", "7.10.00", -1}, VersionCase{"", "7.0.0", 0},
                      VersionCase{"7.0.0", "", 0},
                      // only the local version's positions are compared
                      VersionCase{"7.0", "7.0.5", 0}, VersionCase{"7.0.5", "7.1", -1}));

} // namespace
