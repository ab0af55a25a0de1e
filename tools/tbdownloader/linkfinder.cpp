#include "tools/tbdownloader/linkfinder.h"

#include <curl/curl.h>
#include <gumbo.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace Tarnby::Child
{

namespace
{

enum class Kind { Image, ImageSet, Link };

struct LinkAttribute {
    GumboTag tag;
    const char *name;
    Kind kind;
};

constexpr LinkAttribute LinkAttributes[] = {
    {GUMBO_TAG_IMG, "src", Kind::Image},          {GUMBO_TAG_IMG, "data-src", Kind::Image},
    {GUMBO_TAG_IMG, "srcset", Kind::ImageSet},    {GUMBO_TAG_SOURCE, "src", Kind::Image},
    {GUMBO_TAG_SOURCE, "srcset", Kind::ImageSet}, {GUMBO_TAG_INPUT, "src", Kind::Image},
    {GUMBO_TAG_VIDEO, "poster", Kind::Image},     {GUMBO_TAG_A, "href", Kind::Link},
    {GUMBO_TAG_AREA, "href", Kind::Link},         {GUMBO_TAG_LINK, "href", Kind::Link},
    {GUMBO_TAG_IFRAME, "src", Kind::Link},        {GUMBO_TAG_FRAME, "src", Kind::Link},
    {GUMBO_TAG_EMBED, "src", Kind::Link},         {GUMBO_TAG_OBJECT, "data", Kind::Link},
};

// A URL written in script text ends at the first of these.
constexpr const char *ScriptUrlEnd = " \t\r\n\"'`<>\\)]";

struct PageLinks {
    std::string baseHref;
    std::vector<std::string> images;
    std::vector<std::string> links;
    std::vector<std::string> scriptUrls;
};

std::string lowerAscii(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return char(c >= 'A' && c <= 'Z' ? c + 32 : c); });
    return text;
}

std::string trimmed(const std::string &text)
{
    const size_t first = text.find_first_not_of(" \t\r\n\f");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n\f") - first + 1);
}

void replaceAll(std::string &text, const std::string &from, const std::string &to)
{
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

const char *attributeValue(const GumboElement &element, const char *name)
{
    const GumboAttribute *attribute = gumbo_get_attribute(&element.attributes, name);
    return attribute ? attribute->value : nullptr;
}

// "a.png 1x, b.png 2x": the URL is the first word of each comma-separated candidate.
void addImageSet(const std::string &srcset, std::vector<std::string> &into)
{
    size_t start = 0;
    while (start < srcset.size()) {
        size_t end = srcset.find(',', start);
        if (end == std::string::npos) end = srcset.size();
        const std::string candidate = trimmed(srcset.substr(start, end - start));
        if (!candidate.empty())
            into.push_back(candidate.substr(0, candidate.find_first_of(" \t\r\n")));
        start = end + 1;
    }
}

bool metaNamesImage(const GumboElement &element)
{
    for (const char *name : {"name", "property", "itemprop"}) {
        const char *value = attributeValue(element, name);
        if (value && lowerAscii(value).find("image") != std::string::npos) return true;
    }
    return false;
}

void addScriptUrls(const GumboElement &script, std::vector<std::string> &into)
{
    std::string text;
    for (unsigned i = 0; i < script.children.length; ++i) {
        const auto *child = static_cast<const GumboNode *>(script.children.data[i]);
        if (child->type == GUMBO_NODE_TEXT) text += child->v.text.text;
    }
    replaceAll(text, "\\/", "/");
    for (size_t at = text.find("http"); at != std::string::npos; at = text.find("http", at + 1)) {
        if (text.compare(at, 7, "http://") != 0 && text.compare(at, 8, "https://") != 0) continue;
        const size_t end = std::min(text.find_first_of(ScriptUrlEnd, at), text.size());
        into.push_back(text.substr(at, end - at));
        at = end - 1;
    }
}

void collectFromElement(const GumboElement &element, PageLinks &page)
{
    for (const LinkAttribute &entry : LinkAttributes) {
        const char *value =
            entry.tag == element.tag ? attributeValue(element, entry.name) : nullptr;
        if (!value) continue;
        if (entry.kind == Kind::ImageSet)
            addImageSet(value, page.images);
        else
            (entry.kind == Kind::Image ? page.images : page.links).push_back(trimmed(value));
    }
    if (element.tag == GUMBO_TAG_META && metaNamesImage(element))
        if (const char *content = attributeValue(element, "content"))
            page.images.push_back(trimmed(content));
    if (element.tag == GUMBO_TAG_BASE && page.baseHref.empty())
        if (const char *href = attributeValue(element, "href")) page.baseHref = trimmed(href);
    if (element.tag == GUMBO_TAG_SCRIPT) addScriptUrls(element, page.scriptUrls);
}

PageLinks collectPageLinks(const std::string &html)
{
    PageLinks page;
    GumboOutput *output = gumbo_parse_with_options(&kGumboDefaultOptions, html.data(), html.size());
    if (!output) return page;
    std::vector<const GumboNode *> pending{output->root};
    while (!pending.empty()) {
        const GumboNode *node = pending.back();
        pending.pop_back();
        if (node->type != GUMBO_NODE_ELEMENT && node->type != GUMBO_NODE_TEMPLATE) continue;
        collectFromElement(node->v.element, page);
        // Children go on the stack last first, so they come off in document order.
        const GumboVector &children = node->v.element.children;
        for (unsigned i = children.length; i-- > 0;)
            pending.push_back(static_cast<const GumboNode *>(children.data[i]));
    }
    gumbo_destroy_output(&kGumboDefaultOptions, output);
    return page;
}

std::string takeCurlText(char *text)
{
    std::string copy = text ? text : "";
    curl_free(text);
    return copy;
}

} // namespace

std::optional<std::string> resolveUrl(const std::string &base, const std::string &reference)
{
    std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> url(curl_url(), curl_url_cleanup);
    if (!url || curl_url_set(url.get(), CURLUPART_URL, base.c_str(), 0) != CURLUE_OK ||
        curl_url_set(url.get(), CURLUPART_URL, reference.c_str(), CURLU_ALLOW_SPACE) != CURLUE_OK)
        return std::nullopt;
    char *scheme = nullptr;
    char *resolved = nullptr;
    curl_url_get(url.get(), CURLUPART_SCHEME, &scheme, 0);
    const std::string schemeText = lowerAscii(takeCurlText(scheme));
    if (schemeText != "http" && schemeText != "https") return std::nullopt;
    if (curl_url_get(url.get(), CURLUPART_URL, &resolved, 0) != CURLUE_OK) return std::nullopt;
    return takeCurlText(resolved);
}

std::optional<std::string> findLink(const std::string &html, const std::string &pageUrl,
                                    const std::string &text)
{
    const PageLinks page = collectPageLinks(html);
    std::string base = pageUrl;
    if (!page.baseHref.empty()) base = resolveUrl(pageUrl, page.baseHref).value_or(pageUrl);
    const std::string wanted = lowerAscii(text);
    const bool firstImage = wanted.empty();
    for (const auto *candidates : {&page.images, &page.links, &page.scriptUrls}) {
        for (const std::string &candidate : *candidates) {
            if (candidate.empty() || lowerAscii(candidate).find(wanted) == std::string::npos)
                continue;
            if (auto resolved = resolveUrl(base, candidate)) return resolved;
        }
        if (firstImage) break;
    }
    return std::nullopt;
}

} // namespace Tarnby::Child
