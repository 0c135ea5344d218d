// Environment, path and text helpers of the platform layer.
#include <gtest/gtest.h>

#include <cstdlib>

#include "hosting/host_environment.h"
#include "hosting/pal.h"
#include "hosting/proxy_binding.h"

namespace {

const char kVariable[] = "ORVANE_NATIVE_TEST_VARIABLE";

class GetEnv : public ::testing::Test {
protected:
    void TearDown() override { unsetenv(kVariable); }
};

TEST_F(GetEnv, UnsetClearsValueAndFails)
{
    unsetenv(kVariable);
    std::string value = "stale";
    EXPECT_FALSE(pal::getenv(kVariable, value));
    EXPECT_EQ(value, "");
}

TEST_F(GetEnv, EmptyIsSetButFails)
{
    setenv(kVariable, "", 1);
    std::string value = "stale";
    EXPECT_FALSE(pal::getenv(kVariable, value));
    EXPECT_EQ(value, "");
}

TEST_F(GetEnv, TextIsReturned)
{
    setenv(kVariable, "/opt/runtime", 1);
    std::string value;
    EXPECT_TRUE(pal::getenv(kVariable, value));
    EXPECT_EQ(value, "/opt/runtime");
}

TEST(Join, KeepsOrderAndOptionallyDropsRepeats)
{
    const std::vector<std::string> items{"/a", "/b", "/a", "", "/b", ""};
    EXPECT_EQ(pal::join(items, ':'), "/a:/b:/a::/b:");
    EXPECT_EQ(pal::join_unique(items, ':'), "/a:/b:");
    EXPECT_EQ(pal::join(items, ':', true), pal::join_unique(items, ':'));
    EXPECT_EQ(pal::join({}, ':'), "");
    EXPECT_EQ(pal::join({"only"}, ';'), "only");
}

TEST(PathHelpers, DirectoryIsTextBeforeLastSlash)
{
    EXPECT_EQ(pal::path_get_directory("/usr/bin/python3.9"), "/usr/bin");
    EXPECT_EQ(pal::path_get_directory("/x"), "");
    EXPECT_EQ(pal::path_get_directory("x"), "");
    EXPECT_EQ(pal::path_get_directory("a/b/"), "a/b");
}

TEST(PathHelpers, RelativeMeansNotStartingWithSlash)
{
    EXPECT_TRUE(pal::path_is_relative(""));
    EXPECT_TRUE(pal::path_is_relative("a/b"));
    EXPECT_TRUE(pal::path_is_relative("./a"));
    EXPECT_FALSE(pal::path_is_relative("/a"));
}

TEST(PathHelpers, AppendInsertsOneSlash)
{
    std::string path = "/r";
    pal::path_append(path, "a");
    EXPECT_EQ(path, "/r/a");
    path = "/r/";
    pal::path_append(path, "a");
    EXPECT_EQ(path, "/r/a");
    path = "";
    pal::path_append(path, "a");
    EXPECT_EQ(path, "/a");
    EXPECT_EQ(pal::build_path("/r", "netcore10.0", "libcoreclr.so"), "/r/netcore10.0/libcoreclr.so");
    EXPECT_EQ(pal::build_path("/r/", "x"), "/r/x");
    EXPECT_EQ(pal::build_path("/r"), "/r");
}

TEST(PathHelpers, JoinToFullPathKeepsAbsoluteNames)
{
    EXPECT_EQ(pal::join_to_full_path("/base", {"a", "/abs/b", "c/d"}),
              (std::vector<std::string>{"/base/a", "/abs/b", "/base/c/d"}));
}

TEST(PathHelpers, EntryPointIsThisExecutable)
{
    std::string exe = pal::get_entry_point_exe();
    EXPECT_FALSE(pal::path_is_relative(exe));
    EXPECT_EQ(exe.substr(exe.rfind('/') + 1), "native_tests");
}

TEST(ErrorText, StatusCodeIsLowerCaseHexWithoutPadding)
{
    EXPECT_EQ(pal::to_error_string_with_status_code("coreclr_initialize failed - status:", 26, ""),
              "coreclr_initialize failed - status:0x1a");
    EXPECT_EQ(pal::to_error_string_with_status_code("s:", static_cast<int>(0x80131513u), " (x)"), "s:0x80131513 (x)");
    EXPECT_EQ(pal::to_error_string_with_status_code("", 0, ""), "0x0");
}

TEST(ProxyBinding, MissingMethodMessage)
{
    EXPECT_EQ(missing_method_error_message("WrpInterop.Orvane.Folaro", "Orvane.WrpGen.Interop.ExchangeHost",
                                           "FreeInstance", -2146233069),
              "While initializing the host for the 'Orvane.WrpGen.Interop.ExchangeHost "
              "(Assembly=WrpInterop.Orvane.Folaro)' type, an error occurred - Method 'FreeInstance' not found "
              "(error=-2146233069)");
}

TEST(ProxyBinding, SharedTexts)
{
    EXPECT_STREQ(HostNotReady, "CLR Host is not ready");
    EXPECT_STREQ(OrvaneDomainName, "OrvaneCLRHostDomain");
}

}  // namespace
