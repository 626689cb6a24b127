#pragma once

namespace quillmere {

/// While one of these lives, the client file that was closed last waits for its next opening: opening it anew has the
/// file's engine read what makes its tables, and the store look at all of it. A file that has been moved, or written to
/// without this connection, is opened anew. With the end of the last of these it is closed.
class KeptOpen {
public:
    KeptOpen();
    ~KeptOpen();
    KeptOpen(const KeptOpen&) = delete;
    KeptOpen& operator=(const KeptOpen&) = delete;
};

} // namespace quillmere
