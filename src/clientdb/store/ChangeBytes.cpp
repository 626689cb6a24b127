#include "clientdb/store/ChangeBytes.h"

#include "clientdb/store/StoreErrors.h"

#include <sqlite3.h>

#include <cstring>

namespace quillmere {
namespace {

/// The kinds of changes as the bytes have them: those of ChangeKind, and a new record whose fields are left to the
/// table.
constexpr std::size_t LeftToTable = 3;

void PutNumber(std::string& bytes, std::size_t number)
{
    for (; number >= 0x80; number >>= 7)
        bytes += static_cast<char>(0x80 | (number & 0x7f));
    bytes += static_cast<char>(number);
}

/// Null is 0, a text its length plus 1.
void PutText(std::string& bytes, const std::optional<std::string>& text)
{
    PutNumber(bytes, text ? text->size() + 1 : 0);
    if (text)
        bytes += *text;
}

void PutHead(std::string& bytes, const TableLayout& table, std::int64_t record, std::size_t kind, std::size_t size)
{
    PutNumber(bytes, static_cast<std::size_t>(&table - ClientTables().data()));
    PutNumber(bytes, static_cast<std::size_t>(record));
    PutNumber(bytes, kind);
    PutNumber(bytes, size);
}

/// Reads what PutNumber and PutText have put.
class Reader {
public:
    explicit Reader(std::string_view bytes) : rest(bytes) {}
    bool AtEnd() const { return rest.empty(); }

    std::size_t Number()
    {
        std::size_t number = 0;
        for (unsigned shift = 0; shift < 64; shift += 7) {
            const auto byte = static_cast<unsigned char>(Take(1).front());
            number |= static_cast<std::size_t>(byte & 0x7f) << shift;
            if (byte < 0x80)
                return number;
        }
        Fail();
    }
    std::string_view Take(std::size_t size)
    {
        if (size > rest.size())
            Fail();
        const std::string_view taken = rest.substr(0, size);
        rest.remove_prefix(size);
        return taken;
    }
    std::optional<std::string> Text()
    {
        const std::size_t size = Number();
        if (size == 0)
            return std::nullopt;
        return std::string(Take(size - 1));
    }
    [[noreturn]] static void Fail() { throw StoreError(SQLITE_CORRUPT, "A change of the history cannot be read.", ""); }

private:
    std::string_view rest;
};

} // namespace

// Eight bytes at a time, for a transfer goes through megabytes: each is multiplied, and folded so that its upper bits
// reach the lower ones.
void FieldsDigest::Mix(std::uint64_t word)
{
    number = (number ^ word) * 0x9e3779b97f4a7c15U;
    number ^= number >> 32;
}

void FieldsDigest::Put(std::size_t column, std::string_view text)
{
    if (text.empty())
        return;
    Mix(column << 32 | text.size());
    std::uint64_t word = 0;
    for (; text.size() >= sizeof word; text.remove_prefix(sizeof word)) {
        std::memcpy(&word, text.data(), sizeof word);
        Mix(word);
    }
    if (text.empty())
        return;
    word = 0;
    std::memcpy(&word, text.data(), text.size());
    Mix(word);
}

void PutField(std::string& bytes, std::size_t column, std::string_view text)
{
    PutNumber(bytes, column);
    PutNumber(bytes, text.size() + 1);
    bytes += text;
}

std::string EncodeFields(ChangeKind kind, std::span<const FieldChange> fields)
{
    std::string bytes;
    for (const FieldChange& field : fields) {
        if (field.before == field.after)
            continue;
        PutNumber(bytes, field.column);
        if (kind != ChangeKind::Added)
            PutText(bytes, field.before);
        if (kind != ChangeKind::Deleted)
            PutText(bytes, field.after);
    }
    return bytes;
}

void AppendChange(std::string& bytes, const TableLayout& table, std::int64_t record, ChangeKind kind,
                  std::string_view fields)
{
    PutHead(bytes, table, record, static_cast<std::size_t>(kind), fields.size());
    bytes += fields;
}

void AppendAdded(std::string& bytes, const TableLayout& table, std::int64_t record, std::uint64_t digest)
{
    PutHead(bytes, table, record, LeftToTable, sizeof digest);
    for (unsigned shift = 0; shift < 64; shift += 8)
        bytes += static_cast<char>(digest >> shift & 0xff);
}

void AppendChange(std::string& bytes, const RecordChange& change)
{
    if (change.digest)
        AppendAdded(bytes, *change.table, change.record, *change.digest);
    else
        AppendChange(bytes, *change.table, change.record, change.kind, EncodeFields(change.kind, change.fields));
}

namespace {

std::vector<FieldChange> DecodeFields(ChangeKind kind, Reader reader, std::size_t columns)
{
    std::vector<FieldChange> fields;
    while (!reader.AtEnd()) {
        const std::size_t column = reader.Number();
        if (column >= columns)
            Reader::Fail();
        FieldChange& field = fields.emplace_back(FieldChange{static_cast<std::uint16_t>(column), {}, {}});
        if (kind != ChangeKind::Added)
            field.before = reader.Text();
        if (kind != ChangeKind::Deleted)
            field.after = reader.Text();
    }
    return fields;
}

std::uint64_t DecodeDigest(std::string_view bytes)
{
    std::uint64_t digest = 0;
    if (bytes.size() != sizeof digest)
        Reader::Fail();
    for (unsigned shift = 0; const char byte : bytes) {
        digest |= static_cast<std::uint64_t>(static_cast<unsigned char>(byte)) << shift;
        shift += 8;
    }
    return digest;
}

} // namespace

std::vector<RecordChange> DecodeChanges(std::string_view bytes)
{
    std::vector<RecordChange> changes;
    for (Reader reader(bytes); !reader.AtEnd();) {
        const std::size_t table = reader.Number();
        const std::size_t record = reader.Number();
        const std::size_t kind = reader.Number();
        if (table >= ClientTables().size() || kind > LeftToTable)
            Reader::Fail();
        RecordChange& change = changes.emplace_back(RecordChange{.table = &ClientTables()[table],
                                                                 .record = static_cast<std::int64_t>(record),
                                                                 .kind = ChangeKind::Added,
                                                                 .fields = {},
                                                                 .digest = {}});
        const std::string_view fields = reader.Take(reader.Number());
        if (kind == LeftToTable) {
            change.digest = DecodeDigest(fields);
            continue;
        }
        change.kind = static_cast<ChangeKind>(kind);
        change.fields = DecodeFields(change.kind, Reader(fields), FieldsOf(*change.table).Count());
    }
    return changes;
}

} // namespace quillmere
