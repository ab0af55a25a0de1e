#pragma once
// Finds the link that a "parse" instruction asks for in a fetched web page.

#include <optional>
#include <string>

namespace Tarnby::Child
{

// The first link of the page whose text, as written in the page, contains `text` (ASCII
// case ignored), resolved to an absolute http(s) URL against pageUrl or the page's
// <base href>. The page is searched in three passes, each in document order:
//   1. images: img src, data-src and srcset, source src and srcset, input src, video
//      poster, and the content of a meta element whose name or property names an image;
//   2. other links: a, area and link href, iframe, frame and embed src, object data;
//   3. absolute http(s) URLs in script text ("\/" read as "/", as JSON in scripts
//      writes it).
// An empty text takes the first image. Links that resolve to no http(s) URL (data:,
// javascript:, mailto:) are passed over. Empty when nothing matches.
std::optional<std::string> findLink(const std::string &html, const std::string &pageUrl,
                                    const std::string &text);

// reference resolved against base (RFC 3986); empty unless the result is http or https.
std::optional<std::string> resolveUrl(const std::string &base, const std::string &reference);

} // namespace Tarnby::Child
