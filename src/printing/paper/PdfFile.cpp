#include "printing/paper/PdfFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <fmt/format.h>
#include <iterator>
#include <utility>

namespace quillmere {

namespace {

constexpr std::string_view Header = "%PDF-1.7\n%\xC2\xB5\xC2\xB6\n";

/// Objects in one stream at most: whoever wants one of them inflates them all.
constexpr int PackedTogether = 500;

/// Two independent numbers that follow from some bytes, as 32 hexadecimal digits.
std::string Fingerprint(std::string_view bytes)
{
    std::array<std::uint64_t, 2> state = {0x9E3779B97F4A7C15U, 0xC2B2AE3D27D4EB4FU};
    const auto take = [&state](std::uint64_t word) {
        state[0] = (state[0] ^ word) * 0xFF51AFD7ED558CCDU;
        state[0] ^= state[0] >> 32;
        state[1] = (state[1] + word) * 0xC4CEB9FE1A85EC53U;
        state[1] ^= state[1] >> 29;
    };
    take(bytes.size());
    for (; bytes.size() >= sizeof(std::uint64_t); bytes.remove_prefix(sizeof(std::uint64_t))) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), sizeof word);
        take(word);
    }
    for (const char byte : bytes)
        take(static_cast<unsigned char>(byte));
    return fmt::format("{:016X}{:016X}", state[0], state[1]);
}

void AppendBytes(std::string& bytes, std::size_t number, int size)
{
    for (int place = size - 1; place >= 0; --place)
        bytes += static_cast<char>((number >> (8 * place)) & 0xFF);
}

} // namespace

PdfFile::PdfFile(Deflate& deflate) : bytes(Header), objects(1), deflate(deflate)
{
    // Enough for a form of two pages.
    objects.reserve(512);
    bytes.reserve(65'536);
}

std::string PdfFile::ReferenceTo(int number)
{
    return fmt::format("{} 0 R", number);
}

void PdfFile::AppendReference(std::string& text, int number)
{
    AppendNumber(text, static_cast<std::size_t>(number));
    text += "0 R ";
}

void PdfFile::AppendNumber(std::string& text, std::size_t number)
{
    std::array<char, 24> digits{};
    char* const end = std::to_chars(digits.data(), digits.data() + digits.size() - 1, number).ptr;
    *end = ' ';
    text.append(digits.data(), end + 1);
}

int PdfFile::Reserve(int count)
{
    const auto number = static_cast<int>(objects.size());
    objects.resize(objects.size() + static_cast<std::size_t>(count));
    return number;
}

void PdfFile::Replace(int number, std::string object)
{
    ObjectOf(number).text = std::move(object);
}

std::string PdfFile::Add(std::string object)
{
    const int number = Reserve();
    Replace(number, std::move(object));
    return ReferenceTo(number);
}

std::string PdfFile::AddStream(std::string_view data, std::string_view entries)
{
    const int number = Reserve();
    ObjectOf(number).offset = bytes.size();
    fmt::format_to(std::back_inserter(bytes), "{} 0 obj\n<</Length {}{}>>\nstream\n", number, data.size(), entries);
    bytes += data;
    bytes += "\nendstream\nendobj\n";
    return ReferenceTo(number);
}

std::string PdfFile::AddDeflated(std::string_view deflated, std::string_view entries)
{
    return AddStream(deflated, fmt::format("/Filter/FlateDecode{}", entries));
}

void PdfFile::SetInCatalogue(std::string_view key, std::string_view object)
{
    fmt::format_to(std::back_inserter(catalogue), "{} {}", key, object);
}

void PdfFile::SetInTrailer(std::string_view key, std::string_view object)
{
    fmt::format_to(std::back_inserter(trailer), "{} {}", key, object);
}

std::vector<PdfFile::Place> PdfFile::PackObjects()
{
    std::vector<Place> places(objects.size());
    std::string numbers, texts;
    int index = 0;
    std::vector<std::size_t> packed;
    const auto close = [&] {
        if (packed.empty())
            return;
        const auto stream = static_cast<int>(objects.size());
        for (const std::size_t number : packed)
            places[number].stream = stream;
        AddDeflated(deflate.Compress(numbers + texts),
                    fmt::format("/Type/ObjStm/N {}/First {}", packed.size(), numbers.size()));
        packed.clear();
        numbers.clear();
        texts.clear();
        index = 0;
    };
    const std::size_t count = objects.size();
    for (std::size_t number = 1; number < count; ++number) {
        if (objects[number].offset != 0)
            continue;
        places[number].index = index++;
        packed.push_back(number);
        AppendNumber(numbers, number);
        AppendNumber(numbers, texts.size());
        texts += objects[number].text.empty() ? "null" : objects[number].text;
        texts += '\n';
        if (index == PackedTogether)
            close();
    }
    close();
    return places;
}

/// The stream of references, which says where each object is: itself, in the file or in a stream of objects. A row
/// below one of its own kind is written as the difference to it, byte by byte, which takes less room deflated.
std::string PdfFile::References(const std::vector<Place>& places, std::size_t end, int placeSize) const
{
    constexpr char AsItIs = 0, DifferenceToAbove = 2;
    std::string table, row, above(static_cast<std::size_t>(placeSize) + 3, '\0');
    const auto add = [&](char kind, std::size_t where, int index) {
        row.assign(1, kind);
        AppendBytes(row, where, placeSize);
        AppendBytes(row, static_cast<std::size_t>(index), 2);
        const bool isLikeAbove = kind == above[0];
        table += isLikeAbove ? DifferenceToAbove : AsItIs;
        for (std::size_t at = 0; at < row.size(); ++at)
            table += isLikeAbove ? static_cast<char>(row[at] - above[at]) : row[at];
        row.swap(above);
    };
    add(0, 0, 0);
    for (std::size_t number = 1; number < objects.size(); ++number)
        if (objects[number].offset != 0)
            add(1, objects[number].offset, 0);
        else
            add(2, static_cast<std::size_t>(places[number].stream), places[number].index);
    add(1, end, 0);
    return table;
}

std::string PdfFile::Bytes()
{
    const std::string root = Add(fmt::format("<</Type/Catalog{}>>", catalogue));
    std::vector<Place> places = PackObjects();
    places.resize(objects.size());
    const std::size_t end = bytes.size();
    const int placeSize = std::max(end, objects.size()) > 0xFFFF ? 4 : 2;
    const std::string table = deflate.Compress(References(places, end, placeSize));
    const std::string identifier = Fingerprint(bytes);
    AddDeflated(
        table,
        fmt::format("/DecodeParms<</Predictor 12/Columns {}>>/Type/XRef/Size {}/W[1 {} 2]/Root {}/ID[<{}><{}>]{}",
                    placeSize + 3, objects.size() + 1, placeSize, root, identifier, identifier, trailer));
    fmt::format_to(std::back_inserter(bytes), "startxref\n{}\n%%EOF\n", end);
    return std::move(bytes);
}

} // namespace quillmere
