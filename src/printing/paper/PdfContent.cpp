#include "printing/paper/PdfContent.h"

#include "frame/Text.h"
#include "printing/paper/PdfFonts.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>

namespace quillmere {

namespace {

/// How far the control points of a quarter circle lie from its ends, as a part of the radius.
constexpr double QuarterCircle = 0.5522847498;

/// Hundredths of a point in a twip.
constexpr double HundredthsPerTwip = 5.0;

/// Far outside any sheet; keeps a senseless scale or offset within the numbers that readers take.
constexpr double Farthest = 3'000'000.0;

class ContentStream {
public:
    explicit ContentStream(std::size_t operations)
    {
        constexpr std::size_t BytesOfAnOperation = 80;
        content.reserve(operations * BytesOfAnOperation);
        content += "1 J\n"; // Round ends: a line of no length is a dot.
    }

    void Line(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Begin(style);
        Point(x1, y1, 'm');
        Point(x2, y2, 'l');
        End(style);
    }

    void Rectangle(const ShapeStyle& style, double x1, double y1, double x2, double y2)
    {
        Begin(style);
        Number(X(x1));
        Number(Y(y2));
        Number(X(x2) - X(x1));
        Number(Y(y1) - Y(y2));
        content += "re\n";
        End(style);
    }

    void Circle(const ShapeStyle& style, double x, double y, double radius)
    {
        Begin(style);
        const double control = radius * QuarterCircle;
        Point(x + radius, y, 'm');
        Curve(x + radius, y + control, x + control, y + radius, x, y + radius);
        Curve(x - control, y + radius, x - radius, y + control, x - radius, y);
        Curve(x - radius, y - control, x - control, y - radius, x, y - radius);
        Curve(x + control, y - radius, x + radius, y - control, x + radius, y);
        content += "h\n";
        End(style);
    }

    void Polygon(const ShapeStyle& style, std::span<const double> corners)
    {
        Begin(style);
        if (corners.size() < 2) {
            content += "n ";
            Point(0, 0, 'm');
            return End(style);
        }
        for (std::size_t at = 0; at + 1 < corners.size(); at += 2)
            Point(corners[at], corners[at + 1], at == 0 ? 'm' : 'l');
        content += "h\n";
        End(style);
    }

    void Text(const TextStyle& style, const Operation& operation, std::string_view text)
    {
        const std::int64_t size = Hundredths(style.size * TwipsPerPoint);
        if (size <= 0 || text.empty())
            return;
        SetFill(style.colour);
        content += "BT ";
        if (font != style.face || fontSize != size) {
            font = style.face;
            fontSize = size;
            content += PdfFontName(style.face);
            content += ' ';
            Number(size);
            content += "Tf ";
        }
        Coordinates(operation.x1, operation.y1 + TextAscent(style.face, style.size));
        content += "Td ";
        Characters(style.face, text, lastText != nullptr && &operation != lastText && text.back() != ' ');
        content += " ET\n";
    }

    /// Begins what belongs to an element, under a mark of the page; -1: what is an artifact.
    void BeginMark(int mark, std::span<const Operation> operations)
    {
        lastText = nullptr;
        for (const Operation& operation : operations)
            if (mark >= 0 && operation.kind == OperationKind::Text)
                lastText = &operation;
        if (mark < 0) {
            content += "/Artifact BMC\n";
            return;
        }
        content += "/P<</MCID ";
        content += std::to_string(mark);
        content += ">>BDC\n";
    }
    void EndMark() { content += "EMC\n"; }

    std::string Take() { return std::move(content); }

private:
    void Begin(const ShapeStyle& style)
    {
        SetStroke(style);
        if (style.filled)
            SetFill(style.brush);
    }

    void End(const ShapeStyle& style) { content += style.filled ? "B\n" : "S\n"; }

    void Curve(double x1, double y1, double x2, double y2, double x3, double y3)
    {
        Coordinates(x1, y1);
        Coordinates(x2, y2);
        Point(x3, y3, 'c');
    }

    /// Readers place each character by the widths of those before it and know these as whole thousandths of an em only.
    /// What that leaves out is put in where it has grown to one thousandth. Where the text goes on, as in the lines of
    /// a paragraph, it ends with a blank: some readers join the pieces as they are.
    void Characters(Face face, std::string_view text, bool goesOn)
    {
        const FaceMetrics& metrics = MetricsOf(face);
        const int unitsPerEm = metrics.UnitsPerEm();
        const std::size_t start = content.size();
        content += "[(";
        int behind = 0; // thousandths of a unit
        bool isAdjusted = false;
        while (!text.empty()) {
            if (std::abs(behind) >= unitsPerEm) {
                content += ')';
                content += std::to_string(-(behind / unitsPerEm));
                content += '(';
                behind %= unitsPerEm;
                isAdjusted = true;
            }
            const char32_t character = TakeCodePoint(text);
            behind += metrics.AdvanceOf(character) * 1000 - PdfWidth(metrics, character) * unitsPerEm;
            Character(PdfCode(character));
        }
        if (goesOn)
            Character(u' ');
        content += isAdjusted ? ")]TJ" : ")Tj";
        if (!isAdjusted)
            content.erase(start, 1);
    }

    void Character(char16_t code)
    {
        for (const char byte : {static_cast<char>(code >> 8), static_cast<char>(code & 0xFF)}) {
            if (byte == '(' || byte == ')' || byte == '\\')
                content += '\\';
            if (byte == '\r')
                content += "\\r"; // A reader takes a bare one for a line feed.
            else
                content += byte;
        }
    }

    void SetStroke(const ShapeStyle& style)
    {
        if (pen != style.pen) {
            pen = style.pen;
            SetColour(style.pen, "G\n", "RG\n");
        }
        const std::int64_t width = Hundredths(style.width);
        if (penWidth != width) {
            penWidth = width;
            Number(width);
            content += "w\n";
        }
    }

    void SetFill(Colour colour)
    {
        if (fill != colour) {
            fill = colour;
            SetColour(colour, "g\n", "rg\n");
        }
    }

    void SetColour(Colour colour, const char* grey, const char* mixed)
    {
        const bool isGrey = colour.red == colour.green && colour.green == colour.blue;
        ColourPart(colour.red);
        if (!isGrey) {
            ColourPart(colour.green);
            ColourPart(colour.blue);
        }
        content += isGrey ? grey : mixed;
    }

    /// A level of 0 to 255 as a part of one, with four decimals.
    void ColourPart(std::uint8_t level)
    {
        if (level == 255) {
            content += "1 ";
            return;
        }
        const int parts = (level * 10000 + 127) / 255;
        std::array<char, 6> digits = {'.',
                                      static_cast<char>('0' + parts / 1000),
                                      static_cast<char>('0' + parts / 100 % 10),
                                      static_cast<char>('0' + parts / 10 % 10),
                                      static_cast<char>('0' + parts % 10),
                                      ' '};
        content.append(level == 0 ? "0 " : std::string_view(digits.data(), digits.size()));
    }

    void Point(double x, double y, char drawing)
    {
        Coordinates(x, y);
        content += drawing;
        content += '\n';
    }

    void Coordinates(double x, double y)
    {
        Number(X(x));
        Number(Y(y));
    }

    static std::int64_t Hundredths(double twips)
    {
        if (std::isnan(twips)) // A scale beyond all numbers, multiplied by zero; clamping would pass it on.
            return 0;
        return std::llround(std::clamp(twips, -Farthest, Farthest) * HundredthsPerTwip);
    }
    static std::int64_t X(double twips) { return Hundredths(twips); }
    static std::int64_t Y(double twips) { return Hundredths(SheetHeight - twips); }

    /// Hundredths as a decimal number and a blank.
    void Number(std::int64_t hundredths)
    {
        std::array<char, 24> digits{};
        char* at = digits.data() + digits.size();
        *--at = ' ';
        const bool isNegative = hundredths < 0;
        auto rest = static_cast<std::uint64_t>(isNegative ? -hundredths : hundredths);
        const auto decimals = static_cast<int>(rest % 100);
        rest /= 100;
        if (decimals % 10 != 0)
            *--at = static_cast<char>('0' + decimals % 10);
        if (decimals != 0) {
            *--at = static_cast<char>('0' + decimals / 10);
            *--at = '.';
        }
        do {
            *--at = static_cast<char>('0' + rest % 10);
            rest /= 10;
        } while (rest != 0);
        if (isNegative)
            *--at = '-';
        content.append(at, static_cast<std::size_t>(digits.data() + digits.size() - at));
    }

    std::string content;
    std::optional<Colour> pen, fill;
    const Operation* lastText = nullptr; ///< under the mark in work
    std::optional<std::int64_t> penWidth;
    std::optional<Face> font;
    std::int64_t fontSize = -1;
};

/// How many operations from the first one on belong to the same element.
std::size_t LengthOfMark(std::span<const Operation> operations)
{
    const auto other = std::ranges::find_if(
        operations, [&](const Operation& operation) { return operation.element != operations.front().element; });
    return static_cast<std::size_t>(other - operations.begin());
}

} // namespace

std::string PdfContent(const Document& document, std::span<const Operation> operations, int firstMark)
{
    ContentStream stream(operations.size());
    for (std::span<const Operation> rest = operations; !rest.empty();) {
        const std::span<const Operation> together = rest.first(LengthOfMark(rest));
        stream.BeginMark(together.front().element == 0 ? -1 : firstMark++, together);
        Replay(document, together, stream);
        stream.EndMark();
        rest = rest.subspan(together.size());
    }
    return stream.Take();
}

std::vector<ElementNumber> PdfMarks(std::span<const Operation> operations)
{
    std::vector<ElementNumber> marks;
    for (std::span<const Operation> rest = operations; !rest.empty(); rest = rest.subspan(LengthOfMark(rest)))
        if (rest.front().element != 0)
            marks.push_back(rest.front().element);
    return marks;
}

std::string PdfFontName(Face face)
{
    return "/F" + std::to_string(static_cast<int>(face));
}

} // namespace quillmere
