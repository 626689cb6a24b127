// The PDF files of every kind of document, held to what they claim; and the check itself, held to finding breaches.
#include "PdfReadBack.h"
#include "frame/CheckedFile.h"
#include "printing/jobs/PrintJobs.h"
#include "support/PrintDesk.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace quillmere::pages {
namespace {

using test::PrintDesk;
using test::ScriptedDoor;

constexpr std::string_view Employer = "Marlow & Sons <Ltd>";
constexpr std::string_view Employee = "Zoë Smith";

class KeptPdf : public ::testing::Test {
protected:
    KeptPdf()
    {
        desk.Add(Employer, "Zoë", "Smith");
        desk.session.settings.reportCompiler = "Lärk & Co";
    }

    std::filesystem::path Write(const Document& document, const PdfOptions& options = {})
    {
        const std::filesystem::path file = desk.folder / "kept.pdf";
        WriteFileChecked(file, PdfWriter().Write(document, options));
        return file;
    }
    static bool Claims(const std::filesystem::path& file)
    {
        return ReadFile(file).find("<pdfaid:part>2</pdfaid:part>") != std::string::npos;
    }
    void ExpectKept(const std::shared_ptr<const Document>& document)
    {
        ASSERT_NE(document, nullptr);
        const std::filesystem::path file = Write(*document);
        EXPECT_TRUE(Claims(file));
        const ProgramRun check = CheckPdf({file.string()});
        EXPECT_EQ(check.status, 0) << check.output;
    }
    std::shared_ptr<const Document> Print(PrintedDocument document = PrintedDocument::Employee)
    {
        PrintEmployeeJob(desk.session, desk.printing, Employer, Employee, document);
        desk.session.screens.Unload("frmVSPrint");
        return desk.TakeLast();
    }
    void FillAll()
    {
        desk.FillAll(Employer, Employee);
        desk.FillDeclaration(Employer);
    }

    ScriptedDoor door;
    PrintDesk desk{door};
};

TEST_F(KeptPdf, IsEveryKindOfDocument)
{
    ExpectKept(Print());
    ExpectKept(Print(PrintedDocument::Declaration));
    FillAll();
    ExpectKept(Print());
    ExpectKept(Print(PrintedDocument::Declaration));

    PrintTableJob(desk.session, desk.printing,
                  {.documentName = "Table",
                   .heading = "Heading",
                   .subHeading = "Below it",
                   .columns = {{.caption = "Words", .width = 3}, {.caption = "Figure", .figure = true}},
                   .rows = std::vector<std::vector<std::string>>(
                       100, {"words that go on and on, further than their column is wide, to a second line", "1.00"}),
                   .remarks = {"A remark"}});
    desk.session.screens.Unload("frmVSPrint");
    ExpectKept(desk.TakeLast());

    door.printers = {"Office"};
    desk.session.settings.vsPrinter = "Office";
    BatchSelection all;
    for (const BatchTick tick : {BatchTick::P11D, BatchTick::A, BatchTick::Cars, BatchTick::P11DB})
        all.Set(tick);
    PrintBatchJob(desk.session, desk.printing, Employer, all);
    ASSERT_EQ(desk.documents.size(), 2U);
    for (const auto& document : desk.documents)
        ExpectKept(document);
}

TEST_F(KeptPdf, ReadsATableRowByRowOnEachOfItsPages)
{
    PrintTableJob(desk.session, desk.printing,
                  {.documentName = "Table",
                   .heading = "Heading",
                   .columns = {{.caption = "Words"}, {.caption = "Empty"}, {.caption = "Figure", .figure = true}},
                   .rows = std::vector<std::vector<std::string>>(60, {"words", "", "1.00"})});
    desk.session.screens.Unload("frmVSPrint");
    const std::string reading = CheckPdf({"--reading", Write(*desk.TakeLast()).string()}).output;
    const std::string heads =
        "H1 Heading\n-- Table\n-- TR\nTH Words\nTH Empty\nTH Figure\n-- TR\nTD words\nTD\nTD 1.00\n";
    const std::size_t first = reading.find(heads);
    ASSERT_NE(first, std::string::npos) << reading;
    EXPECT_NE(reading.find(heads, first + 1), std::string::npos) << reading;
}

TEST_F(KeptPdf, ReadsATextThatGoesOverThePageToItsEnd)
{
    FillAll();
    std::string words;
    for (int word = 1; word <= 400; ++word)
        words += fmt::format("word{} ", word);
    for (int line = 1; line <= 20; ++line)
        desk.Set("ANotepad", Employer, Employee, fmt::format("Description{}", line), words);
    const auto document = Print();
    ExpectKept(document);
    const std::string reading = CheckPdf({"--reading", Write(*document).string()}).output;
    int ends = 0;
    for (std::size_t at = reading.find("word400"); at != std::string::npos; at = reading.find("word400", at + 1))
        ++ends;
    EXPECT_EQ(ends, 20) << reading;
}

TEST_F(KeptPdf, ClaimsNothingThatItDoesNotKeep)
{
    Document missing;
    missing.name = "中 has no glyph";
    missing.AddPage();
    missing.AddText({.size = 10}, Alignment::Left, 1000, 1000, "中");
    EXPECT_FALSE(Claims(Write(missing)));

    const std::filesystem::path file = Write(*Print(), {.password = "secret"});
    const std::filesystem::path opened = desk.folder / "opened.pdf";
    ASSERT_EQ(RunProgram({"qpdf", "--password=secret", "--decrypt", file.string(), opened.string()}).status, 0);
    EXPECT_FALSE(Claims(opened));
    const ProgramRun check = CheckPdf({opened.string()});
    EXPECT_EQ(check.status, 0) << "what is read out is there all the same: " << check.output;
}

TEST_F(KeptPdf, SaysItsPropertiesAlikeInBothPlaces)
{
    for (const char* title :
         {"Plain", "A & B <c> \"d\" 'e'", "Tab\there", "\x01\x7F", "(a\\b)", "Ωμέγα 中 \xF0\x9F\x98\x80", "\xFF"}) {
        Document document;
        document.name = title;
        document.AddPage();
        document.BelongsTo(document.AddElement({}));
        document.AddText({.size = 10}, Alignment::Left, 1000, 1000, "text");
        ExpectKept(std::make_shared<Document>(document));
    }
}

/// Something else in the place of what the file has, and of which rule the check has to complain then.
struct Breach {
    std::string text, other, rule;
};

const Breach Breaches[] = {
    {"%PDF-1.7", "%PDF-2.0", "6.1.2"},
    {"%%EOF", "%%EOF\nmore", "6.1.3"},
    {"/ID [", "/IX [", "6.1.3"},
    {"/Length1 ", "/FFilter ", "6.1.7"},
    {"595.3", "2.003", "6.1.13"},
    {"/Artifact BMC", "/Artifact BMC /G0 gs", "6.2.2"},
    {"/F0 ", "/F9 ", "6.2.2"},
    {"/GTS_PDFA1", "/GTS_PDFX1", "6.2.3"},
    {"mntrRGB ", "prtrCMYK", "6.2.3"},
    {"/Resources ", "/Resourcex ", "6.2.2"},
    {"/Encoding /Identity-H", "/Encoding /Identity-V", "6.2.11.3"},
    {"/CIDToGIDMap ", "/CIDToGIDMax ", "6.2.11.3"},
    {"/FontFile2 ", "/FontFile9 ", "6.2.11.4"},
    {"/ToUnicode ", "/ToUnicodx ", "6.2.11.7"},
    {"/W [", "/W [ 65 [ 1 ] ] /X [", "6.2.11.5"},
    {"/Tabs /S", "/Tabs /R", "reading"},
    {"/MarkInfo ", "/MarkInfx ", "reading"},
    {"/StructTreeRoot ", "/StructTreeRoox ", "reading"},
    {"/StructParents 0", "/StructParents 9", "reading"},
    {"/ParentTree ", "/ParentTrex ", "cannot be read"},
    {"/MCID 3>>", "/MCID 4>>", "reading"},
    {"/S /H1", "/S /X1", "reading"},
    {"/Desc (", "/Desx (", "reading"},
    {"/Artifact BMC", "", "reading"},
    {"/Lang (en-GB)", "/Lang (xx-XX)", "words"},
    {"/DisplayDocTitle true", "/DisplayDocTitle false", "words"},
    {"\n  /Info ", "\n  /Infx ", "words"},
    {"/Author (", "/Author (x", "6.6.2.3"},
    {"<xmp:CreatorTool>", "<xmp:CreatorTool>x", "6.6.2.3"},
    {"</rdf:RDF>", "</rdf:RDX>", "6.6.2"},
    {"<pdfaid:conformance>U", "<pdfaid:conformance>A", "6.6.4"},
    {"<pdfaid:part>2", "<pdfaid:part>1", "6.6.4"},
    {"/Type /Catalog", "/Type /Catalog /AcroForm << >>", "6.3 to 6.11"},
    {"/Type /Catalog", "/Type /Catalog /OCProperties << >>", "6.3 to 6.11"},
    {"/Type /Catalog", "/Type /Catalog /OpenAction << /S /JavaScript >>", "6.3 to 6.11"},
    {"/Type /Page\n", "/Type /Page /Annots [ ]\n", "6.3 to 6.11"},
    {"/Type /Page\n", "/Type /Page /Group << /S /Transparency >>\n", "6.3 to 6.11"},
};

TEST_F(KeptPdf, IsFoundOutWhereItBreaksARule)
{
    FillAll();
    // A breach more must be the only one: the names of properties stand as plain texts.
    desk.session.settings.reportCompiler = "Lark";
    const std::filesystem::path file = Write(*Print());
    const std::filesystem::path plain = desk.folder / "plain.pdf";
    ASSERT_EQ(RunProgram({"qpdf", "--qdf", "--object-streams=disable", file.string(), plain.string()}).status, 0);
    const std::string whole = ReadFile(plain);
    ASSERT_EQ(CheckPdf({plain.string()}).output, "");
    const std::filesystem::path broken = desk.folder / "broken.pdf";
    for (const Breach& breach : Breaches) {
        const std::size_t at = whole.find(breach.text);
        ASSERT_NE(at, std::string::npos) << breach.text;
        std::string bytes = whole;
        WriteFileChecked(broken, bytes.replace(at, breach.text.size(), breach.other));
        const bool hasMoved = breach.text.size() != breach.other.size() && breach.text != "%%EOF";
        if (hasMoved)
            WriteFileChecked(broken, RunProgram({"fix-qdf", broken.string()}).output);
        const ProgramRun check = CheckPdf({broken.string()});
        EXPECT_EQ(check.status, 1) << breach.text;
        EXPECT_NE(check.output.find("not so: " + breach.rule), std::string::npos) << breach.text << '\n'
                                                                                  << check.output;
    }
}

} // namespace
} // namespace quillmere::pages
