#pragma once

#include "clientdb/store/History.h"
#include "frame/Screen.h"
#include "review/FieldWords.h"

#include <optional>
#include <vector>

namespace quillmere::review {

/// Who changed what when: the operations of the change history, and below them what the chosen one did, box by box in
/// the words of the form. Any of them can be undone.
class ChangeHistory : public Screen {
public:
    explicit ChangeHistory(Session& session);

    bool Load() override;
    /// Lists anew: something may have been changed while another window was in front.
    void Activate() override { List(); }

private:
    /// Whose changes are listed, with the index of their option.
    enum Scope { ThisEmployee, ThisEmployer, Everybody };

    void LeaveDay();
    void List();
    void ShowChanges();
    void UndoChosen();

    std::optional<FieldWords> words;       ///< from the loading on
    std::vector<PastOperation> operations; ///< in the order of the list
};

} // namespace quillmere::review
