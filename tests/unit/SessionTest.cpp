#include "support/ScriptedDoor.h"

#include <gtest/gtest.h>

namespace quillmere {
namespace {

TEST(Session, TheClientDatabaseOfAnEmptyFolderIsLookedForAtTheTop)
{
    test::ScriptedDoor door;
    Session session{door};
    session.settings.path = {"", "/one", "", "/three/"};
    EXPECT_EQ(session.ClientDatabasePath(), "/one/ClientQuillmere11.mdb");
    session.settings.selectedFolder = 2;
    EXPECT_EQ(session.ClientDatabasePath().string(), "/ClientQuillmere11.mdb");
    session.settings.selectedFolder = 3;
    EXPECT_EQ(session.ClientDatabasePath().string(), "/three//ClientQuillmere11.mdb");
    session.settings.selectedFolder = 5;
    EXPECT_THROW(session.ClientDatabasePath(), std::out_of_range);
}

} // namespace
} // namespace quillmere
