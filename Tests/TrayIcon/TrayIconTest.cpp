// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "IconPixels.h"
#include "TrayIcon/TrayIcon.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using enum BatteryPicture;

std::vector<Icon> inside(BatteryPicture picture, int percent) {
  return drawTrayIcon({picture, percent, ""});
}

std::vector<Icon> wide(BatteryPicture picture, const std::string& text, int percent = 82) {
  return drawTrayIcon({picture, percent, text});
}

std::string pixels(const Icon& icon) { return {icon.argb.begin(), icon.argb.end()}; }

TEST(TrayIcon, IsDrawnInTheSizesOfTrays) {
  std::vector<int> sizes;
  for (const Icon& icon : inside(onBattery, 82)) {
    EXPECT_EQ(icon.width, icon.height);
    EXPECT_EQ(icon.argb.size(), static_cast<std::size_t>(icon.width * icon.height * 4));
    sizes.push_back(icon.height);
  }
  EXPECT_EQ(sizes, (std::vector{16, 22, 24, 32, 48, 64}));
}

TEST(TrayIcon, IsAsWideAsItsTextWhereItMayBe) {
  const auto icons = wide(onBattery, "82%");
  const auto longer = wide(onBattery, "82% · 3:05");
  for (std::size_t i = 0; i < icons.size(); ++i) {
    EXPECT_GT(icons[i].width, icons[i].height);
    EXPECT_GT(longer[i].width, icons[i].width);
    EXPECT_EQ(longer[i].height, icons[i].height);
    EXPECT_EQ(longer[i].argb.size(),
              static_cast<std::size_t>(longer[i].width * longer[i].height * 4));
  }
}

TEST(TrayIcon, IsTheSameEachTimeAndDiffersForEachPercent) {
  EXPECT_EQ(inside(onBattery, 82), inside(onBattery, 82));
  for (std::size_t size = 0; size < 6; ++size) {
    std::set<std::string> different;
    for (int percent = 0; percent <= 100; ++percent) {
      different.insert(pixels(inside(onBattery, percent)[size]));
    }
    EXPECT_EQ(different.size(), 101U) << size;
  }
}

TEST(TrayIcon, HasFiguresThatStandOutOnItsOwnPlate) {
  for (const BatteryPicture picture : {onBattery, low, pluggedIn, charging, full}) {
    for (const auto& icons : {inside(picture, 58), wide(picture, "58% · 3:05")}) {
      // Between the rim and the figures there is only the plate; the figures are white.
      for (const Icon& icon : icons) {
        const int column = icon.width / 2;
        double lightest = 0;
        double darkest = 1;
        for (int y = icon.height / 4; y < icon.height * 3 / 4; ++y) {
          for (int x = column / 2; x < column * 3 / 2; ++x) {
            const Pixel pixel = pixelAt(icon, x, y);
            EXPECT_EQ(pixel.alpha, 255);
            lightest = std::max(lightest, luminance(pixel));
            darkest = std::min(darkest, luminance(pixel));
          }
        }
        EXPECT_GT(lightest, 0.85) << static_cast<int>(picture) << ' ' << icon.height;
        EXPECT_GT(contrast(1, darkest), 4.5) << static_cast<int>(picture) << ' ' << icon.height;
      }
    }
  }
}

TEST(TrayIcon, LeavesOutWhatItDoesNotKnowAndStaysSmall) {
  EXPECT_EQ(wide(pluggedIn, "x8é2?").front().width, wide(pluggedIn, "82").front().width);
  for (const std::string& text :
       {std::string(), std::string("\0\xff\xfe", 3), std::string("-5"), std::string("999999999999"),
        std::string(100'000, '8'), std::string(100'000, '\xc2'), std::string("\xc2"),
        std::string("½ %%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%")}) {
    for (const auto& icons :
         {inside(onBattery, static_cast<int>(text.size())), wide(onBattery, text)}) {
      ASSERT_EQ(icons.size(), 6U);
      for (const Icon& icon : icons) EXPECT_LE(icon.width, 24 * icon.height);
    }
  }
}

}  // namespace
}  // namespace lumora::test
