#include "Player.h"

#include <fmt/format.h>
#include <utility>

namespace quillmere::scenario {

bool Player::Play(const Telling& telling)
{
    row = telling.row;
    const Script script = ParseScript(telling.text);
    for (const ScriptError& error : script.errors)
        Fail(error.line, error.text);
    if (!script.errors.empty())
        return false;
    for (const Step& step : script.steps)
        Perform(step);
    WriteGiven();
    LookForLeftOvers();
    return failures == 0;
}

void Player::Perform(const Step& step)
{
    const Effect effect = step.row->effect;
    stage.platform.line = step.line;
    if (tellSteps && effect != Effect::Says)
        fmt::print("    {}\n", step.source);
    try {
        if (effect == Effect::Acts || effect == Effect::LooksOn)
            WriteGiven();
        stage.Perform(step);
    } catch (const std::exception& error) {
        FailStep(step, error.what());
    }
    TellMisfits(step);
}

void Player::WriteGiven()
{
    stage.world.WriteGiven([this](const Step& given, const std::exception& error) { FailStep(given, error.what()); });
}

void Player::Fail(int line, const std::string& text)
{
    ++failures;
    fmt::print("{}:{}: {}{}{}\n", stage.file, line, row, row.empty() ? "" : ": ", text);
}

void Player::FailStep(const Step& step, const std::string& text)
{
    Fail(step.line, step.source + ": " + text);
}

void Player::TellMisfits(const Step& step)
{
    for (const std::string& misfit : std::exchange(stage.platform.misfits, {}))
        FailStep(step, misfit);
}

void Player::LookForLeftOvers()
{
    for (const SeenMessage& message : stage.platform.unseen)
        Fail(message.line,
             fmt::format("expected no more message boxes, found {} {}", Shown(message.title), Shown(message.text)));
    for (const ScriptedAnswer& answer : stage.platform.answers)
        Fail(answer.line, fmt::format("expected a box to answer with {}, found none", answer.text));
}

} // namespace quillmere::scenario
