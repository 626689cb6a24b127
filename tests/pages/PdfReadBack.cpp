#include "PdfReadBack.h"

#include "frame/Text.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>

namespace quillmere::pages {

namespace {

std::string Attribute(std::string_view line, std::string_view name)
{
    const std::string start = ' ' + std::string(name) + "=\"";
    const std::size_t at = line.find(start);
    if (at == std::string_view::npos)
        return {};
    const std::size_t from = at + start.size();
    return std::string(line.substr(from, line.find('"', from) - from));
}

double Number(std::string_view line, std::string_view name)
{
    return std::strtod(Attribute(line, name).c_str(), nullptr);
}

char32_t Character(std::string_view text)
{
    if (text == "&quot;")
        return U'"';
    if (text == "&amp;")
        return U'&';
    if (text == "&lt;")
        return U'<';
    if (text == "&gt;")
        return U'>';
    if (text == "&apos;")
        return U'\'';
    if (text.starts_with("&#x"))
        return static_cast<char32_t>(std::strtoul(std::string(text.substr(3)).c_str(), nullptr, 16));
    if (text.starts_with("&#"))
        return static_cast<char32_t>(std::strtoul(std::string(text.substr(2)).c_str(), nullptr, 10));
    const std::u32string characters = CodePoints(text);
    return characters.empty() ? U' ' : characters.front();
}

} // namespace

ProgramRun RunProgram(const std::vector<std::string>& command)
{
    std::string line;
    for (const std::string& word : command)
        line += '\'' + word + "' ";
    std::FILE* const pipe = ::popen((line + "2>&1").c_str(), "r");
    if (pipe == nullptr)
        throw std::runtime_error("cannot run " + command.front());
    ProgramRun run;
    char buffer[4096];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, pipe))
        run.output.append(buffer, count);
    const int status = ::pclose(pipe);
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return run;
}

ProgramRun CheckPdf(std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), PAGES "/../../scripts/check-pdf");
    return RunProgram(arguments);
}

std::vector<Drawn> TraceOf(const std::filesystem::path& pdf, int page)
{
    const ProgramRun run = RunProgram({"mutool", "trace", pdf.string(), std::to_string(page)});
    if (run.status != 0)
        throw std::runtime_error("mutool: " + run.output);

    std::vector<Drawn> drawn;
    double sheetHeight = 0; // The trace has y upwards, turned by the matrix of each operation.
    std::istringstream lines(run.output);
    for (std::string line; std::getline(lines, line);) {
        const auto point = [&](std::string_view x, std::string_view y, bool curve) {
            drawn.back().points.push_back(Number(line, x));
            drawn.back().points.push_back(sheetHeight - Number(line, y));
            drawn.back().isCurve.push_back(curve);
        };
        if (line.starts_with("<fill_path") || line.starts_with("<stroke_path") || line.starts_with("<fill_text")) {
            const std::string matrix = Attribute(line, "transform");
            double a = 0;
            double b = 0;
            double c = 0;
            double d = 0;
            double e = 0;
            if (std::sscanf(matrix.c_str(), "%lf %lf %lf %lf %lf %lf", &a, &b, &c, &d, &e, &sheetHeight) != 6 ||
                a != 1 || b != 0 || c != 0 || d != -1 || e != 0)
                throw std::runtime_error("a page that is turned or scaled: " + matrix);
            Drawn next;
            next.kind = line.starts_with("<fill_path")     ? Drawn::Kind::Fill
                        : line.starts_with("<stroke_path") ? Drawn::Kind::Stroke
                                                           : Drawn::Kind::Text;
            next.colour = Attribute(line, "color");
            next.width = Number(line, "linewidth");
            drawn.push_back(next);
        } else if (line.find("<moveto") != std::string::npos || line.find("<lineto") != std::string::npos) {
            point("x", "y", false);
        } else if (line.find("<curveto") != std::string::npos) {
            point("x1", "y1", true);
            point("x2", "y2", true);
            point("x3", "y3", true);
        } else if (line.find("<span") != std::string::npos) {
            drawn.back().font = Attribute(line, "font");
            drawn.back().size = std::strtod(Attribute(line, "trm").c_str(), nullptr);
        } else if (line.find("<g ") != std::string::npos) {
            drawn.back().text += Character(Attribute(line, "unicode"));
            point("x", "y", false);
        }
    }
    return drawn;
}

} // namespace quillmere::pages
