#include "Stage.h"
#include "StepFamilies.h"
#include "desktop/DesktopHost.h"
#include "desktop/PageReplay.h"
#include "printing/paper/PdfWriter.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <fmt/format.h>
#include <fstream>
#include <memory>

namespace quillmere::scenario {

namespace {

void Show(Stage& stage, const Step& step)
{
    const Control control = stage.Find(step.words[0]);
    fmt::print("{}:{}: {} = {}\n", stage.file, step.line, control.name, Shown(control.box->Text()));
}

void ShowField(Stage& stage, const Step& step)
{
    bool isNull = false;
    const std::string text = stage.FieldText(step, Store::ThisYear, isNull);
    fmt::print("{}:{}: {} = {}\n", stage.file, step.line, step.words[3].text, isNull ? "null" : Shown(text));
}

void ShowDocument(Stage& stage, const Step&)
{
    const Document& document = stage.witness.Last();
    fmt::print("document {}\n{}", Shown(document.name), Listing(document));
}

void Picture(Stage& stage, const Step& step)
{
    QWidget* window = stage.WindowOf(step.words[0].text);
    if (window == nullptr)
        throw StepFailure("expected " + step.words[0].text + " to have a window, found none");
    const std::filesystem::path target = stage.pictures / stage.Text(step.words[1]);
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path());
    QPixmap shot = window->grab();
    if (QWidget* popup = QApplication::activePopupWidget())
        QPainter(&shot).drawPixmap(window->mapFromGlobal(popup->pos()), popup->grab());
    if (!shot.save(QString::fromStdString(target.string())))
        throw StepFailure("cannot write " + target.string());
}

void PagePicture(Stage& stage, const Step& step)
{
    constexpr double DotsPerPoint = 1.25;
    const auto document = std::make_shared<const Document>(stage.witness.Last());
    const int page = step.words[0].Number();
    if (page < 1 || page > document->PageCount())
        throw StepFailure(fmt::format("expected a page {}, found {} pages", page, document->PageCount()));
    const std::filesystem::path target = stage.pictures / stage.Text(step.words[1]);
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path());
    QImage image(static_cast<int>(PageReplay::Width * DotsPerPoint),
                 static_cast<int>(PageReplay::Height * DotsPerPoint), QImage::Format_RGB32);
    image.fill(Qt::white);
    ReplayFonts fonts;
    QPainter painter(&image);
    painter.scale(DotsPerPoint, DotsPerPoint);
    PageReplay(document, page, fonts).Paint(painter, QRectF(0, 0, PageReplay::Width, PageReplay::Height));
    painter.end();
    if (!image.save(QString::fromStdString(target.string())))
        throw StepFailure("cannot write " + target.string());
}

void SaveFile(Stage& stage, const Step& step)
{
    const std::filesystem::path target = stage.pictures / stage.Text(step.words[1]);
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path());
    std::error_code error;
    std::filesystem::copy_file(stage.world.File(stage.Text(step.words[0])), target,
                               std::filesystem::copy_options::overwrite_existing, error);
    if (error)
        throw StepFailure("cannot write " + target.string() + ": " + error.message());
}

void SavePdf(Stage& stage, const Step& step)
{
    const std::filesystem::path target = stage.pictures / stage.Text(step.words[0]);
    if (target.has_parent_path())
        std::filesystem::create_directories(target.parent_path());
    std::ofstream stream(target, std::ios::binary | std::ios::trunc);
    stream << PdfWriter().Write(stage.witness.Last());
    if (!stream.flush())
        throw StepFailure("cannot write " + target.string());
}

void Note(Stage& stage, const Step& step)
{
    fmt::print("{}:{}: {}\n", stage.file, step.line, stage.Text(step.words[0]));
}

} // namespace

std::vector<StepRow> ShowingSteps()
{
    using enum Argument;
    using enum Effect;
    return {
        {"show", {Control}, Show, LooksOn},
        {"show-field", {Name, Text, Text, Name}, ShowField, LooksOn},
        {"show-document", {}, ShowDocument, LooksOn},
        {"picture", {Name, Name}, Picture, LooksOn},
        {"page-picture", {Number, Name}, PagePicture, LooksOn},
        {"save-pdf", {Name}, SavePdf, LooksOn},
        {"save-file", {Name, Name}, SaveFile, LooksOn},
        {"note", {Text}, Note, Says},
    };
}

} // namespace quillmere::scenario
