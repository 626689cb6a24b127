// The guide as a book, for scripts/guide.
//
//     make_guide pages DIR             writes the chapters that are made from the program's own tables
//     make_guide html DIR PICTURES     a page for each chapter, with its pictures
//     make_guide pdf FILE PICTURES     all chapters in one document, with its contents
#include "ChecksPage.h"
#include "KeysPage.h"
#include "app/Guide.h"
#include "app/GuideHtml.h"
#include "app/Program.h"
#include "desktop/DesktopHost.h"
#include "desktop/DesktopPlatform.h"
#include "edition/Edition.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <stdexcept>

namespace quillmere {
namespace {

namespace fs = std::filesystem;

void WriteText(const fs::path& file, const std::string& text)
{
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << text;
    if (!stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

void WritePages(const fs::path& folder)
{
    DesktopHost host;
    DesktopPlatform platform(host);
    Program program(platform, &host, {});
    WriteText(folder / "keys.md", KeysPage(program.TheSession()));
    WriteText(folder / "checks.md", ChecksPage());
}

std::string Title()
{
    return fmt::format("{}: user guide", edition::AppTitle);
}

// ---- pages for a browser ------------------------------------------------------------------------

constexpr std::string_view Style = R"(
body { font: 16px/1.5 sans-serif; margin: 0; color: #1c2127; background: #fff; display: flex; }
nav { flex: 0 0 15em; padding: 1.5em; background: #eef0f4; min-height: 100vh; }
nav a { display: block; padding: .15em 0; }
main { padding: 1.5em 2.5em 4em; max-width: 52em; }
a { color: #114a8c; }
img { max-width: 100%; border: 1px solid #c5cad3; }
table { border-collapse: collapse; }
th, td { border: 1px solid #c5cad3; padding: .3em .6em; text-align: left; vertical-align: top; }
code, pre { background: #eef0f4; padding: 0 .2em; }
)";

/// The name of a chapter's page.
std::string PageOf(std::string_view file)
{
    return fs::path(file).replace_extension(".html").string();
}

std::string LinkInPages(std::string_view target)
{
    const std::size_t mark = std::min(target.find('#'), target.size());
    if (target.find("://") != std::string_view::npos || mark == 0)
        return std::string(target);
    if (target.starts_with("../"))
        return {}; // a document of the project, which is not of the book
    return PageOf(target.substr(0, mark)) + std::string(target.substr(mark));
}

void WriteHtml(const fs::path& folder, const fs::path& pictures)
{
    fs::create_directories(folder / "pictures");
    std::string contents;
    for (const GuideChapter& chapter : GuideChapters())
        contents += fmt::format("<a href=\"{}\">{}</a>\n", PageOf(chapter.file), SectionsOf(chapter).front().title);
    const auto picture = [&](std::string_view name) {
        fs::copy_file(pictures / name, folder / "pictures" / name, fs::copy_options::overwrite_existing);
        return fmt::format("pictures/{}", name);
    };
    const auto page = [&](std::string_view title, std::string_view text) {
        return fmt::format("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>{} - "
                           "{}</title>\n<style>{}</style>\n</head>\n<body>\n<nav>\n{}</nav>\n<main>\n{}</main>\n"
                           "</body>\n</html>\n",
                           title, Title(), Style, contents, text);
    };
    for (const GuideChapter& chapter : GuideChapters())
        WriteText(folder / PageOf(chapter.file), page(SectionsOf(chapter).front().title,
                                                      HtmlOf(chapter.text, {.link = LinkInPages, .picture = picture})));
    WriteText(folder / "index.html", page("Contents", fmt::format("<h1>{}</h1>\n", Title())));
}

// ---- one document -------------------------------------------------------------------------------

constexpr int DotsAnInch = 300;
constexpr double MarginMm = 20;
constexpr int CutEdge = 3; ///< dots of a page's end in which the next page's picture may begin
// Of pictures, in points of a screen, of 96 to the inch.
constexpr int WidestPicture = 600;
constexpr double Shrink = 1.4;

/// A text whose pictures are no wider than its page.
class Book : public QTextDocument {
public:
    Book(const QString& html, QPdfWriter& writer, QSizeF page)
    {
        QFont font("Liberation Sans");
        font.setPointSizeF(9.5);
        setDefaultFont(font);
        setDefaultStyleSheet("h1 { font-size: 18pt; } h2 { font-size: 13pt; } "
                             "h3 { font-size: 11pt; } table { border-collapse: collapse; }");
        documentLayout()->setPaintDevice(&writer);
        setDocumentMargin(0);
        setPageSize(page);
        setHtml(html);
    }

protected:
    QVariant loadResource(int, const QUrl& name) override
    {
        QImage image(name.path(QUrl::FullyDecoded));
        if (image.isNull())
            throw std::runtime_error("cannot read " + name.path().toStdString());
        image.setDevicePixelRatio(std::max(Shrink, image.width() / static_cast<double>(WidestPicture)));
        return image;
    }
};

/// A heading of the book, and the page on which it stands, counted from 0.
struct Entry {
    QString title;
    int level;
    int page;
};

std::vector<Entry> EntriesOf(const Book& book)
{
    std::vector<Entry> entries;
    for (QTextBlock block = book.begin(); block.isValid(); block = block.next())
        if (const int level = block.blockFormat().headingLevel(); level == 1 || level == 2) {
            const double top = book.documentLayout()->blockBoundingRect(block).top();
            entries.push_back({block.text(), level, static_cast<int>(top / book.pageSize().height())});
        }
    return entries;
}

QString ContentsOf(const std::vector<Entry>& entries, int pagesBefore)
{
    QString html = QString("<p style=\"font-size: 20pt\"><b>%1</b></p><table width=\"100%\" cellpadding=\"1\">")
                       .arg(QString::fromStdString(Title()));
    for (const Entry& entry : entries)
        html += QString("<tr><td>%1</td><td align=\"right\">%2</td></tr>")
                    .arg(entry.level == 1 ? "<b>" + entry.title.toHtmlEscaped() + "</b>"
                                          : "&nbsp;&nbsp;&nbsp;&nbsp;" + entry.title.toHtmlEscaped())
                    .arg(entry.page + 1 + pagesBefore);
    return html + "</table>";
}

/// Draws all pages of a text, with their numbers below.
void Draw(Book& book, QPainter& painter, QPdfWriter& writer, int pagesBefore)
{
    const QSizeF page = book.pageSize();
    for (int number = 0; number < book.pageCount(); ++number) {
        if (number + pagesBefore > 0)
            writer.newPage();
        painter.save();
        painter.translate(0, -number * page.height());
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF(QPointF(0, number * page.height()), page);
        context.palette.setColor(QPalette::Text, Qt::black);
        painter.setClipRect(context.clip.adjusted(0, 0, 0, -CutEdge));
        book.documentLayout()->draw(&painter, context);
        painter.restore();
        painter.setFont(book.defaultFont());
        painter.drawText(QRectF(0, page.height(), page.width(), writer.height() - page.height()),
                         Qt::AlignRight | Qt::AlignBottom, QString::number(number + pagesBefore + 1));
    }
}

void WritePdf(const fs::path& file, const fs::path& pictures)
{
    std::string html;
    const auto picture = [&](std::string_view name) { return UrlOf(fs::absolute(pictures / name).string()); };
    for (const GuideChapter& chapter : GuideChapters()) {
        constexpr std::string_view Begin = "<h1 ";
        const std::string text =
            HtmlOf(chapter.text, {.link = [](std::string_view) { return std::string(); }, .picture = picture});
        // Every chapter but the first begins a page.
        html += html.empty()
                    ? text
                    : fmt::format("{}style=\"page-break-before: always\" {}", Begin, text.substr(Begin.size()));
    }

    QPdfWriter writer(QString::fromStdString(file.string()));
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins({MarginMm, MarginMm, MarginMm, MarginMm}, QPageLayout::Millimeter);
    writer.setResolution(DotsAnInch);
    writer.setTitle(QString::fromStdString(Title()));
    const double footer = 0.4 * DotsAnInch;
    const QSizeF page(writer.width(), writer.height() - footer);
    Book book(QString::fromStdString(html), writer, page);
    const std::vector<Entry> entries = EntriesOf(book);
    const int front = Book(ContentsOf(entries, 0), writer, page).pageCount();
    Book contents(ContentsOf(entries, front), writer, page);
    QPainter painter(&writer);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    Draw(contents, painter, writer, 0);
    Draw(book, painter, writer, front);
    if (!painter.end())
        throw std::runtime_error("cannot write " + file.string());
}

} // namespace
} // namespace quillmere

int main(int count, char** words)
{
    using namespace quillmere;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(count, words);
    const std::string_view what = count > 1 ? words[1] : "";
    try {
        if (what == "pages" && count == 3)
            WritePages(words[2]);
        else if (what == "html" && count == 4)
            WriteHtml(words[2], words[3]);
        else if (what == "pdf" && count == 4)
            WritePdf(words[2], words[3]);
        else
            throw std::runtime_error("pages DIR, html DIR PICTURES, or pdf FILE PICTURES");
    } catch (const std::exception& error) {
        fmt::print(stderr, "make_guide: {}\n", error.what());
        return 1;
    }
    return 0;
}
