// Starts the host in a process of its own and exercises one scenario; the
// hosting tests run it and check its exit status and output. Usage:
//   host_driver <scenario> <netcore dir | -> <assembly dir | ->
// Scenarios: call, missing-method, start, start-debug (debug wrapper build and
// folders), bind-hosts, preloaded-no-domain, preloaded-with-domain.
// "-" leaves the directory to the environment variables. A failed check is
// printed on standard error and ends the process with status 1.
#include <dlfcn.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "hosting/hosting.h"
#include "marshal/records.h"

namespace {

constexpr char kAssembly[] = "HostFixture";
constexpr char kEntryType[] = "HostFixture.Entry";

#define CHECK(cond)                                                                                                    \
    do {                                                                                                               \
        if (!(cond)) {                                                                                                 \
            std::fprintf(stderr, "check failed at line %d: %s\n", __LINE__, #cond);                                    \
            std::exit(1);                                                                                              \
        }                                                                                                              \
    } while (0)

const char* dir_arg(const char* arg)
{
    return std::strcmp(arg, "-") == 0 ? nullptr : arg;
}

HostEnvironment& start(const char* netcore_dir, const char* assembly_dir, bool debug)
{
    return HostEnvironment::instance("10.0", debug, "orvane", "folaro", netcore_dir, assembly_dir);
}

template <typename Fn>
Fn bind_entry(const HostEnvironment& host, const char* method)
{
    void* entry = nullptr;
    std::string error;
    if (!fn_bind_host_method(host, kAssembly, kEntryType, method, &entry, error)) {
        std::fprintf(stderr, "bind %s: %s\n", method, error.c_str());
        std::exit(1);
    }
    return reinterpret_cast<Fn>(entry);
}

std::string narrow(const std::u16string& text)
{
    std::string out;
    for (char16_t c : text)
        out += c < 0x80 ? static_cast<char>(c) : '?';
    return out;
}

void fake_exception_callback() {}

// Binds and calls fixture entries through both hand-written hosts.
int run_call(HostEnvironment& host)
{
    CHECK(host.is_ready());
    auto add = bind_entry<int32_t (*)(int32_t, int32_t)>(host, "Add");
    std::printf("add=%d\n", add(2, 40));
    auto pgo = bind_entry<int32_t (*)()>(host, "TieredPgoSetting");
    std::printf("tiered_pgo=%d\n", pgo());

    ExchangeHost* exchange = ExchangeHost::get_instance();
    CHECK(exchange->initialize(kAssembly));
    CHECK(exchange->error_msg().empty());
    CHECK(std::strcmp(exchange->get_assembly_name(), kAssembly) == 0);
    ObjectHost* objects = ObjectHost::get_instance();
    CHECK(!objects->is_not_valid());

    auto new_sample = bind_entry<void* (*)(int32_t)>(host, "NewSample");
    auto live_count = bind_entry<int32_t (*)()>(host, "LiveHandleCount");
    auto is_disposed = bind_entry<uint8_t (*)(void*)>(host, "IsDisposed");
    auto stored_callback = bind_entry<void* (*)()>(host, "StoredExceptionCallback");
    auto pending_seen = bind_entry<int32_t (*)()>(host, "PendingArgsSeen");

    void* seven = new_sample(7);
    void* other_seven = new_sample(7);
    void* eight = new_sample(8);
    std::printf("type=%s\n", narrow(exchange->get_type_name(seven)).c_str());
    std::printf("null_type=[%s]\n", narrow(exchange->get_type_name(nullptr)).c_str());
    std::printf("hash=%d\n", objects->get_hash_code(eight));
    std::printf("equals_same=%d equals_other=%d\n", objects->equals(seven, other_seven), objects->equals(seven, eight));

    void* text = nullptr;
    int32_t status = objects->to_string(seven, &text);
    CHECK(status == 1 && text);
    std::printf("text=%s\n", narrow(static_cast<const char16_t*>(text)).c_str());
    std::free(text);

    objects->dispose(eight);
    std::printf("disposed=%d\n", is_disposed(eight));

    exchange->set_exception_callback(reinterpret_cast<void*>(&fake_exception_callback));
    CHECK(stored_callback() == reinterpret_cast<void*>(&fake_exception_callback));

    VariantArg args[2] = {{3, nullptr}, {4, nullptr}};
    exchange->free_pending_args(args, 2);
    std::printf("pending_tags=%d\n", pending_seen());

    exchange->free_instance(seven);
    exchange->free_instance(other_seven);
    exchange->free_instance(eight);
    std::printf("live=%d\n", live_count());

    // The runtime allows one AppDomain per process: the wrapper refuses a second.
    auto wrap_initialize = reinterpret_cast<int (*)(const char*, const char*, int, const char**, const char**)>(
        dlsym(RTLD_DEFAULT, "coreclr_wrap_initialize"));
    auto wrap_is_domain_initialized =
        reinterpret_cast<int (*)()>(dlsym(RTLD_DEFAULT, "coreclr_wrap_is_domain_initialized"));
    CHECK(wrap_initialize && wrap_is_domain_initialized);
    std::printf("second_init=%d\n", wrap_initialize("/proc/self/exe", "Again", 0, nullptr, nullptr) != 0);
    std::printf("domain=%d\n", wrap_is_domain_initialized());
    return 0;
}

// Reports binding failures: a missing entry, then a missing assembly.
int run_missing_method(HostEnvironment& host)
{
    CHECK(host.is_ready());
    void* entry = nullptr;
    std::string error;
    CHECK(!fn_bind_host_method(host, kAssembly, kEntryType, "NoSuchMethod", &entry, error));
    std::printf("missing=%s\n", error.c_str());
    CHECK(!fn_bind_host_method(host, kAssembly, kEntryType, "AlsoMissing", &entry, error));
    std::printf("replaced=%s\n", error.c_str());
    CHECK(fn_bind_host_method(host, kAssembly, kEntryType, "Add", &entry, error));
    std::printf("error_kept=%d\n", !error.empty());

    ExchangeHost* exchange = ExchangeHost::get_instance();
    CHECK(!exchange->initialize("NoSuchAssembly"));
    std::printf("exchange=%s\n", exchange->error_msg().c_str());
    ObjectHost* objects = ObjectHost::get_instance();
    CHECK(objects->is_not_valid());
    std::printf("object=%s\n", objects->error_msg().c_str());
    return 0;
}

// Prints where the host looked, then calls one entry.
int run_start(HostEnvironment& host)
{
    std::printf("ready=%d\n", host.is_ready());
    std::printf("netcore_dir=%s\n", host.netcore_dir().c_str());
    std::printf("assembly_dirs=%s\n", host.product_assembly_dirs().c_str());
    if (host.is_ready()) {
        auto add = bind_entry<int32_t (*)(int32_t, int32_t)>(host, "Add");
        std::printf("add=%d\n", add(1, 2));
    }
    return 0;
}

// Plays another extension module of the family that loaded the wrapper first
// (and, with `make_domain`, created the AppDomain) before this host starts.
void preload_wrapper(const char* netcore_dir, const char* assembly_dir, bool make_domain)
{
    std::string path = std::string(netcore_dir) + "/liborvane.embed.coreclrwrap.so";
    void* wrapper = dlopen(path.c_str(), RTLD_NOW | RTLD_GLOBAL);
    CHECK(wrapper);
    if (!make_domain)
        return;
    auto load = reinterpret_cast<int (*)(const char*)>(dlsym(wrapper, "coreclr_wrap_load"));
    auto initialize = reinterpret_cast<int (*)(const char*, const char*, int, const char**, const char**)>(
        dlsym(wrapper, "coreclr_wrap_initialize"));
    CHECK(load && initialize);
    std::string coreclr = std::string(netcore_dir) + "/libcoreclr.so";
    CHECK(load(coreclr.c_str()) != 0);
    const char* keys[] = {"TRUSTED_PLATFORM_ASSEMBLIES", "APP_PATHS"};
    const char* values[] = {"", assembly_dir};
    CHECK(initialize("/proc/self/exe", "OtherModuleDomain", 2, keys, values) == 0);
}

// Binds both hand-written hosts and reports how that went.
int run_preloaded(HostEnvironment& host)
{
    std::printf("ready=%d\n", host.is_ready());
    ExchangeHost* exchange = ExchangeHost::get_instance();
    bool bound = exchange->initialize(kAssembly);
    std::printf("exchange_bound=%d\n", bound);
    if (!bound)
        std::printf("exchange=%s\n", exchange->error_msg().c_str());
    ObjectHost* objects = ObjectHost::get_instance();
    std::printf("object_valid=%d\n", !objects->is_not_valid());
    if (objects->is_not_valid())
        std::printf("object=%s\n", objects->error_msg().c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    // Keep driver output and trace lines in the order they were written.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    if (argc != 4) {
        std::fprintf(stderr, "usage: %s <scenario> <netcore dir|-> <assembly dir|->\n", argv[0]);
        return 2;
    }
    const std::string scenario = argv[1];
    const char* netcore_dir = dir_arg(argv[2]);
    const char* assembly_dir = dir_arg(argv[3]);

    if (scenario == "preloaded-no-domain" || scenario == "preloaded-with-domain") {
        CHECK(netcore_dir && assembly_dir);
        preload_wrapper(netcore_dir, assembly_dir, scenario == "preloaded-with-domain");
    }
    HostEnvironment& host = start(netcore_dir, assembly_dir, scenario == "start-debug");

    if (scenario == "call")
        return run_call(host);
    if (scenario == "missing-method")
        return run_missing_method(host);
    if (scenario == "start" || scenario == "start-debug")
        return run_start(host);
    if (scenario == "preloaded-no-domain" || scenario == "preloaded-with-domain" || scenario == "bind-hosts")
        return run_preloaded(host);
    std::fprintf(stderr, "unknown scenario '%s'\n", scenario.c_str());
    return 2;
}
