// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Content/LayerPlace.h"

#include <limits>
#include <ostream>

#include <gtest/gtest.h>

namespace lumora {

void PrintTo(const LayerPlace& place, std::ostream* stream) {
  *stream << (place.atTop ? "top " : "bottom ") << place.marginY << ", "
          << (place.atLeft ? "left " : "right ") << place.marginX;
}

namespace {

constexpr ScreenSize kSize{340, 520};
constexpr ScreenRect kScreen{0, 0, 1920, 1080};

LayerPlace at(ScreenPoint click, const ScreenRect& screen = kScreen) {
  return layerPlace(click, kSize, screen, {});
}

TEST(LayerPlace, HangsBesideThePanelThatWasClicked) {
  EXPECT_EQ(at({1500, 14}), (LayerPlace{.atTop = true, .atLeft = false, .marginX = 250}));
  EXPECT_EQ(at({400, 1060}), (LayerPlace{.atTop = false, .atLeft = true, .marginX = 230}));
  EXPECT_EQ(at({1900, 700}), (LayerPlace{.atTop = false, .atLeft = false, .marginY = 120}));
  EXPECT_EQ(at({20, 300}), (LayerPlace{.atTop = true, .atLeft = true, .marginY = 40}));
}

TEST(LayerPlace, KeepsItsDistanceFromTheCorners) {
  EXPECT_EQ(at({1905, 14}), (LayerPlace{.atTop = true, .atLeft = false}));
  EXPECT_EQ(at({1910, 20}), (LayerPlace{.atTop = true, .atLeft = false}));
  EXPECT_EQ(at({10, 1070}), (LayerPlace{.atTop = false, .atLeft = true}));
}

TEST(LayerPlace, CountsFromTheEdgesOfTheScreenThatWasClicked) {
  EXPECT_EQ(at({3420, 1014}, {1920, 1000, 1920, 1080}),
            (LayerPlace{.atTop = true, .atLeft = false, .marginX = 250}));
}

TEST(LayerPlace, IsTheCornerOfTheTrayWithoutAClick) {
  EXPECT_EQ(layerPlace(std::nullopt, kSize, kScreen, {}), (LayerPlace{.atTop = true}));
  EXPECT_EQ(layerPlace(std::nullopt, kSize, kScreen, {.atBottom = true}),
            (LayerPlace{.atTop = false}));
}

TEST(LayerPlace, KeepsItsDistanceFromPanelsThatFloatAboveWhatTheyReserve) {
  static constexpr Panels kFloating{.atBottom = true, .rise = 8};
  const auto beside = [](std::optional<ScreenPoint> click) {
    return layerPlace(click, kSize, kScreen, kFloating);
  };
  EXPECT_EQ(beside(std::nullopt), (LayerPlace{.atTop = false, .marginX = 8, .marginY = 16}));
  EXPECT_EQ(beside(ScreenPoint{1500, 1040}),
            (LayerPlace{.atTop = false, .atLeft = false, .marginX = 250, .marginY = 16}));
  EXPECT_EQ(beside(ScreenPoint{1900, 1040}),
            (LayerPlace{.atTop = false, .atLeft = false, .marginX = 16, .marginY = 8}));
}

TEST(LayerPlace, StaysOnAScreenThatHasBecomeSmaller) {
  EXPECT_EQ(at({1500, 1060}, {0, 0, 911, 512}), (LayerPlace{.atTop = false, .atLeft = false}));
}

const TraysScreen kWhole{{0, 0, 1366, 768}, 1};
const TraysScreen kScaled{{0, 0, 911, 512}, 1.5};

TEST(ClickedInLayer, IsCountedAsTheToolkitCounts) {
  EXPECT_EQ(clickedInLayer({1097, 745}, {kWhole}), (ScreenPoint{1097, 745}));
  EXPECT_EQ(clickedInLayer({1098, 735}, {kScaled}), (ScreenPoint{732, 490}));
  EXPECT_EQ(clickedInLayer({1098, 30}, {kScaled}), (ScreenPoint{732, 20}));
  EXPECT_EQ(clickedInLayer({1332, 400}, {kScaled}), (ScreenPoint{888, 266}));
}

TEST(ClickedInLayer, MayBeCountedAsTheToolkitCountsWhateverTheScale) {
  EXPECT_EQ(clickedInLayer({732, 490}, {kScaled}), (ScreenPoint{732, 490}));
}

TEST(ClickedInLayer, IsCountedFromTheCornerOfItsScreen) {
  const std::vector<TraysScreen> screens{{{0, 0, 960, 540}, 2}, {{960, 0, 1280, 800}, 1.25}};
  EXPECT_EQ(clickedInLayer({1800, 1060}, screens), (ScreenPoint{900, 530}));
  EXPECT_EQ(clickedInLayer({2460, 975}, screens), (ScreenPoint{2160, 780}));
  EXPECT_EQ(clickedInLayer({-60, 14}, {{{-1280, 0, 1280, 800}, 1}, kWhole}),
            (ScreenPoint{-60, 14}));
}

TEST(ClickedInLayer, IsNotKnownFromATrayThatCountsFromItsIcon) {
  EXPECT_EQ(clickedInLayer({0, 0}, {kWhole}), std::nullopt);
  EXPECT_EQ(clickedInLayer({43, 12}, {kWhole}), std::nullopt);
  EXPECT_EQ(clickedInLayer({20, 700}, {kWhole}), (ScreenPoint{20, 700}));
}

TEST(ClickedInLayer, IsNotKnownWhereItIsOnNoScreen) {
  constexpr int kMost = std::numeric_limits<int>::max();
  EXPECT_EQ(clickedInLayer({700, 900}, {kWhole}), std::nullopt);
  EXPECT_EQ(clickedInLayer({kMost, -kMost - 1}, {kWhole, kScaled}), std::nullopt);
  EXPECT_EQ(clickedInLayer({700, 700}, {}), std::nullopt);
}

}  // namespace
}  // namespace lumora
