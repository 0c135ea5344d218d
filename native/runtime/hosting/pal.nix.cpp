#include "pal.h"

#include <dirent.h>
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "netcore_version.h"

namespace pal {

namespace {

constexpr size_t kExePathBuffer = 4096;

// The entry's own type is a directory (symbolic links do not count). File
// systems that do not report d_type are asked with lstat.
bool is_directory_entry(const std::string& dir, const dirent* entry)
{
    if (entry->d_type == DT_DIR)
        return true;
    if (entry->d_type != DT_UNKNOWN)
        return false;
    struct stat st;
    std::string full = dir + "/" + entry->d_name;
    return lstat(full.c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool is_dot_entry(const char* name)
{
    return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

}  // namespace

std::string get_entry_point_exe()
{
    char buffer[kExePathBuffer];
    ssize_t length = readlink("/proc/self/exe", buffer, kExePathBuffer - 1);
    if (length <= 0)
        return std::string();
    return std::string(buffer, static_cast<size_t>(length));
}

std::string path_get_directory(const std::string& path)
{
    size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return std::string();
    return path.substr(0, slash);
}

bool path_is_relative(const std::string& path)
{
    return path.empty() || path[0] != '/';
}

void path_append(std::string& path, const std::string& part)
{
    if (path.empty() || path.back() != '/')
        path += '/';
    path += part;
}

bool is_file_exists(const std::string& path)
{
    struct stat st;
    return ::stat(path.c_str(), &st) == 0;
}

bool getenv(const char* name, std::string& value)
{
    const char* text = std::getenv(name);
    if (!text) {
        value.clear();
        return false;
    }
    value = text;
    return !value.empty();
}

int to_int(const std::string& text)
{
    return static_cast<int>(std::strtol(text.c_str(), nullptr, 10));
}

void get_app_folders(const std::string& root, bool debug, std::vector<std::string>& out)
{
    DIR* dir = opendir(root.c_str());
    if (!dir)
        return;
    while (const dirent* entry = readdir(dir)) {
        if (is_dot_entry(entry->d_name) || !is_directory_entry(root, entry))
            continue;
        std::string path = build_path(root, entry->d_name);
        std::string debug_path = build_path(path, "debug");
        if (debug && is_file_exists(debug_path))
            out.push_back(std::move(debug_path));
        else
            out.push_back(std::move(path));
    }
    closedir(dir);
}

bool get_major_netcore_path(const std::string& base, const std::string& file, std::string& found)
{
    DIR* dir = opendir(base.c_str());
    if (!dir)
        return false;
    std::vector<NetcoreFolder> folders;
    while (const dirent* entry = readdir(dir)) {
        if (is_dot_entry(entry->d_name) || !is_directory_entry(base, entry))
            continue;
        NetcoreVersion version;
        if (try_parse(entry->d_name, version))
            folders.push_back(NetcoreFolder{entry->d_name, version});
    }
    closedir(dir);

    std::sort(folders.begin(), folders.end(),
              [](const NetcoreFolder& a, const NetcoreFolder& b) { return a.version < b.version; });
    for (auto it = folders.rbegin(); it != folders.rend(); ++it) {
        std::string candidate = base + "/" + it->name;
        if (is_file_exists(candidate + "/" + file)) {
            found = std::move(candidate);
            return true;
        }
    }
    return false;
}

std::string join(const std::vector<std::string>& items, char separator, bool unique)
{
    std::string out;
    for (auto it = items.begin(); it != items.end(); ++it) {
        if (unique && std::find(items.begin(), it, *it) != it)
            continue;
        if (it != items.begin())
            out += separator;
        out += *it;
    }
    return out;
}

std::string join_unique(const std::vector<std::string>& items, char separator)
{
    return join(items, separator, true);
}

std::vector<std::string> join_to_full_path(const std::string& base, const std::vector<std::string>& names)
{
    std::vector<std::string> paths;
    paths.reserve(names.size());
    for (const std::string& name : names)
        paths.push_back(path_is_relative(name) ? build_path(base, name) : name);
    return paths;
}

void err_vprintf(const char* format, va_list args)
{
    std::vfprintf(stderr, format, args);
    std::fputs("\r\n", stderr);
    std::fflush(stderr);
}

void out_vprintf(const char* format, va_list args)
{
    std::vfprintf(stdout, format, args);
    std::fputs("\r\n", stdout);
    std::fflush(stdout);
}

std::string to_error_string(int errnum)
{
    char buffer[256];
    // GNU strerror_r may return a static string instead of filling the buffer.
    return std::string(strerror_r(errnum, buffer, sizeof(buffer)));
}

std::string to_error_string_with_status_code(const std::string& prefix, int status, const std::string& suffix)
{
    char hex[16];
    std::snprintf(hex, sizeof(hex), "%x", static_cast<unsigned int>(status));
    return prefix + "0x" + hex + suffix;
}

bool get_module(const std::string& path, void** handle)
{
    void* h = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (!h)
        return false;
    *handle = h;
    return true;
}

void* load_library(const std::string& path)
{
    return dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL);
}

void* get_symbol(void* handle, const char* name)
{
    return dlsym(handle, name);
}

void free_library(void* handle)
{
    dlclose(handle);
}

}  // namespace pal
