#pragma once

#include <stdexcept>
#include <string>

namespace quillmere {

/// A failure of the record store: the store's own words, its error number and the statement in hand.
class StoreError : public std::runtime_error {
public:
    StoreError(int number, const std::string& text, std::string statement);
    int Number() const { return number; }
    const std::string& Statement() const { return statement; }

private:
    int number;
    std::string statement;
};

/// A name that is in no table layout: a mistake in the program.
class UnknownName : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

} // namespace quillmere
