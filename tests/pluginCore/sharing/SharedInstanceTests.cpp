#include "pluginCore/sharing/SharedInstance.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>

namespace cv::pluginCore
{
namespace
{
struct Counted
{
    explicit Counted (int numberToHold = 0) : number (numberToHold) { ++numMade; }

    ~Counted() { ++numGone; }

    const int number;

    static inline std::atomic<int> numMade, numGone;

    JUCE_DECLARE_NON_COPYABLE (Counted)
};

class SharedInstanceTest : public testing::Test
{
protected:
    void SetUp() override { Counted::numMade = Counted::numGone = 0; }
};

TEST_F (SharedInstanceTest, LivesFromTheFirstHolderToTheLast)
{
    auto first = SharedInstance<Counted>::get();
    auto second = SharedInstance<Counted>::get();
    EXPECT_EQ (first, second);

    first.reset();
    EXPECT_EQ (Counted::numGone, 0);

    second.reset();
    EXPECT_EQ (Counted::numMade, 1);
    EXPECT_EQ (Counted::numGone, 1);

    EXPECT_NE (SharedInstance<Counted>::get(), nullptr);
    EXPECT_EQ (Counted::numMade, 2);
    EXPECT_EQ (Counted::numGone, 2);
}

TEST_F (SharedInstanceTest, TheFirstHoldersArgumentsCount)
{
    const auto first = SharedInstance<Counted>::get (5);
    constexpr short other = 7;
    EXPECT_EQ (SharedInstance<Counted>::get (other)->number, 5);
    EXPECT_EQ (SharedInstance<Counted>::get()->number, 5);
}

TEST_F (SharedInstanceTest, IsOneForAllThreads)
{
    for (auto round = 0; round < 50; ++round)
    {
        std::array<std::shared_ptr<Counted>, 8> instances;
        std::vector<std::thread> threads;

        for (auto& instance : instances)
            threads.emplace_back ([&instance] { instance = SharedInstance<Counted>::get(); });

        for (auto& thread : threads)
            thread.join();

        for (const auto& instance : instances)
            ASSERT_EQ (instance, instances.front());

        ASSERT_EQ (Counted::numMade, round + 1);
        ASSERT_EQ (Counted::numGone, round);
    }
}
} // namespace
} // namespace cv::pluginCore
