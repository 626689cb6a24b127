#pragma once

#include "clientdb/store/Recordset.h"
#include "exchange/Plan.h"
#include "exchange/TypingRoom.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What a row of a table becomes: an employee's boxes, typed into.
namespace quillmere::exchange {

/// A row that is not taken, with its reason.
struct Fault {
    std::string words;
};

/// An employee as the plan leaves him.
struct Person {
    std::string employer, name, nationalInsurance, worksNumber;
    std::string firstName = {}, surname = {}, reference = {}; ///< of a new one
    bool isNew = false;
    std::map<std::pair<std::string, std::string>, std::string> written = {}; ///< by table and field
    std::set<std::pair<std::string, int>> takenLines = {}; ///< of lists and cars, that rows of this file stand for
};

/// The stored records, one employee after the other.
class StoredTexts {
public:
    explicit StoredTexts(Database& database) : database(database) {}

    /// What a field of an employee reads once what is planned has been written.
    std::string Text(const Person& person, std::string_view table, const std::string& field);
    Recordset& Records(std::string_view table) { return At(table).records; }

private:
    struct Table {
        Recordset records;
        const Person* person = nullptr; ///< on whom it stands
    };
    Table& At(std::string_view table);

    Database& database;
    std::map<std::string, Table, std::less<>> tables;
};

/// The boxes of a screen, or of a part of one, while cells of one employee are typed into them.
class TypedBoxes {
public:
    TypedBoxes(TypingRoom& room, Screen& screen) : room(room), screen(screen) {}

    void Add(Box& box, std::string_view table, std::string field)
    {
        entries.push_back({&box, std::string(table), std::move(field), {}, {}});
    }
    /// Shows what is stored.
    void Show(StoredTexts& stored, const Person& person);
    /// A cell that says what is there already touches nothing else. Throws Fault for one that the box does not take.
    void Type(Box& box, std::string_view cell);
    /// What has changed of it all, with words for it.
    void Take(std::vector<PlannedField>& fields, std::vector<std::string>& words) const;

private:
    struct Entry {
        Box* box;
        std::string table, field;
        std::string shown, before; ///< at first, and before the cell that is being typed
    };
    TypingRoom& room;
    Screen& screen;
    std::vector<Entry> entries;
};

} // namespace quillmere::exchange
