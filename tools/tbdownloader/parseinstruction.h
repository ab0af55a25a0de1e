#pragma once
// The "parse" instruction in a map link: "<page URL>?parse=<text>" or
// "<page URL>?a=1&parse=<text>&b=2". The page to fetch is the URL without the parse
// parameter; <text> (percent-decoded) names the link to pick from it.

#include <optional>
#include <string>

namespace Tarnby::Child
{

struct ParseInstruction {
    std::string pageUrl;
    std::string text;
};

// Empty when the URL holds neither "?parse=" nor "&parse=".
std::optional<ParseInstruction> splitParseInstruction(const std::string &url);

} // namespace Tarnby::Child
