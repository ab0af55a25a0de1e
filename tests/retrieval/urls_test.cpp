#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "retrieval/hosts.h"
#include "retrieval/urls.h"
#include "tests/support/testprofile.h"

#include <QSet>

using namespace Tarnby;

namespace
{

using UrlTest = Test::ProfileTest;

constexpr Host kFirstHost = Host::Vendor;
constexpr Host kLastHost = Host::Instagram;

QList<Host> allHosts()
{
    QList<Host> hosts;
    for (int i = static_cast<int>(kFirstHost); i <= static_cast<int>(kLastHost); ++i)
        hosts.append(static_cast<Host>(i));
    return hosts;
}

TEST_F(UrlTest, OverridePutsEveryHostUnderItsOwnLoopbackPrefix)
{
    SavePref("Hosts", "nwsapi", "https://nws.example.org/"); // any case, trailing "/" dropped
    EXPECT_EQ(HostUrl(Host::NwsApi), "https://nws.example.org");
    SavePref("Hosts", "Override", "http://127.0.0.1:8080/");
    QSet<QString> urls;
    for (Host host : allHosts()) {
        EXPECT_TRUE(HostUrl(host).startsWith("http://127.0.0.1:8080/"))
            << HostKey(host).toStdString();
        urls.insert(HostUrl(host));
    }
    EXPECT_EQ(urls.size(), allHosts().size()); // no two hosts share a prefix
}

TEST_F(UrlTest, VendorUrlRewritesOnlyVendorHttpsOnce)
{
    const QString settings = "https://service.tarnby.invalid/GetTbSettings?Version=1";
    EXPECT_EQ(VendorUrl(settings), settings); // while HTTPS works
    process().VendorPlainHttp = true;
    const std::pair<const char *, const char *> rows[] = {
        // the whole URL is lowered, query values too
        {"https://service.tarnby.invalid/GetTbSettings?Version=1.2.03",
         "http://www.tarnby.invalid/gettbsettings?version=1.2.03&ssl=0"},
        {"https://service.tarnby.invalid/x?ssl=0&A=B",
         "https://service.tarnby.invalid/x?ssl=0&A=B"},
        {"https://api.weather.gov/Alerts", "https://api.weather.gov/Alerts"},
        {"https://relay.example/get?url=service.tarnby.invalid",
         "https://relay.example/get?url=service.tarnby.invalid&ssl=0"}};
    for (const auto &[url, expected] : rows) {
        EXPECT_EQ(VendorUrl(url), expected);
        EXPECT_EQ(VendorUrl(VendorUrl(url)), expected);
    }
}

TEST_F(UrlTest, OldSystemsRelayTheFourHostsByPrefix)
{
    const QStringList relayed{"https://api.weather.gov/alerts?active=1",
                              "HTTPS://API.WEATHER.GOV/points/1,2",
                              "https://earthnetworks.azure-api.net/data"};
    const QStringList direct{"https://api.weather.com/v3", "https://mesowest.utah.edu/cgi-bin",
                             "http://x.example/?u=https://api.weather.gov"};
    process().WindowsMajor = 10;
    for (const QString &url : relayed + direct)
        EXPECT_EQ(RelayIfOldSystem(url), url);
    process().WindowsMajor = 6;
    // the target is escaped, its query kept
    EXPECT_EQ(RelayIfOldSystem(relayed[0]),
              "https://service.tarnby.invalid/"
              "get?url=https%3A%2F%2Fapi%2Eweather%2Egov%2Falerts?active=1");
    for (const QString &url : relayed)
        EXPECT_EQ(RelayIfOldSystem(url), RelayUrl(url));
    for (const QString &url : direct)
        EXPECT_EQ(RelayIfOldSystem(url), url);
}

TEST(UrlEncodeTest, KeepsTheScanLengthOfTheOriginal)
{
    const std::pair<QString, const char *> rows[] = {
        {"a b", "a+b"},
        // each escape pushes the tail beyond the scan: the last characters stay
        {"&&&", "%26&&"},
        {"a/b/c/d", "a%2Fb%2Fc/d"},
        // no zero padding; codes above 255 as their UTF-16 value
        {"x\ty", "x%9y"},
        {QString::fromUtf8("é"), "%E9"},
        {QString::fromUtf8("€"), "%20AC"}};
    for (const auto &[text, expected] : rows)
        EXPECT_EQ(UrlEncode(text), expected) << text.toStdString();
}

} // namespace
