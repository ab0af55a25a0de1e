#include "tools/tbdownloader/parseinstruction.h"

#include <algorithm>

namespace Tarnby::Child
{

namespace
{

int hexValue(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// "%2F" becomes "/"; a "%" not followed by two hex digits stays as written.
std::string percentDecoded(const std::string &text)
{
    std::string decoded;
    for (size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexValue(text[i + 1]) : -1;
        const int low = high >= 0 ? hexValue(text[i + 2]) : -1;
        if (low >= 0) {
            decoded += char(high * 16 + low);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

} // namespace

std::optional<ParseInstruction> splitParseInstruction(const std::string &url)
{
    const size_t at = std::min(url.find("?parse="), url.find("&parse="));
    if (at == std::string::npos) return std::nullopt;
    const size_t valueStart = at + 7;
    const size_t valueEnd = std::min(url.find_first_of("&#", valueStart), url.size());
    ParseInstruction instruction;
    instruction.text = percentDecoded(url.substr(valueStart, valueEnd - valueStart));
    // When the parameter opened the query, the one after it takes over the "?".
    const bool opensQuery = url[at] == '?';
    const bool followed = valueEnd < url.size() && url[valueEnd] == '&';
    if (opensQuery && followed)
        instruction.pageUrl = url.substr(0, at + 1) + url.substr(valueEnd + 1);
    else
        instruction.pageUrl = url.substr(0, at) + url.substr(valueEnd);
    return instruction;
}

} // namespace Tarnby::Child
