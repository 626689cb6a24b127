#pragma once

#include "frame/Failure.h"

#include <stdexcept>
#include <string>

namespace quillmere {

/// A failure of the record store: the store's own words, its error number and the statement in hand.
class StoreError : public Failure {
public:
    StoreError(int number, const std::string& text, std::string statement);
    const std::string& Statement() const { return statement; }

private:
    std::string statement;
};

/// The record that a data link stands on has been deleted by somebody else: what was changed in its boxes has no place.
class RecordGone : public StoreError {
public:
    RecordGone() : StoreError(3021, "No current record.", {}) {}
};

/// A name that is in no table layout: a mistake in the program.
class UnknownName : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

} // namespace quillmere
