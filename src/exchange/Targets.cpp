#include "exchange/Targets.h"

#include "clientdb/EmployeeFinder.h"
#include "exchange/TypingRoom.h"
#include "frame/Text.h"

#include <algorithm>
#include <array>

namespace quillmere::exchange {

namespace {

using What = Target::What;

/// A box that is called otherwise in a table than on its page.
struct OwnWords {
    std::string_view box, words;
};
constexpr auto Identity = std::to_array<OwnWords>({
    {"EmployeeNameBox2", "First names"},
    {"EmployeeNameBox", "Surname"},
    {"PAYEBox", "PAYE reference"},
    {"WorkNumberBox", "Works number"},
    {"NatIns", "NI number"},
    {"DateofBirth", "Date of birth"},
    {"SexBox", "Gender"},
    {"DirectorTick", "Director"},
});

/// Headings of other programs, in small letters and digits alone.
struct Synonym {
    std::string_view heading, words;
};
constexpr auto Synonyms = std::to_array<Synonym>({
    {"employername", "Employer"},
    {"company", "Employer"},
    {"companyname", "Employer"},
    {"client", "Employer"},
    {"clientname", "Employer"},
    {"name", "Employee"},
    {"fullname", "Employee"},
    {"employeename", "Employee"},
    {"staffname", "Employee"},
    {"driver", "Employee"},
    {"drivername", "Employee"},
    {"forename", "First names"},
    {"forenames", "First names"},
    {"firstname", "First names"},
    {"givenname", "First names"},
    {"givennames", "First names"},
    {"employeefirstname", "First names"},
    {"employeeforename", "First names"},
    {"lastname", "Surname"},
    {"familyname", "Surname"},
    {"employeesurname", "Surname"},
    {"paye", "PAYE reference"},
    {"payeref", "PAYE reference"},
    {"payereference", "PAYE reference"},
    {"employerpayereference", "PAYE reference"},
    {"employerreference", "PAYE reference"},
    {"reference", "PAYE reference"},
    {"ninumber", "NI number"},
    {"nino", "NI number"},
    {"ni", "NI number"},
    {"nationalinsurancenumber", "NI number"},
    {"nationalinsuranceno", "NI number"},
    {"nationalinsurance", "NI number"},
    {"dob", "Date of birth"},
    {"birthdate", "Date of birth"},
    {"dateofbirth", "Date of birth"},
    {"sex", "Gender"},
    {"isdirector", "Director"},
    {"worksno", "Works number"},
    {"payrollnumber", "Works number"},
    {"payrollno", "Works number"},
    {"payrollid", "Works number"},
    {"employeenumber", "Works number"},
    {"employeeno", "Works number"},
    {"employeeid", "Works number"},
    {"employeeref", "Works number"},
    {"staffnumber", "Works number"},
    {"staffno", "Works number"},
    {"department", "Works number"},
    {"section", "List"},
    {"schedule", "List"},
    {"description", "Item"},
    {"itemdescription", "Item"},
    {"cost", "Item cost"},
    {"amount", "Item cost"},
    {"gross", "Item cost"},
    {"madegood", "Item made good"},
    {"amountmadegood", "Item made good"},
    {"tax", "Item made good"},
    {"carnumber", "Car"},
    {"carno", "Car"},
    {"makeandmodel", "Car, make and model"},
    {"vehicle", "Car, make and model"},
    {"makemodel", "Car, make and model"},
    {"dateregistered", "Car, date first registered"},
    {"registrationdate", "Car, date first registered"},
    {"datefirstregistered", "Car, date first registered"},
    {"co2", "Car, approved CO2 emissions figure, g/km"},
    {"co2emissions", "Car, approved CO2 emissions figure, g/km"},
    {"co2gkm", "Car, approved CO2 emissions figure, g/km"},
    {"enginesize", "Car, engine size, cc"},
    {"cc", "Car, engine size, cc"},
    {"fuel", "Car, type of fuel or power used, key letter"},
    {"fueltype", "Car, type of fuel or power used, key letter"},
    {"availablefrom", "Car, date car was available from"},
    {"datefrom", "Car, date car was available from"},
    {"availableto", "Car, date car was available to"},
    {"dateto", "Car, date car was available to"},
    {"listprice", "Car, list price of car"},
    {"p11dvalue", "Car, list price of car"},
    {"accessories", "Car, accessories"},
    {"capitalcontribution", "Car, capital contributions"},
    {"capitalcontributions", "Car, capital contributions"},
    {"privateusecontribution", "Car, amount paid by employee for private use"},
    {"privatefuel", "Car, fuel benefit required?"},
    {"fuelbenefit", "Car, fuel benefit required?"},
});

/// Between the name of a car's box and its index.
constexpr char Index = ':';

/// The two figures of a car, which follow from all else.
constexpr auto CarFigures = std::to_array<std::string_view>({"FCashEqu", "FFuelEqu"});

/// Small letters and digits alone.
std::string Bare(std::string_view heading)
{
    std::string bare = Folded(heading);
    std::erase_if(bare, [](char character) {
        return (character < 'a' || character > 'z') && (character < '0' || character > '9');
    });
    return bare;
}

std::string WithSmallStart(std::string_view text)
{
    std::string words(text);
    if (!words.empty() && words.front() >= 'A' && words.front() <= 'Z')
        words.front() = static_cast<char>(words.front() - 'A' + 'a');
    return words;
}

/// What can be entered on a screen and is stored.
bool IsEntered(const Box& box)
{
    return (box.Kind() == BoxKind::Text || box.Kind() == BoxKind::Tick) && !box.Field().empty() && box.Visible() &&
           !box.ReadOnly();
}

} // namespace

Targets::Targets()
{
    all.push_back({What::Employer, "Employer"});
    all.push_back({What::WholeName, "Employee"});
    for (const OwnWords& own : Identity)
        all.push_back({What::OfPage, std::string(own.words), "Form3", std::string(own.box)});
    AddPages();
    all.push_back({What::List, "List"});
    all.push_back({What::Line, "Line"});
    all.push_back({What::OfList, "Item", {}, std::string(ListDescription)});
    all.push_back({What::OfList, "Item cost", {}, std::string(ListCost)});
    all.push_back({What::OfList, "Item made good", {}, std::string(ListMadeGood)});
    AddCars();
}

/// The boxes of the pages in the order of the form, but for the cars, which have rows of their own.
void Targets::AddPages()
{
    TypingRoom room;
    for (const std::string_view name : {"Form3", "Side2Form1"})
        for (const auto& box : room.Page(name).Boxes())
            if (IsEntered(*box) && room.Cars().FindBox(box->Name(), box->Index()) == nullptr &&
                OfBox(What::OfPage, box->Name()) == Nothing)
                all.push_back({What::OfPage, box->Spoken(), name, box->Name()});
}

/// The boxes of a car, with the words of the first one's.
void Targets::AddCars()
{
    constexpr std::string_view OfFirst = ", car 1";
    TypingRoom room;
    all.push_back({What::Car, "Car"});
    for (const auto& box : room.Cars().Boxes()) {
        if (!box->Spoken().ends_with(OfFirst) || !IsEntered(*box))
            continue;
        const std::string_view spoken =
            std::string_view(box->Spoken()).substr(0, box->Spoken().size() - OfFirst.size());
        std::string stem = box->Name().substr(0, box->Name().size() - 1);
        if (box->Index() != Box::NoIndex)
            stem += Index + std::to_string(box->Index());
        const bool isWorkedOut = std::ranges::find(CarFigures, stem) != CarFigures.end();
        all.push_back(
            {isWorkedOut ? What::WorkedOut : What::OfCar, "Car, " + WithSmallStart(spoken), {}, std::move(stem)});
    }
}

int Targets::Meant(std::string_view heading) const
{
    const std::string bare = Bare(heading);
    if (bare.empty())
        return Nothing;
    const auto named = [&](std::string_view words) {
        const auto found = std::ranges::find_if(all, [&](const Target& target) { return Bare(target.words) == words; });
        return found == all.end() ? Nothing : static_cast<int>(found - all.begin());
    };
    if (const int own = named(bare); own != Nothing)
        return At(own).what == What::WorkedOut ? Nothing : own;
    const auto* const synonym = std::ranges::find(Synonyms, bare, &Synonym::heading);
    return synonym == Synonyms.end() ? Nothing : named(Bare(synonym->words));
}

int Targets::OfBox(Target::What what, std::string_view box) const
{
    const auto found =
        std::ranges::find_if(all, [&](const Target& target) { return target.what == what && target.box == box; });
    return found == all.end() ? Nothing : static_cast<int>(found - all.begin());
}

CarBox BoxOfCar(const Target& target)
{
    const std::size_t colon = target.box.find(Index);
    return {.stem = target.box.substr(0, colon),
            .index = colon == std::string::npos ? Box::NoIndex : target.box[colon + 1] - '0'};
}

std::string LetterOfList(std::string_view notepad)
{
    const char last = notepad.back();
    return std::string(1, notepad.front()) + (IsDigit(static_cast<char32_t>(last)) ? std::string(1, last) : "");
}

std::string_view ListMeant(std::string_view cell)
{
    const std::string bare = Bare(cell);
    for (const NotepadMember& member : Notepads())
        if (!bare.empty() && (bare == Bare(LetterOfList(member.name)) || bare == Bare(member.section) ||
                              bare == Bare(LetterOfList(member.name)) + Bare(member.section)))
            return member.name;
    return {};
}

std::vector<std::string> TypedBoxesOf(std::string_view notepad)
{
    const auto member = std::ranges::find(Notepads(), notepad, &NotepadMember::name);
    std::vector<std::string> boxes;
    for (const std::size_t column : {0U, 1U, 2U})
        boxes.emplace_back(member->columns[column].box);
    return boxes;
}

} // namespace quillmere::exchange
