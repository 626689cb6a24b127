#include "screens/ScheduleNotepad.h"

namespace quillmere {

namespace {

using Use = ScheduleColumn::Use;

// Shapes of columns that several notepads share. The field is named only where it differs from the box.
constexpr ScheduleColumn Description{
    .box = "Description", .field = "Description", .caption = "Description", .use = Use::Description};
constexpr ScheduleColumn NoColumn{};

constexpr ScheduleColumn Cost(std::string_view box, std::string_view field, std::string_view caption)
{
    return {.box = box, .field = field, .caption = caption, .total = "CostTotal"};
}
constexpr ScheduleColumn Tax(std::string_view box, std::string_view caption)
{
    return {.box = box, .field = box, .caption = caption, .total = "TaxTotal"};
}
constexpr ScheduleColumn Cash(std::string_view box, std::string_view field, std::string_view caption)
{
    return {.box = box, .field = field, .caption = caption, .total = "CashTotal", .use = Use::Computed};
}

constexpr std::array PlainColumns{Description, Cost("Cost", "Cost", "Cost"), Tax("AmountGood", "Amount Good"),
                                  Cash("CashEq", "CashEq", "Cash Equivalent")};
constexpr std::array DescribedColumns{Description, Cost("Cost", "Cost", "Cost "), Tax("AmountGood", "Amount good/Tax"),
                                      Cash("Gross", "CashEq", "Cash Equ")};

// The letters in the titles are the family's own: the input titles of sections N and O carry the letter before.
constexpr auto Members = std::to_array<NotepadMember>({
    {.name = "ANotepad",
     .section = "Assets transferred - ",
     .columns = {Description, Cost("CostMark", "CostMarket", "Cost/Market Val"), Tax("Tax", "Amount good/Tax"),
                 Cash("Gross", "CashEq", "Cash Equ")},
     .totalFields = {"ACostMarketBox", "AAmountGood", "ACashEqu"},
     .describedField = "ADescriptionAsset",
     .inputTitle = "Notepad A Input Error",
     .okTitle = "Notepad A 'Ok' Error",
     .loadingTitle = "Notepad A - loading error"},
    {.name = "BNotepad",
     .section = "Payments made on behalf of employee - ",
     .columns = {Description, Cost("Payment", "Payment", "Payment"), Tax("Tax", "Tax "), NoColumn},
     .kind = ScheduleKind::CostAndTax,
     .totalFields = {"B2", "BNotTax", ""},
     .describedField = "BDescriptionPayment",
     .okTitle = "Notepad B 'Ok' Error",
     .loadingTitle = "Notepad B - loading error"},
    {.name = "CNotepad",
     .section = "Vouchers or credit cards - ",
     .columns = {Description, Cost("Gross", "Gross", "Gross Amount"), Tax("Tax", "Amount good/Tax"),
                 Cash("CashEq", "CashEq", "Cash Equ")},
     .totalFields = {"CGrossAmount", "CAmountGood", "CCashEqu"},
     .inputTitle = "Notepad C Input Error",
     .okTitle = "Notepad C 'Ok' Error",
     .loadingTitle = "Notepad C - loading error"},
    {.name = "INotepad",
     .section = "Private medical treatment or insurance - ",
     .columns = PlainColumns,
     .totalFields = {"IMedCost", "IAmountGood", "ICashEqu"},
     .inputTitle = "Notepad I Input Error",
     .okTitle = "Notepad I 'Ok' Error",
     .loadingTitle = "Notepad I - loading error"},
    {.name = "KNotepad",
     .section = "Services supplied - ",
     .columns = PlainColumns,
     .totalFields = {"KCostYou", "KAmountGood", "KCashEqu"},
     .inputTitle = "Notepad K Input Error",
     .okTitle = "Notepad K 'Ok' Error",
     .loadingTitle = "Notepad K - loading error"},
    {.name = "LNotepad",
     .section = "Assets placed at the employee's disposal - ",
     .columns = {Description, Cost("AnnValue", "AnnualValue", "Annual Val + Exp"), Tax("AmountGood", "Amount good/Tax"),
                 Cash("Gross", "CashEqu", "Cash Equ")},
     .totalFields = {"LAnnualValue", "LAmountGood", "LCashEqu"},
     .describedField = "LDescriptAsset",
     .inputTitle = "Notepad L Input Error",
     .okTitle = "Notepad L 'Ok' Error",
     .loadingTitle = "Notepad L - loading error"},
    {.name = "NNotepad1",
     .section = "Other items (including subscriptions and professional fees) - ",
     .columns = DescribedColumns,
     .totalFields = {"NCostYou1", "NAmountGood1", "NCashEqu1"},
     .describedField = "NDescriptItems1",
     .inputTitle = "Notepad M Input Error",
     .okTitle = "Notepad N1 'Ok' Error",
     .loadingTitle = "Notepad N1 - loading error"},
    {.name = "NNotepad2",
     .section = "Other items (including subscriptions and professional fees) - ",
     .columns = DescribedColumns,
     .totalFields = {"NCostYou2", "NAmountGood2", "NCashEqu2"},
     .describedField = "NDescriptItems2",
     .inputTitle = "Notepad M Input Error",
     .okTitle = "Notepad N2 'Ok' Error",
     .loadingTitle = "Notepad N2 - loading error"},
    // Kept: with no tax left on the list it is the tax on section B's notional payments that goes from the record; the
    // page's own box follows when the page is stored.
    {.name = "NNotepad3",
     .section = "Income tax paid but not dedcuted.... - ",
     .columns = {Description, NoColumn, Tax("Tax", "Tax "), NoColumn},
     .kind = ScheduleKind::TaxOnly,
     .totalFields = {"", "NTaxPaid", ""},
     .emptiedInstead = "BNotTax",
     .okTitle = "Notepad N3 'Ok' Error",
     .loadingTitle = "Notepad N3 - loading error"},
    {.name = "ONotepad1",
     .section = "Travelling and subsistence payments - ",
     .columns = PlainColumns,
     .totalFields = {"OCostYou1", "OAmountGood1", "OCashEqu1"},
     .inputTitle = "Notepad N Input Error",
     .okTitle = "Notepad O1 'Ok' Error",
     .loadingTitle = "Notepad O1 - loading error"},
    {.name = "ONotepad2",
     .section = "Entertainment - ",
     .columns = PlainColumns,
     .totalFields = {"OCostYou2", "OAmountGood2", "OCashEqu2"},
     .inputTitle = "Notepad N Input Error",
     .okTitle = "Notepad O2 'Ok' Error",
     .loadingTitle = "Notepad O2 - loading error"},
    {.name = "ONotepad3",
     .section = "General expenses allowance for business travel - ",
     .columns = PlainColumns,
     .totalFields = {"OCostYou3", "OAmountGood3", "OCashEqu3"},
     .inputTitle = "Notepad N Input Error",
     .okTitle = "Notepad O3 'Ok' Error",
     .loadingTitle = "Notepad O3 - loading error"},
    {.name = "ONotepad4",
     .section = "Payments for use of home telephone - ",
     .columns = PlainColumns,
     .totalFields = {"OCostYou4", "OAmountGood4", "OCashEqu4"},
     .inputTitle = "Notepad N Input Error",
     .okTitle = "Notepad O4 'Ok' Error",
     .loadingTitle = "Notepad O4 - loading error"},
    {.name = "ONotepad5",
     .section = "Non-qualifying relocation expenses - ",
     .columns = PlainColumns,
     .totalFields = {"OCostYou5", "OAmountGood5", "OCashEqu5"},
     .inputTitle = "Notepad N Input Error",
     .okTitle = "Notepad O5 'Ok' G Error",
     .loadingTitle = "Notepad O5 - loading error"},
    {.name = "ONotepad6",
     .section = "Description of other expenses - ",
     .columns = DescribedColumns,
     .totalFields = {"OCostYou6", "OAmountGood6", "OCashEqu6"},
     .describedField = "ODescExpenses",
     .inputTitle = "Notepad N Input Error",
     .okTitle = "Notepad O6 'Ok' Error",
     .loadingTitle = "Notepad O6 - loading error"},
});

} // namespace

std::span<const NotepadMember> Notepads()
{
    return Members;
}

} // namespace quillmere
