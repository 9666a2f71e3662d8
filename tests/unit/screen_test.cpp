// Pixels, twips and places on the screen.
#include "platform/screen.hpp"

#include <gtest/gtest.h>

namespace {

using platform::Area;
using platform::LayoutDpi;
using platform::MovedIn;

// 1920 by 1080 with a taskbar of 48 below; a second monitor to the right that is higher up.
const std::vector<Area> kTwoMonitors{{0, 0, 1920, 1032}, {1920, -200, 3200, 824}};

Area Sized(int left, int top, int width, int height) {
    return {left, top, left + width, top + height};
}

TEST(Lengths, TwipsArePixelsAtEveryScale) {
    EXPECT_EQ(platform::Pixels(7155, 96), 477);
    EXPECT_EQ(platform::Pixels(7155, 120), 596); // 596.25
    EXPECT_EQ(platform::Pixels(7155, 144), 716); // 715.5
    EXPECT_EQ(platform::Pixels(7155, 192), 954);
    EXPECT_EQ(platform::Pixels(660, 96), 44);
    EXPECT_EQ(platform::Pixels(660, 120), 55);
    EXPECT_EQ(platform::Pixels(-660, 120), -55);
    EXPECT_EQ(platform::Pixels(-7155, 144), -716);
}

TEST(Lengths, PixelsComeBackFromTwipsAsTheyWere) {
    for (const unsigned dpi : {96U, 120U, 144U, 168U, 192U, 288U}) {
        for (int pixels = -4000; pixels <= 4000; ++pixels) {
            ASSERT_EQ(platform::Pixels(platform::Twips(pixels, dpi), dpi), pixels) << dpi;
        }
    }
}

TEST(Lengths, DesignPixelsGrowWithTheDpi) {
    EXPECT_EQ(platform::Scaled(16, 96), 16);
    EXPECT_EQ(platform::Scaled(16, 120), 20);
    EXPECT_EQ(platform::Scaled(3, 144), 5); // 4.5
    EXPECT_EQ(platform::Scaled(3, 120), 4); // 3.75
    EXPECT_EQ(platform::Scaled(0, 192), 0);
}

TEST(Lengths, ManyPixelsDoNotOverflow) {
    EXPECT_EQ(platform::Twips(100000, 96), 1500000);
    EXPECT_EQ(platform::Pixels(1500000, 480), 500000);
}

TEST(Lengths, TextSizeIsOneMoreFactorUpTo150PerCent) {
    EXPECT_EQ(LayoutDpi(96, 100), 96U);
    EXPECT_EQ(LayoutDpi(96, 125), 120U);
    EXPECT_EQ(LayoutDpi(120, 150), 180U);
    EXPECT_EQ(LayoutDpi(120, 225), 180U);
    EXPECT_EQ(LayoutDpi(192, 110), 211U); // 211.2
    EXPECT_EQ(LayoutDpi(144, 0), 144U) << "what no system sets counts as none";
}

TEST(Places, AWindowInsideStaysWhereItIs) {
    for (const Area& window : {Sized(0, 0, 700, 477), Sized(1220, 555, 700, 477),
                               Sized(610, 301, 700, 477), Sized(2500, -200, 700, 477)}) {
        EXPECT_EQ(MovedIn(window, kTwoMonitors), window);
    }
}

TEST(Places, AWindowAcrossTwoMonitorsThatIsSeenWholeStays) {
    const Area window = Sized(1570, 300, 700, 477);
    EXPECT_EQ(MovedIn(window, kTwoMonitors), window);
}

TEST(Places, AWindowThatReachesBelowIsMovedUpAndNoFurther) {
    EXPECT_EQ(MovedIn(Sized(300, 900, 700, 477), kTwoMonitors), Sized(300, 555, 700, 477));
}

TEST(Places, EveryEdgeHolds) {
    EXPECT_EQ(MovedIn(Sized(-50, 100, 700, 477), kTwoMonitors), Sized(0, 100, 700, 477));
    EXPECT_EQ(MovedIn(Sized(300, -30, 700, 477), kTwoMonitors), Sized(300, 0, 700, 477));
    EXPECT_EQ(MovedIn(Sized(2900, 500, 700, 477), kTwoMonitors), Sized(2500, 347, 700, 477));
}

TEST(Places, AWindowAcrossTwoMonitorsThatReachesBelowGoesToTheOneWithMoreOfIt) {
    EXPECT_EQ(MovedIn(Sized(1400, 700, 700, 477), kTwoMonitors), Sized(1220, 555, 700, 477));
    EXPECT_EQ(MovedIn(Sized(1700, 500, 700, 477), kTwoMonitors), Sized(1920, 347, 700, 477));
}

TEST(Places, AWindowWhoseMonitorIsGoneComesToTheNearest) {
    const std::vector<Area> left{{0, 0, 1920, 1032}};
    EXPECT_EQ(MovedIn(Sized(2500, -200, 700, 477), left), Sized(1220, 0, 700, 477));
    EXPECT_EQ(MovedIn(Sized(4000, 100, 700, 477), kTwoMonitors), Sized(2500, 100, 700, 477));
    EXPECT_EQ(MovedIn(Sized(-4000, 5000, 700, 477), kTwoMonitors), Sized(0, 555, 700, 477));
}

TEST(Places, AWindowLargerThanTheWorkAreaKeepsItsTitleBarInReach) {
    const std::vector<Area> small{{0, 40, 1366, 768}};
    EXPECT_EQ(MovedIn(Sized(-10, -93, 1398, 954), small), Sized(0, 40, 1398, 954));
    EXPECT_EQ(MovedIn(Sized(200, 300, 1048, 954), small), Sized(200, 40, 1048, 954));
}

TEST(Places, TwoWindowsSideBySideFillTheWorkArea) {
    const auto places = platform::Beside(Sized(5, 5, 700, 477), {0, 0, 1920, 1032});
    EXPECT_EQ(places.left, (Area{0, 0, 1220, 1032}));
    EXPECT_EQ(places.right, Sized(1220, 277, 700, 477));
}

TEST(Places, BesideATaskbarAtTheLeftAndAboveTheyBeginBehindIt) {
    const auto places = platform::Beside(Sized(0, 0, 700, 480), {60, 40, 1660, 1040});
    EXPECT_EQ(places.left, (Area{60, 40, 960, 1040}));
    EXPECT_EQ(places.right, Sized(960, 300, 700, 480));
}

TEST(Places, WhereTheRestIsLessThanAThirdTheRightWindowCoversSomeOfTheLeft) {
    const platform::Area screen{0, 0, 1366, 728};
    EXPECT_EQ(platform::Beside(Sized(0, 0, 875, 600), screen).left, (Area{0, 0, 491, 728}));
    const auto places = platform::Beside(Sized(0, 0, 1050, 900), screen);
    EXPECT_EQ(places.left, (Area{0, 0, 455, 728}));
    EXPECT_EQ(places.right, Sized(316, 0, 1050, 900));
    EXPECT_EQ(platform::Beside(Sized(0, 0, 2000, 900), screen).right, Sized(0, 0, 2000, 900));
}

TEST(Places, WithoutAMonitorTheWindowStays) {
    EXPECT_EQ(MovedIn(Sized(5, 6, 7, 8), {}), Sized(5, 6, 7, 8));
}

} // namespace
