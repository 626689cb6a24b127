#include "printing/paper/PdfStructure.h"

#include "printing/paper/PdfText.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <tuple>

namespace quillmere {

namespace {

std::string_view NameOf(Role role)
{
    switch (role) {
    case Role::Title:
        return "H1";
    case Role::Heading:
        return "H2";
    case Role::Entry:
    case Role::Tick:
        return "Form";
    case Role::Table:
        return "Table";
    case Role::Row:
        return "TR";
    case Role::HeadCell:
        return "TH";
    case Role::Cell:
        return "TD";
    case Role::Paragraph:
    case Role::Piece:
    case Role::Sign:
        break;
    }
    return "P";
}

bool IsPiece(Role role)
{
    return role == Role::Piece || role == Role::Sign;
}

bool IsCell(Role role)
{
    return role == Role::Cell || role == Role::HeadCell;
}

/// Entries of an element's dictionary beside its place in the tree.
void AppendWords(std::string& object, const Element& element)
{
    if (element.role == Role::HeadCell)
        object += "/A<</O/Table/Scope/Column>>";
    if (element.role == Role::Entry || element.role == Role::Tick) {
        object += element.role == Role::Tick ? "/A<</O/PrintField/Role/cb/checked/on" : "/A<</O/PrintField/Role/tv";
        if (!element.label.empty())
            object.append("/Desc").append(PdfText(element.label));
        object += ">>";
    }
    if (element.role == Role::Tick)
        object += "/ActualText(ticked)";
    else if (!element.spoken.empty())
        object.append("/ActualText").append(PdfText(element.spoken));
}

/// The elements of one page, with the marks that each of them reads.
class PageElements {
public:
    PageElements(const Document& document, int page, std::span<const ElementNumber> marks)
        : elements(document.Elements(page)),
          first(document.FirstElement(page)),
          numbers(elements.size()),
          kids(elements.size())
    {
        for (std::size_t mark = 0; mark < marks.size(); ++mark) {
            const std::size_t source = PlaceOf(marks[mark]);
            read.push_back({Owner(source), source, static_cast<int>(mark)});
        }
        // What has been put into an element comes before what is its own.
        const auto turn = [this](const Mark& mark) {
            return mark.owner == mark.source ? 2 : elements[mark.source].role == Role::Sign ? 1 : 0;
        };
        std::ranges::stable_sort(read, {},
                                 [&turn](const Mark& mark) { return std::tuple(mark.owner, turn(mark), mark.source); });
    }

    /// Puts the elements into the file, below `parent`. Gives the references of the topmost ones.
    std::string AddTo(PdfFile& file, int parent, const std::string& page)
    {
        const int count = CountUsed();
        const int start = file.Reserve(count);
        for (int& number : numbers)
            if (number != 0)
                number += start - 1;
        for (std::size_t place = elements.size(); place-- > 0;)
            if (numbers[place] != 0 && elements[place].parent != 0)
                kids[PlaceOf(elements[place].parent)].insert(0, PdfFile::ReferenceTo(numbers[place]) + ' ');
        std::string top;
        std::span<const Mark> rest = read;
        for (std::size_t place = 0; place < elements.size(); ++place) {
            if (numbers[place] == 0)
                continue;
            const Element& element = elements[place];
            if (element.parent == 0)
                PdfFile::AppendReference(top, numbers[place]);
            std::string object("<</S/");
            object.append(NameOf(element.role)).append("/P ");
            PdfFile::AppendReference(object, element.parent == 0 ? parent : numbers[PlaceOf(element.parent)]);
            object.pop_back();
            AppendWords(object, element);
            AppendWhatIsRead(object, place, page, rest);
            object += ">>";
            file.Replace(numbers[place], std::move(object));
        }
        return top;
    }

    /// The references of the elements behind the marks, in the order of the marks.
    std::string BehindMarks() const
    {
        std::vector<int> behind(read.size());
        for (const Mark& mark : read)
            behind[static_cast<std::size_t>(mark.number)] = numbers[mark.owner];
        std::string list;
        for (const int number : behind)
            PdfFile::AppendReference(list, number);
        return list;
    }

private:
    struct Mark {
        std::size_t owner, source; ///< places of the elements that read it and that it was drawn for
        int number;
    };

    std::size_t PlaceOf(ElementNumber element) const { return element - first; }

    /// The element that reads what was drawn for this one.
    std::size_t Owner(std::size_t place) const
    {
        while (IsPiece(elements[place].role) && elements[place].parent != 0)
            place = PlaceOf(elements[place].parent);
        return place;
    }

    /// Counts the elements through of which something is read, and those that hold them.
    int CountUsed()
    {
        for (const Mark& mark : read)
            for (std::size_t place = mark.owner; numbers[place] == 0; place = PlaceOf(elements[place].parent)) {
                numbers[place] = 1;
                if (elements[place].parent == 0)
                    break;
            }
        // A row keeps its empty cells, so that the others stay in their columns.
        for (std::size_t place = 0; place < elements.size(); ++place)
            if (IsCell(elements[place].role) && numbers[PlaceOf(elements[place].parent)] != 0)
                numbers[place] = 1;
        int count = 0;
        for (int& number : numbers)
            if (number != 0)
                number = ++count;
        return count;
    }

    /// The elements in this one, and its own marks, which are taken off the rest.
    void AppendWhatIsRead(std::string& object, std::size_t place, const std::string& page,
                          std::span<const Mark>& rest) const
    {
        const bool readsMarks = !rest.empty() && rest.front().owner == place;
        if (!readsMarks && kids[place].empty())
            return;
        if (readsMarks)
            object.append("/Pg ").append(page);
        object.append("/K[").append(kids[place]);
        for (; !rest.empty() && rest.front().owner == place; rest = rest.subspan(1))
            PdfFile::AppendNumber(object, static_cast<std::size_t>(rest.front().number));
        object.back() = ']';
    }

    std::span<const Element> elements;
    ElementNumber first;
    std::vector<int> numbers; ///< of the elements' objects; 0: not in the file
    std::vector<std::string> kids;
    std::vector<Mark> read;
};

} // namespace

PdfStructure::PdfStructure(PdfFile& file) : file(file), root(file.Reserve(2)), whole(root + 1)
{
}

std::string PdfStructure::AddPage(const Document& document, int page, const std::string& reference,
                                  std::span<const ElementNumber> marks)
{
    if (marks.empty())
        return {};
    PageElements elements(document, page, marks);
    const int section = file.Reserve();
    const std::string top = elements.AddTo(file, section, reference);
    file.Replace(section, fmt::format("<</S/Sect/P {} 0 R/K[{}]>>", whole, top));
    fmt::format_to(std::back_inserter(sections), "{} 0 R ", section);
    fmt::format_to(std::back_inserter(parentsOfMarks), "{} {} ", pages,
                   file.Add(fmt::format("[{}]", elements.BehindMarks())));
    return fmt::format("/StructParents {}/Tabs/S", pages++);
}

void PdfStructure::Finish()
{
    if (pages == 0)
        return;
    file.Replace(whole, fmt::format("<</S/Document/P {} 0 R/K[{}]>>", root, sections));
    file.Replace(root, fmt::format("<</Type/StructTreeRoot/K {} 0 R/ParentTree<</Nums[{}]>>/ParentTreeNextKey {}>>",
                                   whole, parentsOfMarks, pages));
    file.SetInCatalogue("/StructTreeRoot", PdfFile::ReferenceTo(root));
    file.SetInCatalogue("/MarkInfo", "<</Marked true>>");
}

} // namespace quillmere
