#include "exchange/Csv.h"

#include "frame/CheckedFile.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>
#include <csv.h>
#include <fmt/format.h>
#include <iconv.h>
#include <optional>
#include <system_error>

namespace quillmere::exchange {

namespace {

// ---- texts

constexpr std::string_view Utf8Mark = "\xEF\xBB\xBF";

class Converter {
public:
    explicit Converter(const char* from) : handle(iconv_open("UTF-8", from)) {}
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    ~Converter()
    {
        if (IsOpen())
            iconv_close(handle);
    }

    /// Nothing for bytes that are not of that encoding.
    std::optional<std::string> Convert(std::string_view bytes)
    {
        if (!IsOpen())
            return std::nullopt;
        std::string text;
        std::string piece(65'536, '\0');
        // The interface takes what it reads as if it would write to it.
        char* from = const_cast<char*>(bytes.data());
        std::size_t left = bytes.size();
        while (left > 0) {
            char* to = piece.data();
            std::size_t room = piece.size();
            const std::size_t converted = iconv(handle, &from, &left, &to, &room);
            text.append(piece.data(), piece.size() - room);
            if (converted == static_cast<std::size_t>(-1) && errno != E2BIG)
                return std::nullopt;
        }
        return text;
    }

private:
    // NOLINTNEXTLINE(performance-no-int-to-ptr): it is what the interface says of an encoding that it does not know.
    bool IsOpen() const { return handle != reinterpret_cast<iconv_t>(-1); }
    iconv_t handle;
};

struct Encoding {
    std::string_view begins; ///< the mark that such a file begins with
    const char* name;
    std::string_view words;
};
/// In the order in which they are tried.
constexpr auto Encodings = std::to_array<Encoding>({
    {"\xFF\xFE", "UTF-16", "UTF-16"},
    {"\xFE\xFF", "UTF-16", "UTF-16"},
    {"", "UTF-8", "UTF-8"},
    {"", "CP1252", "Windows-1252"},
});

bool IsJunk(char byte)
{
    const auto code = static_cast<unsigned char>(byte);
    return (code < 0x20 && byte != '\t' && byte != '\n' && byte != '\r') || code == 0x7F;
}

/// Texts in UTF-8, and what they were before.
std::string Decoded(std::string_view bytes, std::string& encoding)
{
    for (const Encoding& tried : Encodings) {
        if (!bytes.starts_with(tried.begins))
            continue;
        std::optional<std::string> text = Converter(tried.name).Convert(bytes);
        if (!text || std::ranges::any_of(*text, IsJunk))
            continue;
        encoding = tried.words;
        if (text->starts_with(Utf8Mark))
            text->erase(0, Utf8Mark.size());
        return *std::move(text);
    }
    throw NotATable("This is not a text file. In the program that it comes from, save the table as CSV.");
}

// ---- reading

constexpr auto Separators = std::to_array<char>({',', ';', '\t'});

/// Of the first line, outside quotation marks.
char SeparatorOf(std::string_view text)
{
    // Some spreadsheets say it in a line of its own.
    constexpr std::string_view Told = "sep=";
    if (text.starts_with(Told) && text.size() > Told.size() &&
        std::ranges::find(Separators, text[Told.size()]) != Separators.end())
        return text[Told.size()];
    std::array<int, Separators.size()> counts{};
    bool quoted = false;
    for (const char character : text) {
        if (character == '"')
            quoted = !quoted;
        if (!quoted && (character == '\n' || character == '\r'))
            break;
        const auto* const separator = std::ranges::find(Separators, character);
        if (!quoted && separator != Separators.end())
            ++counts[static_cast<std::size_t>(separator - Separators.begin())];
    }
    return Separators[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

/// Takes rows from the library as it finds them.
class Reader {
public:
    explicit Reader(Table& table) : table(table)
    {
        if (csv_init(&parser, CSV_REPALL_NL) != CSV_SUCCESS)
            throw NotATable("There is no memory for this file.");
        csv_set_delim(&parser, static_cast<unsigned char>(table.separator));
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { csv_free(&parser); }

    void Read(std::string_view text)
    {
        constexpr std::size_t Piece = 65'536;
        for (; !text.empty(); text.remove_prefix(std::min(Piece, text.size())))
            Parse(text.substr(0, Piece));
        // A line end ends the last row, unless it lies between quotation marks.
        const int before = ended;
        Parse("\n");
        if (ended == before)
            throw NotATable(fmt::format("A quotation mark in row {} is not closed.", number + 1));
    }

private:
    void Parse(std::string_view piece)
    {
        if (csv_parse(&parser, piece.data(), piece.size(), TakeCell, TakeRow, this) != piece.size())
            throw NotATable(fmt::format("The file cannot be read from row {} on.", number + 1));
        if (!refusal.empty())
            throw NotATable(refusal);
    }
    static void TakeCell(void* text, std::size_t size, void* self)
    {
        auto& reader = *static_cast<Reader*>(self);
        if (!reader.refusal.empty())
            return;
        if (reader.row.size() == MostColumns || ++reader.cells > MostCells) {
            reader.Refuse(reader.row.size() == MostColumns ? fmt::format("more than {} columns", MostColumns)
                                                           : fmt::format("more than {} cells", MostCells));
            return;
        }
        reader.row.emplace_back(static_cast<const char*>(text), size);
    }
    static void TakeRow(int end, void* self)
    {
        auto& reader = *static_cast<Reader*>(self);
        ++reader.ended;
        const bool isSecondHalf = end == '\n' && reader.lastEnd == '\r' && reader.row.empty();
        reader.lastEnd = end;
        if (isSecondHalf || !reader.refusal.empty())
            return;
        ++reader.number;
        const bool isEmpty = std::ranges::all_of(reader.row, &std::string::empty);
        if (!isEmpty && reader.table.rows.size() == MostRows)
            reader.Refuse(fmt::format("more than {} rows", MostRows));
        else if (!isEmpty)
            reader.table.rows.push_back({.number = reader.number, .cells = std::move(reader.row)});
        reader.row.clear();
    }
    void Refuse(const std::string& what)
    {
        refusal = fmt::format("This table has {}: it is no list of employees.", what);
    }

    Table& table;
    csv_parser parser{};
    std::vector<std::string> row;
    std::size_t cells = 0;
    int number = 0, ended = 0, lastEnd = 0;
    std::string refusal;
};

// ---- writing

constexpr char Guard = '\'';

/// With one of these a spreadsheet begins a formula.
bool BeginsFormula(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && std::string_view("=+-@").find(text[first]) != std::string_view::npos;
}

/// True for a text that begins one, behind guards that are its own, too: so that just the one goes that was put there.
bool NeedsGuard(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Guard), text.size()));
    return BeginsFormula(text);
}

void AppendCell(std::string& bytes, const Cell& cell)
{
    const std::string text = !cell.isFigure && NeedsGuard(cell.text) ? Guard + cell.text : cell.text;
    if (text.find_first_of(",;\t\"\r\n") == std::string::npos && Trimmed(text) == text) {
        bytes += text;
        return;
    }
    std::string quoted(text.size() * 2 + 2, '\0');
    quoted.resize(csv_write2(quoted.data(), quoted.size(), text.data(), text.size(), '"'));
    bytes += quoted;
}

} // namespace

LibraryInUse CsvLibrary()
{
    return {"libcsv", AsBuilt(fmt::format("{}.{}.{}", CSV_MAJOR, CSV_MINOR, CSV_RELEASE))};
}

Table ParseTable(std::string_view bytes)
{
    Table table;
    const std::string text = Decoded(bytes, table.encoding);
    table.separator = SeparatorOf(text);
    Reader(table).Read(text);
    if (!table.rows.empty() && table.rows.front().cells.front() == "sep=")
        table.rows.erase(table.rows.begin());
    if (table.rows.empty())
        throw NotATable("There is nothing in this file.");
    return table;
}

Table ReadTable(const std::filesystem::path& file)
{
    std::error_code failure;
    if (!std::filesystem::is_regular_file(file, failure))
        throw NotATable("There is no such file.");
    if (const std::uintmax_t size = std::filesystem::file_size(file, failure); !failure && size > MostBytes)
        throw NotATable(fmt::format("This file has {} MB: it is no list of employees. At most {} MB are read.",
                                    size / 1'000'000, MostBytes / 1'000'000));
    return ParseTable(ReadFile(file));
}

std::string TableBytes(const std::vector<Cells>& rows)
{
    // The mark tells spreadsheets that accents are in UTF-8.
    std::string bytes(Utf8Mark);
    for (const Cells& row : rows) {
        for (const Cell& cell : row) {
            if (&cell != row.data())
                bytes += ',';
            AppendCell(bytes, cell);
        }
        bytes += "\r\n";
    }
    return bytes;
}

std::string_view WithoutGuard(std::string_view text)
{
    if (text.size() > 1 && text.front() == Guard && NeedsGuard(text.substr(1)))
        text.remove_prefix(1);
    return text;
}

} // namespace quillmere::exchange
