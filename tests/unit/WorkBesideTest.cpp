#include "frame/WorkBeside.h"

#include <gtest/gtest.h>

#include <atomic>
#include <latch>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillmere {
namespace {

TEST(WorkBeside, IsDoneInItsOrderOnAThreadOfItsOwn)
{
    WorkBeside beside(2);
    std::vector<int> done;
    std::thread::id where;
    for (int piece = 0; piece < 100; ++piece)
        beside.Give([&, piece] {
            done.push_back(piece);
            where = std::this_thread::get_id();
        });
    beside.Wait();
    ASSERT_EQ(done.size(), 100U);
    for (int piece = 0; piece < 100; ++piece)
        EXPECT_EQ(done[static_cast<std::size_t>(piece)], piece);
    EXPECT_NE(where, std::this_thread::get_id());
}

TEST(WorkBeside, TakesNoMorePiecesThanMayWait)
{
    WorkBeside beside(2);
    std::latch mayEnd(1);
    std::atomic<int> begun = 0;
    const auto held = std::make_shared<int>();
    for (int piece = 0; piece < 3; ++piece) // one is at work, two wait
        beside.Give([&, held] {
            ++begun;
            mayEnd.wait();
        });
    std::atomic<bool> isGiven = false;
    std::thread giver([&] {
        beside.Give([] {});
        isGiven = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_EQ(begun, 1);
    EXPECT_FALSE(isGiven);
    mayEnd.count_down();
    giver.join();
    beside.Wait();
    EXPECT_EQ(begun, 3);
    EXPECT_EQ(held.use_count(), 1) << "a piece that is done holds nothing";
}

TEST(WorkBeside, TellsItsGiverOfAFailureOnceAndDropsWhatWaits)
{
    WorkBeside beside(8);
    std::latch mayFail(1);
    std::string done;
    beside.Give([&] { done += 'a'; });
    beside.Give([&] {
        mayFail.wait();
        throw std::runtime_error("no more");
    });
    beside.Give([&] { done += 'b'; });
    mayFail.count_down();
    EXPECT_THROW(beside.Wait(), std::runtime_error);
    beside.Give([&] { done += 'c'; });
    beside.Wait();
    EXPECT_EQ(done, "ac");
}

TEST(WorkBeside, DropsWhatHasNotBegunAtItsEnd)
{
    std::latch begun(1);
    std::atomic<int> done = 0;
    {
        WorkBeside beside(8);
        beside.Give([&] {
            begun.count_down();
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            ++done;
        });
        beside.Give([&] { ++done; });
        begun.wait();
    }
    EXPECT_EQ(done, 1);
}

} // namespace
} // namespace quillmere
