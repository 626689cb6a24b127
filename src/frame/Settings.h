#pragma once

#include "frame/Failure.h"

#include <array>
#include <filesystem>
#include <string>
#include <string_view>

namespace quillmere {

/// The settings record: every key of the settings file, in file order, named after its key. Slots of folders and
/// mailboxes are counted from 1; slot 0 is not in use. What a key stands at by default, SetDefaultConfiguration says.
struct Settings {
    using Slots = std::array<std::string, 5>;

    std::string user;
    Slots folder, path;
    int selectedFolder{};
    std::array<Slots, 5> folderRecent;
    bool viewPicToolbar{}, viewEditBar{}, viewStatusBar{}, viewTooltips{};
    bool applicationMaximised{};
    int applicationTop{}, applicationLeft{}, applicationHeight{}, applicationWidth{};
    int backgroundColour{};
    std::string agentReference, agentTelephone, agentName;
    std::array<std::string, 6> agentAddress;
    std::string notepadName, notepadType, notepadIdentifier, notepadOccurrence;
    bool calculationNext{};
    std::string reportCompiler, reportDate, reportMode, reportType;
    int reportPage{};
    std::string reportIdentifier, reportOccurrence;
    bool reportLinked{}, reportShading{};
    int reportScale{};
    std::string reportFont;
    bool reportReverse{};
    std::string reportPrinter;
    int reportTicks{};
    int reportPreview{}; ///< 0 preview on screen, 1 PDF file
    int reportCalculation{};
    bool reportPadding{};
    std::string pwTemplate, pwLeft, pwTop, pwWidth, pwHeight, pwResolution;
    int pwSpacing{};
    bool pwMixFonts{};
    std::string pwZoom;
    int pwBlack{}, pwDark{}, pwLight{}, pwWhite{}, pwSection{};
    std::string vsPrinter;
    double vsLeft{}, vsTop{}, vsScale{}; ///< mm, mm, percent
    std::string vsPdfFolder;
    int vsPdfFileOption{};
    std::string vsPdfFileName;
    double vsPdfLeft{}, vsPdfTop{}, vsPdfScale{}; ///< mm, mm, percent
    int vsBlack{}, vsDark{}, vsLight{}, vsWhite{}, vsSection{};
    bool vsPreviewMaximised{};
    int vsPreviewTop{}, vsPreviewLeft{}, vsPreviewHeight{}, vsPreviewWidth{};
    int vsAlignTextMethod{};
    double vsAlignTextX{}, vsAlignTextY{};
    int vsDuplexMode{}; ///< 0 printer default, 1 single-sided, 2 double-sided
    std::string elsMode, elsFolder;
    Slots elsMailbox;
    bool elsAdjust{};
    std::string accountsFormat, accountsFile;
};

/// What the defaults need to know of the machine.
struct SettingsSurroundings {
    std::filesystem::path programFolder; ///< holds the settings file
    std::filesystem::path rootFolder;    ///< the folder above it, shared by the editions
    std::string userName;                ///< empty: the default name
    int screenHeight = 0, screenWidth = 0;
};

/// Name of the settings file.
inline constexpr std::string_view SettingsFileName = "RETURN.INI";

/// A value of the settings file that does not fit its key's kind; reading stops there, what stood before it stays. The
/// text says what was expected and gives the number and the content of the line.
class SettingsValueError : public Failure {
public:
    explicit SettingsValueError(const std::string& text) : Failure(TypeMismatchNumber, text) {}
};

/// The record with every key at its default.
Settings SetDefaultConfiguration(const SettingsSurroundings& surroundings);

/// Fills the record with the defaults, then from this year's file, or at the first start of a new year from last
/// year's. Throws SettingsValueError, or FileError for a file that cannot be read, with `settings` holding all that was
/// read before and made consistent.
void ReadConfiguration(Settings& settings, const SettingsSurroundings& surroundings);

/// Writes every key in order to the program folder's file; a number outside its kind's range is held at the bound, so
/// that the file can always be read back. False for a file that cannot be written, which is left as it was.
bool WriteConfiguration(const Settings& settings, const std::filesystem::path& programFolder);

/// Path and display name of the folder selected in last year's settings file, found in `priorProgramFolder`; with no
/// selection in the file that of the first. Empty if there is no such file or entry.
std::string LastYearSelectedPath(const std::filesystem::path& priorProgramFolder);
std::string LastYearSelectedFolderName(const std::filesystem::path& priorProgramFolder);

} // namespace quillmere
