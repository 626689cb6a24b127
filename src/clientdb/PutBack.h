#pragma once

#include "clientdb/SafetyCopies.h"
#include "clientdb/store/DatabaseState.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What there is to go back to, and the way back.
namespace quillmere {

/// A copy of the database that the program has made, or a backup that the user has put beside it.
struct KeptCopy {
    std::filesystem::path file;
    std::string when; ///< "21/06/2031 14:31"; the day alone where no time is known
    std::string why;
    std::string order; ///< the later the moment, the greater
    std::uintmax_t size = 0;
    bool good = true;  ///< what it was when it was made
    bool left = false; ///< what the user has gone back from
};

/// All of them, the latest first.
std::vector<KeptCopy> KeptCopiesOf(const std::filesystem::path& database);

/// A copy in words: "21/06/2031 14:31, before Delete".
std::string InWords(const KeptCopy& copy);

/// What a copy holds; nothing, with the reason in words, if nobody can look.
struct CopyLook {
    std::optional<DatabaseState> state;
    std::string words;

    bool IsWhole() const { return state && state->IsWhole(); }
};
CopyLook LookAt(const std::filesystem::path& file);

/// The latest of the good copies that is found whole, one that the user has gone back from last of all; nothing if
/// there is none.
struct GoodCopy {
    KeptCopy copy;
    DatabaseState state;
};
std::optional<GoodCopy> NewestGoodCopy(const std::filesystem::path& database);

/// Puts a copy back once the user has confirmed it: closes what is open by the road of every command, keeps the present
/// state, and lets the desk show what was put back. Messages say what it could not do. True if it is back.
[[nodiscard]] bool PutBack(Session& session, const KeptCopy& copy);

} // namespace quillmere
