#pragma once

#include <QPixmap>

#include <string>
#include <vector>

namespace quillmere::test {

struct NamedPicture {
    std::string name;
    QPixmap picture;
};

/// All pictures on one sheet, each under its name and no wider than a column.
QPixmap SheetOf(const std::vector<NamedPicture>& pictures);

} // namespace quillmere::test
