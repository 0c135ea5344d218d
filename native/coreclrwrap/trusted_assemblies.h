// Building the trusted-platform-assembly list and the native search path
// handed to coreclr_initialize.
#pragma once

#include <string>
#include <vector>

namespace coreclrwrap {

// Splits a ':'-separated list of folders, dropping empty elements.
std::vector<std::string> split_path_list(const std::string& list);

// Full paths of every *.dll in `folders`, searched in order; within one folder
// names are taken in sorted order. The first file of a simple assembly name
// wins (names compare case-insensitively, as the runtime's binder does).
std::vector<std::string> collect_trusted_assemblies(const std::vector<std::string>& folders);

// `list` (':'-separated) with `folder` appended unless it is already an element.
std::string append_search_dir(const std::string& list, const std::string& folder);

// Joins `items` with ':'.
std::string join_path_list(const std::vector<std::string>& items);

}  // namespace coreclrwrap
