// Process state of the CoreCLR wrapper library: the loaded runtime, its entry
// points and the AppDomain it created. One instance per process.
#pragma once

#include <string>
#include <vector>

namespace coreclrwrap {

// The runtime's hosting entry points (exported by libcoreclr.so).
using coreclr_initialize_fn = int (*)(const char* exe_path, const char* domain_name, int property_count,
                                      const char** property_keys, const char** property_values, void** host_handle,
                                      unsigned int* domain_id);
using coreclr_create_delegate_fn = int (*)(void* host_handle, unsigned int domain_id, const char* assembly,
                                           const char* type, const char* method, void** delegate);
using coreclr_shutdown_2_fn = int (*)(void* host_handle, unsigned int domain_id, int* latched_exit_code);

// Statuses the wrapper reports itself (HRESULT style, like the runtime's own).
constexpr int kStatusNotLoaded = static_cast<int>(0x80004005u);           // E_FAIL: coreclr_wrap_load not done
constexpr int kStatusInvalidArgument = static_cast<int>(0x80070057u);     // E_INVALIDARG
constexpr int kStatusAlreadyInitialized = static_cast<int>(0x80131022u);  // HOST_E_INVALIDOPERATION
constexpr int kStatusNoDomain = static_cast<int>(0x8013101Du);            // HOST_E_CLRNOTAVAILABLE

struct WrapState {
    void* library = nullptr;    // dlopen handle of the real libcoreclr.so, never closed
    std::string framework_dir;  // folder of the real libcoreclr.so
    coreclr_initialize_fn initialize = nullptr;
    coreclr_create_delegate_fn create_delegate = nullptr;
    coreclr_shutdown_2_fn shutdown = nullptr;

    bool init_attempted = false;  // the runtime allows one initialisation per process
    bool domain_ready = false;    // coreclr_initialize succeeded and no shutdown since
    void* host_handle = nullptr;
    unsigned int domain_id = 0;

    // Property strings handed to the runtime, kept for the life of the process.
    std::vector<std::string> keys;
    std::vector<std::string> values;
};

WrapState& state();

}  // namespace coreclrwrap
