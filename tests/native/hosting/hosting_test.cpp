// End-to-end hosting: each scenario runs host_driver in a process of its own,
// since a host that cannot start ends its process and the runtime starts only
// once per process.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <regex>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "test_support.h"

using testsupport::TempDir;

namespace {

const std::string kDriver = ORVANE_TEST_HOST_DRIVER;
const std::string kRuntimeDir = ORVANE_TEST_RUNTIME_DIR;
const std::string kFixtureDir = ORVANE_TEST_FIXTURE_DIR;
const std::string kPartialFixtureDir = ORVANE_TEST_PARTIAL_FIXTURE_DIR;
const std::string kWrapName = "liborvane.embed.coreclrwrap.so";

struct DriverRun {
    bool exited = false;
    int exit_code = -1;
    int signal = 0;
    std::string out;
    std::string err;
};

using Env = std::vector<std::pair<std::string, std::string>>;

// Runs the driver with a clean hosting environment plus `env`.
DriverRun run_driver(const std::string& scenario, const std::string& netcore_dir, const std::string& assembly_dir,
                     const Env& env = {})
{
    TempDir io;
    const std::string out_path = io.sub("out");
    const std::string err_path = io.sub("err");
    pid_t pid = fork();
    if (pid == 0) {
        if (!freopen(out_path.c_str(), "w", stdout) || !freopen(err_path.c_str(), "w", stderr))
            _exit(127);
        for (const char* name :
             {"COREHOST_TRACE", "NETCORE_WRAPPER_NETCORE_DIR_orvane", "NETCORE_WRAPPER_ASSEMBLY_DIR_orvane"})
            unsetenv(name);
        for (const auto& [name, value] : env)
            setenv(name.c_str(), value.c_str(), 1);
        execl(kDriver.c_str(), kDriver.c_str(), scenario.c_str(), netcore_dir.c_str(), assembly_dir.c_str(),
              static_cast<char*>(nullptr));
        _exit(127);
    }
    DriverRun run;
    int status = 0;
    if (pid < 0 || waitpid(pid, &status, 0) != pid) {
        ADD_FAILURE() << "could not run " << kDriver;
        return run;
    }
    run.exited = WIFEXITED(status);
    run.exit_code = run.exited ? WEXITSTATUS(status) : -1;
    run.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    run.out = testsupport::read_file(out_path);
    run.err = testsupport::read_file(err_path);
    return run;
}

bool contains(const std::string& text, const std::string& part)
{
    return text.find(part) != std::string::npos;
}

// A value printed by the driver as "<key>=<value>\n".
std::string field(const std::string& out, const std::string& key)
{
    std::smatch match;
    if (std::regex_search(out, match, std::regex("(^|\n)" + key + "=([^\r\n]*)")))
        return match[2];
    return "<missing " + key + ">";
}

std::vector<std::string> split_colon(const std::string& text)
{
    std::vector<std::string> parts;
    std::stringstream in(text);
    for (std::string part; std::getline(in, part, ':');)
        parts.push_back(part);
    return parts;
}

#define EXPECT_CLEAN_EXIT(run)                                                                                         \
    do {                                                                                                               \
        EXPECT_TRUE((run).exited) << "signal " << (run).signal;                                                        \
        EXPECT_EQ((run).exit_code, 0);                                                                                 \
        EXPECT_EQ((run).err, "");                                                                                      \
    } while (0)

TEST(Hosting, CallsManagedCodeThroughBothHostsAndExitsCleanly)
{
    DriverRun run = run_driver("call", kRuntimeDir, kFixtureDir, {{"COREHOST_TRACE", "0"}});
    EXPECT_CLEAN_EXIT(run);
    // Tracing is off: the driver's own lines and nothing else.
    EXPECT_EQ(run.out, "add=42\n"
                       "tiered_pgo=0\n"
                       "type=HostFixture.Sample\n"
                       "null_type=[]\n"
                       "hash=8\n"
                       "equals_same=1 equals_other=0\n"
                       "text=Sample(7)\n"
                       "disposed=1\n"
                       "pending_tags=7\n"
                       "live=0\n"
                       "second_init=1\n"
                       "domain=1\n");
}

TEST(Hosting, TracesStartAndExitTimeShutdown)
{
    DriverRun run = run_driver("start", kRuntimeDir, kFixtureDir, {{"COREHOST_TRACE", "2"}});
    EXPECT_CLEAN_EXIT(run);
    const std::string& rt = kRuntimeDir;
    const std::string& fx = kFixtureDir;
    EXPECT_EQ(run.out, "CLR host tracing enabled\r\n"
                       "Initializing .NET Core host...\r\n"
                       "NETCORE_DIR: '" +
                           rt +
                           "'\r\n"
                           "PRODUCT_ASSEMBLY_DIR: '" +
                           fx +
                           "'\r\n"
                           "Loading: '" +
                           rt + "/" + kWrapName +
                           "'\r\n"
                           "Try get module...\r\n"
                           "No existed module...\r\n"
                           "wrap dll loaded\r\n"
                           "Loading2: '" +
                           rt +
                           "/libcoreclr.so'\r\n"
                           ".NET Core host ready.\r\n"
                           "Creating default AppDomain...\r\n"
                           "APP_PATH: '" +
                           fx +
                           "'\r\n"
                           "APP_NI_PATHS: '" +
                           fx +
                           "'\r\n"
                           "NATIVE_DLL_SEARCH_DIRECTORIES: '" +
                           fx +
                           "'\r\n"
                           "Default AppDomain ready.\r\n"
                           "ready=1\n"
                           "netcore_dir=" +
                           rt +
                           "\n"
                           "assembly_dirs=" +
                           fx +
                           "\n"
                           "add=3\n"
                           "Shutdowning .NET Core host...\r\n"
                           ".NET Core host is down: 0\r\n");
}

TEST(Hosting, FindsRuntimeAndAssembliesThroughEnvironment)
{
    TempDir dir;
    // Runtime folders: only netcore10.0 both parses and holds the wrapper.
    const std::string chosen = dir.mkdirs("runtimes/netcore10.0");
    ASSERT_EQ(symlink((kRuntimeDir + "/" + kWrapName).c_str(), (chosen + "/" + kWrapName).c_str()), 0);
    ASSERT_EQ(symlink((kRuntimeDir + "/libcoreclr.so").c_str(), (chosen + "/libcoreclr.so").c_str()), 0);
    dir.mkdirs("runtimes/netcore9.9");
    dir.mkdirs("runtimes/netcore10.1");  // higher, but without the wrapper
    dir.touch("runtimes/netcore99.0", "a file, not a runtime folder");
    const std::string misnamed = dir.mkdirs("runtimes/netcore10.0.1");
    ASSERT_EQ(symlink((kRuntimeDir + "/" + kWrapName).c_str(), (misnamed + "/" + kWrapName).c_str()), 0);
    // Assembly folders: the fixture in one child, another empty child, a stray file.
    const std::string fixture = dir.mkdirs("apps/fixture");
    dir.touch("apps/fixture/HostFixture.dll", testsupport::read_file(kFixtureDir + "/HostFixture.dll"));
    // The framework folder comes first in the trusted list, so this impostor
    // must lose to the real System.Runtime or nothing could be bound.
    dir.touch("apps/fixture/System.Runtime.dll", "not an assembly");
    const std::string empty = dir.mkdirs("apps/empty");
    dir.touch("apps/notes.txt");

    DriverRun run = run_driver("start", "-", "-",
                               {{"COREHOST_TRACE", "1"},
                                {"NETCORE_WRAPPER_NETCORE_DIR_orvane", dir.sub("runtimes")},
                                {"NETCORE_WRAPPER_ASSEMBLY_DIR_orvane", dir.sub("apps")}});
    EXPECT_CLEAN_EXIT(run);
    EXPECT_EQ(field(run.out, "ready"), "1");
    EXPECT_EQ(field(run.out, "netcore_dir"), chosen);
    EXPECT_TRUE(contains(run.out, "NETCORE_DIR: '" + chosen + "'\r\n"));
    // Child folders in directory order, then the runtime folder.
    std::vector<std::string> folders = split_colon(field(run.out, "assembly_dirs"));
    ASSERT_EQ(folders.size(), 3u) << field(run.out, "assembly_dirs");
    EXPECT_EQ(folders.back(), chosen);
    std::sort(folders.begin(), folders.end() - 1);
    EXPECT_EQ(folders[0], empty);
    EXPECT_EQ(folders[1], fixture);
    EXPECT_EQ(field(run.out, "add"), "3");
    EXPECT_TRUE(contains(run.out, ".NET Core host is down: 0\r\n"));
}

TEST(Hosting, BindingFailuresCarryTheMissingMethodMessage)
{
    DriverRun run = run_driver("missing-method", kRuntimeDir, kFixtureDir);
    EXPECT_CLEAN_EXIT(run);
    const std::string status = "\\(error=(-?[1-9][0-9]*)\\)$";
    std::smatch match;
    const std::string missing = field(run.out, "missing");
    EXPECT_TRUE(std::regex_match(missing, match,
                                 std::regex("While initializing the host for the 'HostFixture\\.Entry "
                                            "\\(Assembly=HostFixture\\)' type, an error occurred - Method "
                                            "'NoSuchMethod' not found " +
                                            status)))
        << missing;
    // A later failure replaces the stored message; a later success keeps it.
    EXPECT_TRUE(contains(field(run.out, "replaced"), "Method 'AlsoMissing' not found (error="));
    EXPECT_EQ(field(run.out, "error_kept"), "1");
    // The exchange host stops at its first entry; the object host takes its assembly name.
    const std::string exchange = field(run.out, "exchange");
    EXPECT_TRUE(
        std::regex_match(exchange, std::regex("While initializing the host for the 'Orvane\\.WrpGen\\.Interop\\."
                                              "ExchangeHost \\(Assembly=NoSuchAssembly\\)' type, an error occurred "
                                              "- Method 'GetTypeName' not found " +
                                              status)))
        << exchange;
    EXPECT_TRUE(contains(field(run.out, "object"),
                         "'Orvane.WrpGen.Interop.ObjectHost (Assembly=NoSuchAssembly)' type, an error occurred - "
                         "Method 'InstanceToString' not found"));
}

TEST(Hosting, WrapperLoadedByAnotherModuleWithoutDomainIsNotReady)
{
    DriverRun run = run_driver("preloaded-no-domain", kRuntimeDir, kFixtureDir, {{"COREHOST_TRACE", "1"}});
    EXPECT_CLEAN_EXIT(run);
    EXPECT_TRUE(contains(run.out, "Using existed module...\r\n"));
    EXPECT_FALSE(contains(run.out, "Creating default AppDomain"));
    EXPECT_FALSE(contains(run.out, "Loading2"));
    EXPECT_EQ(field(run.out, "ready"), "0");
    EXPECT_EQ(field(run.out, "exchange_bound"), "0");
    EXPECT_EQ(field(run.out, "exchange"), "CLR Host is not ready");
    EXPECT_EQ(field(run.out, "object_valid"), "0");
    EXPECT_EQ(field(run.out, "object"), "CLR Host is not ready");
    EXPECT_FALSE(contains(run.out, "Shutdowning"));
}

TEST(Hosting, WrapperLoadedByAnotherModuleSharesItsDomainAndNeverShutsDown)
{
    DriverRun run = run_driver("preloaded-with-domain", kRuntimeDir, kFixtureDir, {{"COREHOST_TRACE", "1"}});
    EXPECT_CLEAN_EXIT(run);
    EXPECT_TRUE(contains(run.out, "Using existed module...\r\n"));
    EXPECT_FALSE(contains(run.out, "Creating default AppDomain"));
    EXPECT_EQ(field(run.out, "ready"), "1");
    EXPECT_EQ(field(run.out, "exchange_bound"), "1");
    EXPECT_EQ(field(run.out, "object_valid"), "1");
    EXPECT_FALSE(contains(run.out, "Shutdowning"));
}

TEST(Hosting, HostsBindInDeclaredOrderAndStopAtFirstGap)
{
    // This fixture lacks both string-builder setters and ObjectHost.Dispose.
    DriverRun run = run_driver("bind-hosts", kRuntimeDir, kPartialFixtureDir);
    EXPECT_CLEAN_EXIT(run);
    EXPECT_EQ(field(run.out, "exchange_bound"), "0");
    EXPECT_TRUE(contains(field(run.out, "exchange"), "Method 'SetPyUnraisableStrBuilderCallback' not found"))
        << run.out;
    EXPECT_EQ(field(run.out, "object_valid"), "0");
    EXPECT_TRUE(contains(field(run.out, "object"), "Method 'Dispose' not found")) << run.out;
}

TEST(Hosting, DebugUsesDebugWrapperAndDebugAssemblyFolders)
{
    TempDir dir;
    const std::string chosen = dir.mkdirs("runtimes/netcore10.0");
    const std::string debug_wrap = "liborvane.embed.coreclrwrap.debug.so";
    ASSERT_EQ(symlink((kRuntimeDir + "/" + kWrapName).c_str(), (chosen + "/" + debug_wrap).c_str()), 0);
    ASSERT_EQ(symlink((kRuntimeDir + "/libcoreclr.so").c_str(), (chosen + "/libcoreclr.so").c_str()), 0);
    // Higher, but holds only the release build.
    const std::string release_only = dir.mkdirs("runtimes/netcore10.5");
    ASSERT_EQ(symlink((kRuntimeDir + "/" + kWrapName).c_str(), (release_only + "/" + kWrapName).c_str()), 0);
    const std::string fixture_debug = dir.mkdirs("apps/fixture/debug");
    dir.touch("apps/fixture/debug/HostFixture.dll", testsupport::read_file(kFixtureDir + "/HostFixture.dll"));
    const std::string plain = dir.mkdirs("apps/plain");

    DriverRun run = run_driver("start-debug", "-", "-",
                               {{"COREHOST_TRACE", "2"},
                                {"NETCORE_WRAPPER_NETCORE_DIR_orvane", dir.sub("runtimes")},
                                {"NETCORE_WRAPPER_ASSEMBLY_DIR_orvane", dir.sub("apps")}});
    EXPECT_CLEAN_EXIT(run);
    EXPECT_EQ(field(run.out, "netcore_dir"), chosen);
    EXPECT_TRUE(contains(run.out, "Loading: '" + chosen + "/" + debug_wrap + "'\r\n"));
    std::vector<std::string> folders = split_colon(field(run.out, "assembly_dirs"));
    std::sort(folders.begin(), folders.end());
    EXPECT_EQ(folders, (std::vector<std::string>{fixture_debug, plain, chosen}));
    EXPECT_EQ(field(run.out, "add"), "3");
}

TEST(Hosting, UnsetDirectoriesFallBackToTheExecutableFolder)
{
    DriverRun run = run_driver("start", "-", "-", {{"COREHOST_TRACE", "1"}});
    const std::string exe_dir = kDriver.substr(0, kDriver.rfind('/'));
    // The driver's folder holds no wrapper, so the start fails after the
    // host has said where it looked.
    EXPECT_TRUE(contains(run.out, "NETCORE_DIR: '" + exe_dir + "'\r\n")) << run.out;
    // The netcore directory equals the default one and is listed once.
    EXPECT_TRUE(contains(run.out, "PRODUCT_ASSEMBLY_DIR: '" + exe_dir + "'\r\n")) << run.out;
    EXPECT_TRUE(contains(run.err, "DynamicLibrary::load"));
}

// A host that cannot start throws out of HostEnvironment::instance, which ends the process.
void expect_start_failure(const DriverRun& run, const std::string& message)
{
    EXPECT_FALSE(run.exited && run.exit_code == 0);
    EXPECT_EQ(run.signal, SIGABRT);
    EXPECT_TRUE(contains(run.err, message)) << run.err;
    EXPECT_FALSE(contains(run.out, "ready="));
}

TEST(Hosting, MissingWrapperEndsTheProcess)
{
    TempDir dir;
    DriverRun run = run_driver("start", dir.path(), kFixtureDir, {{"COREHOST_TRACE", "2"}});
    expect_start_failure(run, "DynamicLibrary::load");
    EXPECT_TRUE(contains(run.out, "No module...\r\nNo: '" + dir.path() + "/" + kWrapName + "'\r\n"));
}

TEST(Hosting, UnloadableRuntimeEndsTheProcess)
{
    TempDir dir;
    ASSERT_EQ(symlink((kRuntimeDir + "/" + kWrapName).c_str(), dir.sub(kWrapName).c_str()), 0);
    ASSERT_EQ(symlink(dir.sub("gone/libcoreclr.so").c_str(), dir.sub("libcoreclr.so").c_str()), 0);
    expect_start_failure(run_driver("start", dir.path(), kFixtureDir), "init coreclr wap");
}

TEST(Hosting, RuntimeWithoutItsFrameworkFailsWithStatus)
{
    // A copy of libcoreclr.so alone: the framework folder holds no core library.
    TempDir dir;
    ASSERT_EQ(symlink((kRuntimeDir + "/" + kWrapName).c_str(), dir.sub(kWrapName).c_str()), 0);
    dir.touch("libcoreclr.so", testsupport::read_file(kRuntimeDir + "/libcoreclr.so"));
    expect_start_failure(run_driver("start", dir.path(), kFixtureDir), "coreclr_initialize failed - status:0x");
}

TEST(WrapperLibrary, ExportsOnlyItsFiveEntryPoints)
{
    void* wrapper = dlopen((kRuntimeDir + "/" + kWrapName).c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(wrapper, nullptr) << dlerror();
    for (const char* name : {"coreclr_wrap_load", "coreclr_wrap_initialize", "coreclr_wrap_create_delegate",
                             "coreclr_wrap_shutdown", "coreclr_wrap_is_domain_initialized"})
        EXPECT_NE(dlsym(wrapper, name), nullptr) << name;
    EXPECT_EQ(dlsym(wrapper, "_ZN10coreclrwrap5stateEv"), nullptr);
    EXPECT_EQ(dlsym(wrapper, "_ZN10coreclrwrap26collect_trusted_assembliesERKSt6vectorINSt7__cxx1112basic_"
                             "stringIcSt11char_traitsIcESaIcEEESaIS6_EE"),
              nullptr);

    // Nothing loaded yet in this process: initialising or binding is refused.
    auto initialize = reinterpret_cast<int (*)(const char*, const char*, int, const char**, const char**)>(
        dlsym(wrapper, "coreclr_wrap_initialize"));
    auto create = reinterpret_cast<int (*)(const char*, const char*, const char*, void**)>(
        dlsym(wrapper, "coreclr_wrap_create_delegate"));
    auto is_initialized = reinterpret_cast<int (*)()>(dlsym(wrapper, "coreclr_wrap_is_domain_initialized"));
    auto load = reinterpret_cast<int (*)(const char*)>(dlsym(wrapper, "coreclr_wrap_load"));
    void* out = nullptr;
    EXPECT_NE(create("a", "b", "c", &out), 0);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(is_initialized(), 0);
    EXPECT_EQ(load(nullptr), 0);
    EXPECT_NE(initialize("/proc/self/exe", "D", 0, nullptr, nullptr), 0);
    dlclose(wrapper);
}

}  // namespace
