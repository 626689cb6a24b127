#pragma once

#include "clientdb/store/OperationNote.h"
#include "clientdb/store/Recordset.h"
#include "frame/Session.h"

#include <string>
#include <string_view>

namespace quillmere {

/// What one command of the user writes while this lives is one operation of the change history, with these words: it
/// shows there as one, and is undone as one. Within another operation it is a part of that.
class UserOperation {
public:
    UserOperation(Session& session, std::string_view words);
    ~UserOperation();
    UserOperation(const UserOperation&) = delete;
    UserOperation& operator=(const UserOperation&) = delete;

private:
    Session& session;
    bool isOutermost;
};

/// The moment that it is, as the history and what is kept beside it write it: yyyy-mm-dd hh:mm:ss.
std::string MomentNow(Session& session);

/// The words of the change history for a screen: its caption without the names of those who are open.
std::string ScreenWords(const Screen& screen);

/// Opens a client database to write to it for the operation that is under way.
Database OpenForWriting(Session& session, const std::filesystem::path& path);
/// The same of the selected folder.
Database OpenClients(Session& session);

} // namespace quillmere
