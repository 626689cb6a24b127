#pragma once

#include "Stage.h"

#include <string>

namespace quillmere::scenario {

/// Plays one scenario in a world of its own, against the real windows.
class Player {
public:
    /// `file` is the name under which failures are told; `tellSteps` prints each step as it is played.
    Player(std::string file, const Folders& folders, bool tellSteps)
        : stage(std::move(file), folders), tellSteps(tellSteps)
    {
    }

    /// Plays a telling of the scenario to its end and prints each failure, with the row. True if there was none.
    bool Play(const Telling& telling);

private:
    void Perform(const Step& step);
    void WriteGiven();
    void Fail(int line, const std::string& text);
    void FailStep(const Step& step, const std::string& text);
    void TellMisfits(const Step& step);
    void LookForLeftOvers();

    Stage stage;
    bool tellSteps;
    std::string row;
    int failures = 0;
};

} // namespace quillmere::scenario
