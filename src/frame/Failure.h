#pragma once

#include <stdexcept>
#include <string>

namespace quillmere {

/// Numbers of the run-time failures of a calculation or a conversion, as the general error box shows them.
inline constexpr long OverflowNumber = 6;
inline constexpr long TypeMismatchNumber = 13;

/// A failure of the outside (store, file, printer) or of a calculation, with the number that the general error box
/// shows.
class Failure : public std::runtime_error {
public:
    Failure(long number, const std::string& text) : std::runtime_error(text), number(number) {}
    long Number() const { return number; }

private:
    long number;
};

} // namespace quillmere
