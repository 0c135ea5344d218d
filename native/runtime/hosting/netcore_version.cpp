#include "netcore_version.h"

#include <stdexcept>

namespace {
constexpr char kNetcorePrefix[] = "netcore";
constexpr size_t kNetcorePrefixLen = sizeof(kNetcorePrefix) - 1;
}  // namespace

void split(const std::string& text, std::vector<std::string>& parts)
{
    parts.clear();
    size_t start = 0;
    for (;;) {
        size_t dot = text.find('.', start);
        if (dot == std::string::npos) {
            parts.push_back(text.substr(start));
            return;
        }
        parts.push_back(text.substr(start, dot - start));
        start = dot + 1;
    }
}

bool try_parse_int(const std::string& text, int& value)
{
    // Digits only: no sign, no space, not empty.
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos)
        return false;
    try {
        value = std::stoi(text);
    } catch (const std::out_of_range&) {
        return false;
    }
    return true;
}

bool try_parse(const std::string& folder_name, NetcoreVersion& version)
{
    if (folder_name.rfind(kNetcorePrefix, 0) != 0)
        return false;
    std::vector<std::string> parts;
    split(folder_name.substr(kNetcorePrefixLen), parts);
    int major = 0;
    int minor = 0;
    if (parts.size() != 2 || !try_parse_int(parts[0], major) || !try_parse_int(parts[1], minor))
        return false;
    version = NetcoreVersion(major, minor);
    return true;
}
