#pragma once

#include "clientdb/PutBack.h"
#include "frame/Screen.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quillmere {

/// "Safety Copies": what was copied by itself and what the user has backed up, each looked through while the list is
/// there, and the way back to it.
class SafetyCopies : public Screen {
public:
    explicit SafetyCopies(Session& session);

    bool Load() override;

private:
    void Fill();
    /// Looks at the next copy that has not been looked at, and then at the one after it.
    void LookOn();
    void ShowLines();
    void PutBackChosen();

    struct Line {
        KeptCopy copy;
        std::string check; ///< empty until it has been looked at
    };
    std::vector<Line> lines; ///< in the order of the list
    std::size_t looked = 0;  ///< so many of them have been looked at
};

} // namespace quillmere
