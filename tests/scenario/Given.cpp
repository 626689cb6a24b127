#include "Stage.h"
#include "StepFamilies.h"
#include "clientdb/Employees.h"
#include "frame/Amount.h"

#include <chrono>

namespace quillmere::scenario {

namespace {

void Today(Stage& stage, const Step& step)
{
    const std::string& text = step.words[0].text;
    stage.platform.today = std::chrono::sys_days(std::chrono::year(std::stoi(text.substr(0, 4))) /
                                                 std::stoi(text.substr(5, 2)) / std::stoi(text.substr(8, 2)));
}

void GivenFile(Stage& stage, const Step& step)
{
    stage.world.WriteLines(stage.world.File(stage.Text(step.words[0])), step.lines);
}

void GivenCopy(Stage& stage, const Step& step)
{
    const std::filesystem::path target = stage.world.File(stage.Text(step.words[0]));
    std::filesystem::create_directories(target.parent_path());
    std::error_code error;
    std::filesystem::copy_file(stage.pictures / stage.Text(step.words[1]), target,
                               std::filesystem::copy_options::overwrite_existing, error);
    if (error)
        throw StepFailure("cannot make " + target.string() + ": " + error.message());
}

/// Writes what is given: with all the rest before the start, or at once.
void ChangeStore(Stage& stage, const Step& step, Store store, World::Change change)
{
    if (!stage.IsUp() && step.row->effect == Effect::Gives)
        stage.world.Later(store, step, std::move(change));
    else
        stage.world.Now(store, change);
}

template<Store store>
void GivenEmployee(Stage& stage, const Step& step)
{
    const NewEmployee employee{.employer = stage.Text(step.words[0]),
                               .firstName = stage.Text(step.words[1]),
                               .surname = stage.Text(step.words[2]),
                               .payeReference = stage.Text(step.words[3])};
    ChangeStore(stage, step, store, [employee](Database& database) { CreateEmployee(database, employee); });
}

template<Store store>
void GivenField(Stage& stage, const Step& step)
{
    const std::vector<std::string> words = stage.Texts(step, 0);
    ChangeStore(stage, step, store, [words, null = step.words[4].IsNull()](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        Position(records, words[0], words[1], words[2]);
        records.Edit();
        if (null)
            records.SetNull(words[3]);
        else
            records.SetField(words[3], words[4]);
        records.Update();
    });
}

void GivenRow(Stage& stage, const Step& step)
{
    const TableName name = ParseTable(step.words[0].text, Store::ThisYear);
    const std::vector<std::string> texts = stage.Texts(step, 0);
    ChangeStore(stage, step, name.store, [name, texts, words = step.words](Database& database) {
        Recordset records = database.OpenRecordset(name.table);
        records.AddNew();
        for (std::size_t place = 1; place < words.size(); ++place) {
            if (words[place].IsNull())
                records.SetNull(words[place].column);
            else
                records.SetField(words[place].column, texts[place]);
        }
        records.Update();
    });
}

template<Store store>
void RemoveRecord(Stage& stage, const Step& step)
{
    const std::vector<std::string> words = stage.Texts(step, 0);
    ChangeStore(stage, step, store, [words](Database& database) {
        Recordset records = database.OpenRecordset(words[0]);
        Position(records, words[0], words[1], words[2]);
        records.Delete();
    });
}

void GivenPrinters(Stage& stage, const Step& step)
{
    stage.platform.printers = stage.Texts(step, 0);
}

void GivenPrinterEdge(Stage& stage, const Step& step)
{
    const double margin = ReadNumber(stage.Text(step.words[0]));
    stage.platform.edge = {margin, margin, margin, margin};
}

void RemoveFile(Stage& stage, const Step& step)
{
    const std::filesystem::path target = stage.world.File(stage.Text(step.words[0]));
    if (std::filesystem::remove_all(target) == 0)
        throw StepFailure("expected " + target.string() + " to be there, found nothing");
}

void LockFile(Stage& stage, const Step& step)
{
    stage.world.GetFaults().Lock(stage.world.File(stage.Text(step.words[0])));
}

void UnlockFile(Stage& stage, const Step& step)
{
    stage.world.GetFaults().Unlock(stage.world.File(stage.Text(step.words[0])));
}

void ReadOnly(Stage& stage, const Step& step)
{
    stage.world.GetFaults().MakeReadOnly(stage.world.File(stage.Text(step.words[0])));
}

void GivenServer(Stage& stage, const Step& /*step*/)
{
    stage.world.Server();
}

void StopServer(Stage& stage, const Step& /*step*/)
{
    stage.world.Server().Kill();
}

void StartServer(Stage& stage, const Step& /*step*/)
{
    stage.world.Server().Start();
}

void OtherDesk(Stage& stage, const Step& step)
{
    const std::vector<std::string> words = stage.Texts(step, 0);
    stage.world.OpenAtOtherDesk(words[0], words[1], words[2]);
}

} // namespace

std::vector<StepRow> GivenSteps()
{
    using enum Argument;
    using enum Effect;
    return {
        {"today", {Date}, Today, Gives},
        {.step = "given-file", .arguments = {Name}, .perform = GivenFile, .effect = Gives, .block = true},
        {"given-copy", {Name, Name}, GivenCopy, Gives},
        {"given-employee", {Text, Text, Text, Text}, GivenEmployee<Store::ThisYear>, Gives},
        {"given-last-year-employee", {Text, Text, Text, Text}, GivenEmployee<Store::LastYear>, Gives},
        {"given-field", {Name, Text, Text, Name, Value}, GivenField<Store::ThisYear>, Gives},
        {"given-last-year-field", {Name, Text, Text, Name, Value}, GivenField<Store::LastYear>, Gives},
        {.step = "given-row", .arguments = {Name, Assignment}, .perform = GivenRow, .effect = Gives, .repeats = true},
        {.step = "given-printers",
         .arguments = {Text},
         .perform = GivenPrinters,
         .effect = Gives,
         .optional = 1,
         .repeats = true},
        {"given-printer-edge", {Text}, GivenPrinterEdge, Gives},
        {"remove-record", {Name, Text, Text}, RemoveRecord<Store::ThisYear>, Acts},
        {"remove-last-year-record", {Name, Text, Text}, RemoveRecord<Store::LastYear>, Acts},
        {"remove-file", {Name}, RemoveFile, Acts},
        {"lock-file", {Name}, LockFile, Acts},
        {"unlock-file", {Name}, UnlockFile, Acts},
        {"read-only", {Name}, ReadOnly, Acts},
        {"given-server", {}, GivenServer, Gives},
        {"stop-server", {}, StopServer, Acts},
        {"start-server", {}, StartServer, Acts},
        {"other-desk", {Text, Text, Text}, OtherDesk, Acts},
    };
}

} // namespace quillmere::scenario
