#include "clientdb/store/ServerCopy.h"

#include "clientdb/store/FileEngine.h"
#include "clientdb/store/ServerEngine.h"
#include "clientdb/store/TableCopy.h"
#include "clientdb/store/Template.h"

namespace quillmere {

DatabaseState CopyServerIntoFile(const ServerService& service, const std::filesystem::path& empty)
{
    FillWithTables(empty);
    const std::shared_ptr<ServerConnection> from = OpenServer(service, OpenMode::ReadOnly, nullptr);
    FileConnection into(empty, SQLITE_OPEN_READWRITE);
    into.BeginFilling();
    from->BeginReading();
    TableCopy(*from, into).Copy();
    into.EndTransaction();
    return CountIn(*from);
}

void PutFileOnServer(const std::filesystem::path& file, const ServerService& service)
{
    FileConnection from(file, SQLITE_OPEN_READWRITE);
    const std::shared_ptr<ServerConnection> into = OpenServer(service, OpenMode::ReadWrite, nullptr);
    from.BeginReading();
    into->BeginAlone();
    TableCopy copy(from, *into);
    copy.Copy();
    copy.Compare();
    into->EndTransaction();
}

} // namespace quillmere
