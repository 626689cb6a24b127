// What a page opens it opens on stored records: a notepad, a calculator, the further cars, the declaration.
#include "clientdb/CurrentRecord.h"
#include "clientdb/store/StoreFaults.h"
#include "support/ProgramFixture.h"

#include <algorithm>
#include <set>

namespace quillmere::test {
namespace {

constexpr int BusyError = 5;

/// A page, a box of it with the field that keeps it, and how many screens its pictures and labels open.
struct PageCase {
    std::string_view name, box, field;
    std::size_t opens;
};
constexpr auto Pages = std::to_array<PageCase>({
    // Assets, payments, vouchers, accommodation, mileage, the car sheet, cars 3 + 4, cars 5 + 6, the declaration.
    {"Form3", "EmployeeNameBox2", "FirstName", 9},
    // Vans, loans, medical, relocation, services, assets, three of other items, six of expenses.
    {"Side2Form1", "LDescriptAsset", "LDescriptAsset", 15},
});

class OpeningStoresThePage : public ProgramFixture, public ::testing::WithParamInterface<PageCase> {
protected:
    ~OpeningStoresThePage() override { SetStoreFaultHook({}); }

    const PageCase& Page() const { return GetParam(); }

    void OpenPage()
    {
        Create("Acme Ltd", "Jane", "Smith");
        OpenEmployee();
        if (Page().name != "Form3")
            Click("Form3", "Page2");
        ASSERT_TRUE(Shows(Page().name));
    }

    /// What leads on from the page, but for the tabs between the two pages.
    std::vector<std::string> WaysOn()
    {
        std::vector<std::string> ways;
        const Screen& page = *Now().screens.Find(Page().name);
        for (const auto& box : page.Boxes())
            if ((box->Kind() == BoxKind::Picture || box->Kind() == BoxKind::Label) && page.IsClickable(*box) &&
                !box->Name().starts_with("Page"))
                ways.push_back(box->Name());
        return ways;
    }

    std::string Stored()
    {
        Database database = Clients();
        return std::string(OpenCurrent(database, "P11D", Now()).Field(Page().field));
    }

    /// The screens that a click has opened.
    std::vector<std::string> OpenedBy(const std::string& way)
    {
        const std::vector<Screen*> before = Now().screens.Open();
        Click(Page().name, way);
        std::vector<std::string> opened;
        for (const Screen* screen : Now().screens.Open())
            if (std::ranges::find(before, screen) == before.end())
                opened.push_back(screen->Name());
        return opened;
    }
};

TEST_P(OpeningStoresThePage, WhateverIsOpened)
{
    OpenPage();
    std::set<std::string> opened;
    for (const std::string& way : WaysOn()) {
        SCOPED_TRACE(way);
        const std::string typed = "by way of " + way;
        At(Page().name, Page().box).SetText(typed);
        const std::vector<std::string> screens = OpenedBy(way);
        EXPECT_EQ(Stored(), typed);
        ASSERT_EQ(screens.size(), 1U);
        opened.insert(screens.front());
        Now().screens.Unload(screens.front());
        EXPECT_TRUE(door.messages.empty());
    }
    EXPECT_EQ(opened.size(), Page().opens);
}

TEST_P(OpeningStoresThePage, AndAPageThatTheStoreRefusesStaysAlone)
{
    OpenPage();
    for (const std::string& way : WaysOn()) {
        SCOPED_TRACE(way);
        At(Page().name, Page().box).SetText("refused by way of " + way);
        SetStoreFaultHook([](std::string_view statement) { return statement.starts_with("UPDATE") ? BusyError : 0; });
        EXPECT_TRUE(OpenedBy(way).empty());
        SetStoreFaultHook({});
        ASSERT_EQ(door.messages.size(), 1U);
        EXPECT_EQ(TakeMessage().title, Now().screens.Find(Page().name)->Caption());
        EXPECT_TRUE(Shows(Page().name));
        EXPECT_EQ(At(Page().name, Page().box).Text(), "refused by way of " + way);
    }
}

TEST_P(OpeningStoresThePage, TheDeclarationFromTheMenuToo)
{
    OpenPage();
    At(Page().name, Page().box).SetText("typed");
    SetStoreFaultHook([](std::string_view statement) { return statement.starts_with("UPDATE") ? BusyError : 0; });
    Menu("FileP11DB");
    SetStoreFaultHook({});
    EXPECT_EQ(TakeMessage().title, Now().screens.Find(Page().name)->Caption());
    EXPECT_FALSE(Shows("P11DDeclaration"));
    Menu("FileP11DB");
    EXPECT_TRUE(Shows("P11DDeclaration"));
    EXPECT_EQ(Stored(), "typed");
    EXPECT_TRUE(door.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Pages, OpeningStoresThePage, ::testing::ValuesIn(Pages),
                         [](const auto& page) { return std::string(page.param.name); });

} // namespace
} // namespace quillmere::test
