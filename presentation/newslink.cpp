#include "presentation/newslink.h"

#include "core/weathercache.h"
#include "retrieval/hosts.h"

namespace Tarnby
{

namespace
{

const QString kNews = QStringLiteral("News");
constexpr int kLongestTitle = 44;

int storyCount()
{
    return CacheCount(kNews);
}

// LastDisplayed as a story number, 0 when it names none.
int pointer(int count)
{
    const int shown = GetCache(kNews, QStringLiteral("LastDisplayed")).toInt();
    return shown >= 1 && shown <= count ? shown : 0;
}

QString cutTitle(const QString &title)
{
    if (title.size() <= kLongestTitle) return title;
    return title.left(kLongestTitle - 3).trimmed() + QStringLiteral("...");
}

QString vendorStoryAddress(const QString &number)
{
    return HostUrl(Host::Vendor) + QStringLiteral("/tarnby/news/story/") + number;
}

} // namespace

void StepNewsPointer(int step)
{
    const int count = storyCount();
    if (count == 0) return;
    int next = pointer(count) + step;
    if (next > count) next = 1;
    if (next < 1) next = count;
    SaveCache(kNews, QStringLiteral("LastDisplayed"), QString::number(next));
}

QString NewsStoryLinkHtml()
{
    const int count = storyCount();
    if (count == 0) return QString();
    const QString story =
        GetCache(kNews, QStringLiteral("Story%1").arg(std::max(1, pointer(count))));
    QString address = story.section(QLatin1Char('|'), 0, 0).trimmed();
    QString title = story.section(QLatin1Char('|'), 1);
    bool vendorStory = false;
    address.toLongLong(&vendorStory);
    if (vendorStory) {
        address = vendorStoryAddress(address);
        title = title.section(QLatin1Char(':'), 1).trimmed();
    }
    return QStringLiteral("<A HREF=\"#\" ONMOUSEDOWN=\"document.getElementById('TB-Link')"
                          ".innerHTML = '") +
           address + QStringLiteral("'; setRunAction('LaunchLink');\" STYLE=\"color:#0000CC;\">") +
           cutTitle(title) + QStringLiteral("</A>");
}

} // namespace Tarnby
