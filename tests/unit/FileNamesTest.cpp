#include "frame/FileNames.h"

#include "frame/DeskMemory.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

TEST(ReadyFileName, ReplacesWhatAFileSystemRefuses)
{
    EXPECT_EQ(ReadyFileName("Acme Ltd - Jane Smith - P11D 2010-11"), "Acme Ltd - Jane Smith - P11D 2010-11");
    EXPECT_EQ(ReadyFileName("A/B\\C:D*E?F\"G<H>I|J\nK\x7f"), "A-B-C-D-E-F-G-H-I-J-K-");
    EXPECT_EQ(ReadyFileName("Ås & Søn (£)"), "Ås & Søn (£)");
}

TEST(ReadyFileName, DropsBlanksAndPointsAtItsEnds)
{
    EXPECT_EQ(ReadyFileName("  ..Acme Ltd. ."), "Acme Ltd");
    EXPECT_EQ(ReadyFileName("A. B."), "A. B");
    EXPECT_EQ(ReadyFileName(""), "-");
    EXPECT_EQ(ReadyFileName(" . "), "-");
}

TEST(ReadyFileName, IsCutAfterAWholeCharacter)
{
    EXPECT_EQ(ReadyFileName(std::string(300, 'x')), std::string(235, 'x'));
    std::string long2;
    for (int i = 0; i < 200; ++i)
        long2 += "é";
    EXPECT_EQ(ReadyFileName(long2).size(), 234u);
}

TEST(DeskMemory, RemembersByKeyAndForgetsNothingElse)
{
    const test::TemporaryFolder folder;
    const DeskMemory memory(folder.path);
    EXPECT_EQ(memory.Recall("PDF FOLDER"), "");
    memory.Remember("PDF FOLDER", "/home/me/To send=now");
    memory.Remember("PDF", "other");
    memory.Remember("PDF FOLDER", "/tmp");
    EXPECT_EQ(memory.Recall("PDF FOLDER"), "/tmp");
    EXPECT_EQ(DeskMemory(folder.path).Recall("PDF"), "other");
    memory.Remember("PDF", "two\nlines");
    EXPECT_EQ(memory.Recall("PDF"), "other") << "it would be read as another line";
}

TEST(DeskMemory, WhatCannotBeWrittenCostsNothing)
{
    const test::TemporaryFolder folder;
    const DeskMemory memory(folder / "nowhere");
    memory.Remember("KEY", "text");
    EXPECT_EQ(memory.Recall("KEY"), "");
}

} // namespace
} // namespace quillmere
