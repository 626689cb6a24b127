#include "KeptListing.h"
#include "PdfReadBack.h"
#include "clientdb/store/TableLayouts.h"
#include "frame/CheckedFile.h"
#include "frame/Text.h"
#include "printing/forms/ExtraCarSheets.h"
#include "printing/forms/P11DBPages.h"
#include "printing/forms/P11DPages.h"
#include "support/PrintRoom.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <ostream>
#include <set>
#include <sstream>

namespace quillmere::pages {
namespace {

using test::FieldMap;
using test::PrintRoom;
using test::ReaderOf;

using PageRoutine = std::function<void(PageLayer&, const FieldReader&)>;

/// A page of a form under one set of settings. Its listing is kept in expected/.
struct PageCase {
    const char* name;
    const char* record = nullptr; ///< file of input/; null: every field empty
    PageRoutine print;
    const char* table;
    bool shading = true;
    const char* font = "Arial";
    int preview = 0;
    double scale = 100, left = 0;
    int alignMethod = 0;
    double alignX = 0, alignY = 0;
};

void PrintTo(const PageCase& one, std::ostream* out)
{
    *out << one.name;
}

void PrintDeclarationOfRecord(PageLayer& page, const FieldReader& read)
{
    PrintP11DBDeclaration(page, DeclarationVariant::Record, read);
}
void PrintDeclarationOfTotals(PageLayer& page, const FieldReader& read)
{
    PrintP11DBDeclaration(page, DeclarationVariant::Totals, read);
}
void PrintNotesOfRecord(PageLayer& page, const FieldReader& read)
{
    PrintP11DBNotes(page, DeclarationVariant::Record, read);
}
void PrintNotesOfTotals(PageLayer& page, const FieldReader& read)
{
    PrintP11DBNotes(page, DeclarationVariant::Totals, read);
}

void PrintCars3And4(PageLayer& page, const FieldReader& read)
{
    DrawExtraCarSheet(page, Cars3And4, "AB123456C", read);
}
void PrintCars5And6(PageLayer& page, const FieldReader& read)
{
    DrawExtraCarSheet(page, Cars5And6, "AB123456C", read);
}

const PageCase Cases[] = {
    {.name = "forms/P11D1-full", .record = "P11D.txt", .print = PrintP11D1, .table = "P11D"},
    {.name = "forms/P11D1-empty", .print = PrintP11D1, .table = "P11D"},
    {.name = "forms/P11D1-longest", .record = "longest.txt", .print = PrintP11D1, .table = "P11D"},
    {.name = "forms/P11D1-plain", .record = "P11D.txt", .print = PrintP11D1, .table = "P11D", .shading = false},
    {.name = "forms/P11D1-times",
     .record = "P11D.txt",
     .print = PrintP11D1,
     .table = "P11D",
     .font = "Times New Roman"},
    {.name = "forms/P11D1-pdf", .record = "P11D.txt", .print = PrintP11D1, .table = "P11D", .preview = 1},
    {.name = "forms/P11D1-small", .record = "P11D.txt", .print = PrintP11D1, .table = "P11D", .scale = 50, .left = 10},
    {.name = "forms/P11D1-large", .record = "P11D.txt", .print = PrintP11D1, .table = "P11D", .scale = 120, .left = -3},
    {.name = "forms/P11D2-full", .record = "P11D.txt", .print = PrintP11D2, .table = "P11D"},
    {.name = "forms/P11D2-empty", .print = PrintP11D2, .table = "P11D"},
    {.name = "forms/P11D2-longest", .record = "longest.txt", .print = PrintP11D2, .table = "P11D"},
    {.name = "forms/P11D2-plain", .record = "P11D.txt", .print = PrintP11D2, .table = "P11D", .shading = false},
    {.name = "forms/P11D2-times",
     .record = "P11D.txt",
     .print = PrintP11D2,
     .table = "P11D",
     .font = "Times New Roman"},
    {.name = "forms/P11DB-declaration-full",
     .record = "P11DB.txt",
     .print = PrintDeclarationOfRecord,
     .table = "P11DB"},
    {.name = "forms/P11DB-declaration-empty", .print = PrintDeclarationOfRecord, .table = "P11DB"},
    {.name = "forms/P11DB-declaration-plain",
     .record = "P11DB.txt",
     .print = PrintDeclarationOfRecord,
     .table = "P11DB",
     .shading = false},
    {.name = "forms/P11DB-declaration-times",
     .record = "P11DB.txt",
     .print = PrintDeclarationOfRecord,
     .table = "P11DB",
     .font = "Times New Roman"},
    {.name = "forms/P11DB-declaration-totals",
     .record = "P11DB.txt",
     .print = PrintDeclarationOfTotals,
     .table = "P11DB"},
    {.name = "forms/P11DB-declaration-totals-empty", .print = PrintDeclarationOfTotals, .table = "P11DB"},
    {.name = "forms/P11DB-notes-full", .record = "P11DB.txt", .print = PrintNotesOfRecord, .table = "P11DB"},
    {.name = "forms/P11DB-notes-empty", .print = PrintNotesOfRecord, .table = "P11DB"},
    {.name = "forms/P11DB-notes-plain",
     .record = "P11DB.txt",
     .print = PrintNotesOfRecord,
     .table = "P11DB",
     .shading = false},
    {.name = "forms/P11DB-notes-times",
     .record = "P11DB.txt",
     .print = PrintNotesOfRecord,
     .table = "P11DB",
     .font = "Times New Roman"},
    {.name = "forms/P11DB-notes-totals", .record = "P11DB.txt", .print = PrintNotesOfTotals, .table = "P11DB"},
    {.name = "forms/P11DB-declaration-longest",
     .record = "longest-declaration.txt",
     .print = PrintDeclarationOfRecord,
     .table = "P11DB"},
    {.name = "forms/P11DB-notes-longest",
     .record = "longest-declaration.txt",
     .print = PrintNotesOfRecord,
     .table = "P11DB"},
    {.name = "cars/3-4-record", .record = "ExtraCars.txt", .print = PrintCars3And4, .table = "ExtraCars"},
    {.name = "cars/5-6-record", .record = "ExtraCars.txt", .print = PrintCars5And6, .table = "ExtraCars"},
    {.name = "cars/3-4-empty", .print = PrintCars3And4, .table = "ExtraCars"},
    {.name = "cars/3-4-longest", .record = "longest-cars.txt", .print = PrintCars3And4, .table = "ExtraCars"},
    {.name = "cars/3-4-times",
     .record = "ExtraCars.txt",
     .print = PrintCars3And4,
     .table = "ExtraCars",
     .font = "Times New Roman"},
    // Every form at the scales and alignments that the settings allow.
    {.name = "forms/P11D2-small", .record = "P11D.txt", .print = PrintP11D2, .table = "P11D", .scale = 50, .left = 10},
    {.name = "forms/P11D2-large", .record = "P11D.txt", .print = PrintP11D2, .table = "P11D", .scale = 120, .left = -3},
    {.name = "forms/P11DB-declaration-small",
     .record = "P11DB.txt",
     .print = PrintDeclarationOfRecord,
     .table = "P11DB",
     .scale = 50,
     .left = 10},
    {.name = "forms/P11DB-declaration-large",
     .record = "P11DB.txt",
     .print = PrintDeclarationOfRecord,
     .table = "P11DB",
     .scale = 120,
     .left = -3},
    {.name = "forms/P11DB-notes-small",
     .record = "P11DB.txt",
     .print = PrintNotesOfRecord,
     .table = "P11DB",
     .scale = 50,
     .left = 10},
    {.name = "forms/P11DB-notes-large",
     .record = "P11DB.txt",
     .print = PrintNotesOfRecord,
     .table = "P11DB",
     .scale = 120,
     .left = -3},
    {.name = "cars/5-6-small",
     .record = "ExtraCars.txt",
     .print = PrintCars5And6,
     .table = "ExtraCars",
     .scale = 50,
     .left = 10},
    {.name = "cars/5-6-large",
     .record = "ExtraCars.txt",
     .print = PrintCars5And6,
     .table = "ExtraCars",
     .scale = 120,
     .left = -3},
    {.name = "forms/P11D1-method-1",
     .record = "P11D.txt",
     .print = PrintP11D1,
     .table = "P11D",
     .alignMethod = 1,
     .alignX = 15,
     .alignY = -20},
    {.name = "forms/P11D1-method-2",
     .record = "P11D.txt",
     .print = PrintP11D1,
     .table = "P11D",
     .alignMethod = 2,
     .alignX = 15,
     .alignY = 0.25},
    {.name = "forms/P11D2-method-1",
     .record = "P11D.txt",
     .print = PrintP11D2,
     .table = "P11D",
     .alignMethod = 1,
     .alignX = 15,
     .alignY = -20},
    {.name = "forms/P11DB-declaration-method-2",
     .record = "P11DB.txt",
     .print = PrintDeclarationOfRecord,
     .table = "P11DB",
     .alignMethod = 2,
     .alignY = 0.25},
    {.name = "forms/P11DB-notes-method-1",
     .record = "P11DB.txt",
     .print = PrintNotesOfRecord,
     .table = "P11DB",
     .alignMethod = 1,
     .alignX = 15,
     .alignY = -20},
    {.name = "cars/3-4-method-2",
     .record = "ExtraCars.txt",
     .print = PrintCars3And4,
     .table = "ExtraCars",
     .alignMethod = 2,
     .alignY = 0.25},
};

/// Lines of name=text; # begins a comment.
FieldMap ReadRecord(const char* name)
{
    FieldMap fields;
    if (name == nullptr)
        return fields;
    std::ifstream file(std::filesystem::path(PAGES) / "input" / name);
    EXPECT_TRUE(file) << name;
    for (std::string line; std::getline(file, line);)
        if (const std::size_t at = line.find('='); at != std::string::npos && line.front() != '#')
            fields[line.substr(0, at)] = line.substr(at + 1);
    return fields;
}

class FormPages : public ::testing::TestWithParam<PageCase> {
protected:
    PrintRoom room;
    std::set<std::string> readFields;
    const std::shared_ptr<const Document> ended = Print();
    const Document& document = *ended;

private:
    std::shared_ptr<const Document> Print()
    {
        room.settings.reportShading = GetParam().shading;
        room.settings.reportFont = GetParam().font;
        room.settings.reportPreview = GetParam().preview;
        room.settings.vsScale = GetParam().scale;
        room.settings.vsLeft = GetParam().left;
        room.settings.vsAlignTextMethod = GetParam().alignMethod;
        room.settings.vsAlignTextX = GetParam().alignX;
        room.settings.vsAlignTextY = GetParam().alignY;
        const FieldMap fields = ReadRecord(GetParam().record);
        const FieldReader read = [&](std::string_view name) {
            readFields.insert(std::string(name));
            return ReaderOf(fields)(name);
        };
        EXPECT_EQ(room.job.OpenPrintJob("Marlow & Sons Ltd - José María O'Neill-Smythe"), Opening::Open);
        GetParam().print(room.page, read);
        room.job.vsEndDoc();
        return room.vp.Ended();
    }
};

/// A case of its own file, for the programs that read PDF files.
class FormPdf : public FormPages {
protected:
    FormPdf() { WriteFileChecked(Pdf(), room.vp.Pdf()); }
    std::filesystem::path Pdf() const { return folder / "page.pdf"; }

    const test::TemporaryFolder folder;
};

TEST_P(FormPages, AreDrawnAsKept)
{
    ExpectAsKept(GetParam().name, Listing(document, 1));
}

TEST_P(FormPages, PrintFieldsOfTheirTableOnly)
{
    const TableFields& fields = FieldsOf(FindTable(GetParam().table));
    for (const std::string& name : readFields)
        EXPECT_NE(fields.Find(name), TableFields::None) << name;
}

/// Does a later fill lie on the middle of an earlier text?
TEST_P(FormPages, LeaveNoTextCovered)
{
    const auto operations = document.Page(1);
    for (std::size_t at = 0; at < operations.size(); ++at) {
        const Operation& text = operations[at];
        if (text.kind != OperationKind::Text)
            continue;
        const TextStyle& style = document.TextStyleOf(text);
        const double x = text.x1 + text.x2 / 2;
        const double y = text.y1 + TextHeight(style.face, style.size) / 2;
        for (const Operation& later : operations.subspan(at))
            if (later.kind == OperationKind::Rectangle && document.ShapeStyleOf(later).filled) {
                EXPECT_FALSE(x > later.x1 && x < later.x2 && y > later.y1 && y < later.y2) << document.TextOf(text);
            }
    }
}

/// However long the texts of a record are: none of them runs into another text, or off the sheet. Figures are never
/// cut.
TEST_P(FormPages, LetNoWordPrintOverAnother)
{
    const auto isWord = [](const Operation& text) {
        return text.alignment == Alignment::Left || text.alignment == Alignment::Centre;
    };
    const auto isValue = [this](const Operation& text) {
        const TextStyle& style = document.TextStyleOf(text);
        return style.size == 10 * GetParam().scale / 100 && IsBold(style.face) && style.colour == Black;
    };
    std::vector<const Operation*> texts;
    for (const Operation& operation : document.Page(1))
        if (operation.kind == OperationKind::Text && !Trim(document.TextOf(operation)).empty())
            texts.push_back(&operation);
    for (const Operation* word : texts) {
        if (!isWord(*word) || !isValue(*word))
            continue;
        if (GetParam().scale <= 100) {
            EXPECT_LT(word->x1 + word->x2, SheetWidth) << document.TextOf(*word);
        }
        const double middle =
            word->y1 + TextHeight(document.TextStyleOf(*word).face, document.TextStyleOf(*word).size) / 2;
        for (const Operation* other : texts) {
            const TextStyle& style = document.TextStyleOf(*other);
            if (other == word || middle < other->y1 || middle > other->y1 + TextHeight(style.face, style.size))
                continue;
            EXPECT_TRUE(word->x1 >= other->x1 + other->x2 || word->x1 + word->x2 <= other->x1)
                << document.TextOf(*word) << " over " << document.TextOf(*other);
        }
    }
}

/// No text in the colour of what it stands on.
TEST_P(FormPages, LeaveEveryTextReadable)
{
    const auto operations = document.Page(1);
    for (std::size_t at = 0; at < operations.size(); ++at) {
        const Operation& text = operations[at];
        if (text.kind != OperationKind::Text)
            continue;
        const TextStyle& style = document.TextStyleOf(text);
        const double x = text.x1 + text.x2 / 2;
        const double y = text.y1 + TextHeight(style.face, style.size) / 2;
        Colour ground = White;
        for (const Operation& earlier : operations.first(at))
            if (earlier.kind == OperationKind::Rectangle && document.ShapeStyleOf(earlier).filled && x > earlier.x1 &&
                x < earlier.x2 && y > earlier.y1 && y < earlier.y2)
                ground = document.ShapeStyleOf(earlier).brush;
        EXPECT_GE(std::abs(ground.red - style.colour.red), 100) << document.TextOf(text);
    }
}

/// Far less than the half millimetre that a reader would notice.
constexpr double FileTolerance = 0.03;

double Points(double twips)
{
    return twips / TwipsPerPoint;
}

void ExpectNear(double found, double recorded, const std::string& what)
{
    EXPECT_NEAR(found, Points(recorded), FileTolerance) << what;
}

void ExpectColour(const Drawn& found, Colour colour, const std::string& what)
{
    std::istringstream parts(found.colour);
    std::vector<int> levels;
    for (double part = 0; parts >> part;)
        levels.push_back(static_cast<int>(std::lround(part * 255)));
    if (levels.size() == 1)
        levels.resize(3, levels.front());
    EXPECT_EQ(levels, (std::vector<int>{colour.red, colour.green, colour.blue})) << what;
}

void ExpectPath(const Drawn& found, const Operation& operation, const Document& document, const std::string& what)
{
    std::vector<double> corners;
    switch (operation.kind) {
    case OperationKind::Line:
        corners = {operation.x1, operation.y1, operation.x2, operation.y2};
        break;
    case OperationKind::Rectangle:
        corners = {operation.x1, operation.y2, operation.x2, operation.y2,
                   operation.x2, operation.y1, operation.x1, operation.y1};
        break;
    case OperationKind::Polygon: {
        const auto points = document.CornersOf(operation);
        corners.assign(points.begin(), points.end());
        break;
    }
    case OperationKind::Circle: {
        double leftmost = 1e9;
        double rightmost = -1e9;
        for (std::size_t at = 0; at < found.points.size(); at += 2) {
            leftmost = std::min(leftmost, found.points[at]);
            rightmost = std::max(rightmost, found.points[at]);
        }
        ExpectNear(leftmost, operation.x1 - operation.x2, what);
        ExpectNear(rightmost, operation.x1 + operation.x2, what);
        ExpectNear(found.points.at(1), operation.y1, what);
        return;
    }
    case OperationKind::Text:
        return;
    }
    ASSERT_EQ(found.points.size(), corners.size()) << what;
    for (std::size_t at = 0; at < corners.size(); ++at)
        ExpectNear(found.points[at], corners[at], what);
}

void ExpectText(const Drawn& found, const Operation& operation, const Document& document, const std::string& what)
{
    const TextStyle& style = document.TextStyleOf(operation);
    const std::string_view text = document.TextOf(operation);
    // A blank behind it keeps it apart from the next one, for who joins the texts.
    EXPECT_TRUE(Utf8(found.text) == text || Utf8(found.text) == std::string(text) + " ") << Utf8(found.text) << what;
    EXPECT_NEAR(found.size, style.size, 0.006) << what;
    EXPECT_EQ(found.font.find("Bold") != std::string::npos, IsBold(style.face)) << what;
    EXPECT_EQ(found.font.find("Ital") != std::string::npos, IsItalic(style.face)) << what;
    EXPECT_EQ(found.font.find("Serif") != std::string::npos, FamilyOf(style.face) == "Times New Roman") << what;
    ExpectColour(found, style.colour, what);
    // Each character where the measuring of what stands before it puts it.
    ASSERT_EQ(found.points.size(), found.text.size() * 2) << what;
    for (std::size_t at = 0; at < found.text.size(); ++at) {
        const std::string before = Utf8(std::u32string_view(found.text).substr(0, at));
        ExpectNear(found.points[at * 2], operation.x1 + TextWidth(style.face, style.size, before), what);
        ExpectNear(found.points[at * 2 + 1], operation.y1 + TextAscent(style.face, style.size), what);
    }
}

TEST_P(FormPdf, HoldsEverythingThatWasRecordedAtItsPlace)
{
    const std::vector<Drawn> found = TraceOf(Pdf(), 1);
    std::size_t at = 0;
    for (const Operation& operation : document.Page(1)) {
        const std::string what = operation.kind == OperationKind::Text
                                     ? std::string(document.TextOf(operation))
                                     : fmt::format("shape at {:.2f} {:.2f} mm", operation.x1 / UnitsPerMillimetre,
                                                   operation.y1 / UnitsPerMillimetre);
        if (operation.kind == OperationKind::Text) {
            ASSERT_LT(at, found.size());
            ASSERT_EQ(found[at].kind, Drawn::Kind::Text) << what;
            ExpectText(found[at++], operation, document, what);
            continue;
        }
        const ShapeStyle& style = document.ShapeStyleOf(operation);
        if (style.filled) {
            ASSERT_LT(at, found.size());
            ASSERT_EQ(found[at].kind, Drawn::Kind::Fill) << what;
            ExpectColour(found[at], style.brush, what);
            ExpectPath(found[at++], operation, document, what);
        }
        ASSERT_LT(at, found.size());
        ASSERT_EQ(found[at].kind, Drawn::Kind::Stroke) << what;
        ExpectColour(found[at], style.pen, what);
        EXPECT_NEAR(found[at].width, Points(style.width), 0.006) << what;
        ExpectPath(found[at++], operation, document, what);
    }
    EXPECT_EQ(at, found.size()) << "and nothing more";
}

TEST_P(FormPdf, IsASoundFileOfOneSheetWithItsFontsInIt)
{
    const ProgramRun check = RunProgram({"qpdf", "--check", Pdf().string()});
    EXPECT_EQ(check.status, 0) << check.output;
    EXPECT_EQ(check.output.find("WARNING"), std::string::npos) << check.output;

    const ProgramRun info = RunProgram({"pdfinfo", Pdf().string()});
    EXPECT_NE(info.output.find("Pages:           1\n"), std::string::npos) << info.output;
    EXPECT_NE(info.output.find("(A4)"), std::string::npos) << info.output;
    EXPECT_NE(info.output.find("Title:           Marlow & Sons Ltd - José María O'Neill-Smythe\n"), std::string::npos)
        << info.output;
    EXPECT_NE(info.output.find("Subject:         Expenses and benefits 2010-11\n"), std::string::npos) << info.output;

    const ProgramRun fonts = RunProgram({"pdffonts", Pdf().string()});
    std::istringstream lines(fonts.output);
    int count = 0;
    for (std::string line; std::getline(lines, line);)
        if (line.find("Liberation") != std::string::npos) {
            ++count;
            EXPECT_NE(line.find("yes yes yes"), std::string::npos) << "embedded, subset, with characters: " << line;
        }
    EXPECT_GE(count, 3) << fonts.output;
    EXPECT_EQ(fonts.output.find(" no "), std::string::npos) << fonts.output;
}

/// The cases whose texts neither leave the sheet nor run into each other, which a reader of words would pass over.
class FormWords : public FormPdf {};

TEST_P(FormWords, AreGivenToAReader)
{
    const ProgramRun run = RunProgram({"pdftotext", "-raw", Pdf().string(), "-"});
    std::string found = run.output;
    std::erase(found, '\f');
    // Every text in one piece; blanks and line ends are the reader's own.
    std::string flat;
    for (const char character : found)
        if (character != ' ' && character != '\n')
            flat += character;
    for (const Operation& operation : document.Page(1)) {
        if (operation.kind != OperationKind::Text)
            continue;
        std::string wanted;
        for (const char character : document.TextOf(operation))
            if (character != ' ')
                wanted += character;
        EXPECT_NE(flat.find(wanted), std::string::npos) << document.TextOf(operation);
    }
}

TEST_P(FormWords, StayOnTheSheet)
{
    for (const Operation& operation : document.Page(1)) {
        if (operation.kind != OperationKind::Text)
            continue;
        const TextStyle& style = document.TextStyleOf(operation);
        EXPECT_GE(operation.x1, 0) << document.TextOf(operation);
        EXPECT_LE(operation.x1 + operation.x2, SheetWidth) << document.TextOf(operation);
        constexpr double CapitalHeight = 0.73; // of the size
        EXPECT_GE(operation.y1 + TextAscent(style.face, style.size) - CapitalHeight * style.size * TwipsPerPoint, 0)
            << document.TextOf(operation);
        EXPECT_LE(operation.y1 + TextHeight(style.face, style.size), SheetHeight) << document.TextOf(operation);
    }
}

std::string NameOf(const ::testing::TestParamInfo<PageCase>& info)
{
    std::string name = info.param.name;
    std::ranges::replace_if(
        name, [](char character) { return character == '-' || character == '/'; }, '_');
    return name;
}

TEST_P(FormWords, KeepWhatOurFilesPromise)
{
    const ProgramRun check = CheckPdf({Pdf().string()});
    EXPECT_EQ(check.status, 0) << check.output;
}

/// Forms that are read out in the order that is kept.
class FormReading : public FormPdf {};

TEST_P(FormReading, GoesThroughThePageAsKept)
{
    const std::string name = GetParam().name;
    const std::string reading = CheckPdf({"--reading", Pdf().string()}).output;
    ExpectAsKept("reading" + name.substr(name.find('/')), reading);
    // Whoever looks for a field that no label names finds it under its own name.
    for (const std::string& field : readFields)
        EXPECT_EQ(reading.find('[' + field), std::string::npos) << field;
}

INSTANTIATE_TEST_SUITE_P(Forms, FormPages, ::testing::ValuesIn(Cases), NameOf);
INSTANTIATE_TEST_SUITE_P(Forms, FormPdf, ::testing::ValuesIn(Cases), NameOf);

std::vector<PageCase> OrdinaryCases()
{
    std::vector<PageCase> ordinary;
    std::ranges::copy_if(Cases, std::back_inserter(ordinary), [](const PageCase& one) {
        return one.scale <= 100 && (one.record == nullptr || !std::string_view(one.record).starts_with("longest"));
    });
    return ordinary;
}
INSTANTIATE_TEST_SUITE_P(Forms, FormWords, ::testing::ValuesIn(OrdinaryCases()), NameOf);

std::vector<PageCase> CasesToBeRead()
{
    std::vector<PageCase> cases;
    std::ranges::copy_if(Cases, std::back_inserter(cases), [](const PageCase& one) {
        const std::string_view name = one.name;
        return name.ends_with("-full") || name.ends_with("-record") || name.ends_with("-empty");
    });
    return cases;
}
INSTANTIATE_TEST_SUITE_P(Forms, FormReading, ::testing::ValuesIn(CasesToBeRead()), NameOf);

// ---- what the pages do with what they print

std::string PageOf(const PageRoutine& print, const FieldMap& fields, const std::function<void(PrintRoom&)>& setUp = {})
{
    PrintRoom room;
    room.settings.vsTop = -2; // against the added margin: listings show the places of the lists
    if (setUp)
        setUp(room);
    EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::Open);
    print(room.page, ReaderOf(fields));
    return Listing(room.Ended(), 1);
}

bool Has(const std::string& page, const std::string& piece)
{
    return page.find(piece) != std::string::npos;
}

/// The lines of one listing that another one lacks.
std::vector<std::string> Beyond(const std::string& page, const std::string& other)
{
    std::multiset<std::string> lines;
    std::istringstream otherLines(other);
    for (std::string line; std::getline(otherLines, line);)
        lines.insert(line);
    std::vector<std::string> beyond;
    std::istringstream pageLines(page);
    for (std::string line; std::getline(pageLines, line);)
        if (const auto found = lines.find(line); found != lines.end())
            lines.erase(found);
        else
            beyond.push_back(line);
    return beyond;
}

using Lines = std::vector<std::string>;

TEST(P11DPage1, HasNoGreyWithoutShading)
{
    const std::string page =
        PageOf(PrintP11D1, ReadRecord("P11D.txt"), [](PrintRoom& room) { room.settings.reportShading = false; });
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line.substr(0, line.find('"')));
        for (std::string word; words >> word;)
            if (word == "pen" || word == "fill" || word == "colour") {
                words >> word;
                EXPECT_TRUE(word == "0" || word == "255") << line;
            }
    }
    EXPECT_TRUE(Has(page, "fill 0\ntext left 161.00 85.00 10 bold colour 255 \"  13\""));
}

TEST(P11DPage1, ChangesTheFontOfValuesAlone)
{
    const FieldMap fields = ReadRecord("P11D.txt");
    const std::string arial = PageOf(PrintP11D1, fields);
    const std::string times =
        PageOf(PrintP11D1, fields, [](PrintRoom& room) { room.settings.reportFont = "Times New Roman"; });
    EXPECT_EQ(Beyond(arial, times).size(), Beyond(times, arial).size());
    for (const std::string& line : Beyond(times, arial))
        EXPECT_TRUE(Has(line, "\"Times New Roman\" 10 bold")) << line;
    EXPECT_GT(Beyond(times, arial).size(), 60U);
}

TEST(P11DPage1, DrawsTheNumberAtItsTopInTheFontLeftInForce)
{
    PrintRoom room;
    const FieldMap fields = {{"NatIns", "AB123456C"}};
    const auto topNumber = [&] {
        EXPECT_EQ(room.job.OpenPrintJob("Document"), Opening::Open);
        PrintP11D1(room.page, ReaderOf(fields));
        const Document& document = room.Ended();
        for (const Operation& operation : document.Page(1))
            if (document.TextOf(operation) == "AB123456C")
                return FamilyOf(document.TextStyleOf(operation).face);
        return std::string_view();
    };
    room.settings.reportFont = "Times New Roman";
    EXPECT_EQ(topNumber(), "Arial") << "the first document of a run";
    EXPECT_EQ(topNumber(), "Times New Roman") << "the values of the document before";
}

TEST(P11DPage1, PrintsATickOfReinstatedFuelWithoutADate)
{
    const std::string none = PageOf(PrintP11D1, {});
    EXPECT_EQ(Beyond(PageOf(PrintP11D1, {{"FDateWithdrawnTick1", "1"}}), none),
              (Lines{"line 103.50 241.50 104.00 242.50 pen 0 width 0.40",
                     "line 104.00 242.50 106.00 239.50 pen 0 width 0.40"}));
    EXPECT_EQ(Beyond(PageOf(PrintP11D1, {{"FDateWithdrawnTick2", "True"}}), none),
              (Lines{"line 162.50 241.50 163.00 242.50 pen 0 width 0.40",
                     "line 163.00 242.50 165.00 239.50 pen 0 width 0.40"}));
    EXPECT_EQ(Beyond(PageOf(PrintP11D1, {{"FDateWithdrawnTick1", "0"}, {"FNoC021", "0"}, {"DirectorTick", "0"}}), none),
              Lines{});
}

TEST(P11DPage1, AlignsTheRightEndOfAnAmountInBrackets)
{
    const std::string page = PageOf(PrintP11D1, {{"ACashEqu", "   (12.00)"}});
    EXPECT_TRUE(Has(page, "text right 188.00 85.00 10 bold \"   (12.00)\"\n"));
}

TEST(P11DPage1, PrintsAZeroOnlyIfTheRecordHoldsOne)
{
    const std::string none = PageOf(PrintP11D1, {});
    EXPECT_FALSE(Has(none, "0.00\""));
    EXPECT_EQ(Beyond(PageOf(PrintP11D1, {{"B2", "      0.00"}}), none),
              Lines{"text right 188.00 96.00 10 bold \"      0.00\""});
}

TEST(P11DPage1, KeepsTheLineOfNoLength)
{
    EXPECT_TRUE(Has(PageOf(PrintP11D1, {}), "line 156.50 195.00 156.50 195.00 pen 0 width 0.20\n"));
}

TEST(P11DPage1, IndentsTwoRunOnTextsOnEveryRoad)
{
    const auto onPdf = [](PrintRoom& room) {
        room.settings.reportPreview = 1;
        room.settings.vsPdfTop = -2;
    };
    const auto onPaper = [](PrintRoom& room) {
        room.door.printers = {"Office"};
        room.job.route = Route::Printer;
    };
    const std::string preview = PageOf(PrintP11D1, {});
    EXPECT_TRUE(Has(preview, "8 italic \"  \"\ntext run 87.90 140.00 8 italic \"(See P11D Guide for"));
    EXPECT_TRUE(Has(preview, "7.5 italic \"  \"\ntext run 33.37 144.00 7.5 italic \"If more than two cars were made"));
    EXPECT_EQ(PageOf(PrintP11D1, {}, onPdf), preview);
    EXPECT_EQ(PageOf(PrintP11D1, {}, onPaper), preview);
}

TEST(P11DPage2, PrintsTheFigureOfTheSecondLoanOrSaysWhereItIs)
{
    const std::string none = PageOf(PrintP11D2, {});
    const auto drawn = [&](const char* value) { return Beyond(PageOf(PrintP11D2, {{"HLoanCashEqu2", value}}), none); };
    EXPECT_EQ(drawn("     12.50"), Lines{"text right 188.00 87.50 10 bold \"12.50\""});
    EXPECT_EQ(drawn("As per attached"), Lines{"text left 125.00 93.00 10 bold \"See attached schedule\""});
    EXPECT_EQ(drawn("abc"), Lines{"text right 188.00 87.50 10 bold \"abc\""});
    EXPECT_EQ(drawn("abcde"), Lines{"text right 188.00 87.50 10 bold \"abcde\""});
    EXPECT_EQ(drawn("abcdef"), Lines{"text left 125.00 93.00 10 bold \"See attached schedule\""});
    EXPECT_EQ(drawn("0.00"), Lines{"text right 188.00 87.50 10 bold \"0.00\""});
    EXPECT_EQ(drawn("000.00"), Lines{"text left 125.00 93.00 10 bold \"See attached schedule\""});
    EXPECT_EQ(drawn("  (112.50)"), Lines{"text right 188.00 87.50 10 bold \"(112.50)\""});
    EXPECT_EQ(drawn("   "), Lines{});
}

TEST(P11DPage2, MarksEntertainmentWithATickOrACross)
{
    const std::string none = PageOf(PrintP11D2, {});
    const auto drawn = [&](const char* value) { return Beyond(PageOf(PrintP11D2, {{"OEntertainTick", value}}), none); };
    EXPECT_EQ(drawn("Y"), (Lines{"line 99.50 216.00 100.00 217.00 pen 0 width 0.40",
                                 "line 100.00 217.00 102.00 214.00 pen 0 width 0.40"}));
    EXPECT_EQ(drawn("N"), Lines{"text centre 100.75 217.00 10 bold \"X\""});
    EXPECT_EQ(drawn(""), Lines{});
    EXPECT_EQ(drawn("1"), Lines{});
}

TEST(P11DPage2, BearsTheTag1AOnTheFirstLineOfOtherItemsOnly)
{
    const std::string page = PageOf(PrintP11D2, {});
    EXPECT_TRUE(Has(page, "text centre 192.50 170.00 10 bold colour 255 \"1A\"\n"));
    EXPECT_FALSE(Has(page, "text centre 192.50 180.00"));
    for (const char* line : {"208.00", "217.00", "226.00", "235.00", "244.00", "253.00"})
        EXPECT_FALSE(Has(page, std::string("text centre 192.50 ") + line));
}

TEST(P11DPage2, DrawsTheNumberAtItsTopInArial)
{
    const std::string page = PageOf(PrintP11D2, {{"NatIns", "AB123456C"}},
                                    [](PrintRoom& room) { room.settings.reportFont = "Times New Roman"; });
    EXPECT_TRUE(Has(page, "text right 193.00 1.00 9 bold italic \"AB123456C\"\n"));
}

TEST(P11DBDeclaration, PrintsZeroesForEmptyTotalsOfARecordOnly)
{
    const std::string record = PageOf(PrintDeclarationOfRecord, {});
    EXPECT_TRUE(Has(record, "text right 182.00 120.00 10 bold \"0.00\"\n"));
    EXPECT_TRUE(Has(record, "text right 182.00 158.00 10 bold \"0.00\"\n"));
    EXPECT_FALSE(Has(PageOf(PrintDeclarationOfTotals, {}), "\"0.00\""));
}

TEST(P11DBDeclaration, SetsTheTickOfAdjustmentsHigherInABatch)
{
    const FieldMap fields = {{"Section1Tick", "1"}};
    EXPECT_EQ(
        Beyond(PageOf(PrintDeclarationOfRecord, fields), PageOf(PrintDeclarationOfRecord, {})),
        (Lines{"line 16.50 134.00 17.00 135.00 pen 0 width 0.40", "line 17.00 135.00 19.00 132.00 pen 0 width 0.40"}));
    EXPECT_EQ(
        Beyond(PageOf(PrintDeclarationOfTotals, fields), PageOf(PrintDeclarationOfTotals, {})),
        (Lines{"line 16.50 129.00 17.00 130.00 pen 0 width 0.40", "line 17.00 130.00 19.00 127.00 pen 0 width 0.40"}));
}

TEST(P11DBDeclaration, DiffersInItsTwoVariantsAsListed)
{
    const FieldMap fields = ReadRecord("P11DB.txt");
    const std::string record = PageOf(PrintDeclarationOfRecord, fields);
    const std::string totals = PageOf(PrintDeclarationOfTotals, fields);
    EXPECT_EQ(Beyond(record, totals), (Lines{"text left 8.00 40.50 8 \"Employer name and address\"",
                                             "text left 8.00 91.00 9 italic \"top of this return before you send it to "
                                             "your HM Revenue & Customs office.\"",
                                             "text left 15.00 167.00 10 bold \"Employer declaration\"",
                                             "line 16.50 134.00 17.00 135.00 pen 0 width 0.40",
                                             "line 17.00 135.00 19.00 132.00 pen 0 width 0.40"}));
    EXPECT_EQ(Beyond(totals, record), (Lines{"text left 8.00 40.50 8 bold \"Employer name and address\"",
                                             "text left 15.00 167.00 10 bold \"Employer's declaration\"",
                                             "line 16.50 129.00 17.00 130.00 pen 0 width 0.40",
                                             "line 17.00 130.00 19.00 127.00 pen 0 width 0.40"}));
}

TEST(P11DBNotes, DifferInTheirTwoVariantsAsListed)
{
    const FieldMap fields = ReadRecord("P11DB.txt");
    const std::string record = PageOf(PrintNotesOfRecord, fields);
    const std::string totals = PageOf(PrintNotesOfTotals, fields);
    EXPECT_EQ(Beyond(record, totals), (Lines{"text left 11.50 82.50 9 \"CWG5(2011)\"",
                                             "text left 11.50 126.00 9 \"References in this return to forms P11D and "
                                             "HM Revenue & Customs office should be read as including the return\""}));
    EXPECT_EQ(Beyond(totals, record), (Lines{"text left 11.50 82.50 9 \"CWG5(2011) \"",
                                             "text left 11.50 126.00 9 \"references in this Return to forms P11D and "
                                             "HM Revenue & Customs office should be read as including the return\""}));
}

TEST(P11DBNotes, KeepTheirLightBandsWithoutShading)
{
    const std::string page =
        PageOf(PrintNotesOfRecord, {}, [](PrintRoom& room) { room.settings.reportShading = false; });
    std::size_t bands = 0;
    for (std::size_t at = page.find("fill 225"); at != std::string::npos; at = page.find("fill 225", at + 1))
        ++bands;
    EXPECT_EQ(bands, 6U);
    EXPECT_FALSE(Has(page, "fill 200"));
}

TEST(P11DBNotes, NameTheWebPageInNavy)
{
    EXPECT_TRUE(Has(PageOf(PrintNotesOfRecord, {}), "9 bold colour 0,0,128 \"www.hmrc.gov.uk/payinghmrc/class1a.htm\"\n"
                                                    "text left 83.50 26.00 9 \"You should pay by:\"\n"));
}

} // namespace
} // namespace quillmere::pages
