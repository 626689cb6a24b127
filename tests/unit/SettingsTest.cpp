#include "frame/Settings.h"

#include "edition/Edition.h"
#include "frame/CheckedFile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fmt/format.h>

namespace quillmere {
namespace {

using test::Content;
using test::NamesIn;
using test::Store;
using test::TemporaryFolder;

/// The file of a fresh start, every key in its order.
constexpr std::string_view FreshFile = R"(USER=A User
FOLDER 1=Default client folder
FOLDER 2=
FOLDER 3=
FOLDER 4=
PATH 1=/q/Q1111
PATH 2=
PATH 3=
PATH 4=
SELECTED FOLDER=1
FOLDER 1 RECENT 1=
FOLDER 1 RECENT 2=
FOLDER 1 RECENT 3=
FOLDER 1 RECENT 4=
FOLDER 2 RECENT 1=
FOLDER 2 RECENT 2=
FOLDER 2 RECENT 3=
FOLDER 2 RECENT 4=
FOLDER 3 RECENT 1=
FOLDER 3 RECENT 2=
FOLDER 3 RECENT 3=
FOLDER 3 RECENT 4=
FOLDER 4 RECENT 1=
FOLDER 4 RECENT 2=
FOLDER 4 RECENT 3=
FOLDER 4 RECENT 4=
VIEW picToolbar=True
VIEW EDIT BAR=False
VIEW STATUS BAR=True
VIEW TOOLTIPS=True
APPLICATION MAXIMISED=True
APPLICATION TOP=0
APPLICATION LEFT=0
APPLICATION HEIGHT=768
APPLICATION WIDTH=1366
BACKGROUND COLOUR=0
AGENT REFERENCE=
AGENT TELEPHONE=
AGENT NAME=
AGENT ADDRESS 1=
AGENT ADDRESS 2=
AGENT ADDRESS 3=
AGENT ADDRESS 4=
AGENT ADDRESS 5=
NOTEPAD NAME=Note19
NOTEPAD TYPE=TAX RETURN
NOTEPAD IDENTIFIER=Tax Return
NOTEPAD OCCURRENCE=0
CALCULATION NEXT=False
REPORT COMPILER=
REPORT DATE=
REPORT MODE=Select
REPORT TYPE=TAX RETURN
REPORT PAGE=1
REPORT IDENTIFIER=Tax Return
REPORT OCCURRENCE=0
REPORT LINKED=False
REPORT SHADING=True
REPORT SCALE=0
REPORT FONT=Arial
REPORT REVERSE=False
REPORT PRINTER=
REPORT TICKS=0
REPORT PREVIEW=0
REPORT CALCULATION=0
REPORT PADDING=False
PW TEMPLATE=
PW LEFT=0
PW TOP=0
PW WIDTH=196
PW HEIGHT=279
PW RESOLUTION=100
PW SPACING=0
PW MIX FONTS=True
PW ZOOM=30
PW BLACK=0
PW DARK=200
PW LIGHT=225
PW WHITE=255
PW SECTION=0
VS PRINTER=
VS LEFT=0
VS TOP=0
VS SCALE=100
VS PDF FOLDER=
VS PDF FILE OPTION=0
VS PDF FILE NAME=2011 Quillmere
VS PDF LEFT=0
VS PDF TOP=0
VS PDF SCALE=100
VS BLACK=0
VS DARK=200
VS LIGHT=225
VS WHITE=255
VS SECTION=0
VS PREVIEW MAXIMISED=True
VS PREVIEW TOP=0
VS PREVIEW LEFT=0
VS PREVIEW HEIGHT=768
VS PREVIEW WIDTH=1366
VS ALIGN TEXT METHOD=0
VS ALIGN TEXT X=0
VS ALIGN TEXT Y=0
VS DUPLEX MODE=0
ELS MODE=Administration
ELS FOLDER=C:\MARLHOME
ELS MAILBOX 1=
ELS MAILBOX 2=
ELS MAILBOX 3=
ELS MAILBOX 4=
ELS ADJUST=False
ACCOUNTS FORMAT=Standard
ACCOUNTS FILE=
)";

/// A family root with the program folders of this year and last year.
class SettingsTest : public testing::Test {
protected:
    SettingsTest()
    {
        std::filesystem::create_directory(surroundings.programFolder);
        std::filesystem::create_directory(prior);
    }

    std::filesystem::path File() const { return surroundings.programFolder / SettingsFileName; }
    std::filesystem::path PriorFile() const { return prior / SettingsFileName; }

    /// The record after reading this content as this year's file.
    Settings Read(std::string_view content)
    {
        Store(File(), content);
        return Read();
    }

    Settings Read()
    {
        Settings settings;
        ReadConfiguration(settings, surroundings);
        return settings;
    }

    /// The text of the failure that this content ends in, with the record it leaves; empty if there is none.
    std::string Failure(std::string_view content, Settings& settings)
    {
        Store(File(), content);
        try {
            ReadConfiguration(settings, surroundings);
        } catch (const SettingsValueError& error) {
            return error.what();
        }
        return {};
    }

    bool IsTaken(std::string_view line)
    {
        Settings settings;
        return Failure(fmt::format("{}\n", line), settings).empty();
    }

    /// The file that the record is written as.
    std::string Written(const Settings& settings)
    {
        WriteConfiguration(settings, surroundings.programFolder);
        return Content(File());
    }

    TemporaryFolder root;
    std::filesystem::path prior = root / edition::PriorProductFolder;
    SettingsSurroundings surroundings{.programFolder = root / edition::ProductFolder,
                                      .rootFolder = root.path,
                                      .userName = "A User",
                                      .screenHeight = 768,
                                      .screenWidth = 1366};
};

TEST_F(SettingsTest, AFreshStartWritesEveryKeyInOrderWithItsDefault)
{
    surroundings.programFolder = "/q/Q1111";
    const Settings defaults = SetDefaultConfiguration(surroundings);
    WriteConfiguration(defaults, root.path);
    EXPECT_EQ(Content(root / SettingsFileName), FreshFile);
}

TEST_F(SettingsTest, WithoutAFileTheDefaultsStand)
{
    const Settings settings = Read();
    EXPECT_EQ(settings.folder[1], "Default client folder");
    EXPECT_EQ(settings.path[1], surroundings.programFolder.string());
    EXPECT_EQ(settings.selectedFolder, 1);
    EXPECT_EQ(settings.applicationHeight, 768);
    EXPECT_EQ(settings.vsPreviewWidth, 1366);
    EXPECT_TRUE(NamesIn(surroundings.programFolder).empty()) << "reading writes nothing";
}

TEST_F(SettingsTest, TheDefaultsReplaceWhatTheRecordHeld)
{
    Settings settings;
    settings.reportCompiler = "of an earlier reading";
    ReadConfiguration(settings, surroundings);
    EXPECT_EQ(settings.reportCompiler, "");
}

TEST_F(SettingsTest, WithoutAnAccountNameTheUserHasTheDefaultOne)
{
    surroundings.userName.clear();
    EXPECT_EQ(SetDefaultConfiguration(surroundings).user, "Marlowby User");
}

TEST_F(SettingsTest, AScreenBeyondSixteenBitsIsHeldAtTheBound)
{
    surroundings.screenWidth = 57600;
    const Settings settings = SetDefaultConfiguration(surroundings);
    EXPECT_EQ(settings.applicationWidth, 32767);
    EXPECT_EQ(settings.vsPreviewWidth, 57600);
}

TEST_F(SettingsTest, EveryValueReadsBackAsItWasWritten)
{
    Settings settings = Read();
    settings.path[4] = "/srv/clients/Höfner & Söhne";
    settings.folder[4] = "a=b = c ";
    settings.selectedFolder = 4;
    settings.folderRecent[4][3] = "Jane Smith";
    settings.viewEditBar = true;
    settings.applicationTop = -7;
    settings.backgroundColour = 16777215;
    settings.agentAddress[5] = "Last line";
    settings.reportPreview = 1;
    settings.vsLeft = -1.25;
    settings.vsPdfScale = 99.5;
    settings.elsMailbox[2] = "box";
    settings.accountsFile = "x";
    const std::string written = Written(settings);
    EXPECT_NE(written.find("\nFOLDER 4=a=b = c \n"), std::string::npos);
    EXPECT_NE(written.find("\nVS LEFT=-1.25\n"), std::string::npos);
    const Settings read = Read();
    EXPECT_EQ(read.folder[4], "a=b = c ");
    EXPECT_EQ(read.selectedFolder, 4);
    EXPECT_EQ(read.applicationTop, -7);
    EXPECT_EQ(read.vsPdfScale, 99.5);
    EXPECT_EQ(Written(read), written);
}

TEST_F(SettingsTest, LinesThatHoldNoSettingAreSkipped)
{
    const Settings settings = Read("=value\n\nA=\nB\nno equals sign\n=\n==\n[SECTION]\nREPORT COMPILER=Kept\n");
    EXPECT_EQ(settings.reportCompiler, "Kept");
    EXPECT_EQ(Written(settings).find("value"), std::string::npos);
}

TEST_F(SettingsTest, AnEmptyValueIsStoredIfTheLineIsLongEnough)
{
    EXPECT_EQ(Read("REPORT FONT=\n").reportFont, "");
    EXPECT_EQ(Read("PW TOP=\n").pwTop, "");
}

TEST_F(SettingsTest, AValueKeepsEverythingAfterTheFirstEqualsSign)
{
    EXPECT_EQ(Read("REPORT COMPILER=a=b=\n").reportCompiler, "a=b=");
    EXPECT_EQ(Read("REPORT COMPILER= a \"b\" \n").reportCompiler, " a \"b\" ");
}

TEST_F(SettingsTest, KeysAreComparedExactly)
{
    EXPECT_EQ(Read("report compiler=x\n").reportCompiler, "");
    EXPECT_EQ(Read("REPORT COMPILER =x\n").reportCompiler, "");
    EXPECT_EQ(Read(" REPORT COMPILER=x\n").reportCompiler, "");
    EXPECT_EQ(Read("VIEW PICTOOLBAR=False\n").viewPicToolbar, true);
    EXPECT_EQ(Read("VIEW picToolbar=False\n").viewPicToolbar, false);
}

TEST_F(SettingsTest, BothLineEndsAndNoneAtTheEndAreRead)
{
    const Settings settings = Read("REPORT COMPILER=One\r\nREPORT TICKS=2\r\nREPORT DATE=Last");
    EXPECT_EQ(settings.reportCompiler, "One");
    EXPECT_EQ(settings.reportTicks, 2);
    EXPECT_EQ(settings.reportDate, "Last");
    EXPECT_EQ(Written(settings).find('\r'), std::string::npos);
}

TEST_F(SettingsTest, OfTwoLinesWithOneKeyTheLaterCounts)
{
    EXPECT_EQ(Read("REPORT TICKS=1\nREPORT TICKS=2\n").reportTicks, 2);
}

TEST_F(SettingsTest, AnUnknownSettingVanishesAtTheNextWrite)
{
    const Settings settings = Read("SOME OTHER PROGRAM=1\nFOLDER 5=x\nREPORT COMPILER=Kept\n");
    const std::string written = Written(settings);
    EXPECT_EQ(written.find("SOME OTHER PROGRAM"), std::string::npos);
    EXPECT_EQ(written.find("FOLDER 5"), std::string::npos);
    EXPECT_NE(written.find("REPORT COMPILER=Kept\n"), std::string::npos);
}

TEST_F(SettingsTest, TheUserIsWrittenButNeverRead)
{
    const Settings settings = Read("USER=Somebody else\n");
    EXPECT_EQ(settings.user, "A User");
    EXPECT_TRUE(Written(settings).starts_with("USER=A User\n"));
}

TEST_F(SettingsTest, ThePrinterInTheFileDoesNotInfluenceTheNextRun)
{
    Settings settings = Read("VS PRINTER=Gone away\n");
    EXPECT_EQ(settings.vsPrinter, "");
    settings.vsPrinter = "Of this run";
    EXPECT_NE(Written(settings).find("\nVS PRINTER=Of this run\n"), std::string::npos);
    EXPECT_EQ(Read().vsPrinter, "");
}

TEST_F(SettingsTest, CarriedSettingsComeBackUnchanged)
{
    std::string content(FreshFile);
    const auto replace = [&content](std::string_view from, std::string_view to) {
        content.replace(content.find(from), from.size(), to);
    };
    replace("PW ZOOM=30", "PW ZOOM=as it stands");
    replace("ELS FOLDER=C:\\MARLHOME", "ELS FOLDER=D:\\POST");
    replace("AGENT NAME=", "AGENT NAME=\xC3\xA9");
    replace("BACKGROUND COLOUR=0", "BACKGROUND COLOUR=-2147483633");
    replace("NOTEPAD OCCURRENCE=0", "NOTEPAD OCCURRENCE=");
    EXPECT_EQ(Written(Read(content)), content);
}

TEST_F(SettingsTest, NumbersAreHeldToTheRangeOfTheirKind)
{
    struct Case {
        std::string_view line;
        bool taken;
    };
    for (const Case& c : {
             Case{"REPORT TICKS=32767", true},
             Case{"REPORT TICKS=-32768", true},
             Case{"REPORT TICKS=32768", false},
             Case{"REPORT TICKS=-32769", false},
             Case{"REPORT TICKS=32767.4", true},
             Case{"REPORT TICKS=32767.5", false},
             Case{"VS PREVIEW TOP=2147483647", true},
             Case{"VS PREVIEW TOP=-2147483648", true},
             Case{"VS PREVIEW TOP=2147483648", false},
             Case{"VS PREVIEW TOP=-2147483649", false},
             Case{"VS LEFT=1E+308", true},
             Case{"VS LEFT=1E+309", false},
             Case{"VS LEFT=-0.5", true},
             Case{"VS LEFT=+.5", true},
             Case{"VS LEFT=5.", true},
             Case{"VS LEFT=", false},
             Case{"VS LEFT=.", false},
             Case{"VS LEFT=abc", false},
             Case{"VS LEFT=1,5", false},
             Case{"VS LEFT=1.5 mm", false},
             Case{"VS LEFT=--1", false},
             Case{"VS LEFT=+-1", false},
             Case{"VS LEFT=inf", false},
             Case{"VS LEFT=nan", false},
             Case{"VS LEFT=0x10", false},
             Case{"REPORT PAGE=", false},
             Case{"REPORT PAGE=one", false},
             Case{"REPORT PAGE= 7 ", true},
             Case{"REPORT PAGE=1e3", true},
         })
        EXPECT_EQ(IsTaken(c.line), c.taken) << c.line;
    EXPECT_EQ(Read("REPORT TICKS=2.5\n").reportTicks, 2) << "ties go to the even number";
    EXPECT_EQ(Read("REPORT TICKS=3.5\n").reportTicks, 4);
    EXPECT_EQ(Read("VS LEFT=-0.25\n").vsLeft, -0.25);
}

TEST_F(SettingsTest, TruthIsReadFromWordsAndNumbers)
{
    struct Case {
        std::string_view value;
        bool result;
    };
    for (const Case& c : {Case{"True", true}, Case{"TRUE", true}, Case{"true", true}, Case{"False", false},
                          Case{"fAlSe", false}, Case{"1", true}, Case{"-1", true}, Case{"0", false}, Case{"0.0", false},
                          Case{"0.5", true}, Case{" True ", true}}) {
        EXPECT_EQ(Read(fmt::format("REPORT SHADING={}\n", c.value)).reportShading, c.result) << c.value;
        EXPECT_EQ(Read(fmt::format("REPORT REVERSE={}\n", c.value)).reportReverse, c.result) << c.value;
    }
    for (const auto value : {"", "Yes", "No", "Y", "On", "Tru", "T rue"})
        EXPECT_FALSE(IsTaken(fmt::format("REPORT SHADING={}", value))) << value;
}

TEST_F(SettingsTest, ABadValueStopsTheReadingAtItsLine)
{
    Settings settings;
    const std::string failure =
        Failure("REPORT COMPILER=Before\nREPORT TICKS=2\nREPORT PAGE=x\nREPORT DATE=After\n", settings);
    EXPECT_EQ(failure, "Type mismatch: line 3 of RETURN.INI should hold a whole number from -32768 to 32767: "
                       "REPORT PAGE=x");
    EXPECT_EQ(settings.reportCompiler, "Before");
    EXPECT_EQ(settings.reportTicks, 2);
    EXPECT_EQ(settings.reportPage, 1) << "the bad value leaves the default";
    EXPECT_EQ(settings.reportDate, "");
}

TEST_F(SettingsTest, AfterABadValueTheRecordIsStillConsistent)
{
    Settings settings;
    EXPECT_NE(Failure("FOLDER 1=\nSELECTED FOLDER=3\nREPORT SHADING=perhaps\n", settings), "");
    EXPECT_EQ(settings.selectedFolder, 1);
    EXPECT_EQ(settings.folder[1], "Default client folder");
    EXPECT_EQ(settings.path[1], surroundings.programFolder.string());
}

TEST_F(SettingsTest, TheFailureIsFitForAMessageBox)
{
    Settings settings;
    const std::string failure = Failure("REPORT PAGE=\x01\xFF" + std::string(5000, 'x') + "\n", settings);
    EXPECT_NE(failure.find("line 1 of RETURN.INI should hold"), std::string::npos) << failure;
    EXPECT_NE(failure.find(": REPORT PAGE=?\uFFFDxxx"), std::string::npos) << failure;
    EXPECT_LT(failure.size(), 200U);
}

TEST_F(SettingsTest, AnEmptySelectedFolderGivesWayToTheFirst)
{
    EXPECT_EQ(Read("FOLDER 1=One\nPATH 1=/one\nSELECTED FOLDER=3\n").selectedFolder, 1);
    EXPECT_EQ(Read("FOLDER 1=One\nFOLDER 3=Three\nSELECTED FOLDER=3\n").selectedFolder, 3);
    const Settings settings = Read("FOLDER 1=\nPATH 1=/one\nFOLDER 2=Two\nSELECTED FOLDER=3\n");
    EXPECT_EQ(settings.selectedFolder, 1);
    EXPECT_EQ(settings.folder[1], "Default client folder");
    EXPECT_EQ(settings.path[1], surroundings.programFolder.string());
    EXPECT_EQ(settings.folder[2], "Two");
}

TEST_F(SettingsTest, ASelectionThatIsNoSlotGivesWayToTheFirst)
{
    for (const int selected : {0, -1, 5, 9999, -32768})
        EXPECT_EQ(Read(fmt::format("SELECTED FOLDER={}\n", selected)).selectedFolder, 1) << selected;
}

TEST_F(SettingsTest, TheFileIsFoundUnderItsNameInAnyCase)
{
    Store(surroundings.programFolder / "Return.ini", "REPORT COMPILER=Found\n");
    EXPECT_EQ(Read().reportCompiler, "Found");
    EXPECT_EQ(Read("REPORT COMPILER=Exact\n").reportCompiler, "Exact");
}

TEST_F(SettingsTest, AFolderOfThatNameIsNoSettingsFile)
{
    std::filesystem::create_directory(File());
    const Settings settings = Read();
    EXPECT_EQ(settings.folder[1], "Default client folder");
    WriteConfiguration(settings, surroundings.programFolder);
    EXPECT_EQ(NamesIn(surroundings.programFolder), std::set<std::string>{"RETURN.INI"})
        << "and nothing is left beside it";
    EXPECT_TRUE(std::filesystem::is_directory(File()));
}

TEST_F(SettingsTest, TheFirstStartOfAYearTakesLastYearsFileOver)
{
    const std::string client = (root / "clients").string();
    std::filesystem::create_directory(client);
    const std::string content = fmt::format("FOLDER 1=Own\nFOLDER 2=Elsewhere\nFOLDER 3=Clients\nFOLDER 4=Lower case\n"
                                            "PATH 1={0}/Q1110\nPATH 2=C:\\Data\nPATH 3={1}/Q1110\nPATH 4={1}/xq1110\n"
                                            "SELECTED FOLDER=3\nFOLDER 1 RECENT 1=Jane\nFOLDER 4 RECENT 4=John\n"
                                            "REPORT COMPILER=Kept\nVS PDF FILE NAME=2010 Quillmere\nELS MAILBOX 2=two\n"
                                            "ELS MAILBOX 3=three\n",
                                            root.path.string(), client);
    Store(PriorFile(), content);
    const Settings settings = Read();

    EXPECT_EQ(settings.path[1], (root / "Q1111").string()) << "there already; that is no error";
    EXPECT_EQ(settings.path[3], client + "/Q1111");
    EXPECT_TRUE(std::filesystem::is_directory(client + "/Q1111")) << "made";
    EXPECT_EQ(settings.path[4], client + "/xQ1111");
    EXPECT_EQ(settings.folder, (Settings::Slots{"", "Own", "", "Clients", "Lower case"}));
    EXPECT_EQ(settings.path[2], "") << "a folder outside last year's product folder is not taken over";
    EXPECT_EQ(settings.elsMailbox[2], "");
    EXPECT_EQ(settings.elsMailbox[3], "three");
    EXPECT_EQ(settings.selectedFolder, 3) << "the entries keep their numbers";
    EXPECT_EQ(settings.folderRecent, (std::array<Settings::Slots, 5>{}));
    EXPECT_EQ(settings.vsPdfFileName, "2011 Quillmere");
    EXPECT_EQ(settings.reportCompiler, "Kept");

    EXPECT_EQ(Content(PriorFile()), content) << "last year's file stays";
    EXPECT_FALSE(std::filesystem::exists(File())) << "this year's comes with the close-down";
    WriteConfiguration(settings, surroundings.programFolder);
    EXPECT_EQ(Read().path[3], client + "/Q1111");
}

TEST_F(SettingsTest, AFirstStartWithoutAFolderToTakeOverBeginsWithTheOwnOne)
{
    Store(PriorFile(), "FOLDER 1=Data\nPATH 1=C:\\Data\nFOLDER 2=Short\nPATH 2=Q1110\nSELECTED FOLDER=2\n");
    const Settings settings = Read();
    EXPECT_EQ(settings.folder, (Settings::Slots{"", "Default client folder", "", "", ""}));
    EXPECT_EQ(settings.path, (Settings::Slots{"", surroundings.programFolder.string(), "", "", ""}));
    EXPECT_EQ(settings.selectedFolder, 1);
}

TEST_F(SettingsTest, AFolderThatCannotBeMadeAtTheFirstStartIsPassedOver)
{
    Store(PriorFile(), "FOLDER 1=Gone\nPATH 1=/nowhere/at/all/Q1110\n");
    EXPECT_EQ(Read().path[1], "/nowhere/at/all/Q1111");
}

TEST_F(SettingsTest, ThisYearsFileComesBeforeLastYears)
{
    Store(PriorFile(), "REPORT COMPILER=Last year\n");
    EXPECT_EQ(Read().reportCompiler, "Last year");
    EXPECT_EQ(Read("FOLDER 1=Data\nPATH 1=C:\\Data\nFOLDER 1 RECENT 1=Jane\n").path[1], "C:\\Data");
    EXPECT_EQ(Read().folderRecent[1][1], "Jane");
}

TEST_F(SettingsTest, ABadValueInLastYearsFileDoesNotLeaveItsFoldersInUse)
{
    Store(PriorFile(), "FOLDER 1=Data\nPATH 1=C:\\Data\nFOLDER 1 RECENT 1=Jane\nREPORT PAGE=x\n");
    Settings settings;
    EXPECT_THROW(ReadConfiguration(settings, surroundings), SettingsValueError);
    EXPECT_EQ(settings.path[1], surroundings.programFolder.string());
    EXPECT_EQ(settings.folderRecent[1][1], "");
    EXPECT_EQ(settings.vsPdfFileName, edition::DefaultPdfFileName);
}

TEST_F(SettingsTest, AFileThatCannotBeWrittenIsLeftAsItWasWithoutAWord)
{
    const Settings settings = Read("REPORT COMPILER=Old\n");
    std::filesystem::permissions(File(), std::filesystem::perms(0444));
    EXPECT_FALSE(WriteConfiguration(settings, surroundings.programFolder));
    EXPECT_EQ(Content(File()), "REPORT COMPILER=Old\n");
    EXPECT_FALSE(WriteConfiguration(settings, root / "missing"));
    EXPECT_FALSE(std::filesystem::exists(root / "missing"));
}

TEST_F(SettingsTest, ABadValueHasItsNumberAndSaysWhatWasExpected)
{
    const std::pair<const char*, const char*> cases[] = {
        {"VIEW TOOLTIPS=perhaps",
         "Type mismatch: line 1 of RETURN.INI should hold True or False: VIEW TOOLTIPS=perhaps"},
        {"VS SCALE=wide", "Type mismatch: line 1 of RETURN.INI should hold a number: VS SCALE=wide"},
        {"BACKGROUND COLOUR=red",
         "Type mismatch: line 1 of RETURN.INI should hold a whole number: BACKGROUND COLOUR=red"},
    };
    for (const auto& [line, text] : cases) {
        Store(File(), line);
        Settings settings;
        try {
            ReadConfiguration(settings, surroundings);
            FAIL() << line;
        } catch (const quillmere::Failure& failure) {
            EXPECT_EQ(failure.Number(), 13) << line;
            EXPECT_STREQ(failure.what(), text);
        }
    }
}

TEST_F(SettingsTest, ALineEndInATextIsNotWritten)
{
    Settings settings = Read();
    settings.folder[2] = "x\nPATH 1=/other\r\n";
    settings.reportCompiler = "\r";
    const std::string written = Written(settings);
    EXPECT_NE(written.find("\nFOLDER 2=xPATH 1=/other\n"), std::string::npos);
    EXPECT_EQ(written.find('\r'), std::string::npos);
    EXPECT_EQ(Read().path[1], surroundings.programFolder.string());
}

TEST_F(SettingsTest, AProgramFolderWithALineEndInItsNameIsFoundAgain)
{
    surroundings.programFolder = root / "Q\n1111";
    std::filesystem::create_directory(surroundings.programFolder);
    Settings settings;
    ReadConfiguration(settings, surroundings);
    ASSERT_EQ(settings.path[1], surroundings.programFolder.string());
    settings.folder[2] = "Second";
    settings.path[2] = "/second";
    for (int start = 1; start <= 2; ++start) {
        EXPECT_TRUE(WriteConfiguration(settings, surroundings.programFolder));
        ReadConfiguration(settings, surroundings);
        EXPECT_EQ(settings.path[1], surroundings.programFolder.string());
        EXPECT_EQ(settings.path[2], "/second");
    }
}

TEST_F(SettingsTest, LastYearsFolderBelowTheTopIsNotLookedForWhereTheProcessWorks)
{
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(root.path);
    Store(PriorFile(), "REPORT COMPILER=Somebody\n");
    surroundings.rootFolder.clear();
    EXPECT_EQ(Read().reportCompiler, "");
    std::filesystem::current_path(before);
}

TEST_F(SettingsTest, NumbersOutsideTheirKindAreWrittenAtTheBound)
{
    Settings settings = Read();
    settings.applicationWidth = 57600;
    settings.applicationTop = -40000;
    settings.vsPreviewWidth = 57600;
    settings.vsScale = std::numeric_limits<double>::infinity();
    const std::string written = Written(settings);
    EXPECT_NE(written.find("\nAPPLICATION TOP=-32768\n"), std::string::npos);
    EXPECT_NE(written.find("\nAPPLICATION WIDTH=32767\n"), std::string::npos);
    EXPECT_NE(written.find("\nVS PREVIEW WIDTH=57600\n"), std::string::npos);
    EXPECT_NO_THROW(Read());
}

TEST_F(SettingsTest, LastYearsSelectedFolderIsFound)
{
    Store(PriorFile(), "FOLDER 1=One\nFOLDER 2=Two\r\nPATH 1=/one\nPATH 2=/two\r\nSELECTED FOLDER=2\r\n");
    EXPECT_EQ(LastYearSelectedPath(prior), "/two");
    EXPECT_EQ(LastYearSelectedFolderName(prior), "Two");
    Store(PriorFile(), "PATH 1=/one\nFOLDER 1=One\n");
    EXPECT_EQ(LastYearSelectedPath(prior), "/one");
    EXPECT_EQ(LastYearSelectedFolderName(prior), "One");
}

TEST_F(SettingsTest, WithoutAFileOrEntryLastYearsFolderIsEmpty)
{
    EXPECT_EQ(LastYearSelectedPath(prior), "");
    EXPECT_EQ(LastYearSelectedFolderName(root / "missing"), "");
    for (const auto selected : {"0", "5", "x", "99999999", "3"}) {
        Store(PriorFile(), fmt::format("FOLDER 1=One\nPATH 1=/one\nSELECTED FOLDER={}\n", selected));
        EXPECT_EQ(LastYearSelectedPath(prior), "") << selected;
        EXPECT_EQ(LastYearSelectedFolderName(prior), "") << selected;
    }
}

/// Reads bytes as both years' file and writes what came of it; only the two failures of the reading may come out.
void ReadBytes(const std::string& bytes)
{
    const TemporaryFolder root;
    const SettingsSurroundings surroundings{.programFolder = root / "Q1111", .rootFolder = root.path};
    std::filesystem::create_directory(surroundings.programFolder);
    std::filesystem::create_directory(root / "Q1110");
    for (const auto& file : {root / "Q1110/RETURN.INI", root / "Q1111/RETURN.INI"}) {
        Store(file, bytes);
        Settings settings;
        try {
            ReadConfiguration(settings, surroundings);
        } catch (const SettingsValueError& error) {
            RC_ASSERT(std::string_view(error.what()).size() < 400U);
        }
        RC_ASSERT(settings.selectedFolder >= 1);
        RC_ASSERT(settings.selectedFolder <= 4);
        RC_ASSERT(!settings.folder[static_cast<std::size_t>(settings.selectedFolder)].empty());
        RC_ASSERT(Content(file) == bytes);
    }
    LastYearSelectedPath(root / "Q1110");
}

RC_GTEST_PROP(SettingsJunk, AnyBytesAreReadWithoutHarm, (const std::string& bytes))
{
    ReadBytes(bytes);
}

RC_GTEST_PROP(SettingsJunk, AFileWithAnyBytesInItIsReadWithoutHarm, ())
{
    std::string bytes(FreshFile);
    const int count = *rc::gen::inRange(1, 40);
    for (int change = 0; change < count; ++change)
        bytes[*rc::gen::inRange<std::size_t>(0, bytes.size())] = *rc::gen::arbitrary<char>();
    bytes.resize(*rc::gen::inRange<std::size_t>(0, bytes.size() + 1));
    ReadBytes(bytes);
}

RC_GTEST_PROP(SettingsJunk, AnyRecordReadsBackFromItsFile, ())
{
    const auto text = [] {
        return *rc::gen::suchThat(rc::gen::arbitrary<std::string>(), [](const std::string& value) {
            return value.find_first_of("\r\n") == std::string::npos;
        });
    };
    const TemporaryFolder root;
    Settings settings = SetDefaultConfiguration({});
    settings.folder = {"", "One" + text(), text(), text(), text()};
    settings.path = {"", text(), text(), text(), text()};
    settings.reportCompiler = text();
    settings.agentAddress[5] = text();
    settings.applicationTop = *rc::gen::arbitrary<std::int16_t>();
    settings.vsPreviewLeft = *rc::gen::arbitrary<int>();
    settings.vsTop = static_cast<double>(*rc::gen::arbitrary<std::int16_t>()) / 1000;
    settings.reportReverse = *rc::gen::arbitrary<bool>();
    WriteConfiguration(settings, root.path);
    const std::string written = Content(root / SettingsFileName);
    Settings read;
    ReadConfiguration(read, {.programFolder = root.path, .rootFolder = root.path, .userName = settings.user});
    RC_ASSERT(read.folder == settings.folder);
    RC_ASSERT(read.path == settings.path);
    RC_ASSERT(read.vsTop == settings.vsTop);
    RC_ASSERT(read.vsPreviewLeft == settings.vsPreviewLeft);
    RC_ASSERT(read.reportReverse == settings.reportReverse);
    read.user = settings.user;
    WriteConfiguration(read, root.path);
    RC_ASSERT(Content(root / SettingsFileName) == written);
}

} // namespace
} // namespace quillmere
