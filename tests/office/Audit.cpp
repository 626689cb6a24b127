#include "Audit.h"

#include "clientdb/store/History.h"
#include "clientdb/store/OperationNote.h"
#include "clientdb/store/TableLayouts.h"
#include "support/RawDatabase.h"

#include <algorithm>
#include <fmt/format.h>
#include <limits>
#include <map>
#include <set>
#include <stdexcept>
#include <tuple>

namespace quillmere::office {
namespace {

using Person = std::pair<std::string, std::string>;             ///< employer and employee
using Text = std::tuple<std::string, std::string, std::string>; ///< table, field, and what is in it

/// Under which names somebody may be found: those that he was given, or was about to be given, and those of before.
class Names {
public:
    explicit Names(const std::vector<Written>& books)
    {
        for (const Written& book : books)
            for (const Written::Done& done : book.done)
                if (done.act == Act::Renamed)
                    renamed[{done.employer, done.employee}].insert(done.newName);
    }

    std::vector<Person> Of(const Person& person) const
    {
        std::vector<Person> names = {person};
        for (std::size_t next = 0; next < names.size(); ++next)
            if (const auto found = renamed.find(names[next]); found != renamed.end())
                for (const std::string& name : found->second)
                    names.emplace_back(person.first, name);
        return names;
    }

private:
    std::map<Person, std::set<std::string>> renamed;
};

/// What the history has noted of the fields.
struct Noted {
    std::set<Text> storedOver; ///< or deleted with the record
    std::map<Text, int> stored;
};

Noted ReadHistory(Database& database)
{
    const History history(database);
    constexpr std::size_t All = std::numeric_limits<std::int32_t>::max();
    Noted noted;
    for (const PastOperation& operation : history.Operations({}, All))
        for (const PastChange& change : history.Changes(operation.number, All))
            for (const PastChange::FieldTexts& texts : change.fields) {
                const std::string table(change.table), field(texts.field);
                noted.storedOver.insert({table, field, texts.before});
                if (change.kind == ChangeKind::Changed)
                    ++noted.stored[{table, field, texts.after}];
            }
    return noted;
}

std::string WordsOf(const Written::Typed& typed)
{
    return fmt::format("\"{}\" in {} of {}, {} ({})", typed.text, typed.field, typed.record.table,
                       typed.record.employee, typed.record.employer);
}

/// The records of employees, sought in one table after the other.
class Records {
public:
    explicit Records(Database& database) : database(database) {}

    /// A record of the employee; nullptr if there is none.
    const Recordset* Find(const std::string& table, const Person& person)
    {
        auto found = tables.find(table);
        if (found == tables.end()) {
            found = tables.emplace(table, database.OpenRecordset(table)).first;
            found->second.Index("IndKey");
        }
        found->second.Seek(person.first, person.second);
        return found->second.NoMatch() ? nullptr : &found->second;
    }

private:
    Database& database;
    std::map<std::string, Recordset> tables;
};

std::vector<std::string> TablesOfEmployees()
{
    std::vector<std::string> tables;
    for (const TableLayout* const layout : NewEmployeeTables())
        if (layout->level == TableLevel::Employee)
            tables.emplace_back(layout->name);
    return tables;
}

class Auditing {
public:
    Auditing(const std::filesystem::path& clients, const std::vector<Written>& books)
        : clients(clients),
          books(books),
          names(books),
          database(Database::OpenDatabase(clients)),
          noted(ReadHistory(database)),
          records(database)
    {
    }

    std::vector<std::string> Faults()
    {
        for (const Written& book : books) {
            for (const Written::Typed& typed : book.acknowledged)
                LookFor(typed);
            for (const Written::Done& done : book.done)
                if (done.isAcknowledged)
                    LookFor(done);
        }
        LookForHalves();
        return faults;
    }

    bool IsHeld(const Written::Typed& typed)
    {
        return std::ranges::any_of(names.Of({typed.record.employer, typed.record.employee}), [&](const Person& person) {
            const Recordset* const record = records.Find(typed.record.table, person);
            return record != nullptr && record->Field(typed.field) == typed.text;
        });
    }

private:
    void LookFor(const Written::Typed& typed)
    {
        const Text text{typed.record.table, typed.field, typed.text};
        if (!noted.storedOver.contains(text) && !IsHeld(typed))
            faults.push_back("lost: " + WordsOf(typed));
        // Each text is typed once: whoever stores it again has stored an old state over a new one.
        if (const auto stored = noted.stored.find(text); stored != noted.stored.end() && stored->second > 1)
            faults.push_back("came back over something later: " + WordsOf(typed));
    }

    void LookFor(const Written::Done& done)
    {
        const bool isThere = records.Find("P11D", {done.employer, done.employee}) != nullptr;
        const std::string words = fmt::format("{} ({})", done.employee, done.employer);
        if (done.act != Act::Made && isThere)
            faults.push_back("still there under the name: " + words);
        if (done.act == Act::Made && !isThere && !WasLost({done.employer, done.employee}))
            faults.push_back("lost: the new employee " + words);
    }

    /// True for somebody who was deleted or got another name, or may have been.
    bool WasLost(const Person& person) const
    {
        return std::ranges::any_of(books, [&](const Written& book) {
            return std::ranges::any_of(book.done, [&](const Written::Done& done) {
                return done.act != Act::Made && Person(done.employer, done.employee) == person;
            });
        });
    }

    void LookForHalves()
    {
        constexpr std::string_view Main = "P11D";
        std::vector<std::string> questions, words;
        for (const std::string& table : TablesOfEmployees())
            for (const auto& [one, other] :
                 {std::pair(std::string(Main), table), std::pair(table, std::string(Main))}) {
                questions.push_back(
                    fmt::format("SELECT count(*) FROM [{}] t WHERE NOT EXISTS (SELECT 1 FROM [{}] o WHERE "
                                "o.[EmployerName]=t.[EmployerName] AND o.[EmployeeName]=t.[EmployeeName])",
                                one, other));
                words.push_back(fmt::format("of {} without one of {}", one, other));
            }
        const std::vector<test::RawTable> answers = test::RawRows(clients, questions);
        for (std::size_t at = 0; at < answers.size(); ++at)
            if (answers[at].front().front() != "'0'")
                faults.push_back(fmt::format("by half: {} records {}", answers[at].front().front(), words[at]));
    }

    std::filesystem::path clients;
    const std::vector<Written>& books;
    Names names;
    Database database;
    Noted noted;
    Records records;
    std::vector<std::string> faults;
};

void StoreText(const std::filesystem::path& clients, const Written::Typed& typed, std::string_view text)
{
    Database database = Database::OpenDatabase(clients);
    Recordset records = database.OpenRecordset(typed.record.table);
    records.Index("IndKey");
    records.Seek(typed.record.employer, typed.record.employee);
    records.Edit();
    records.SetField(typed.field, text);
    records.Update();
}

/// Somebody's text that is in his record, under his own name.
Written::Typed SomethingHeld(const std::filesystem::path& clients, const std::vector<Written>& books)
{
    Auditing auditing(clients, books);
    for (const Written& book : books)
        for (const Written::Typed& typed : book.acknowledged)
            if (auditing.IsHeld(typed)) {
                Database database = Database::OpenDatabase(clients);
                if (Records(database).Find("P11D", {typed.record.employer, typed.record.employee}) != nullptr)
                    return typed;
            }
    throw std::runtime_error("the clerks have stored nothing that is still there");
}

} // namespace

std::vector<std::string> FaultsIn(const std::filesystem::path& clients, const std::vector<Written>& books)
{
    return Auditing(clients, books).Faults();
}

std::vector<std::string> HarmsNotFound(const std::filesystem::path& clients, const std::vector<Written>& books)
{
    const Written::Typed held = SomethingHeld(clients, books);
    const std::string where =
        fmt::format("WHERE [EmployerName]='{}' AND [EmployeeName]='{}'", held.record.employer, held.record.employee);
    std::vector<std::string> notFound;
    const auto look = [&](std::string_view harm, std::string_view beginning) {
        if (std::ranges::none_of(FaultsIn(clients, books),
                                 [&](const std::string& fault) { return fault.starts_with(beginning); }))
            notFound.emplace_back(harm);
    };
    const auto put = [&](std::string_view text) {
        test::ExecuteRaw(clients,
                         fmt::format("UPDATE [{}] SET [{}]='{}' {}", held.record.table, held.field, text, where));
    };
    put("");
    look("a stored text that is taken away", "lost: \"");
    put(held.text);
    StoreText(clients, held, "something later");
    StoreText(clients, held, held.text);
    look("an old text stored over a new one", "came back");
    test::ExecuteRaw(clients, fmt::format("DELETE FROM [P11D] {}", where));
    look("an employee without his page", "by half");
    return notFound;
}

} // namespace quillmere::office
