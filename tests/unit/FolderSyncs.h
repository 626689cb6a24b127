#pragma once

namespace quillmere::test {

/// The next sync of a folder fails, as on a disk that is about to die.
void FailNextFolderSync();
/// True if none has come since; then none fails any more.
bool AwaitsFolderSync();

} // namespace quillmere::test
