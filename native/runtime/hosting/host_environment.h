// The process-wide host that starts .NET Core inside this process: it finds the
// runtime and the managed assemblies, loads the wrapper library, creates the
// AppDomain and hands out pointers to static managed methods.
#pragma once

#include <string>
#include <vector>

#include "dynamic_library.h"

#define ORVANE_HOSTING_EXPORT __attribute__((visibility("default")))

extern "C" {
// "CLR Host is not ready": the binding error of hosts that find no AppDomain.
ORVANE_HOSTING_EXPORT extern const char* HostNotReady;
// "OrvaneCLRHostDomain": the name of the AppDomain this host creates.
ORVANE_HOSTING_EXPORT extern const char* OrvaneDomainName;
}

class HostEnvironment {
public:
    // The singleton. The arguments matter only on the call that finds the host
    // not yet initialised; later callers pass nulls and false. `company` forms
    // the environment variable names, `debug` picks the wrapper build and the
    // debug assembly folders, `netcore_dir`/`assembly_dir` override the
    // searches; `runtime_version` and `product` are carried but unused.
    // Start-up failures are thrown (HostException, std::runtime_error, std::logic_error).
    static HostEnvironment& instance(const char* runtime_version, bool debug, const char* company, const char* product,
                                     const char* netcore_dir, const char* assembly_dir);

    HostEnvironment(const HostEnvironment&) = delete;
    HostEnvironment& operator=(const HostEnvironment&) = delete;

    // Forwards to coreclr_wrap_create_delegate; its status (0 on success).
    int try_create_delegate(const char* assembly, const char* type, const char* method, void** out) const;

    bool is_ready() const { return ready_; }
    const std::string& entry_point_path() const { return entry_point_path_; }
    const std::string& netcore_dir() const { return netcore_dir_; }
    const std::string& product_assembly_dirs() const { return product_assembly_dirs_; }

    // "liborvane.embed.coreclrwrap.debug.so" when debug, else "liborvane.embed.coreclrwrap.so".
    const char* get_libcoreclr_wrap_name() const;

private:
    using wrap_load_fn = int (*)(const char* libcoreclr_path);
    using wrap_initialize_fn = int (*)(const char* exe_path, const char* domain_name, int count, const char** keys,
                                       const char** values);
    using wrap_create_delegate_fn = int (*)(const char* assembly, const char* type, const char* method, void** out);
    using wrap_shutdown_fn = int (*)();
    using wrap_is_domain_initialized_fn = int (*)();

    HostEnvironment() = default;
    // Runs at process exit: shuts the runtime down if this host started it.
    ~HostEnvironment();

    bool initialize(const char* runtime_version, bool debug, const char* company, const char* product,
                    const char* netcore_dir, const char* assembly_dir);
    void create_default_app_domain();
    void shutdown_default_app_domain();
    // Appends the netcore directory unless an equal string is already there.
    void complete_app_folders(std::vector<std::string>& folders) const;

    std::string entry_point_path_;
    std::string netcore_dir_;
    std::string product_assembly_dirs_;
    DynamicLibrary wrapper_;
    wrap_initialize_fn wrap_initialize_ = nullptr;
    wrap_create_delegate_fn wrap_create_delegate_ = nullptr;
    wrap_shutdown_fn wrap_shutdown_ = nullptr;
    wrap_is_domain_initialized_fn wrap_is_domain_initialized_ = nullptr;
    bool ready_ = false;
    bool debug_ = false;
};
