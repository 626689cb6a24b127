#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// What other programs find in a PDF file.
namespace quillmere::pages {

/// One thing that a page draws, in points from its top left corner.
struct Drawn {
    enum class Kind { Fill, Stroke, Text };
    Kind kind = Kind::Fill;
    std::string colour;         ///< as a grey from 0 to 1, or three parts
    double width = 0;           ///< of the pen
    std::vector<double> points; ///< x and y of each point of the path; of a text each character's base point
    std::vector<bool> isCurve;  ///< for each point: the end or control point of a curve
    std::u32string text;
    std::string font; ///< with its subset's tag; a long name is cut
    double size = 0;  ///< points
};

/// Everything that a page of the file draws, in order, as mupdf sees it.
std::vector<Drawn> TraceOf(const std::filesystem::path& pdf, int page);

/// What a program prints on its output, both kinds together, and its exit status.
struct ProgramRun {
    int status = 0;
    std::string output;
};
ProgramRun RunProgram(const std::vector<std::string>& command);

/// The project's own check of PDF files.
ProgramRun CheckPdf(std::vector<std::string> arguments);

} // namespace quillmere::pages
