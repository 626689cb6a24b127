#include "printing/forms/P11DBPages.h"

#include "edition/Edition.h"
#include "edition/FormWords.h"
#include "frame/Tick.h"
#include "printing/forms/FormTables.h"

#include <array>

namespace quillmere {

namespace {

/// The points in which the variants differ. None of them has a purpose; all are kept.
struct VariantRow {
    std::string_view heading;    ///< of section 2
    Weight addressLabel;         ///< weight of "Employer name and address"
    int topOfReturnLines;        ///< how often the line is drawn: twice at one place comes out heavier
    double section1TickY;        ///< line of section 1's tick
    std::string_view emptyTotal; ///< what an empty total prints
    std::string_view guide;      ///< the guide to Class 1A contributions
    std::string_view references; ///< how the sentence on references begins
};

// Kept: in a batch the tick comes out 5 mm higher, beside the box.
constexpr auto Variants = std::to_array<VariantRow>({
    {.heading = "Employer declaration",
     .addressLabel = Weight::Plain,
     .topOfReturnLines = 2,
     .section1TickY = 135,
     .emptyTotal = "0.00",
     .guide = edition::form::NotesGuideRecord,
     .references = "References in this return to forms P11D and HM Revenue & Customs office should be read as "
                   "including the return"},
    {.heading = "Employer's declaration",
     .addressLabel = Weight::Bold,
     .topOfReturnLines = 1,
     .section1TickY = 130,
     .emptyTotal = "",
     .guide = edition::form::NotesGuideTotals,
     .references = "references in this Return to forms P11D and HM Revenue & Customs office should be read as "
                   "including the return"},
});

const VariantRow& RowOf(DeclarationVariant variant)
{
    return Variants.at(static_cast<std::size_t>(variant));
}

// Plain, and in one place italic: in bold the words would run into each other.
constexpr Font BandFont{7};

/// A black band with words in white.
void DrawBand(FormSheet& sheet, const Panel& band, std::span<const Label> words)
{
    PageLayer& page = sheet.page;
    page.vsFillBox(page.ColBlack, page.ColBlack, 0, band.x1, band.y1, band.x2, band.y2);
    page.vsFontName("Arial");
    page.vsTextColor(page.ColWhite);
    for (const Label& label : words) {
        const BelongsTo tag(page, sheet.AddTag(label.x, label.y));
        page.vsFont(label.font.size, false, label.font.weight == Weight::Italic);
        page.vsTextLeft(label.x, label.y, label.text);
    }
    page.vsTextColor(page.ColBlack);
}

// ---- the declaration side

constexpr auto Headings = std::to_array<Label>({
    ReadAs(Reads::Title, LabelAt({11, Weight::Bold}, 80, 9, "Return of Class 1A National Insurance contributions due")),
    ReadAs(Reads::Title, LabelAt({11, Weight::Bold}, 80, 14, "Return of expenses and benefits - Employer declaration")),
    LabelAt({17, Weight::Bold}, 35, 7, "HM Revenue"),
    LabelAt({17, Weight::Bold}, 35, 14, "& Customs"),
    LabelAt({8}, 8, 21, "Employer PAYE"),
    LabelAt({8}, 8, 24, "reference", "EmployerReference"),
    LabelAt({8}, 8, 30, "Accounts office"),
    LabelAt({8}, 8, 33, "reference", "AccountsOffReference"),
});

constexpr Label YearEnded = LabelAt({11, Weight::Bold}, 142, 21, edition::form::DeclarationYear);

/// One set of corner marks, for the employer's address; the other, for the return address, is the same further right.
constexpr auto AddressCorners = std::to_array<FormLineRow>({
    {8, 43, 12, 43},
    {8, 43, 8, 47},
    {74, 43, 70, 43},
    {74, 43, 74, 47},
    {74, 74, 70, 74},
    {74, 74, 74, 70},
    {8, 74, 12, 74},
    {8, 74, 8, 70},
});
constexpr double ReturnAddressCorners = 108;

constexpr auto LinesToTopOfReturn = std::to_array<Label>({
    LabelAt({9, Weight::BoldItalic}, 8, 87,
            "If this replaces a return that was issued automatically it may not show all of your details."),
    LabelAt({9, Weight::Italic}, 143.5, 87, " If this is so, please fill in the"),
});

constexpr Label TopOfReturn =
    LabelAt({9, Weight::Italic}, 8, 91, "top of this return before you send it to your HM Revenue & Customs office.");

constexpr auto LinesBelowAddresses = std::to_array<Label>({
    LabelAt({9.5, Weight::Bold}, 8, 95.5, "Please read the notes overleaf before completing this return."),
    LabelAt({9.5}, 8, 100, "Do not declare any amounts already reported under the Taxed Award Scheme arrangements."),
    LabelAt({10, Weight::Bold}, 104, 35, "Please return this form to the address shown below",
            "ReturnAdd1 ReturnAdd2 ReturnAdd3 ReturnAdd4 ReturnAdd5 ReturnAdd6"),
});

constexpr auto DarkPanels = std::to_array<Panel>({
    {7, 106, 190, 162},
    {7, 162.5, 190, 267},
});

constexpr auto LightPanels = std::to_array<Panel>({
    {12, 113, 185, 138},
    {12, 143, 185, 150},
    {12, 151, 185, 160.5},
});

constexpr auto Sections = std::to_array<SectionMark>({
    {"1", 7, 106, "Class 1A National Insurance contributions (NICs) due"},
    {"2", 7, 162.5, "Employer declaration"},
});

constexpr auto Boxes = std::to_array<FormBox>({
    {PrintedKind::Entry, 15, 131, 20.5}, // section 1: adjustments
    {PrintedKind::Pound, 163, 116},      // A
    {PrintedKind::Letter, 158, 116, 0, "A"},
    {PrintedKind::Tag1A, 185, 116},
    {PrintedKind::Letter, 158, 143, 0, "B"}, // B
    {PrintedKind::Entry, 163.5, 143, 185},
    {PrintedKind::Pound, 163, 154}, // C
    {PrintedKind::Letter, 158, 154, 0, "C"},
    {PrintedKind::Tag1A, 185, 154},
    {PrintedKind::Entry, 10, 179.5, 15.5}, // section 2: the three statements
    {PrintedKind::Entry, 10, 190.5, 15.5},
    {PrintedKind::Entry, 10, 202, 15.5},
    {PrintedKind::Entry, 60.5, 202, 114},    // sent on
    {PrintedKind::Entry, 143.5, 202, 189},   // sent to
    {PrintedKind::Entry, 143.5, 235.5, 189}, // date
    {PrintedKind::Entry, 49, 250, 128},      // capacity
});

constexpr Panel SignatureBox{49, 229, 128, 241};
constexpr Panel RateBand{158, 151.5, 190, 154};
constexpr auto RateBandWords = std::to_array<Label>({
    LabelAt(BandFont, 164, 154, "box A x rate in box B"),
});

constexpr auto Section1Labels = std::to_array<Label>({
    LabelAt({10, Weight::Bold}, 15, 110.5, "Class 1A National Insurance contributions (NICs) due"),
    LabelAt({8}, 15, 118.5, "Enter the total benefits liable to Class 1A NICs from forms P11D.  (This is the total of"),
    LabelAt({8}, 15, 122.5, "the Class 1A NICs boxes on forms P11D.  There is a quick guide on page 5 of CWG5"),
    LabelAt({8}, 15, 126.5, "if you are not sure.)", "Section1ABox"),
    LabelAt({8, Weight::Bold}, 24, 133.5, "If you need to adjust the figures entered in box A, do not complete"),
    LabelAt({8, Weight::Bold}, 24, 137.5, "box C below, tick this box and complete Section 4 overleaf.",
            "Section1Tick"),
    LabelAt({8}, 15, 147.5, "Multiply by Class 1A NICs rate", "Section1Rate"),
    LabelAt({8, Weight::Bold}, 15, 158, "Class 1A NICs payable", "Section1CBox"),
});

constexpr auto Section2Labels = std::to_array<Label>({
    LabelAt({8, Weight::Italic}, 11, 175, "Tick the relevant box and fill in the appropriate details"),
    LabelAt({8}, 18.5, 182,
            "No expenses payments or benefits of the type to be returned on forms P11D have been or will be provided "
            "for the"),
    LabelAt({8}, 18.5, 186, edition::form::DeclarationNoForms, "Section2Tick1"),
    LabelAt({8}, 18.5, 191,
            "I confirm that all details of expenses payments and benefits that have to be returned on forms P11D for "
            "the year ended"),
    LabelAt({8}, 18.5, 195, edition::LongYearEnd),
    LabelAt({8, Weight::Bold}, 35.5, 195, "are enclosed"),
    LabelAt({8}, 54, 195,
            "with this declaration.  I declare that the details on these forms are fully and truly stated to the best"),
    LabelAt({8}, 18.5, 199, "of my knowledge and belief.", "Section2Tick2"),
    LabelAt({8}, 18.5, 204, "Forms P11D for the year ended"),
    LabelAt({8}, 18.5, 208, edition::form::DeclarationSent, "Section2Tick3 SentToBox"),
    LabelAt({8}, 115, 204, "HM Revenue"),
    LabelAt({8}, 115, 208, "& Customs office on", "SentToDate"),
    LabelAt({8}, 11, 216.5,
            "I confirm that details of expenses payments and benefits that have to be returned on forms P11D have been "
            "sent to"),
    LabelAt({8}, 11, 220.5, "HM Revenue & Customs."),
    LabelAt({8, Weight::Bold}, 11, 225.5,
            "I declare that all the details on this form are fully and truly stated to the best of my knowledge and "
            "belief."),
    LabelAt({8, Weight::Bold}, 11, 240.5, "Signature of employer"),
    LabelAt({8, Weight::Bold}, 135, 240.5, "Date"),
    LabelAt({8, Weight::Italic}, 11, 248.5,
            "The declaration should be signed by the employer or any person authorised to do so."),
    LabelAt({8, Weight::Bold}, 11, 254, "Capacity in which signed"),
});

constexpr auto Values = std::to_array<FormValue>({
    {"EmployerReference", At::Left, 36, 23, 90},
    {"AccountsOffReference", At::Left, 36, 33, 90},
    {"EmployerAdd1", At::Left, 12, 48, 74},
    {"EmployerAdd2", At::Left, 12, 53, 74},
    {"EmployerAdd3", At::Left, 12, 58, 74},
    {"EmployerAdd4", At::Left, 12, 63, 74},
    {"EmployerAdd5", At::Left, 12, 68, 74},
    {"EmployerAdd6", At::Left, 12, 73, 74},
    {"ReturnAdd1", At::Left, 120, 48, 182},
    {"ReturnAdd2", At::Left, 120, 53, 182},
    {"ReturnAdd3", At::Left, 120, 58, 182},
    {"ReturnAdd4", At::Left, 120, 63, 182},
    {"ReturnAdd5", At::Left, 120, 68, 182},
    {"ReturnAdd6", At::Left, 120, 73, 182},
});

constexpr auto Section2Values = std::to_array<FormValue>({
    {"Section2Tick1", At::Left, 12, 183.5, 0, ValueKind::Tick},
    {"Section2Tick2", At::Left, 12, 194.5, 0, ValueKind::Tick},
    {"Section2Tick3", At::Left, 12, 206.5, 0, ValueKind::Tick},
    {"SentToBox", At::Left, 65, 206.5, 114},
    {"SentToDate", At::Left, 145, 206.5, 189},
});

void DrawTotal(FormSheet& sheet, const VariantRow& row, std::string_view field, double y, std::string_view total)
{
    const BelongsTo element(sheet.page, sheet.FigureOf(field, 182, y));
    sheet.page.vsTextRight(182, y, total.empty() ? row.emptyTotal : total);
}

/// The rate of Class 1A contributions, which is no field of the record.
void DrawRate(FormSheet& sheet, std::string_view field, double y)
{
    const BelongsTo element(sheet.page, sheet.FigureOf(field, 180, y));
    sheet.page.vsTextRight(180, y, edition::Class1ARateText);
}

// ---- the notes side

constexpr auto NotesDarkPanels = std::to_array<Panel>({
    {7, 0, 190, 138},
    {7, 139, 190, 272},
});
constexpr auto NotesWhitePanels = std::to_array<Panel>({
    {8.5, 9, 188, 133},
});

constexpr auto NotesSections = std::to_array<SectionMark>({
    {"3", 7, 0, "Notes for employer"},
    {"4", 7, 139, "Adjustments to Class 1A NICs"},
});

constexpr auto Section4Bands = std::to_array<Panel>({
    {15.5, 163, 184, 172},
    {15.5, 182, 184, 194.5},
    {15.5, 202, 184, 214.5},
    {15.5, 223, 184, 232},
    {15.5, 242, 184, 248},
    {15.5, 260, 184, 270},
});

constexpr auto Section4Boxes = std::to_array<FormBox>({
    {PrintedKind::Letter, 156.5, 166.5, 0, "A"},
    {PrintedKind::Pound, 162, 166.5},
    {PrintedKind::Tag1A, 184, 166.5},
    {PrintedKind::Letter, 156.5, 189, 0, "B"},
    {PrintedKind::Entry, 47, 189, 152},
    {PrintedKind::Pound, 162, 189},
    {PrintedKind::Tag1A, 184, 189},
    {PrintedKind::Letter, 156.5, 209, 0, "C"},
    {PrintedKind::Entry, 47, 209, 152},
    {PrintedKind::Pound, 162, 209},
    {PrintedKind::Letter, 156.5, 225, 0, "D"},
    {PrintedKind::Pound, 162, 225},
    {PrintedKind::Tag1A, 184, 225},
    {PrintedKind::Letter, 156.5, 242, 0, "E"},
    {PrintedKind::Entry, 162, 242, 184},
    {PrintedKind::Letter, 156.5, 262, 0, "F"},
    {PrintedKind::Pound, 162, 262},
    {PrintedKind::Tag1A, 184, 262},
});

constexpr Panel TotalBand{156.5, 223, 189, 225.5};
constexpr auto TotalBandWords = std::to_array<Label>({
    LabelAt(BandFont, 158, 225, "box A + box B"),
    LabelAt({7, Weight::Italic}, 174, 225, "minus"),
    LabelAt(BandFont, 181, 225, "box C"),
});
constexpr Panel PayableBand{156.5, 260, 189, 262.5};
constexpr auto PayableBandWords = std::to_array<Label>({
    LabelAt(BandFont, 162, 262, "box D x rate in box E"),
});

constexpr auto NotesToWebAddress = std::to_array<Label>({
    LabelAt({11, Weight::Bold}, 15, 4, "Notes for employer"),
    LabelAt(
        {9}, 11.5, 15,
        "You should give each employee or director a copy of their P11D information and send the completed forms P11D"),
    LabelAt({9}, 11.5, 19, "and P11D(b) to your HM Revenue & Customs office by "),
    LabelAt({9, Weight::Bold}, 90, 19, edition::form::NotesReturnDay),
    LabelAt({9}, 11.5, 23,
            "Pay Class 1A NICs shown on the return to the accounts office.  Details on how to pay can be found on our "
            "website, go to"),
});

constexpr Colour Navy{0, 0, 128};
constexpr Label WebAddress = LabelAt({9, Weight::Bold}, 11.5, 26.2, edition::Class1APaymentPage);

constexpr auto NotesToGuide = std::to_array<Label>({
    LabelAt({9}, 83.5, 26, "You should pay by:"),
    LabelAt({9, Weight::Bold}, 14, 31, edition::form::NotesPostDay),
    LabelAt({9}, 26, 31, "if the payment is by post or cash, "),
    LabelAt({9}, 73, 31, "or"),
    LabelAt({9, Weight::Bold}, 14, 35, edition::ElectronicPaymentDueDay),
    LabelAt({9}, 26, 35, "if the payment is by an approved electronic method."),
    LabelAt({9}, 11.5, 40, "Where "),
    LabelAt({9, Weight::Bold}, 22, 40, edition::form::NotesElectronicDayWeekend),
    LabelAt({9}, 34, 40,
            "falls on a weekend or bank holiday, your payment should reach our bank account no later than the last"),
    LabelAt({9}, 11.5, 44, "bank working day before "),
    LabelAt({9, Weight::Bold}, 47, 44, edition::form::NotesElectronicDayBefore),
    LabelAt({9}, 60, 44, edition::form::NotesLate),
    LabelAt({9}, 11.5, 48,
            "penalties may be charged.  You may also be penalised or prosecuted if you make false statements."),
    LabelAt(
        {9, Weight::Bold}, 11.5, 55,
        "Please note if you have already indicated on your form P35 that forms P11D and P11D(b) are not due, there"),
    LabelAt({9, Weight::Bold}, 11.5, 59, "is no need to send this return. "),
    LabelAt({9, Weight::Bold}, 11.5, 66.5, "Class 1A National Insurance contributions (NICs) due"),
    LabelAt(
        {9}, 11.5, 70.5,
        "Employers pay Class 1A NICs on benefits which have to be returned on forms P11D except where Class 1 NICs or"),
    LabelAt({9}, 11.5, 74.5,
            "Class 1B NICs are due.  To help you identify the benefits where Class 1A NICs are due, the boxes on the "
            "form P11D"),
    LabelAt({9}, 11.5, 78.5,
            "are marked 1A.  Before completing the forms P11D and this return, read the P11D(Guide) and booklet"),
});

constexpr auto NotesToReferences = std::to_array<Label>({
    LabelAt({9, Weight::Italic}, 31, 82.5,
            "Class 1A National Insurance contributions on benefits in kind.  A guide for employers."),
    LabelAt({9, Weight::Bold}, 11.5, 88, "Forms P11D"),
    LabelAt({9}, 11.5, 92,
            "As an employer you must complete a return of expenses payments and benefits, form P11D, for each employee "
            "paid"),
    LabelAt({9}, 11.5, 96, edition::form::NotesWhoReturns),
    LabelAt({9}, 14, 102,
            "you have provided them with expenses or benefits which are not covered by a dispensation or"),
    LabelAt({9}, 14, 105.5, "PAYE Settlement Agreement"),
    LabelAt({9}, 14, 110.5, "you have arranged for expenses or benefits to be provided by a third party."),
    LabelAt({9}, 11.5, 115,
            "Send this declaration with the completed forms P11D to your HM Revenue & Customs office.  If you choose "
            "to send"),
    LabelAt({9}, 11.5, 119, "the forms P11D in batches, send the declaration with the final batch."),
});

constexpr auto NotesToEnd = std::to_array<Label>({
    LabelAt({9}, 11.5, 130, "of expenses payments and benefits by magnetic media to Shipley Data Centre."),
    LabelAt({10, Weight::Bold}, 15, 143, "Adjustments to Class 1A NICs"),
    LabelAt({9, Weight::Bold}, 11.5, 153,
            "Complete this section if you need to adjust the total benefits shown as liable to Class 1A NICs."),
    LabelAt({9}, 11.5, 158, "Paragraph 18 of CWG5 explains circumstances in which you may need to make adjustments."),
    LabelAt({9}, 19, 170, "Enter the total benefits liable to Class 1A NICs from Section 1, box A overleaf",
            "Section4ABox"),
    LabelAt({8}, 16.5, 180, "Using the two boxes below enter any adjustment to the figures in box A"),
    LabelAt({8}, 24, 188, "Add any amounts not included in box A on which Class 1A NICs are due"),
    LabelAt({8}, 154.5, 188, "Amount to be added", "Section4BBox"),
    LabelAt({8}, 24, 193, "Brief description", "Section4BDesc"),
    LabelAt({8}, 24, 208, "Deduct any amounts included in box A on which Class 1A NICs are"),
    LabelAt({8, Weight::Bold}, 111.5, 208, "not"),
    LabelAt({8}, 117.5, 208, "due"),
    LabelAt({8}, 154, 208, "Amount to be deducted", "Section4CBox"),
    LabelAt({8}, 24, 213, "Brief description", "Section4CDesc"),
    LabelAt({8, Weight::Bold}, 19, 229, "Total of benefits on which Class 1A NICs are due", "Section4DBox"),
    LabelAt({8}, 19, 246, "Multiply by Class 1A NICs rate", "Section4Rate"),
    LabelAt({8, Weight::Bold}, 19, 267, "Class 1A NICs payable", "Section4FBox"),
});

struct Bullet {
    double x, y;
};
constexpr auto Bullets = std::to_array<Bullet>({
    {11.5, 29.5},
    {11.5, 33.5},
    {11.5, 100.5},
    {11.5, 109},
    {19, 187},
    {19, 207},
});
constexpr Colour BulletColour{1, 0, 0};
constexpr double BulletRadius = 0.5;

constexpr auto Section4Values = std::to_array<FormValue>({
    {"Section4ABox", At::Right, 182, 170.5},
    {"Section4BBox", At::Right, 182, 193},
    {"Section4BDesc", At::Left, 49, 193.5, 152},
    {"Section4CBox", At::Right, 182, 213},
    {"Section4CDesc", At::Left, 49, 213.5, 152},
    {"Section4DBox", At::Right, 182, 229},
});
constexpr auto PayableValue = std::to_array<FormValue>({
    {"Section4FBox", At::Right, 182, 266},
});

} // namespace

void PrintP11DBDeclaration(PageLayer& page, DeclarationVariant variant, const FieldReader& read)
{
    const VariantRow& row = RowOf(variant);
    FormSheet sheet(page);
    page.vsBookmark("P11D(b) declaration");
    page.BeginFixedPart();

    DrawLabels(sheet, Headings);
    page.vsBox(FormLine, 35, 17, 90, 25);
    page.vsBox(FormLine, 35, 27, 90, 35);
    DrawLabel(sheet, YearEnded);
    for (const double dx : {0.0, ReturnAddressCorners})
        for (const FormLineRow& line : AddressCorners)
            page.vsLine(FormLine, line.x1 + dx, line.y1, line.x2 + dx, line.y2);
    page.vsTriangle(page.ColBlack, 118, 37, 122, 37, 120, 39);
    page.vsTriangle(page.ColBlack, 176, 37, 180, 37, 178, 39);

    DrawLabel(sheet, LabelAt({8, row.addressLabel}, 8, 40.5, "Employer name and address",
                             "EmployerAdd1 EmployerAdd2 EmployerAdd3 EmployerAdd4 EmployerAdd5 EmployerAdd6"));
    DrawLabels(sheet, LinesToTopOfReturn);
    DrawLabel(sheet, TopOfReturn);
    for (int line = 1; line < row.topOfReturnLines; ++line)
        DrawLabel(sheet, ReadAs(Reads::Nothing, TopOfReturn));
    DrawLabels(sheet, LinesBelowAddresses);

    if (page.HasShading()) {
        DrawPanels(page, DarkPanels, page.ColDark);
        DrawPanels(page, LightPanels, page.ColLight);
    }
    DrawSectionMarks(sheet, Sections);
    // Specimens of the tick in the form's own wording, no values.
    page.vsTick(17.5, 130);
    page.vsTick(12.5, 179);
    DrawBoxes(sheet, Boxes);
    DrawBand(sheet, RateBand, RateBandWords);
    page.vsFillBox(page.ColBlack, page.ColWhite, 0, SignatureBox.x1, SignatureBox.y1, SignatureBox.x2, SignatureBox.y2);
    DrawLabels(sheet, Section1Labels);
    DrawLabel(sheet, LabelAt({10, Weight::Bold}, 15, 167, row.heading));
    DrawLabels(sheet, Section2Labels);

    page.EndFixedPart();
    BeginValues(page);
    DrawValues(sheet, Values, read);
    DrawTotal(sheet, row, "Section1ABox", 120, read("Section1ABox"));
    DrawRate(sheet, "Section1Rate", 147.5);
    DrawTotal(sheet, row, "Section1CBox", 158, read("Section1CBox"));
    if (IsSet(read("Section1Tick")))
        DrawTick(page, sheet.EntryOf("Section1Tick"), 17, row.section1TickY);
    DrawValues(sheet, Section2Values, read);

    DrawIdentifier(page, 278, edition::form::P11DBIdentifier);
}

void PrintP11DBNotes(PageLayer& page, DeclarationVariant variant, const FieldReader& read)
{
    const VariantRow& row = RowOf(variant);
    FormSheet sheet(page);
    page.vsBookmark("P11D(b) notes and adjustments");
    page.BeginFixedPart();

    if (page.HasShading()) {
        DrawPanels(page, NotesDarkPanels, page.ColDark);
        DrawPanels(page, NotesWhitePanels, page.ColWhite);
    }
    DrawSectionMarks(sheet, NotesSections);
    // Kept: these bands alone are there without shading too.
    DrawPanels(page, Section4Bands, page.ColLight);
    DrawBoxes(sheet, Section4Boxes);
    DrawBand(sheet, TotalBand, TotalBandWords);
    DrawBand(sheet, PayableBand, PayableBandWords);

    DrawLabels(sheet, NotesToWebAddress);
    page.vsTextColor(Navy);
    DrawLabel(sheet, WebAddress);
    DrawLabels(sheet, NotesToGuide);
    DrawLabel(sheet, LabelAt({9}, 11.5, 82.5, row.guide));
    DrawLabels(sheet, NotesToReferences);
    DrawLabel(sheet, LabelAt({9}, 11.5, 126, row.references));
    DrawLabels(sheet, NotesToEnd);
    for (const Bullet& bullet : Bullets)
        page.vsCircle(BulletColour, bullet.x, bullet.y, BulletRadius);

    page.EndFixedPart();
    BeginValues(page);
    DrawValues(sheet, Section4Values, read);
    DrawRate(sheet, "Section4Rate", 246.5);
    DrawValues(sheet, PayableValue, read);

    DrawIdentifier(page, 278, edition::form::P11DBIdentifier);
}

} // namespace quillmere
