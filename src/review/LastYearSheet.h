#pragma once

#include "frame/PrintedTable.h"
#include "frame/Screen.h"
#include "review/LastYear.h"

namespace quillmere::review {

/// "Compare With Last Year": both years of the open employee, or of the employer, section by section, and what has not
/// come over.
class LastYearSheet : public Screen {
public:
    explicit LastYearSheet(Session& session);

    bool Load() override;
    void WindowActivated() override { Start(); }
    std::string Subject() const override { return subject; }

private:
    void Start();
    void Show(const YearsCompared& years);
    void Say(std::string_view words);
    std::string AsText() const;
    PrintedTable AsTable() const;

    std::string subject;
};

} // namespace quillmere::review
