#include "coreclr_wrap.h"

#include <dlfcn.h>
#include <limits.h>
#include <stdlib.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "trusted_assemblies.h"
#include "wrap_state.h"

namespace coreclrwrap {

WrapState& state()
{
    // Deliberately never destroyed: the runtime keeps pointers to the property
    // strings until it shuts down, and that happens from an exit handler that
    // may run after this library's own static destructors.
    static WrapState* s = new WrapState();
    return *s;
}

namespace {

constexpr char kTpaKey[] = "TRUSTED_PLATFORM_ASSEMBLIES";
constexpr char kAppPathsKey[] = "APP_PATHS";
constexpr char kNativeDirsKey[] = "NATIVE_DLL_SEARCH_DIRECTORIES";

std::string directory_of(const std::string& path)
{
    size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string simple_name_of(const std::string& path)
{
    size_t slash = path.rfind('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    if (name.size() > 4 && strcasecmp(name.c_str() + name.size() - 4, ".dll") == 0)
        name.resize(name.size() - 4);
    return name;
}

// The trusted list: assemblies the caller named explicitly, then the framework
// folder, then the application folders; the first file of a simple name wins.
std::string build_tpa(const std::string& given, const std::string& app_paths, const std::string& framework_dir)
{
    std::vector<std::string> explicit_paths = split_path_list(given);
    std::vector<std::string> folders{framework_dir};
    for (std::string& folder : split_path_list(app_paths))
        folders.push_back(std::move(folder));

    std::vector<std::string> result;
    std::vector<std::string> taken;
    for (const std::string& path : explicit_paths) {
        result.push_back(path);
        taken.push_back(simple_name_of(path));
    }
    for (const std::string& path : collect_trusted_assemblies(folders)) {
        std::string simple = simple_name_of(path);
        bool shadowed = false;
        for (const std::string& t : taken)
            shadowed = shadowed || strcasecmp(t.c_str(), simple.c_str()) == 0;
        if (!shadowed)
            result.push_back(path);
    }
    return join_path_list(result);
}

}  // namespace
}  // namespace coreclrwrap

using namespace coreclrwrap;

extern "C" int coreclr_wrap_load(const char* libcoreclr_path)
{
    WrapState& s = state();
    if (!libcoreclr_path || !*libcoreclr_path)
        return 0;
    char resolved[PATH_MAX];
    if (!realpath(libcoreclr_path, resolved)) {
        std::fprintf(stderr, "coreclr_wrap_load: cannot resolve '%s': %s\n", libcoreclr_path, std::strerror(errno));
        return 0;
    }
    std::string framework_dir = directory_of(resolved);
    if (s.library)
        // One runtime per process: loading the same one again is a no-op.
        return framework_dir == s.framework_dir ? 1 : 0;

    void* library = dlopen(resolved, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        std::fprintf(stderr, "coreclr_wrap_load: %s\n", dlerror());
        return 0;
    }
    auto init = reinterpret_cast<coreclr_initialize_fn>(dlsym(library, "coreclr_initialize"));
    auto create = reinterpret_cast<coreclr_create_delegate_fn>(dlsym(library, "coreclr_create_delegate"));
    auto shutdown = reinterpret_cast<coreclr_shutdown_2_fn>(dlsym(library, "coreclr_shutdown_2"));
    if (!init || !create || !shutdown) {
        std::fprintf(stderr, "coreclr_wrap_load: '%s' lacks the hosting entry points\n", resolved);
        dlclose(library);
        return 0;
    }
    s.library = library;
    s.framework_dir = std::move(framework_dir);
    s.initialize = init;
    s.create_delegate = create;
    s.shutdown = shutdown;
    return 1;
}

namespace {

struct RuntimeSetting {
    const char* key;
    const char* value;
};

const RuntimeSetting kRuntimeDefaults[] = {
    {"System.Runtime.TieredPGO", "false"},
};

}  // namespace

extern "C" int coreclr_wrap_initialize(const char* exe_path, const char* domain_name, int count, const char** keys,
                                       const char** values)
{
    WrapState& s = state();
    if (s.init_attempted)
        return kStatusAlreadyInitialized;
    if (!s.library)
        return kStatusNotLoaded;
    if (!exe_path || !domain_name || count < 0 || (count > 0 && (!keys || !values)))
        return kStatusInvalidArgument;

    std::string given_tpa;
    std::string app_paths;
    std::string native_dirs;
    bool has_native_dirs = false;
    for (int i = 0; i < count; ++i) {
        if (!keys[i] || !values[i])
            return kStatusInvalidArgument;
        if (std::strcmp(keys[i], kTpaKey) == 0) {
            given_tpa = values[i];
        } else if (std::strcmp(keys[i], kAppPathsKey) == 0) {
            app_paths = values[i];
        } else if (std::strcmp(keys[i], kNativeDirsKey) == 0) {
            native_dirs = values[i];
            has_native_dirs = true;
        }
    }

    s.keys.clear();
    s.values.clear();
    bool has_tpa = false;
    for (int i = 0; i < count; ++i) {
        s.keys.emplace_back(keys[i]);
        if (std::strcmp(keys[i], kTpaKey) == 0) {
            s.values.push_back(build_tpa(given_tpa, app_paths, s.framework_dir));
            has_tpa = true;
        } else if (std::strcmp(keys[i], kNativeDirsKey) == 0) {
            s.values.push_back(append_search_dir(native_dirs, s.framework_dir));
        } else {
            s.values.emplace_back(values[i]);
        }
    }
    if (!has_tpa) {
        s.keys.emplace_back(kTpaKey);
        s.values.push_back(build_tpa(std::string(), app_paths, s.framework_dir));
    }
    if (!has_native_dirs) {
        s.keys.emplace_back(kNativeDirsKey);
        s.values.push_back(s.framework_dir);
    }
    // Runtime settings of the embedded runtime, unless the caller gives its own (a DOTNET_*
    // variable of the same setting still wins). Profile-guided tiering first re-compiles hot
    // precompiled methods with instrumentation and only later optimises them; a Python
    // program drives short bursts of calls, so it mostly pays for the instrumented code.
    for (const auto& setting : kRuntimeDefaults) {
        bool given = false;
        for (int i = 0; i < count && !given; ++i)
            given = std::strcmp(keys[i], setting.key) == 0;
        if (!given) {
            s.keys.emplace_back(setting.key);
            s.values.emplace_back(setting.value);
        }
    }

    std::vector<const char*> key_ptrs;
    std::vector<const char*> value_ptrs;
    for (size_t i = 0; i < s.keys.size(); ++i) {
        key_ptrs.push_back(s.keys[i].c_str());
        value_ptrs.push_back(s.values[i].c_str());
    }

    s.init_attempted = true;
    void* host_handle = nullptr;
    unsigned int domain_id = 0;
    int status = s.initialize(exe_path, domain_name, static_cast<int>(key_ptrs.size()), key_ptrs.data(),
                              value_ptrs.data(), &host_handle, &domain_id);
    if (status < 0)
        return status;
    s.host_handle = host_handle;
    s.domain_id = domain_id;
    s.domain_ready = true;
    return 0;
}

extern "C" int coreclr_wrap_create_delegate(const char* assembly, const char* type, const char* method, void** out)
{
    WrapState& s = state();
    if (!s.domain_ready)
        return kStatusNoDomain;
    if (!assembly || !type || !method || !out)
        return kStatusInvalidArgument;
    return s.create_delegate(s.host_handle, s.domain_id, assembly, type, method, out);
}

extern "C" int coreclr_wrap_shutdown(void)
{
    WrapState& s = state();
    if (!s.domain_ready)
        return kStatusNoDomain;
    s.domain_ready = false;
    int latched_exit_code = 0;
    return s.shutdown(s.host_handle, s.domain_id, &latched_exit_code);
}

extern "C" int coreclr_wrap_is_domain_initialized(void)
{
    return state().domain_ready ? 1 : 0;
}
