#include "printing/jobs/PrePrint.h"

#include "clientdb/EmployerScreens.h"
#include "frame/Session.h"
#include "printing/jobs/PdfFiles.h"
#include "printing/jobs/PrintSystem.h"

#include <array>
#include <utility>

namespace quillmere {

namespace {

constexpr auto Rows = std::to_array<BoxRow>({
    {.name = "Title", .kind = BoxKind::Label, .text = "Employer Batch Print"},
    {.name = "Label1",
     .kind = BoxKind::Label,
     // Kept: with its word and its runs of blanks.
     .text = "Select an Employer and schedules that you wish to print.  To select particular schedules, highlight a "
             "schedule by ticking its relevant box.                              To selct all schedules, tick 'All "
             "Schedules'.                                                       To print, click on 'Print'."},
    {.name = "EmpList", .kind = BoxKind::List, .spoken = "Employers"},
});
constexpr auto AllRows = std::to_array<BoxRow>({{.name = "AllSch", .kind = BoxKind::Tick, .text = "All Schedules"}});

constexpr auto FormRows = std::to_array<BoxRow>({
    {.name = "P11D", .kind = BoxKind::Tick, .text = "P11D"},
    {.name = "P11DB", .kind = BoxKind::Tick, .text = "P11D(b)"},
    {.name = "BatchNow", .kind = BoxKind::Label, .spoken = "Being printed"},
    {.name = "ToPdfFiles", .kind = BoxKind::Button, .text = "To PDF &Files..."},
    {.name = "Print", .kind = BoxKind::Button, .text = "&Print"},
    {.name = "Cancel", .kind = BoxKind::Button, .text = "&Cancel"},
});

/// The ticks of the array SchTick; it has no member 13.
struct ScheduleTick {
    int index;
    BatchTick tick;
    std::string_view caption;
};
constexpr auto ScheduleTicks = std::to_array<ScheduleTick>({
    {1, BatchTick::A, "Assets transferred (A)"},
    {2, BatchTick::B, "Payment made (B)"},
    {3, BatchTick::C, "Vouchers/Credit (C)"},
    {4, BatchTick::D, "Living Accommodation (D)"},
    {5, BatchTick::E, "Mileage Allowance (E)"},
    {6, BatchTick::Cars, "Cars (F)"},
    {7, BatchTick::G, "Vans (G)"},
    {8, BatchTick::H, "Loans (H)"},
    {9, BatchTick::I, "Medical (I)"},
    {10, BatchTick::J, "Relocation Exp (J)"},
    {11, BatchTick::K, "Services Supplied (K)"},
    {12, BatchTick::L, "Assets placed (L) "},
    {14, BatchTick::M, "Other Items (M)"},
    {15, BatchTick::N, "Expenses Payments (N)"},
});

} // namespace

PrePrint::PrePrint(Session& session, PrintSystem& printing)
    : Screen(session, "PrePrint", ShowMode::Modal, "Employer Batch Print"),
      printing(printing),
      run(session, *this, "BatchNow", [this] { this->session.screens.Unload(Name()); })
{
    AddBoxes(Rows);
    filter.emplace(*this, "EmpList", "employers");
    AddBoxes(AllRows);
    for (const ScheduleTick& schedule : ScheduleTicks)
        AddBox({.kind = BoxKind::Tick, .text = schedule.caption}, "SchTick", schedule.index);
    AddBoxes(FormRows);
    SetButtons("Cancel", "Print");
    OnClick("AllSch", [this](Box& all) {
        for (const ScheduleTick& schedule : ScheduleTicks)
            box("SchTick", schedule.index).SetTicked(all.Ticked());
    });
    OnClick("P11D", [this](Box& forms) { box("P11DB").SetTicked(forms.Ticked()); });
    OnClick("Print", [this](Box&) { Print(); });
    OnClick("ToPdfFiles", [this](Box&) { ToPdfFiles(); });
    run.EndsBy("Cancel");
}

bool PrePrint::Load()
{
    auto employers = EmployersToShow(session);
    if (employers)
        filter->Fill(std::move(*employers));
    return employers.has_value();
}

BatchSelection PrePrint::Selection() const
{
    BatchSelection selection;
    for (const ScheduleTick& schedule : ScheduleTicks)
        selection.Set(schedule.tick, box("SchTick", schedule.index).Ticked());
    selection.Set(BatchTick::P11D, box("P11D").Ticked());
    selection.Set(BatchTick::P11DB, box("P11DB").Ticked());
    return selection;
}

std::optional<BatchOrder> PrePrint::Order()
{
    const std::string employer = box("EmpList").Text();
    if (employer.empty()) {
        session.messages.Tell("Employer Error", "You must select an Employer");
        Focus(box("EmpList"));
        return std::nullopt;
    }
    return BatchOrder{.employer = employer, .selection = Selection()};
}

void PrePrint::Print()
{
    auto order = Order();
    if (!order)
        return;
    session.CurrentEmployer = order->employer;
    for (const auto& other : Boxes())
        if (other->Kind() != BoxKind::Label && other->Name() != "Cancel")
            other->SetEnabled(false);
    Focus(box("Cancel"));
    run.Start(MakeBatch(session, printing, *std::move(order)));
}

void PrePrint::ToPdfFiles()
{
    auto order = Order();
    if (!order)
        return;
    if (auto* files = session.screens.Load<PdfFiles>("PdfFiles")) {
        files->SetOrder(*std::move(order));
        session.screens.Show("PdfFiles");
    }
}

} // namespace quillmere
