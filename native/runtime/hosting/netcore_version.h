// Versions of runtime folders named "netcore<major>.<minor>" and their parsing.
#pragma once

#include <string>
#include <vector>

struct NetcoreVersion {
    int major = 0;
    int minor = 0;

    NetcoreVersion() = default;
    NetcoreVersion(int major_, int minor_) : major(major_), minor(minor_) {}

    bool operator<(const NetcoreVersion& other) const
    {
        return major != other.major ? major < other.major : minor < other.minor;
    }
    bool operator==(const NetcoreVersion& other) const { return major == other.major && minor == other.minor; }
};

// A candidate runtime folder: its name and the version parsed from it.
struct NetcoreFolder {
    std::string name;
    NetcoreVersion version;
};

// Replaces `parts` with the pieces of `text` between '.' characters
// ("3.1" gives "3" and "1"; "3." gives "3" and "").
void split(const std::string& text, std::vector<std::string>& parts);

// True only when the whole of `text` is decimal digits that fit an int; then
// `value` takes the number.
bool try_parse_int(const std::string& text, int& value);

// "netcore<major>.<minor>" with two decimal pieces gives that version; any
// other name gives false ("netcore3", "netcore3.1.2", "netcore-3.1").
bool try_parse(const std::string& folder_name, NetcoreVersion& version);
