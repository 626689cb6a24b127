#pragma once

#include "exchange/Export.h"
#include "frame/Screen.h"

#include <filesystem>
#include <string>
#include <vector>

namespace quillmere::exchange {

/// What is to be written out, and of whom: a table as a file that spreadsheets read.
class ExportScreen : public Screen {
public:
    explicit ExportScreen(Session& session);

    bool Load() override;

private:
    const ExportRow& Chosen() const;
    void Save();
    std::filesystem::path ProposedFile() const;

    std::vector<std::string> employers;
};

} // namespace quillmere::exchange
