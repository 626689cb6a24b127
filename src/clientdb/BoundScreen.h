#pragma once

#include "clientdb/CurrentRecord.h"
#include "clientdb/OpenRecord.h"
#include "frame/Screen.h"

#include <string_view>

namespace quillmere {

/// A screen that shows an open record: its boxes that name a field are bound to it.
class BoundScreen : public Screen {
public:
    BoundScreen(Session& session, std::string_view name, ShowMode mode, std::string_view caption, OpenRecord& record)
        : Screen(session, name, mode, caption), record(record)
    {
    }
    ~BoundScreen() override { record.Leave(*this); }

    /// The table of the record that it shows.
    std::string_view Table() const { return record.Table(); }
    std::string Subject() const override { return SubjectOf(Table(), session); }

    using Sought = OpenRecord::Sought;
    [[nodiscard]] Sought StoreAndShow(std::string_view errorTitle, const FurtherCarsAlong* along = nullptr)
    {
        return record.StoreAndShow(*this, errorTitle, along);
    }
    [[nodiscard]] bool MayClose() override { return !record.IsOn(*this) || record.MayClose(); }
    void Unload() override { record.Close(*this); }

protected:
    /// Its boxes are stored when it closes, so the one in use is left first.
    void CloseRequested() override
    {
        LeaveBoxInUse();
        Screen::CloseRequested();
    }

    OpenRecord& record;
};

} // namespace quillmere
