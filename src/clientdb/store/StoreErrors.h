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
    /// True if the database is locked by somebody else or not to be written at all: what follows would fail likewise,
    /// each time after the same wait.
    bool OutOfReach() const;
    /// True if the file is damaged, or no database of this program.
    bool IsDamage() const;

private:
    std::string statement;
};

/// A batch of writes cannot begin or cannot be committed: nothing that it has written since its last commit is stored.
class BatchLost : public StoreError {
public:
    explicit BatchLost(const StoreError& reason, bool isUntold = false) : StoreError(reason), isUntold(isUntold) {}
    /// True if the store has refused one of several records that were added without waiting: it is not known which.
    bool IsUntold() const { return isUntold; }

private:
    bool isUntold;
};

/// The connection was lost while a transaction was being stored, and the server cannot be asked whether it has been.
class OutcomeUnknown : public StoreError {
public:
    explicit OutcomeUnknown(const StoreError& reason) : StoreError(reason) {}
};

/// The record that is open has been deleted by somebody else: what was changed in its boxes has no place.
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
