#include "declaration/AdjustmentNotepad.h"
#include "declaration/DeclarationWords.h"
#include "desktop/layouts/DialogParts.h"
#include "desktop/layouts/Layouts.h"
#include "edition/Class1ARates.h"
#include "edition/Edition.h"
#include "frame/Text.h"

#include <array>

namespace quillmere::layouts {

namespace {

constexpr TextLook Heading{.size = 14, .bold = true};
constexpr TextLook Bold{.size = 12, .bold = true};
constexpr TextLook Small{.size = 11};
constexpr TextLook Italic{.size = 11, .italic = true};
constexpr TextLook Formula{.size = 14, .align = TextLook::Align::Right};

// Columns of both sides, as on the form.
constexpr int SectionX = 10, SectionWidth = 856;
constexpr int TextX = 44, TextWidth = 596;
constexpr int TickX = 40, TickTextX = 68;
constexpr int LetterX = 652, AmountX = 692, AmountWidth = 120, MarkX = 820;
constexpr int Row = 27;

void Section(Layout& layout, int y, int height, std::string_view number, std::string_view heading)
{
    layout.Panel(SectionX, y, SectionWidth, height);
    layout.Letter(SectionX, y, number);
    layout.Text(TextX, y + 3, TextWidth, heading, Heading);
}

/// An amount of the return: its letter, the box, and the mark if it is liable to Class 1A.
void LetteredAmount(Layout& layout, int y, std::string_view letter, std::string_view box, bool class1A)
{
    layout.Letter(LetterX, y, letter);
    layout.Text(AmountX - 12, y + 3, 12, "£");
    layout.Place(box, AmountX, y, AmountWidth);
    if (class1A)
        layout.Tag(MarkX, y);
}

/// The rate, which is no amount of money.
void LetteredRate(Layout& layout, int y, std::string_view letter, std::string_view box)
{
    layout.Letter(LetterX, y, letter);
    layout.Place(box, AmountX, y, AmountWidth);
}

constexpr int AddressWidth = 380;
void Address(Layout& layout, int x, int y, std::string_view caption, std::string_view stem)
{
    layout.Text(x, y, AddressWidth, caption, Bold);
    for (int line = 1; line <= 6; ++line)
        layout.Place(Numbered(stem, line), x, y + 18 + (line - 1) * 25, AddressWidth);
}

void Heads(Layout& layout, int y)
{
    layout.Text(SectionX, y, SectionWidth, words::Class1AReturn, {.size = 17, .bold = true});
    layout.Text(SectionX, y + 22, SectionWidth, words::ExpensesReturn, {.size = 17, .bold = true});
    layout.Text(SectionX + SectionWidth - 300, y + 2, 300, words::YearEnded(),
                {.size = 16, .bold = true, .italic = true, .align = TextLook::Align::Right});
    y += 54;
    layout.Text(SectionX, y + 3, 200, "Employer PAYE reference");
    layout.Place("EmployerRef", 200, y, 250);
    layout.Text(SectionX, y + Row + 3, 200, "Accounts office reference");
    layout.Place("AccOfficeRef", 200, y + Row, 250);
    Address(layout, SectionX, y + 66, "Employer name and address", "EmployerAdd");
    Address(layout, SectionX + SectionWidth - AddressWidth, y + 66, "Return Address for form", "ReturnAdd");
    y += 246;
    layout.Text(SectionX, y, SectionWidth,
                "If this return replaces one that was issued automatically, some of your details may be missing above. "
                "Please fill them in before you send it.",
                Italic, 16);
    layout.Text(SectionX, y + 18, SectionWidth,
                "Please read section 3 before completing this return. Do not declare amounts that have been reported "
                "under the Taxed Award Scheme.",
                Small, 16);
}

constexpr int Section1Height = 158;
void Section1(Layout& layout, int y)
{
    Section(layout, y, Section1Height, "1", "Class 1A National Insurance contributions (NICs) due");
    layout.Text(TextX, y + 31, TextWidth, words::TotalBenefits);
    LetteredAmount(layout, y + 28, "A", "Section1BoxA", true);
    layout.Place("AdjustTick", TickX, y + 58, 22);
    layout.Text(TickTextX, y + 56, TextWidth - 24, words::AdjustFigures, Bold, 32);
    layout.Text(TextX, y + 99, TextWidth, words::MultiplyByRate);
    LetteredRate(layout, y + 96, "B", "Section1BoxB");
    layout.Text(TextX, y + 129, 300, words::NICsPayable, Bold);
    layout.Text(LetterX - 212, y + 128, 200, "box A * rate in box B", Formula);
    LetteredAmount(layout, y + 126, "C", "Section1BoxC", true);
}

constexpr int Section2Height = 226;
void Section2(Layout& layout, int y)
{
    Section(layout, y, Section2Height, "2", "Employer declaration");
    layout.Text(TextX, y + 26, TextWidth, "Tick the relevant box and fill in the appropriate details", Italic);
    constexpr int Wide = SectionX + SectionWidth - TickTextX - 20;
    layout.Place("NoBenefitTick", TickX, y + 48, 22);
    layout.Text(TickTextX, y + 50, Wide, words::NoBenefits(), {}, 32);
    layout.Place("DeclarationTick", TickX, y + 88, 22);
    layout.Text(TickTextX, y + 90, Wide, words::FormsEnclosed(), {}, 48);
    layout.Place("Check4", TickX, y + 134, 22);
    layout.Text(TickTextX, y + 136, 316, words::FormsSent());
    layout.Place("InlRevOffice", 378, y + 133, 190);
    layout.Text(574, y + 136, 190, words::OfficeOn);
    layout.Place("SentDate", 764, y + 133, 94);
    layout.Text(
        TickX, y + 170, SectionWidth - 60,
        "I declare that all the details on this form are fully and truly stated to the best of my knowledge and "
        "belief.",
        Bold);
    layout.Text(
        TickX, y + 190, SectionWidth - 60,
        "The printed return has room for the signature of the employer, or of any person authorised to sign for "
        "the employer, for the date and for the capacity in which it is signed.",
        Italic, 32);
}

constexpr int Section3Height = 270;
void Section3(Layout& layout, int y)
{
    Section(layout, y, Section3Height, "3", "Notes for employer");
    constexpr int Wide = SectionX + SectionWidth - TextX - 20;
    y += 30;
    const auto note = [&](std::string_view text, int lines, TextLook look = {}) {
        layout.Text(TextX, y, Wide, text, look, lines * 16);
        y += lines * 16 + 8;
    };
    note(words::SendingNote(), 2);
    note(words::PayingNote(), 2);
    y -= 6;
    note(edition::Class1APaymentPage, 1, Bold);
    note(words::LateNote(), 1);
    note(words::NothingDueNote, 1, Bold);
    note(words::BoxesNote(), 2);
    note(words::FormsNote(), 3);
}

constexpr int Section4Height = 366;
void Section4(Layout& layout, int y)
{
    Section(layout, y, Section4Height, "4", words::Adjustments);
    layout.Text(TextX, y + 28, SectionWidth - 60, words::AdjustmentNote(), Small);
    layout.Text(TextX, y + 57, TextWidth, words::BenefitsOfSection1);
    LetteredAmount(layout, y + 54, "A", "Section4BoxA", true);

    const auto adjustment = [&](int top, std::string_view words, std::string_view amountWords, std::string_view letter,
                                std::string_view amount, std::string_view description, std::string_view picture,
                                bool class1A) {
        layout.Text(TextX, top, TextWidth, words);
        layout.Text(LetterX, top, 200, amountWords, Small);
        layout.Place(picture, TextX - 6, top + 19, 26, 26);
        layout.Text(TextX + 26, top + 24, 110, words::BriefDescription, Small);
        layout.Place(description, 186, top + 21, 450);
        LetteredAmount(layout, top + 21, letter, amount, class1A);
    };
    layout.Line(TextX, y + 90, SectionX + SectionWidth - TextX - 10, 1);
    layout.Text(TextX, y + 98, TextWidth, "Enter any adjustment to the figure in box A in the two boxes below", Italic);
    adjustment(y + 122, words::AddAmounts, words::AmountToBeAdded, "B", "Section4BoxB", "Section4DescriptionB",
               "Image1", true);
    adjustment(y + 182, words::DeductAmounts, words::AmountToBeDeducted, "C", "Section4BoxC", "Section4DescriptionC",
               "Image2", false);
    layout.Line(TextX, y + 242, SectionX + SectionWidth - TextX - 10, 1);

    const auto result = [&](int top, std::string_view words, std::string_view letter, std::string_view box) {
        layout.Text(TextX, top + 3, 400, words, Bold);
        LetteredAmount(layout, top, letter, box, true);
    };
    result(y + 254, words::TotalDue, "D", "Section4BoxD");
    // On the form "minus" is a word of its own in the gap of the sum, which the sum's size makes wide enough.
    constexpr std::string_view Minus = "minus";
    constexpr TextLook MinusLook{.size = 12, .align = TextLook::Align::Centre};
    constexpr int GapWidth = 38, BehindGap = 37;
    layout.Text(LetterX - 212, y + 256, 200, "box A + box B          box C", Formula);
    layout.Text(LetterX - 12 - BehindGap - GapWidth, y + 258, GapWidth, Minus, MinusLook);
    layout.Text(TextX, y + 295, TextWidth, words::MultiplyByRate);
    LetteredRate(layout, y + 292, "E", "Section4BoxE");
    result(y + 328, words::NICsPayable, "F", "Section4BoxF");
    layout.Text(LetterX - 212, y + 330, 200, "box D x box E", Formula);
}

Layout AdjustmentWindow(std::string_view heading, const AdjustmentSchedule& schedule)
{
    return ScheduleWindow(heading, schedule.columns, OkDeleteCancel);
}

} // namespace

Layout P11DDeclaration()
{
    Layout layout{.width = 2 * SectionX + SectionWidth};
    layout.headerHeight = 42;
    layout.Panel(0, 0, layout.width, 41);
    layout.Line(0, 41, layout.width, 1);
    layout.Text(SectionX, 12, 500, "P11D(b)  " + std::string(edition::YearLabelLong), {.size = 16, .bold = true});
    ButtonRow(layout, SectionX + SectionWidth, 7, {"Print", "Cancel"});

    int y = 54;
    Heads(layout, y);
    y += 346;
    Section1(layout, y);
    y += Section1Height + 6;
    Section2(layout, y);
    y += Section2Height + 14;
    layout.Line(SectionX, y, SectionWidth, 2);
    layout.Text(SectionX, y + 8, SectionWidth, "Overleaf", Italic);
    y += 30;
    Section3(layout, y);
    y += Section3Height + 6;
    Section4(layout, y);
    layout.height = y + Section4Height + 10;
    return layout;
}

Layout P11DBNotepad1()
{
    return AdjustmentWindow(words::AddAmounts, AdjustmentSchedules[0]);
}

Layout P11DBNotepad2()
{
    return AdjustmentWindow(words::DeductAmounts, AdjustmentSchedules[1]);
}

} // namespace quillmere::layouts
