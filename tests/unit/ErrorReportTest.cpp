#include "frame/ErrorReport.h"

#include "frame/ShellOpen.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

TEST(ErrorReport, TheBoxNamesProcedureNumberAndText)
{
    EXPECT_EQ(ErrorReportText("ReadConfiguration", 13, "Type mismatch"),
              "Procedure: ReadConfiguration\nError 13:  Type mismatch");
}

TEST(ErrorReport, ADiagnosticTextStandsOnALineOfItsOwn)
{
    EXPECT_EQ(ErrorReportText("PrintPage", -5, "Failed", "page 2"),
              "Procedure: PrintPage\nError -5:  Failed\nDiagnostic: page 2");
}

TEST(ShellOpen, ResultsBelow33AreFailures)
{
    EXPECT_TRUE(ShellOpenFailed(0));
    EXPECT_TRUE(ShellOpenFailed(32));
    EXPECT_FALSE(ShellOpenFailed(33));
    EXPECT_FALSE(ShellOpenFailed(42));
}

TEST(ShellOpen, EveryListedResultHasItsText)
{
    struct Case {
        int result;
        std::string_view text;
    };
    for (const Case& c : {
             Case{0, "Insufficient system memory or corrupt program file"},
             Case{2, "File not found"},
             Case{3, "Invalid path"},
             Case{5, "Sharing or protection error"},
             Case{6, "Separate data segments are requires for each task"},
             Case{8, "Insufficient memory to run the program"},
             Case{10, "Incorrect Windows version"},
             Case{11, "Invalid program file"},
             Case{12, "Program file requires a different operating system"},
             Case{13, "Program requires MS-DOS 4.0"},
             Case{14, "Unknown program file type"},
             Case{15, "Windows program does not support protected memory mode"},
             Case{16, "Invalid use of data segments when loading a second instance of a program"},
             Case{19, "Attempt to run a compressed program file"},
             Case{20, "Invalid dynamic link library"},
             Case{21, "Program requires Windows 32-bit extensions"},
         })
        EXPECT_EQ(ShellErrorText(c.result), c.text) << c.result;
}

TEST(ShellOpen, EveryOtherResultIsUndefined)
{
    for (const int result : {-1, 1, 4, 7, 9, 17, 18, 22, 31, 32})
        EXPECT_EQ(ShellErrorText(result), "Undefined error") << result;
}

TEST(ShellOpen, TheMessageGivesTheResultInDigits)
{
    EXPECT_EQ(ShellErrorMessage(2), "External program access error 2: File not found");
    EXPECT_EQ(ShellErrorMessage(31), "External program access error 31: Undefined error");
}

} // namespace
} // namespace quillmere
