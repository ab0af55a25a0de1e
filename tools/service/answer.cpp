#include "tools/service/answer.h"

#include <zlib.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

namespace fs = std::filesystem;

namespace Tarnby
{

namespace
{

constexpr std::uintmax_t MaxDocumentBytes = 64 * 1024 * 1024;
constexpr const char *RoutesFile = "routes.tsv";
constexpr const char *DefaultContentType = "application/octet-stream";

struct Route {
    std::string path;
    std::optional<std::string> query; // none: any query
    bool prefix = false;              // the path ended in "*"
    int status = 200;
    std::vector<std::string> options;
};

std::optional<std::string> readWholeFile(const fs::path &file)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > MaxDocumentBytes)
        return std::nullopt;
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in && !in.eof()) return std::nullopt;
    return text.str();
}

std::vector<std::string> splitTabs(const std::string &line)
{
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, '\t');)
        if (!field.empty()) fields.push_back(field);
    return fields;
}

std::optional<int> parseNumber(const std::string &text)
{
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

// "<request>\t<status>\t<option>..."; lines that are empty, start with "#" or have no
// valid status are skipped.
std::optional<Route> parseRoute(std::string line)
{
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::vector<std::string> fields = splitTabs(line);
    if (fields.size() < 2 || fields[0][0] == '#') return std::nullopt;
    const auto status = parseNumber(fields[1]);
    if (!status || *status < 100 || *status > 599) return std::nullopt;
    Route route;
    route.path = fields[0];
    if (const size_t mark = route.path.find('?'); mark != std::string::npos) {
        route.query = route.path.substr(mark + 1);
        route.path.resize(mark);
    }
    route.prefix = !route.path.empty() && route.path.back() == '*';
    if (route.prefix) route.path.pop_back();
    route.status = *status;
    route.options.assign(fields.begin() + 2, fields.end());
    return route;
}

bool matches(const Route &route, const std::string &path, const std::string &query)
{
    const bool pathMatches = route.prefix ? path.rfind(route.path, 0) == 0 : path == route.path;
    return pathMatches && (!route.query || *route.query == query);
}

std::optional<Route> findRoute(const fs::path &root, const std::string &path,
                               const std::string &query)
{
    std::ifstream in(root / RoutesFile);
    for (std::string line; std::getline(in, line);) {
        const auto route = parseRoute(line);
        if (route && matches(*route, path, query)) return route;
    }
    return std::nullopt;
}

// A query becomes part of a file name: "/" cannot stand in one.
std::string queryFileName(const std::string &query)
{
    std::string name = "@";
    for (const char c : query)
        name += c == '/' ? std::string("%2F") : std::string(1, c);
    return name;
}

bool escapesRoot(const std::string &path)
{
    if (path.empty() || path[0] != '/' || path.find('\0') != std::string::npos) return true;
    const fs::path parts(path);
    return std::any_of(parts.begin(), parts.end(),
                       [](const fs::path &part) { return part == ".."; });
}

// <root><path> when it is a file; when it is a folder, its "@<query>" file, else its
// "@" file.
std::optional<fs::path> documentFile(const fs::path &root, const std::string &path,
                                     const std::string &query)
{
    if (escapesRoot(path)) return std::nullopt;
    const fs::path target = root / fs::path(path).relative_path();
    std::error_code error;
    if (!fs::is_directory(target, error))
        return fs::is_regular_file(target, error) ? std::optional(target) : std::nullopt;
    for (const fs::path &candidate : {target / queryFileName(query), target / "@"})
        if (fs::is_regular_file(candidate, error)) return candidate;
    return std::nullopt;
}

std::string contentTypeFor(const fs::path &name)
{
    static const std::pair<const char *, const char *> types[] = {
        {".html", "text/html"},        {".htm", "text/html"},
        {".json", "application/json"}, {".geojson", "application/geo+json"},
        {".xml", "application/xml"},   {".txt", "text/plain"},
        {".csv", "text/csv"},          {".js", "application/javascript"},
        {".css", "text/css"},          {".png", "image/png"},
        {".gif", "image/gif"},         {".jpg", "image/jpeg"},
        {".jpeg", "image/jpeg"},       {".svg", "image/svg+xml"},
        {".tb", "text/plain"},         {".ini", "text/plain"},
    };
    const std::string extension = name.extension().string();
    for (const auto &[known, type] : types)
        if (extension == known) return type;
    return {};
}

void serveFile(Answer &answer, const fs::path &file, const std::string &requestPath)
{
    if (auto body = readWholeFile(file)) answer.body = std::move(*body);
    answer.contentType = contentTypeFor(fs::path(requestPath).filename());
    if (answer.contentType.empty()) answer.contentType = contentTypeFor(file.filename());
    if (answer.contentType.empty()) answer.contentType = DefaultContentType;
}

std::string optionValue(const std::string &option, const std::string &key)
{
    return option.substr(key.size());
}

// "Name: value"; a line without a colon is no header.
void addHeader(Answer &answer, const std::string &header)
{
    const size_t colon = header.find(':');
    if (colon == std::string::npos) return;
    std::string value = header.substr(colon + 1);
    value.erase(0, value.find_first_not_of(' '));
    answer.headers.emplace_back(header.substr(0, colon), value);
}

void applyOption(Answer &answer, const fs::path &root, const std::string &option)
{
    auto has = [&option](const char *key) { return option.rfind(key, 0) == 0; };
    if (option == "gzip")
        answer.gzip = true;
    else if (has("file="))
        serveFile(answer, root / optionValue(option, "file="), optionValue(option, "file="));
    else if (has("body="))
        answer.body = optionValue(option, "body=");
    else if (has("type="))
        answer.contentType = optionValue(option, "type=");
    else if (has("hang="))
        answer.hangSeconds =
            std::clamp(parseNumber(optionValue(option, "hang=")).value_or(0), 0, MaxHangSeconds);
    else if (has("rate="))
        answer.bytesPerSecond = std::max(0, parseNumber(optionValue(option, "rate=")).value_or(0));
    else if (has("location="))
        answer.headers.emplace_back("Location", optionValue(option, "location="));
    else if (has("header="))
        addHeader(answer, optionValue(option, "header="));
}

} // namespace

Answer answerFor(const std::string &root, const std::string &path, const std::string &query)
{
    Answer answer;
    const auto document = documentFile(root, path, query);
    if (document) {
        answer.status = 200;
        serveFile(answer, *document, path);
    } else {
        answer.body = "Not found\n";
    }
    if (const auto route = findRoute(root, path, query)) {
        answer.status = route->status;
        if (!document) answer.body.clear();
        for (const std::string &option : route->options)
            applyOption(answer, root, option);
    }
    return answer;
}

std::string gzipped(const std::string &body)
{
    z_stream stream{};
    // 15 window bits plus 16 asks zlib for a gzip header and trailer.
    if (deflateInit2(&stream, Z_BEST_SPEED, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        return {};
    std::string out(deflateBound(&stream, uLong(body.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(body.data()));
    stream.avail_in = uInt(body.size());
    stream.next_out = reinterpret_cast<Bytef *>(out.data());
    stream.avail_out = uInt(out.size());
    const int result = deflate(&stream, Z_FINISH);
    out.resize(stream.total_out);
    deflateEnd(&stream);
    return result == Z_STREAM_END ? out : std::string();
}

} // namespace Tarnby
