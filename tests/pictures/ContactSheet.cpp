// contact_sheet DIR FILE.png: all pictures of a folder on one sheet, in the order of their names.
#include "PictureSheet.h"

#include <QGuiApplication>

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>

int main(int count, char** words)
{
    if (count != 3) {
        fmt::print(stderr, "contact_sheet DIR FILE.png\n");
        return 2;
    }
    const QGuiApplication application(count, words);
    const std::filesystem::path target = words[2];
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(words[1]))
        if (entry.path().extension() == ".png" && entry.path().filename() != target.filename())
            files.push_back(entry.path());
    std::ranges::sort(files);
    std::vector<quillmere::test::NamedPicture> pictures;
    for (const auto& file : files)
        pictures.push_back({file.stem().string(), QPixmap(QString::fromStdString(file.string()))});
    if (pictures.empty() || std::ranges::any_of(pictures, [](const auto& shown) { return shown.picture.isNull(); }) ||
        !quillmere::test::SheetOf(pictures).save(QString::fromStdString(target.string()))) {
        fmt::print(stderr, "contact_sheet: {} holds no pictures, or {} cannot be written\n", words[1], words[2]);
        return 1;
    }
    fmt::print("{} pictures in {}\n", pictures.size(), target.string());
    return 0;
}
