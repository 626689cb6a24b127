#include "screens/P11DPage.h"

#include "clientdb/FurtherCars.h"
#include "edition/Edition.h"

#include <algorithm>

namespace quillmere {

void RewriteAmount(Box& box)
{
    if (!box.Empty())
        box.SetText(AmountText(ReadAmount(box.Text()), edition::FormatMoneyBlankZero));
}

Amount NetOf(Amount cost, Amount madeGood)
{
    return std::max(cost - madeGood, Amount());
}

void RewriteTriple(Screen& screen, const AmountTriple& triple)
{
    Box& cost = screen.box(triple.cost);
    Box& madeGood = screen.box(triple.madeGood);
    Box& cashEquivalent = screen.box(triple.cashEquivalent);
    cost.TrimText();
    madeGood.TrimText();
    cashEquivalent.TrimText();
    if (cost.Empty())
        madeGood.Clear();
    if (!cost.Empty() || !madeGood.Empty()) {
        const Amount net = NetOf(ReadAmount(cost.Text()), ReadAmount(madeGood.Text()));
        cashEquivalent.SetText(AmountText(net, edition::FormatMoneyZero));
    }
    RewriteAmount(cost);
    RewriteAmount(madeGood);
    if (cost.Empty() && madeGood.Empty())
        cashEquivalent.Clear();
}

P11DPage::P11DPage(Session& session, std::string_view name, std::string_view caption,
                   std::string_view refreshErrorTitle)
    : BoundScreen(session, name, ShowMode::Child, caption, EmployeeRecord(session)),
      refreshErrorTitle(refreshErrorTitle)
{
}

void P11DPage::OnLeaveTriple(const AmountTriple& triple)
{
    triples.push_back(triple);
    for (const std::string_view boxName : {triple.cost, triple.madeGood, triple.cashEquivalent})
        OnLeave(boxName, [this, triple](Box&) { RewriteTriple(*this, triple); });
}

void P11DPage::OnLeaveAmount(std::string_view boxName)
{
    OnLeave(boxName, RewriteAmount);
}

void P11DPage::OpensScreen(std::string_view picture, std::string_view screen)
{
    OnClick(picture, [this, screen](Box&) {
        // A record that is gone is told of by the screen, which looks for it too.
        if (record.Store())
            session.screens.Show(screen);
    });
}

void P11DPage::TurnTo(std::string_view page, std::string_view errorTitle)
{
    if (!record.Store())
        return;
    const int currentPage = session.CurrentPage;
    auto* other = session.screens.Load<P11DPage>(page);
    const FurtherCarsAlong along(session);
    const bool addsThemUp = page == "Form3";
    if (other == nullptr || other->StoreAndShow(errorTitle, addsThemUp ? &along : nullptr) == Sought::Failed) {
        session.CurrentPage = currentPage;
        return;
    }
    session.screens.Show(page);
    session.screens.Hide(Name());
}

} // namespace quillmere
