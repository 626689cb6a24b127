#pragma once

#include "clientdb/store/Cells.h"
#include "clientdb/store/StoreErrors.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace quillmere {

/// A prepared statement of one of the two engines; a Run goes through it. The texts bound to it must outlive the run,
/// and what it gives holds until the next step. Everything throws StoreError.
class Prepared {
public:
    Prepared() = default;
    virtual ~Prepared() = default;
    Prepared(const Prepared&) = delete;
    Prepared& operator=(const Prepared&) = delete;

    /// The statement as the store writes it, the same for both engines.
    virtual std::string_view Words() const = 0;

    virtual void BindText(int parameter, std::string_view text) = 0;
    virtual void BindNumber(int parameter, std::int64_t number) = 0;
    virtual void BindBytes(int parameter, std::string_view bytes) = 0;
    virtual void BindNull(int parameter) = 0;

    /// True if there is a row.
    virtual bool Step() = 0;
    /// How many records the statement has changed.
    virtual int Changed() = 0;
    /// Has a statement done whose failure may be told later, at the latest by the commit.
    virtual void Post() { Step(); }
    virtual void Reset() noexcept = 0;

    virtual std::int64_t Number(int column) const = 0;
    virtual std::optional<std::string_view> TextOrNull(int column) const = 0;
    virtual std::string_view Bytes(int column) const = 0;
    /// Puts the texts of a row behind others.
    virtual void Take(Cells& cells, int first, std::size_t count) const = 0;
};

/// A prepared statement for the length of one run: it is reset at the end, which gives up its lock.
class Run {
public:
    explicit Run(Prepared& prepared) : statement(prepared) {}
    /// A statement for this run alone.
    explicit Run(std::unique_ptr<Prepared> prepared) : owned(std::move(prepared)), statement(*owned) {}
    ~Run() { statement.Reset(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    Run& Bind(std::string_view text)
    {
        statement.BindText(++parameter, text);
        return *this;
    }
    Run& Bind(std::int64_t number)
    {
        statement.BindNumber(++parameter, number);
        return *this;
    }
    Run& BindBytes(std::string_view bytes)
    {
        statement.BindBytes(++parameter, bytes);
        return *this;
    }
    Run& BindNull()
    {
        statement.BindNull(++parameter);
        return *this;
    }
    /// True if there is a row. Throws StoreError.
    bool Step()
    {
        if (!started)
            Start();
        return statement.Step();
    }
    /// Runs a statement that has no rows: the number of records changed.
    int Change()
    {
        Step();
        return statement.Changed();
    }
    /// Runs a statement that changes one record; one that is known to be there without waiting.
    int ChangeOne(bool isKnown)
    {
        if (!isKnown)
            return Change();
        Post();
        return 1;
    }
    /// Runs a statement whose failure may be told later, at the latest by the commit.
    void Post()
    {
        Start();
        statement.Post();
    }
    std::int64_t Number(int column) const { return statement.Number(column); }
    /// The text of a column, empty for null. Throws StoreError for one that no box could hold.
    std::string_view Text(int column) const { return TextOrNull(column).value_or(std::string_view()); }
    std::optional<std::string_view> TextOrNull(int column) const { return statement.TextOrNull(column); }
    std::string_view Bytes(int column) const { return statement.Bytes(column); }
    void Take(Cells& cells, int first, std::size_t count) const { statement.Take(cells, first, count); }

private:
    void Start();

    std::unique_ptr<Prepared> owned;
    Prepared& statement;
    int parameter = 0;
    bool started = false;
};

/// The longest text that a box takes, in three bytes a character.
inline constexpr std::size_t MostBytesOfText = 131'072;
/// No record is longer than the longest texts that the boxes of a screen take, all together; a change of the history
/// holds it twice.
inline constexpr int MostBytesOfRecord = 4'194'304;

/// Fails for a text that is longer than any box takes.
[[noreturn]] void FailOfText(std::string_view column, std::string_view statement);

} // namespace quillmere
