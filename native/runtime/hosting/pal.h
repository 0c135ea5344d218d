// Platform layer of the host: paths, directories, environment, dynamic loading
// and the raw printers behind tracing. Nothing here throws.
#pragma once

#include <cstdarg>
#include <string>
#include <vector>

namespace pal {

// Full path of the running executable ("/proc/self/exe"), or "" when unreadable.
std::string get_entry_point_exe();

// Text before the last '/', or "" when there is none ("/x" gives "").
std::string path_get_directory(const std::string& path);
// True for "" and for any path not starting with '/'.
bool path_is_relative(const std::string& path);
// Appends `part`, inserting one '/' unless `path` already ends with one.
void path_append(std::string& path, const std::string& part);

inline std::string build_path(std::string base)
{
    return base;
}

// `base` with each part appended by path_append, in order.
template <typename... Parts>
std::string build_path(std::string base, const std::string& part, const Parts&... rest)
{
    path_append(base, part);
    return build_path(std::move(base), rest...);
}

// Whether `path` names an existing file system object.
bool is_file_exists(const std::string& path);

// Unset: `value` cleared, false. Set: `value` takes the text; true when it is non-empty.
bool getenv(const char* name, std::string& value);

// strtol in base 10 (0 for text that is no number).
int to_int(const std::string& text);

// Appends each sub-directory of `root` (one level deep) to `out`, or its
// "debug" child instead when `debug` is set and that child exists. Order is
// the directory's; an unreadable `root` leaves `out` unchanged.
void get_app_folders(const std::string& root, bool debug, std::vector<std::string>& out);

// Finds, among the "netcore<major>.<minor>" directories of `base`, the highest
// version that holds `file`, and stores its path in `found`. False (and
// `found` untouched) when there is none.
bool get_major_netcore_path(const std::string& base, const std::string& file, std::string& found);

// The elements joined by `separator`; with `unique`, an element equal to an
// earlier one is left out.
std::string join(const std::vector<std::string>& items, char separator, bool unique = false);
std::string join_unique(const std::vector<std::string>& items, char separator);

// Each of `names` as a full path: relative names are appended to `base`,
// absolute ones kept as they are.
std::vector<std::string> join_to_full_path(const std::string& base, const std::vector<std::string>& names);

// printf to standard error / standard output, then "\r\n" to the same stream.
void err_vprintf(const char* format, va_list args);
void out_vprintf(const char* format, va_list args);

// The system's text for `errnum`.
std::string to_error_string(int errnum);
// prefix + "0x" + status in lower-case hexadecimal (no padding) + suffix.
std::string to_error_string_with_status_code(const std::string& prefix, int status, const std::string& suffix);

// dlopen(RTLD_NOW | RTLD_NOLOAD): finds a library only if it is already loaded.
bool get_module(const std::string& path, void** handle);
// dlopen(RTLD_NOW | RTLD_GLOBAL); null on failure.
void* load_library(const std::string& path);
// dlsym; null when missing.
void* get_symbol(void* handle, const char* name);
// dlclose.
void free_library(void* handle);

}  // namespace pal
