// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/PopoverPlace.h"

#include <limits>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr ScreenRect kWhole{100, 50, 1000, 800};
constexpr ScreenSize kSize{340, 500};
constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

TEST(PopoverPlace, StaysOnTheScreenAtTheClick) {
  struct Case {
    ScreenPoint click;
    ScreenPoint corner;
  };
  for (const auto& [click, corner] : {
           Case{{600, 60}, {430, 68}},      // a panel at the top
           Case{{600, 840}, {430, 332}},    // a panel at the bottom
           Case{{1095, 60}, {752, 68}},     // the right corner
           Case{{105, 60}, {108, 68}},      // the left corner
           Case{{5000, 5000}, {752, 342}},  // a click from elsewhere
           Case{{kLowest, kLowest}, {108, 58}},
           Case{{kLowest, kHighest}, {108, 342}},
           Case{{kHighest, kLowest}, {752, 58}},
           Case{{kHighest, kHighest}, {752, 342}},
       }) {
    EXPECT_EQ(popoverPlace(click, kSize, {kWhole, kWhole}), corner);
  }
}

TEST(PopoverPlace, IsAtTheTraysEndOfThePanelWithoutAClick) {
  struct Case {
    const char* panel = nullptr;
    ScreenRect free;
    ScreenPoint corner;
  };
  for (const auto& [panel, free, corner] : {
           Case{"none", kWhole, {752, 58}},
           Case{"top", {100, 80, 1000, 770}, {752, 88}},
           Case{"bottom", {100, 50, 1000, 756}, {752, 298}},
           Case{"top and bottom", {100, 80, 1000, 726}, {752, 88}},
           Case{"left", {160, 50, 940, 800}, {168, 342}},
           Case{"right", {100, 50, 940, 800}, {692, 342}},
           Case{"top, and a dock at the left", {160, 80, 940, 770}, {752, 88}},
           Case{"bottom, and a dock at the left", {160, 50, 940, 756}, {752, 298}},
       }) {
    EXPECT_EQ(popoverPlace(std::nullopt, kSize, {kWhole, free}), corner) << panel;
  }
}

TEST(PopoverPlace, KeepsTheTopOfAPopoverThatIsTooTall) {
  constexpr ScreenRect kSmall{0, 0, 800, 600};
  EXPECT_EQ(popoverPlace(ScreenPoint{100, 590}, {340, 900}, {kSmall, kSmall}), (ScreenPoint{8, 8}));
}

TEST(CarriedOver, KeepsItsDistanceFromTheNearestEdgesOfAScreenThatChanges) {
  constexpr ScreenRect kBefore{100, 50, 1200, 600};
  constexpr ScreenRect kNow{10, 20, 800, 400};
  struct Case {
    ScreenPoint before;
    ScreenPoint now;
  };
  for (const auto& [before, now] : {
           Case{{130, 64}, {40, 34}},
           Case{{1030, 64}, {540, 34}},
           Case{{1030, 636}, {540, 406}},
           Case{{130, 636}, {40, 406}},
           Case{{100, 650}, {10, 420}},
           Case{{kLowest, kHighest}, {10, 420}},
           Case{{kHighest, kLowest}, {810, 20}},
       }) {
    EXPECT_EQ(carriedOver(before, kBefore, kNow), now);
  }
  // The panel stays as it is while the toolkit counts in pixels of another size.
  EXPECT_EQ(carriedOver({1100, 590}, {0, 0, 1200, 600}, {0, 0, 600, 300}, 0.5),
            (ScreenPoint{550, 295}));
  // There is less of the screen than it was away from the edge.
  EXPECT_EQ(carriedOver({600, 300}, kBefore, {0, 0, 40, 30}), (ScreenPoint{40, 30}));
  EXPECT_EQ(carriedOver({600, 300}, {0, 0, 0, 0}, kNow), (ScreenPoint{810, 420}));
}

TEST(PopoverHeight, LeavesAGapAboveAndBelow) {
  const Screen screen{{0, 0, 1366, 768}, {0, 28, 1366, 740}};
  EXPECT_EQ(popoverHeight(600, screen), 600);
  EXPECT_EQ(popoverHeight(724, screen), 724);
  EXPECT_EQ(popoverHeight(725, screen), 724);
  EXPECT_EQ(popoverHeight(9000, screen), 724);
  EXPECT_EQ(popoverHeight(9000, {{}, {}}), 0);
}

const ScreenRect kScreen{0, 0, 1800, 1000};

TEST(ClickedAt, KnowsTheClickWhicheverPixelsTheTrayCounts) {
  // Of a panel that is higher than any.
  const Pointer pointer{{1150, 80}, {1150, 80}, 1, kScreen};
  EXPECT_EQ(clickedAt({1150, 80}, pointer), pointer.at);
  EXPECT_EQ(clickedAt({1140, 94}, pointer), pointer.at);  // the item's corner
  // Chosen with the keyboard: the pointer is elsewhere.
  EXPECT_EQ(clickedAt({1150, 14}, {{300, 500}, {300, 500}, 1, kScreen}), (ScreenPoint{1150, 14}));
  EXPECT_EQ(clickedAt({0, 0}, pointer), std::nullopt);

  // On the right of two monitors, each 1800 pixels wide.
  const Pointer doubled{{1950, 80}, {2100, 160}, 2, {1800, 0, 900, 500}};
  EXPECT_EQ(clickedAt({2100, 160}, doubled), doubled.at);
  EXPECT_EQ(clickedAt({1050, 80}, doubled), doubled.at);
}

TEST(ClickedAt, IsThePointerInAPanelWhateverItsTrayReports) {
  for (const ScreenPoint at : {ScreenPoint{1150, 13}, ScreenPoint{1150, 990}, ScreenPoint{10, 500},
                               ScreenPoint{1790, 500}}) {
    EXPECT_EQ(clickedAt({0, 26}, {at, at, 1, kScreen}), at);
  }
}

}  // namespace
}  // namespace lumora::test
