// Runtime folder naming, ranking and the directory searches of the host.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "hosting/netcore_version.h"
#include "hosting/pal.h"
#include "test_support.h"

using testsupport::TempDir;

namespace {

const char kWrap[] = "liborvane.embed.coreclrwrap.so";

TEST(NetcoreVersionParse, AcceptsTwoDecimalPieces)
{
    NetcoreVersion v;
    ASSERT_TRUE(try_parse("netcore3.1", v));
    EXPECT_EQ(v, NetcoreVersion(3, 1));
    ASSERT_TRUE(try_parse("netcore10.0", v));
    EXPECT_EQ(v, NetcoreVersion(10, 0));
    ASSERT_TRUE(try_parse("netcore03.010", v));
    EXPECT_EQ(v, NetcoreVersion(3, 10));
}

TEST(NetcoreVersionParse, RejectsOtherNamesAndLeavesVersionAlone)
{
    for (const char* name : {"netcore3.1.2", "netcore3", "netcore-3.1", "netcore3.", "netcore.1", "netcore",
                             "netcorea.1", "netcore3.1a", "netcore 3.1", "xnetcore3.1", "NETCORE3.1", "net3.1",
                             "netcore+3.1", "netcore3.-1", "netcore99999999999.0", ""}) {
        NetcoreVersion v(7, 7);
        EXPECT_FALSE(try_parse(name, v)) << name;
        EXPECT_EQ(v, NetcoreVersion(7, 7)) << name;
    }
}

TEST(NetcoreVersionParse, TryParseIntNeedsOnlyDigits)
{
    int value = -1;
    EXPECT_TRUE(try_parse_int("007", value));
    EXPECT_EQ(value, 7);
    for (const char* text : {"", "-1", "+1", " 1", "1 ", "1e3", "0x1"}) {
        value = 42;
        EXPECT_FALSE(try_parse_int(text, value)) << '"' << text << '"';
        EXPECT_EQ(value, 42);
    }
}

TEST(NetcoreVersionParse, SplitKeepsEmptyPiecesAndReplacesOutput)
{
    std::vector<std::string> parts{"stale"};
    split("3.1", parts);
    EXPECT_EQ(parts, (std::vector<std::string>{"3", "1"}));
    split("a..b.", parts);
    EXPECT_EQ(parts, (std::vector<std::string>{"a", "", "b", ""}));
    split("", parts);
    EXPECT_EQ(parts, (std::vector<std::string>{""}));
}

TEST(NetcoreVersionOrder, ComparesMajorThenMinorNumerically)
{
    EXPECT_LT(NetcoreVersion(3, 9), NetcoreVersion(3, 10));
    EXPECT_LT(NetcoreVersion(9, 9), NetcoreVersion(10, 0));
    EXPECT_LT(NetcoreVersion(2, 99), NetcoreVersion(3, 0));
    EXPECT_FALSE(NetcoreVersion(3, 1) < NetcoreVersion(3, 1));
    EXPECT_FALSE(NetcoreVersion(3, 10) < NetcoreVersion(3, 9));
    EXPECT_EQ(NetcoreVersion(), NetcoreVersion(0, 0));
}

// A base directory with runtime folders; `holders` get the wrapper file.
class RuntimeFolderSearch : public ::testing::Test {
protected:
    void add(const std::string& folder, bool holds_wrapper)
    {
        dir.mkdirs(folder);
        if (holds_wrapper)
            dir.touch(folder + "/" + kWrap);
    }
    TempDir dir;
    std::string found = "untouched";
};

TEST_F(RuntimeFolderSearch, PicksHighestVersionHoldingTheFile)
{
    add("netcore2.1", true);
    add("netcore3.1", true);
    add("netcore3.0", true);
    ASSERT_TRUE(pal::get_major_netcore_path(dir.path(), kWrap, found));
    EXPECT_EQ(found, dir.sub("netcore3.1"));
}

TEST_F(RuntimeFolderSearch, SkipsHigherFoldersWithoutTheFile)
{
    add("netcore2.1", true);
    add("netcore3.1", false);
    add("netcore3.0", false);
    ASSERT_TRUE(pal::get_major_netcore_path(dir.path(), kWrap, found));
    EXPECT_EQ(found, dir.sub("netcore2.1"));
}

TEST_F(RuntimeFolderSearch, RanksMinorVersionsNumerically)
{
    add("netcore3.9", true);
    add("netcore3.10", true);
    add("netcore3.2", true);
    ASSERT_TRUE(pal::get_major_netcore_path(dir.path(), kWrap, found));
    EXPECT_EQ(found, dir.sub("netcore3.10"));
}

TEST_F(RuntimeFolderSearch, IgnoresFilesLinksAndMisnamedFolders)
{
    add("netcore2.1", true);
    add("elsewhere", true);
    dir.touch("netcore9.9", "not a folder");
    ASSERT_EQ(symlink(dir.sub("elsewhere").c_str(), dir.sub("netcore8.0").c_str()), 0);
    add("netcore9.0.1", true);
    add("netcore-9.0", true);
    add("netcore9", true);
    ASSERT_TRUE(pal::get_major_netcore_path(dir.path(), kWrap, found));
    EXPECT_EQ(found, dir.sub("netcore2.1"));
}

TEST_F(RuntimeFolderSearch, FailsWithoutTouchingResult)
{
    add("netcore3.1", false);
    EXPECT_FALSE(pal::get_major_netcore_path(dir.path(), kWrap, found));
    EXPECT_FALSE(pal::get_major_netcore_path(dir.sub("missing"), kWrap, found));
    EXPECT_EQ(found, "untouched");
}

std::vector<std::string> sorted(std::vector<std::string> items)
{
    std::sort(items.begin(), items.end());
    return items;
}

TEST(AppFolders, DebugChildReplacesItsParentOnlyInDebug)
{
    TempDir dir;
    dir.mkdirs("A/debug");
    dir.mkdirs("B");
    dir.touch("file.dll");

    std::vector<std::string> debug_folders;
    pal::get_app_folders(dir.path(), true, debug_folders);
    EXPECT_EQ(sorted(debug_folders), (std::vector<std::string>{dir.sub("A/debug"), dir.sub("B")}));

    std::vector<std::string> release_folders;
    pal::get_app_folders(dir.path(), false, release_folders);
    EXPECT_EQ(sorted(release_folders), (std::vector<std::string>{dir.sub("A"), dir.sub("B")}));
}

TEST(AppFolders, AppendsOneLevelAndJoinsTrailingSlashOnce)
{
    TempDir dir;
    dir.mkdirs("A/inner");
    std::vector<std::string> out{"kept"};
    pal::get_app_folders(dir.path() + "/", false, out);
    EXPECT_EQ(out, (std::vector<std::string>{"kept", dir.sub("A")}));
}

TEST(AppFolders, UnreadableRootLeavesOutputUnchanged)
{
    TempDir dir;
    std::vector<std::string> out{"kept"};
    pal::get_app_folders(dir.sub("missing"), true, out);
    EXPECT_EQ(out, (std::vector<std::string>{"kept"}));
    pal::get_app_folders(dir.path(), true, out);  // exists but empty
    EXPECT_EQ(out, (std::vector<std::string>{"kept"}));
}

}  // namespace
