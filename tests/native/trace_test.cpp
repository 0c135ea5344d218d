// Host tracing, host exceptions and the dynamic library owner.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "hosting/dynamic_library.h"
#include "hosting/host_exception.h"
#include "hosting/trace.h"
#include "test_support.h"

using testsupport::StreamCapture;

namespace {

// Every test starts and ends with tracing off and COREHOST_TRACE unset.
class Trace : public ::testing::Test {
protected:
    void SetUp() override
    {
        unsetenv("COREHOST_TRACE");
        trace::disable();
    }
    void TearDown() override { SetUp(); }

    // Output of trace::initialize() with COREHOST_TRACE set to `value`.
    std::string initialize_with(const char* value)
    {
        setenv("COREHOST_TRACE", value, 1);
        StreamCapture out(stdout);
        trace::initialize();
        return out.release();
    }
};

TEST_F(Trace, NumbersOfOneOrMoreEnable)
{
    for (const char* value : {"1", "2", "10"}) {
        trace::disable();
        EXPECT_EQ(initialize_with(value), "CLR host tracing enabled\r\n") << value;
        EXPECT_TRUE(trace::is_enabled()) << value;
    }
}

TEST_F(Trace, OtherValuesLeaveTracingOff)
{
    for (const char* value : {"0", "-1", "abc", ""}) {
        EXPECT_EQ(initialize_with(value), "") << value;
        EXPECT_FALSE(trace::is_enabled()) << value;
    }
    unsetenv("COREHOST_TRACE");
    trace::initialize();
    EXPECT_FALSE(trace::is_enabled());
}

TEST_F(Trace, InitializeIsIdleOnceEnabled)
{
    trace::enable();
    EXPECT_EQ(initialize_with("0"), "");
    EXPECT_TRUE(trace::is_enabled());
}

TEST_F(Trace, DisabledPrintsOnlyErrorsToStandardError)
{
    StreamCapture out(stdout);
    StreamCapture err(stderr);
    trace::warning("w %d", 1);
    trace::info("i %s", "x");
    trace::verbose("v");
    trace::error("failed: %s (%d)", "boom", 7);
    EXPECT_EQ(err.release(), "failed: boom (7)\r\n");
    EXPECT_EQ(out.release(), "");
}

TEST_F(Trace, EnabledPrintsEveryLevelWithCrLf)
{
    trace::enable();
    StreamCapture out(stdout);
    StreamCapture err(stderr);
    trace::warning("w %d", 1);
    trace::info("NETCORE_DIR: '%s'", "/opt/rt");
    trace::verbose("v");
    trace::error("e");
    EXPECT_EQ(out.release(), "w 1\r\nNETCORE_DIR: '/opt/rt'\r\nv\r\n");
    EXPECT_EQ(err.release(), "e\r\n");
}

TEST(HostExceptionText, CodeAppendsSystemText)
{
    const std::string message = "coreclr_initialize failed - status:0x1a";
    HostException e(26u, message);
    EXPECT_EQ(std::string(e.what()), message + ": " + std::strerror(26));
    EXPECT_EQ(e.error_code(), 26u);
    EXPECT_EQ(e.what(), e.what());  // built once, then cached
}

TEST(HostExceptionText, ConstructorsAgreeAndZeroMeansNoCode)
{
    EXPECT_STREQ(BaseException("m", 2u).what(), BaseException(2u, "m").what());
    EXPECT_STREQ(BaseException("only message").what(), "only message");
    EXPECT_EQ(BaseException("only message").error_code(), 0u);
    EXPECT_STREQ(BaseException("m", 0u).what(), "m");
    EXPECT_EQ(std::string(HostException(2u).what()), std::string(": ") + std::strerror(2));
}

TEST(HostExceptionText, CaughtAsStandardException)
{
    try {
        throw HostException("host", 5u);
    } catch (const std::exception& e) {
        EXPECT_EQ(std::string(e.what()), std::string("host: ") + std::strerror(5));
        return;
    }
    FAIL() << "not caught as std::exception";
}

TEST(DynamicLibraryOwner, MissingLibraryFailsAndTraces)
{
    trace::enable();
    DynamicLibrary library;
    StreamCapture out(stdout);
    EXPECT_FALSE(library.try_load("/nonexistent/libnothing.so"));
    EXPECT_EQ(out.release(),
              "Try get module...\r\nNo existed module...\r\nNo module...\r\nNo: '/nonexistent/libnothing.so'\r\n");
    trace::disable();
    EXPECT_EQ(library.handle(), nullptr);
    EXPECT_FALSE(library.free());
    try {
        DynamicLibrary::load("/nonexistent/libnothing.so");
        FAIL() << "load did not throw";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "DynamicLibrary::load");
    }
}

TEST(DynamicLibraryOwner, FirstLoadOnlyWhenThisObjectOpenedIt)
{
    // libc is always present: found, not loaded.
    DynamicLibrary found = DynamicLibrary::load("libc.so.6");
    EXPECT_FALSE(found.is_first_load());
    EXPECT_NE(found.get_symbol("strlen"), nullptr);

    DynamicLibrary wrapper = DynamicLibrary::load(ORVANE_TEST_WRAPPER_PATH);
    EXPECT_TRUE(wrapper.is_first_load());
    EXPECT_NE(wrapper.get_symbol("coreclr_wrap_is_domain_initialized"), nullptr);
    // A second owner of the same file finds the first one's copy.
    DynamicLibrary again = DynamicLibrary::load(ORVANE_TEST_WRAPPER_PATH);
    EXPECT_FALSE(again.is_first_load());
}

TEST(DynamicLibraryOwner, SymbolErrors)
{
    DynamicLibrary empty;
    EXPECT_THROW(empty.get_symbol("x"), std::logic_error);
    try {
        empty.get_symbol("x");
    } catch (const std::logic_error& e) {
        EXPECT_STREQ(e.what(), "Library was not opened!");
    }
    DynamicLibrary libc = DynamicLibrary::load("libc.so.6");
    try {
        libc.get_symbol("no_such_symbol_here");
        FAIL() << "missing symbol accepted";
    } catch (const std::runtime_error& e) {
        EXPECT_STREQ(e.what(), "No such symbol: no_such_symbol_here");
    }
}

TEST(DynamicLibraryOwner, MoveTransfersOwnershipAndFreeHonoursCanFree)
{
    DynamicLibrary first = DynamicLibrary::load(ORVANE_TEST_WRAPPER_PATH);
    void* handle = first.handle();
    ASSERT_NE(handle, nullptr);
    DynamicLibrary moved(std::move(first));
    EXPECT_EQ(first.handle(), nullptr);
    EXPECT_EQ(moved.handle(), handle);
    DynamicLibrary assigned;
    assigned = std::move(moved);
    EXPECT_EQ(moved.handle(), nullptr);
    EXPECT_EQ(assigned.handle(), handle);

    assigned.set_can_free(false);
    EXPECT_TRUE(assigned.free());
    EXPECT_EQ(assigned.handle(), handle);  // kept loaded
    assigned.set_can_free(true);
    EXPECT_TRUE(assigned.free());
    EXPECT_EQ(assigned.handle(), nullptr);
    EXPECT_FALSE(assigned.free());
}

}  // namespace
