// tbdownloader "<url>" "<outputfile>" "<statusfile>": fetches the page a map link names
// and writes the link its "parse" instruction picks into <outputfile>, then the status
// number into <statusfile>, last. See tools/README.md for the contract.
#include "tools/childfetch/childsupport.h"
#include "tools/childfetch/fetch.h"
#include "tools/tbdownloader/linkfinder.h"
#include "tools/tbdownloader/parseinstruction.h"

#include <string>

using namespace Tarnby::Child;

namespace
{

constexpr const char *Program = "tbdownloader";
constexpr long long MaxPageBytes = 8 * 1024 * 1024;

// The page into memory, at most MaxPageBytes of it.
FetchResult fetchPage(const std::string &url, std::string &page)
{
    // libcurl checks the limit against a Content-Length only; the sink catches the rest.
    bool tooLarge = false;
    FetchResult result = fetch(
        url,
        [&page, &tooLarge](const char *data, size_t size) {
            page.append(data, size);
            tooLarge = page.size() > size_t(MaxPageBytes);
            return !tooLarge;
        },
        FetchLimits{.maxBytes = MaxPageBytes});
    if (tooLarge) result.status = StatusTooLarge;
    return result;
}

int resolveParseLink(const std::string &url, const JobFiles &files)
{
    const auto instruction = splitParseInstruction(url);
    if (!instruction) {
        complain(Program, "no \"?parse=\" or \"&parse=\" in " + url);
        return StatusBadCommandLine;
    }
    std::string page;
    const FetchResult result = fetchPage(instruction->pageUrl, page);
    if (result.status != StatusOk) return result.status;
    const auto link = findLink(page, result.effectiveUrl, instruction->text);
    if (!link) return StatusNoLinkFound;
    return writeFileAtomic(files.outputFile, *link) ? StatusOk : StatusOutputNotWritten;
}

int run(int argc, char **argv)
{
    if (argc != 4) {
        complain(Program, "usage: tbdownloader <url> <outputfile> <statusfile>");
        return 2;
    }
    const std::string url = argv[1];
    const JobFiles files{argv[2], argv[3]};
    if (files.statusFile.empty()) {
        complain(Program, "empty status file name");
        return 2;
    }
    if (url.empty() || files.outputFile.empty()) {
        complain(Program, "empty url or output file name");
        return finishJob(Program, files, StatusBadCommandLine);
    }
    return finishJob(Program, files, resolveParseLink(url, files));
}

} // namespace

int main(int argc, char **argv)
{
    return childMain(Program, argc, argv, run);
}
