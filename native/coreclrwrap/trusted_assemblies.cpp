#include "trusted_assemblies.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cctype>
#include <set>

namespace coreclrwrap {

namespace {

constexpr char kDllSuffix[] = ".dll";
constexpr size_t kDllSuffixLen = sizeof(kDllSuffix) - 1;

bool has_dll_suffix(const std::string& name)
{
    if (name.size() <= kDllSuffixLen)
        return false;
    for (size_t i = 0; i < kDllSuffixLen; ++i) {
        unsigned char c = static_cast<unsigned char>(name[name.size() - kDllSuffixLen + i]);
        if (std::tolower(c) != kDllSuffix[i])
            return false;
    }
    return true;
}

std::string lower_ascii(std::string text)
{
    for (char& c : text)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

// Sorted *.dll file names of one folder; regular files and links to them.
std::vector<std::string> list_dlls(const std::string& folder)
{
    std::vector<std::string> names;
    DIR* dir = opendir(folder.c_str());
    if (!dir)
        return names;
    while (dirent* entry = readdir(dir)) {
        std::string name = entry->d_name;
        if (!has_dll_suffix(name))
            continue;
        struct stat st;
        std::string full = folder + "/" + name;
        if (stat(full.c_str(), &st) == 0 && S_ISREG(st.st_mode))
            names.push_back(std::move(name));
    }
    closedir(dir);
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace

std::vector<std::string> split_path_list(const std::string& list)
{
    std::vector<std::string> parts;
    size_t start = 0;
    while (start <= list.size()) {
        size_t end = list.find(':', start);
        if (end == std::string::npos)
            end = list.size();
        if (end > start)
            parts.push_back(list.substr(start, end - start));
        start = end + 1;
    }
    return parts;
}

std::vector<std::string> collect_trusted_assemblies(const std::vector<std::string>& folders)
{
    std::vector<std::string> paths;
    std::set<std::string> seen;
    for (const std::string& raw : folders) {
        std::string folder = raw;
        while (folder.size() > 1 && folder.back() == '/')
            folder.pop_back();
        for (const std::string& name : list_dlls(folder)) {
            std::string simple = lower_ascii(name.substr(0, name.size() - kDllSuffixLen));
            if (seen.insert(simple).second)
                paths.push_back(folder + "/" + name);
        }
    }
    return paths;
}

std::string join_path_list(const std::vector<std::string>& items)
{
    std::string out;
    for (size_t i = 0; i < items.size(); ++i) {
        if (i)
            out += ':';
        out += items[i];
    }
    return out;
}

std::string append_search_dir(const std::string& list, const std::string& folder)
{
    std::vector<std::string> parts = split_path_list(list);
    if (std::find(parts.begin(), parts.end(), folder) == parts.end())
        parts.push_back(folder);
    return join_path_list(parts);
}

}  // namespace coreclrwrap
