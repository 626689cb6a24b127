#include "app/About.h"

#include "support/ProgramFixture.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fmt/format.h>
#include <fstream>
#include <link.h>

namespace quillmere::test {
namespace {

/// File names of the libraries with which this program was linked, which are those of the product and of its tests.
std::vector<std::string> LinkedLibraries()
{
    const char* names = nullptr;
    for (const ElfW(Dyn)* entry = _DYNAMIC; entry->d_tag != DT_NULL; ++entry)
        if (entry->d_tag == DT_STRTAB)
            names = reinterpret_cast<const char*>(entry->d_un.d_ptr);
    std::vector<std::string> linked;
    for (const ElfW(Dyn)* entry = _DYNAMIC; entry->d_tag != DT_NULL; ++entry)
        if (entry->d_tag == DT_NEEDED)
            linked.emplace_back(names + entry->d_un.d_val);
    return linked;
}

class AboutTest : public ProgramFixture {
protected:
    static std::string Told(const std::vector<AboutFact>& facts, std::string_view what)
    {
        const auto found = std::ranges::find(facts, what, &AboutFact::what);
        return found == facts.end() ? "not told" : found->which;
    }
};

TEST_F(AboutTest, EveryLibraryThatIsLinkedIsTold)
{
    constexpr auto OfTheSystem = std::to_array<std::string_view>(
        {"libc.", "libm.", "libstdc++", "libgcc_s", "ld-linux", "libgtest", "libgmock", "libasan", "libubsan"});
    const std::vector<AboutFact> facts = AboutFacts(Now());
    const auto begins = [](std::string_view begin) {
        return [begin](const std::string& name) { return name.starts_with(begin); };
    };
    std::size_t met = 0;
    for (const std::string& library : LinkedLibraries()) {
        if (std::ranges::any_of(OfTheSystem, [&](std::string_view system) { return begins(system)(library); }))
            continue;
        ++met;
        EXPECT_TRUE(std::ranges::any_of(facts, [&](const AboutFact& fact) {
            constexpr std::string_view Prefix = "Library ";
            if (!fact.what.starts_with(Prefix))
                return false;
            std::string name = fact.what.substr(Prefix.size());
            std::ranges::transform(name, name.begin(), [](unsigned char c) { return std::tolower(c); });
            return library.find(name) != std::string::npos;
        })) << library;
    }
    EXPECT_GT(met, 5U);
    for (const AboutFact& fact : facts)
        EXPECT_FALSE(fact.which.empty()) << fact.what;
}

TEST_F(AboutTest, FoldersAndDatabaseAreThoseInUse)
{
    const std::vector<AboutFact> facts = AboutFacts(Now());
    EXPECT_EQ(Told(facts, "Program folder"), Now().programFolder.string());
    EXPECT_EQ(Told(facts, "Client folder"), Now().ClientDatabasePath().parent_path().string());
    EXPECT_EQ(Told(facts, "Database"), std::string(edition::ClientDatabaseName));
    EXPECT_EQ(Told(facts, "Size of the database"),
              fmt::format("{} bytes", std::filesystem::file_size(Now().ClientDatabasePath())));
    EXPECT_TRUE(Told(facts, "Format of the database").starts_with("SQLite 3, tables of layout 1, "));
    EXPECT_TRUE(Told(facts, "Edition").ends_with(edition::YearLabel));
}

TEST_F(AboutTest, ADatabaseThatIsNoneSaysWhy)
{
    std::ofstream(Now().ClientDatabasePath(), std::ios::trunc) << "no database";
    const std::vector<AboutFact> facts = AboutFacts(Now());
    EXPECT_EQ(Told(facts, "Size of the database"), "11 bytes");
    EXPECT_NE(Told(facts, "Format of the database").find("cannot be opened"), std::string::npos);
}

TEST_F(AboutTest, CopyTakesAllOfIt)
{
    Menu("mnuAbout");
    Click("About", "AboutCopy");
    EXPECT_TRUE(door.copied.starts_with("2011 Quillmere\nEdition\tQ1111-12, tax year 2010-11\nVersion\t"));
    for (const AboutFact& fact : AboutFacts(Now()))
        EXPECT_NE(door.copied.find(fact.what + "\t" + fact.which + "\n"), std::string::npos) << fact.what;
}

} // namespace
} // namespace quillmere::test
