// A document of many forms made into a PDF file, from the start of the process to its end, beside an office suite that
// converts a like document: the same texts, page by page, in tables. Left out where there is no suite.
#include "Forms.h"
#include "support/TemporaryFolder.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace quillmere {
namespace {

using test::PrintRoom;

constexpr int Employees = 50; // of two pages

/// Runs a program to its end, in silence. False if it could not be run or failed.
bool Run(std::vector<std::string> words)
{
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t silence;
    posix_spawn_file_actions_init(&silence);
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&silence, stream, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    int status = 0;
    const bool ran = posix_spawn(&process, arguments.front(), &silence, nullptr, arguments.data(), environ) == 0 &&
                     waitpid(process, &status, 0) == process && status == 0;
    posix_spawn_file_actions_destroy(&silence);
    return ran;
}

/// The suite's program, found as a shell finds it; empty if there is none.
std::string Suite()
{
    const char* path = std::getenv("PATH");
    std::string folders = path == nullptr ? "" : path;
    folders += ':';
    for (std::size_t start = 0, end = 0; (end = folders.find(':', start)) != std::string::npos; start = end + 1)
        for (const char* name : {"soffice", "libreoffice"}) {
            const std::string program = folders.substr(start, end - start) + "/" + name;
            if (access(program.c_str(), X_OK) == 0)
                return program;
        }
    return {};
}

std::string Escaped(std::string_view text)
{
    std::string escaped;
    for (const char character : text)
        if (character == '<')
            escaped += "&lt;";
        else if (character == '&')
            escaped += "&amp;";
        else
            escaped += character;
    return escaped;
}

/// The texts of the forms as a text document of the suite's own kind: a table for each page, four texts a line.
void WriteLikeDocument(const std::filesystem::path& file)
{
    PrintRoom room;
    const auto forms = bench::Forms(room, 1, Employees);
    std::ofstream out(file);
    out << R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
 xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0" xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0"
 xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0" office:version="1.2"
 office:mimetype="application/vnd.oasis.opendocument.text"><office:automatic-styles>
<style:style style:name="Page" style:family="table"><style:table-properties fo:break-before="page"/></style:style>
<style:style style:name="Small" style:family="paragraph"><style:text-properties fo:font-size="6pt"/></style:style>
<style:style style:name="Box" style:family="table-cell"><style:table-cell-properties fo:border="0.5pt solid #000000"/>
</style:style></office:automatic-styles><office:body><office:text>)";
    constexpr int columns = 4;
    for (int page = 1; page <= forms->PageCount(); ++page) {
        out << R"(<table:table table:style-name="Page"><table:table-column table:number-columns-repeated=")" << columns
            << R"("/>)";
        int column = 0;
        for (const Operation& operation : forms->Page(page)) {
            if (operation.kind != OperationKind::Text)
                continue;
            if (column == 0)
                out << "<table:table-row>";
            out << R"(<table:table-cell table:style-name="Box"><text:p text:style-name="Small">)"
                << Escaped(forms->TextOf(operation)) << "</text:p></table:table-cell>";
            column = (column + 1) % columns;
            if (column == 0)
                out << "</table:table-row>";
        }
        if (column != 0)
            out << "</table:table-row>";
        out << "</table:table>\n";
    }
    out << "</office:text></office:body></office:document>\n";
}

void FormsToPdfProcess(benchmark::State& state)
{
    const test::TemporaryFolder folder;
    const std::string file = folder.path / "forms.pdf";
    for (auto _ : state)
        if (!Run({SUITE_FOLDER "/write_forms", std::to_string(Employees), file}))
            state.SkipWithError("the forms cannot be written");
    if (std::filesystem::exists(file))
        state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
}
BENCHMARK(FormsToPdfProcess)->Unit(benchmark::kMillisecond)->UseRealTime();

void FormsToPdfOfficeSuite(benchmark::State& state)
{
    const std::string suite = Suite();
    if (suite.empty()) {
        state.SkipWithError("skipped: no soffice in PATH");
        return;
    }
    const test::TemporaryFolder folder;
    const std::filesystem::path source = folder.path / "forms.fodt";
    WriteLikeDocument(source);
    // Its first start with a profile of its own is not counted.
    const std::vector<std::string> words{
        suite,        "-env:UserInstallation=file://" + (folder.path / "profile").string(),
        "--headless", "--convert-to",
        "pdf",        "--outdir",
        folder.path,  source};
    const bool works = Run(words) && std::filesystem::exists(folder.path / "forms.pdf");
    if (!works) {
        state.SkipWithError("skipped: soffice does not convert here");
        return;
    }
    for (auto _ : state)
        if (!Run(words))
            state.SkipWithError("the suite has failed");
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(folder.path / "forms.pdf"));
}
BENCHMARK(FormsToPdfOfficeSuite)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace quillmere

BENCHMARK_MAIN();
