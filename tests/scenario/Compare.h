#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// How what is expected is held against what is found.
namespace quillmere::scenario {

/// A step that did not hold or could not be done. The text says what was expected and what was found.
class StepFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What `{program}`, `{root}`, `{client}` and `{server}` stand for, without a separator at the end, and
/// `{may-not-write}`: what the store says of a database that can only be read.
struct Places {
    std::string program, root, client, server = {}, mayNotWrite = {};
};

/// The text with the folders put in.
std::string WithPlaces(std::string_view text, const Places& places);

/// The text with "/" between folders, whatever the platform puts there.
std::string WithSlashes(std::string_view text, char separator);

/// The text between quotes as a scenario would write it.
std::string Shown(std::string_view text);

/// The entries one after the other, each as a scenario would write it; "nothing" for none.
std::string ShownList(const std::vector<std::string>& entries);

/// True if the wanted lines stand among the others in their order. If not, `missing` is the first that was not found
/// behind the one before it.
bool StandInOrder(const std::vector<std::string>& lines, const std::vector<std::string>& wanted, std::string& missing);

/// A text drawn on a page: where it begins and its base line, in millimetres.
struct DrawnText {
    double x = 0, y = 0;
    std::string text;
};

/// True if a page holds the text, in one drawn text or in neighbouring ones of a line: those of one height from left to
/// right, joined with nothing between them or with one blank.
bool PageHolds(const std::vector<DrawnText>& drawn, std::string_view text);

} // namespace quillmere::scenario
