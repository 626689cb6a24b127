#include "frame/Folders.h"

#include "support/TemporaryFolder.h"
#include "support/Variable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

namespace quillmere {
namespace {

TEST(Folders, TheRootIsAboveTheProgramFolder)
{
    EXPECT_EQ(RootFolderOf("/opt/family/Q1111"), "/opt/family");
    EXPECT_EQ(RootFolderOf("/home/Jürgen/Q1111"), "/home/Jürgen");
    EXPECT_EQ(PriorProgramFolderOf("/opt/family/Q1111"), "/opt/family/Q1110");
}

TEST(Folders, AProgramFolderOfAnotherNameGivesAWrongRootInSilence)
{
    EXPECT_EQ(RootFolderOf("/opt/quillmere"), "/opt/qui");
    EXPECT_EQ(RootFolderOf("/opt/family/bin"), "/opt/fami");
    EXPECT_EQ(RootFolderOf("/opt/ééééééé"), "/opt/é");
    EXPECT_EQ(RootFolderOf("/Q1111"), "");
    EXPECT_EQ(RootFolderOf("/bin"), "");
    EXPECT_EQ(RootFolderOf(""), "");
}

TEST(Folders, TheSystemFolderIsAboveTheTemporaryOne)
{
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder / "temporary");
    {
        const test::Variable temporary("TMPDIR", (folder / "temporary").c_str());
        EXPECT_EQ(WindowsFolder(), folder.path);
    }
    {
        const test::Variable temporary("TMPDIR", (folder / "temporary/").c_str());
        EXPECT_EQ(WindowsFolder(), folder.path);
    }
    const test::Variable temporary("TMPDIR", (folder / "missing").c_str());
    EXPECT_EQ(WindowsFolder(), "/");
}

TEST(Folders, AnEmptyFolderIsTheTopmostOne)
{
    EXPECT_EQ(InFolder("/data/clients", "a.mdb"), "/data/clients/a.mdb");
    EXPECT_EQ(InFolder("", "a.mdb").string(), "/a.mdb");
    EXPECT_EQ(InFolder("/data/", "a.mdb").string(), "/data//a.mdb");
    EXPECT_EQ(RootFolderOf("/Q1111"), "");
    EXPECT_EQ(PriorProgramFolderOf("/Q1111"), "/Q1110");
}

TEST(Folders, TheTempFolderIsMadeInTheUsersCache)
{
    const test::TemporaryFolder folder;
    const test::Variable cache("XDG_CACHE_HOME", folder.path.c_str());
    EXPECT_EQ(TempFolder(WindowsFolder()), folder / "TEMP");
    MakeTempFolder(WindowsFolder());
    EXPECT_TRUE(std::filesystem::is_directory(folder / "TEMP"));
    EXPECT_NO_THROW(MakeTempFolder(WindowsFolder())) << "it usually exists";
}

TEST(Folders, ATempFolderThatCannotBeMadeIsPassedOver)
{
    const test::TemporaryFolder folder;
    const test::Variable cache("XDG_CACHE_HOME", nullptr);
    const test::Variable home("HOME", (folder / "missing").c_str());
    EXPECT_EQ(TempFolder("/anywhere"), folder / "missing/.cache/TEMP");
    EXPECT_NO_THROW(MakeTempFolder(WindowsFolder()));
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
}

TEST(Folders, WithoutAUsersFolderTheTempFolderIsThatOfTheSystem)
{
    const test::TemporaryFolder folder;
    const test::Variable cache("XDG_CACHE_HOME", nullptr);
    const test::Variable home("HOME", nullptr);
    MakeTempFolder(folder.path);
    EXPECT_TRUE(std::filesystem::is_directory(folder / "TEMP"));
}

} // namespace
} // namespace quillmere
