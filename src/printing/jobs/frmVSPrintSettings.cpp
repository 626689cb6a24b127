#include "printing/jobs/frmVSPrintSettings.h"

#include "frame/Amount.h"
#include "frame/Session.h"
#include "printing/jobs/PrintSystem.h"

#include <array>
#include <vector>

namespace quillmere {

namespace {

constexpr int Pages = 3;

/// Kept: the name of a file takes digits and a point only, as every text box of this screen does.
constexpr KeyFilter DigitsAndPoint = MoneyKeyFilter;

constexpr BoxRow Number(std::string_view name, std::string_view spoken)
{
    return {.name = name, .filter = DigitsAndPoint, .spoken = spoken};
}

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "tbsSettings", .kind = BoxKind::Tabs, .spoken = "Pages of the settings"},
    {.name = "picSettings", .kind = BoxKind::Frame, .first = 1, .last = Pages},

    {.name = "cmbPrinter", .kind = BoxKind::DropDown, .spoken = "Printer"},
    {.name = "cmdSetup", .kind = BoxKind::Button, .text = "Printer &Setup"},
    Number("txtVSTop", "Printer: Top Offset (mm)"),
    Number("txtVSLeft", "Printer: Left Offset (mm)"),
    Number("txtVSScale", "Printer: Scale (%)"),
    OptionRow("optDuplexMode", 2, "Double-sided", 'B'),
    OptionRow("optDuplexMode", 1, "Single-sided", 'G'),
    OptionRow("optDuplexMode", 0, "Printer default", 'P'),

    Number("txtPDFTop", "PDF file: Top Offset (mm)"),
    Number("txtPDFLeft", "PDF file: Left Offset (mm)"),
    Number("txtPDFScale", "PDF file: Scale (%)"),
    OptionRow("optFile", 0, "Client File Name", 'N'),
    OptionRow("optFile", 1, "Fixed As:", 'F'),
    {.name = "txtFile", .filter = DigitsAndPoint, .spoken = "Default File Name"},

    {.name = "chkDuplexPadding", .kind = BoxKind::Tick, .text = "Insert padding pages for duplex printing"},
    Number("txtAlignMethod", "Text Alignment, Method"),
    Number("txtAlignV", "Text Alignment, Vertical"),
    Number("txtAlignH", "Text Alignment, Horizontal"),
    OptionRow("optFont", 1, "Times New Roman", 'T'),
    OptionRow("optFont", 0, "Arial", 'A'),
    OptionRow("optPreview", 1, "PDF File", 'F'),
    OptionRow("optPreview", 0, "Normal", 'N'),
    OptionRow("optSection", 1, "None", 'O'),
    OptionRow("optSection", 0, "Document", 'U'),
    OptionRow("optTicks", 2, "Blank", 'B'),
    OptionRow("optTicks", 0, "Normal", 'R'),
    {.name = "chkShading", .kind = BoxKind::Tick, .text = "Use Shading"},
    Number("txtBlack", "Black"),
    Number("txtDark", "Dark Grey"),
    Number("txtLight", "Light Grey"),
    Number("txtWhite", "White"),

    {.name = "cmdDefaults", .kind = BoxKind::Button, .text = "&Defaults"},
    {.name = "cmdClose", .kind = BoxKind::Button, .text = "&Close"},
});

/// A box with a number, and the setting that it shows.
template<typename Value>
struct NumberRow {
    std::string_view box;
    Value Settings::*setting;
};

constexpr auto RealNumbers = std::to_array<NumberRow<double>>({
    {"txtVSTop", &Settings::vsTop},
    {"txtVSLeft", &Settings::vsLeft},
    {"txtVSScale", &Settings::vsScale},
    {"txtPDFTop", &Settings::vsPdfTop},
    {"txtPDFLeft", &Settings::vsPdfLeft},
    {"txtPDFScale", &Settings::vsPdfScale},
    {"txtAlignV", &Settings::vsAlignTextY},
    {"txtAlignH", &Settings::vsAlignTextX},
});

constexpr auto WholeNumbers = std::to_array<NumberRow<int>>({
    {"txtAlignMethod", &Settings::vsAlignTextMethod},
    {"txtBlack", &Settings::vsBlack},
    {"txtDark", &Settings::vsDark},
    {"txtLight", &Settings::vsLight},
    {"txtWhite", &Settings::vsWhite},
});

/// A group of options whose indexes are the values of a setting.
struct ChoiceRow {
    std::string_view box;
    int Settings::*setting;
};

constexpr auto Choices = std::to_array<ChoiceRow>({
    {"optDuplexMode", &Settings::vsDuplexMode},
    {"optFile", &Settings::vsPdfFileOption},
    {"optPreview", &Settings::reportPreview},
    {"optSection", &Settings::vsSection},
    {"optTicks", &Settings::reportTicks},
});

constexpr int BlankTicks = 2;

constexpr std::string_view TimesNewRoman = "Times New Roman";
constexpr std::string_view Arial = "Arial";

} // namespace

frmVSPrintSettings::frmVSPrintSettings(Session& session, PrintSystem& printing)
    : Screen(session, "frmVSPrintSettings", ShowMode::Modal, "Report Settings"), printing(printing)
{
    AddBoxes(Rows);
    SetButtons("cmdClose", {});
    box("tbsSettings").SetEntries({"Printer", "PDF File", "Reports"});
    for (const auto& row : RealNumbers)
        OnLeave(row.box, [](Box& number) { number.SetText(PlainNumber(ReadNumber(number.Text()))); });
    for (const auto& row : WholeNumbers)
        OnLeave(row.box, [](Box& number) { number.SetText(std::to_string(ReadWholeNumber(number.Text()))); });
    OnChoose("tbsSettings", [this](Box& tabs) { ShowPage(tabs.Selected() + 1); });
    OnClick("cmdSetup", [this](Box&) {
        this->session.platform.ShowPrinterSetup();
        FillPrinters(ChosenPrinter());
    });
    OnClick("cmdDefaults", [this](Box&) { Defaults(); });
}

bool frmVSPrintSettings::Load()
{
    ShowPage(1);
    FillPrinters(session.settings.vsPrinter);
    ShowSettings(session.settings);
    return true;
}

void frmVSPrintSettings::ShowSettings(const Settings& settings)
{
    for (const auto& row : RealNumbers)
        box(row.box).SetText(PlainNumber(settings.*row.setting));
    for (const auto& row : WholeNumbers)
        box(row.box).SetText(std::to_string(settings.*row.setting));
    for (const ChoiceRow& row : Choices)
        ChooseOption(row.box, settings.*row.setting);
    ChooseOption("optFont", settings.reportFont == TimesNewRoman ? 1 : 0);
    box("txtFile").SetText(settings.vsPdfFileName);
    box("chkDuplexPadding").SetTicked(settings.reportPadding);
    box("chkShading").SetTicked(settings.reportShading);
}

void frmVSPrintSettings::ShowPage(int page)
{
    box("tbsSettings").Select(page - 1);
    for (int other = 1; other <= Pages; ++other)
        box("picSettings", other).SetVisible(other == page);
}

void frmVSPrintSettings::FillPrinters(std::optional<std::string> chosen)
{
    PageEngine& vp = printing.engine;
    vp.Device("");
    if (!chosen)
        chosen = vp.Device();
    std::vector<std::string> names;
    int selected = -1;
    for (int index = 0; index < vp.NDevices(); ++index) {
        if (vp.Devices(index) == chosen)
            selected = index;
        names.push_back(vp.Devices(index));
    }
    box("cmbPrinter").SetEntries(std::move(names));
    box("cmbPrinter").Select(selected);
    printer = *chosen;
}

std::string frmVSPrintSettings::ChosenPrinter() const
{
    const Box& list = box("cmbPrinter");
    return list.Selected() < 0 ? printer : list.Text();
}

void frmVSPrintSettings::Defaults()
{
    if (!session.messages.Ask(Caption(),
                              "All current Report Settings will be replaced with their defaults.\n\n"
                              "Do you wish to proceed?",
                              Icon::Question, Answer::No))
        return;
    FillPrinters(std::nullopt);
    ShowSettings(SetDefaultConfiguration({}));
}

void frmVSPrintSettings::Unload()
{
    Settings& settings = session.settings;
    settings.vsPrinter = ChosenPrinter();
    for (const auto& row : RealNumbers)
        settings.*row.setting = ReadNumber(box(row.box).Text());
    for (const auto& row : WholeNumbers)
        settings.*row.setting = ReadWholeNumber(box(row.box).Text());
    // A value that has no option of its own stays as it is until one is chosen.
    for (const ChoiceRow& row : Choices)
        settings.*row.setting = ChosenOption(row.box).value_or(settings.*row.setting);
    // Kept: the ticks are blank or normal whatever else the settings file said; so is the font one of the two.
    settings.reportTicks = ChosenOption("optTicks") == BlankTicks ? BlankTicks : 0;
    settings.reportFont = ChosenOption("optFont") == 1 ? TimesNewRoman : Arial;
    settings.vsPdfFileName = box("txtFile").Text();
    settings.reportPadding = box("chkDuplexPadding").Ticked();
    settings.reportShading = box("chkShading").Ticked();
    // A document drawn with the old settings is not to be looked at with the new ones.
    session.screens.Unload("frmVSPrint");
}

} // namespace quillmere
