#include "host_environment.h"

#include <unistd.h>

#include <stdexcept>

#include "host_exception.h"
#include "pal.h"
#include "trace.h"

extern "C" {
const char* HostNotReady = "CLR Host is not ready";
const char* OrvaneDomainName = "OrvaneCLRHostDomain";
}

namespace {

constexpr char kWrapName[] = "liborvane.embed.coreclrwrap.so";
constexpr char kWrapDebugName[] = "liborvane.embed.coreclrwrap.debug.so";
constexpr char kCoreclrName[] = "libcoreclr.so";
constexpr char kNetcoreDirVariable[] = "NETCORE_WRAPPER_NETCORE_DIR";
constexpr char kAssemblyDirVariable[] = "NETCORE_WRAPPER_ASSEMBLY_DIR";

// Looks a wrapper entry point up with the function type of its slot.
template <typename Fn>
void bind_symbol(const DynamicLibrary& library, const char* name, Fn& slot)
{
    slot = reinterpret_cast<Fn>(library.get_symbol(name));
}

// "<prefix>_<company>"; empty when there is no company word to name the variable.
std::string variable_name(const char* prefix, const char* company)
{
    if (!company || !*company)
        return std::string();
    return std::string(prefix) + "_" + company;
}

// The runtime resolves assembly and library paths from the folder it was
// given, not from the working directory, so a relative folder named by an
// environment variable is made absolute here.
std::string absolute_from_cwd(const std::string& path)
{
    if (!pal::path_is_relative(path))
        return path;
    char cwd[4096];
    if (!getcwd(cwd, sizeof(cwd)))
        return path;
    return pal::build_path(std::string(cwd), path);
}

}  // namespace

HostEnvironment& HostEnvironment::instance(const char* runtime_version, bool debug, const char* company,
                                           const char* product, const char* netcore_dir, const char* assembly_dir)
{
    // Thread-safe construction; the destructor runs among the exit handlers.
    static HostEnvironment host;
    if (host.wrapper_.handle())
        return host;
    trace::initialize();
    host.initialize(runtime_version, debug, company, product, netcore_dir, assembly_dir);
    if (host.wrapper_.is_first_load())
        host.create_default_app_domain();
    else
        // Another module of this process loaded the wrapper first; its domain is ours.
        host.ready_ = host.wrap_is_domain_initialized_() != 0;
    return host;
}

HostEnvironment::~HostEnvironment()
{
    // Exit-time destructor: an exception escaping shutdown terminates the process.
    shutdown_default_app_domain();
}

const char* HostEnvironment::get_libcoreclr_wrap_name() const
{
    return debug_ ? kWrapDebugName : kWrapName;
}

bool HostEnvironment::initialize(const char* /*runtime_version*/, bool debug, const char* company,
                                 const char* /*product*/, const char* netcore_dir, const char* assembly_dir)
{
    trace::info("Initializing .NET Core host...");
    entry_point_path_ = pal::get_entry_point_exe();

    debug_ = debug;
    const std::string wrap_name = get_libcoreclr_wrap_name();
    const std::string default_dir = pal::path_get_directory(entry_point_path_);

    std::string value;
    if (netcore_dir) {
        netcore_dir_ = netcore_dir;
    } else {
        std::string variable = variable_name(kNetcoreDirVariable, company);
        std::string found;
        if (!variable.empty() && pal::getenv(variable.c_str(), value) &&
            pal::get_major_netcore_path(absolute_from_cwd(value), wrap_name, found))
            netcore_dir_ = found;
        else
            netcore_dir_ = default_dir;
    }
    trace::info("NETCORE_DIR: '%s'", netcore_dir_.c_str());

    if (assembly_dir) {
        product_assembly_dirs_ = assembly_dir;
    } else {
        std::vector<std::string> folders;
        std::string variable = variable_name(kAssemblyDirVariable, company);
        if (!variable.empty() && pal::getenv(variable.c_str(), value))
            pal::get_app_folders(absolute_from_cwd(value), debug_, folders);
        else
            folders.push_back(default_dir);
        complete_app_folders(folders);
        product_assembly_dirs_ = pal::join(folders, ':');
    }
    trace::info("PRODUCT_ASSEMBLY_DIR: '%s'", product_assembly_dirs_.c_str());

    const std::string wrap_path = pal::build_path(netcore_dir_, wrap_name);
    trace::verbose("Loading: '%s'", wrap_path.c_str());
    wrapper_ = DynamicLibrary::load(wrap_path);
    trace::info("wrap dll loaded");

    bind_symbol(wrapper_, "coreclr_wrap_initialize", wrap_initialize_);
    bind_symbol(wrapper_, "coreclr_wrap_create_delegate", wrap_create_delegate_);
    bind_symbol(wrapper_, "coreclr_wrap_shutdown", wrap_shutdown_);
    bind_symbol(wrapper_, "coreclr_wrap_is_domain_initialized", wrap_is_domain_initialized_);

    if (wrapper_.is_first_load()) {
        wrap_load_fn wrap_load = nullptr;
        bind_symbol(wrapper_, "coreclr_wrap_load", wrap_load);
        const std::string coreclr_path = pal::build_path(netcore_dir_, kCoreclrName);
        trace::verbose("Loading2: '%s'", coreclr_path.c_str());
        if (wrap_load(coreclr_path.c_str()) == 0)
            throw std::runtime_error("init coreclr wap");
    }
    trace::info(".NET Core host ready.");
    return true;
}

void HostEnvironment::complete_app_folders(std::vector<std::string>& folders) const
{
    for (const std::string& folder : folders)
        if (folder == netcore_dir_)
            return;
    folders.push_back(netcore_dir_);
}

void HostEnvironment::create_default_app_domain()
{
    trace::info("Creating default AppDomain...");
    const std::string app_paths = product_assembly_dirs_;
    const std::string app_ni_paths = app_paths;
    const std::string native_dirs = app_paths;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat"
    // The 'h' length modifier is accepted (and ignored) for %s by glibc.
    trace::verbose("APP_PATH: '%hs'", app_paths.c_str());
    trace::verbose("APP_NI_PATHS: '%hs'", app_ni_paths.c_str());
    trace::verbose("NATIVE_DLL_SEARCH_DIRECTORIES: '%hs'", native_dirs.c_str());
#pragma GCC diagnostic pop

    const char* keys[] = {
        "TRUSTED_PLATFORM_ASSEMBLIES", "APP_PATHS", "APP_NI_PATHS", "NATIVE_DLL_SEARCH_DIRECTORIES",
        "AppDomainCompatSwitch",
    };
    const char* values[] = {
        "",  // the wrapper library fills in the trusted assemblies
        app_paths.c_str(),
        app_ni_paths.c_str(),
        native_dirs.c_str(),
        "UseLatestBehaviorWhenTFMNotSpecified",
    };
    constexpr int count = static_cast<int>(sizeof(keys) / sizeof(keys[0]));
    int status = wrap_initialize_(entry_point_path_.c_str(), OrvaneDomainName, count, keys, values);
    if (status != 0)
        throw HostException(static_cast<unsigned int>(status),
                            pal::to_error_string_with_status_code("coreclr_initialize failed - status:", status, ""));
    ready_ = true;
    trace::info("Default AppDomain ready.");
}

void HostEnvironment::shutdown_default_app_domain()
{
    if (!wrap_shutdown_ || !ready_)
        return;
    if (wrapper_.handle() && wrapper_.is_first_load()) {
        trace::info("Shutdowning .NET Core host...");
        int status = wrap_shutdown_();
        trace::info(".NET Core host is down: %d", status);
    }
    ready_ = false;
}

int HostEnvironment::try_create_delegate(const char* assembly, const char* type, const char* method, void** out) const
{
    if (!wrap_create_delegate_)
        return -1;
    return wrap_create_delegate_(assembly, type, method, out);
}
