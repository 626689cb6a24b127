#include <QApplication>
#include <gtest/gtest.h>

#include <cstdlib>

int main(int count, char** words)
{
    ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
    ::testing::InitGoogleTest(&count, words);
    const QApplication application(count, words);
    return RUN_ALL_TESTS();
}
