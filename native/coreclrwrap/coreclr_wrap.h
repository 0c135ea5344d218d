// C entry points of liborvane.embed.coreclrwrap.so: load libcoreclr.so, create
// the process's single AppDomain and hand out pointers to static managed
// methods. The hosting layer looks these up by name with dlsym.
#pragma once

#define ORVANE_WRAP_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

// Loads the runtime at `libcoreclr_path` (symbolic links resolved first, so the
// runtime finds its JIT and core library beside its real file). Non-zero on success.
ORVANE_WRAP_EXPORT int coreclr_wrap_load(const char* libcoreclr_path);

// Creates the AppDomain. TRUSTED_PLATFORM_ASSEMBLIES is filled with every *.dll
// of the framework folder and of the APP_PATHS folders; the framework folder is
// added to NATIVE_DLL_SEARCH_DIRECTORIES. 0 on success, else a non-zero status;
// a second call in one process is refused.
ORVANE_WRAP_EXPORT int coreclr_wrap_initialize(const char* exe_path, const char* domain_name, int count,
                                               const char** keys, const char** values);

// Stores in *out the entry point of a static [UnmanagedCallersOnly] method. 0 on success.
ORVANE_WRAP_EXPORT int coreclr_wrap_create_delegate(const char* assembly, const char* type, const char* method,
                                                    void** out);

// Shuts the runtime down; the status of the runtime's shutdown.
ORVANE_WRAP_EXPORT int coreclr_wrap_shutdown(void);

// Non-zero while the AppDomain exists.
ORVANE_WRAP_EXPORT int coreclr_wrap_is_domain_initialized(void);

#ifdef __cplusplus
}
#endif
