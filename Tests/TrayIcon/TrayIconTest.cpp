// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrayIcon/TrayIcon.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr std::array kStates = {"battery.0",        "battery.25",    "battery.50",
                                "battery.75",       "battery.100",   "battery.100percent",
                                "battery.100.bolt", "bolt.fill",     "powerplug.fill",
                                "powerplug",        "no.such.image", ""};

std::vector<Icon> inside(const std::string& symbol, const std::string& text) {
  return drawTrayIcon({symbol, text, TextPlace::inside});
}

std::vector<Icon> wide(const std::string& symbol, const std::string& text) {
  return drawTrayIcon({symbol, text, TextPlace::wide});
}

std::string pixels(const Icon& icon) { return {icon.argb.begin(), icon.argb.end()}; }

/// Relative luminance as WCAG 2.1 defines it.
double luminance(const std::uint8_t* argb) {
  const auto linear = [](std::uint8_t part) {
    const double value = part / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(argb[1]) + 0.7152 * linear(argb[2]) + 0.0722 * linear(argb[3]);
}

double contrastWithWhite(double luminance) { return 1.05 / (luminance + 0.05); }

TEST(TrayIcon, IsDrawnInTheSizesOfTrays) {
  std::vector<int> sizes;
  for (const Icon& icon : inside("battery.75", "82")) {
    EXPECT_EQ(icon.width, icon.height);
    EXPECT_EQ(icon.argb.size(), static_cast<std::size_t>(icon.width * icon.height * 4));
    sizes.push_back(icon.height);
  }
  EXPECT_EQ(sizes, (std::vector{16, 22, 24, 32, 48, 64}));
}

TEST(TrayIcon, IsAsWideAsItsTextWhereItMayBe) {
  const auto icons = wide("battery.75", "82%");
  const auto longer = wide("battery.75", "82% · 3:05");
  for (std::size_t i = 0; i < icons.size(); ++i) {
    EXPECT_GT(icons[i].width, icons[i].height);
    EXPECT_GT(longer[i].width, icons[i].width);
    EXPECT_EQ(longer[i].height, icons[i].height);
    EXPECT_EQ(longer[i].argb.size(),
              static_cast<std::size_t>(longer[i].width * longer[i].height * 4));
  }
}

TEST(TrayIcon, IsTheSameEachTimeAndDiffersForEachPercent) {
  EXPECT_EQ(inside("battery.75", "82"), inside("battery.75", "82"));
  for (std::size_t size = 0; size < 6; ++size) {
    std::set<std::string> different;
    for (int percent = 0; percent <= 100; ++percent) {
      different.insert(pixels(inside("battery.75", std::to_string(percent))[size]));
    }
    EXPECT_EQ(different.size(), 101U) << size;
  }
}

TEST(TrayIcon, TellsChargingAndLowFromOnBattery) {
  for (std::size_t size = 0; size < 6; ++size) {
    std::set<std::string> different;
    for (const char* symbol : {"battery.0", "battery.50", "battery.100.bolt"}) {
      different.insert(pixels(inside(symbol, "40")[size]));
      different.insert(pixels(wide(symbol, "40%")[size]));
    }
    EXPECT_EQ(different.size(), 6U) << size;
  }
}

TEST(TrayIcon, HasFiguresThatStandOutOnItsOwnPlate) {
  for (const char* symbol : kStates) {
    for (const auto& icons : {inside(symbol, "58"), wide(symbol, "58% · 3:05")}) {
      // Between the rim and the figures there is only the plate; the figures are white.
      for (const Icon& icon : icons) {
        const int column = icon.width / 2;
        double lightest = 0;
        double darkest = 1;
        for (int y = icon.height / 4; y < icon.height * 3 / 4; ++y) {
          for (int x = column / 2; x < column * 3 / 2; ++x) {
            const auto at = static_cast<std::size_t>(y * icon.width + x) * 4;
            EXPECT_EQ(icon.argb[at], 255);
            lightest = std::max(lightest, luminance(&icon.argb[at]));
            darkest = std::min(darkest, luminance(&icon.argb[at]));
          }
        }
        EXPECT_GT(lightest, 0.85) << symbol << ' ' << icon.height;
        EXPECT_GT(contrastWithWhite(darkest), 4.5) << symbol << ' ' << icon.height;
      }
    }
  }
}

TEST(TrayIcon, HasNoFillThatWhiteDoesNotStandOutFrom) {
  // Each colour alone, at the plate's lower left: below the figures and inside the rim.
  for (const char* symbol : kStates) {
    const Icon icon = inside(symbol, "100").back();
    const auto at = static_cast<std::size_t>((icon.height - 5) * icon.width + icon.width / 2) * 4;
    EXPECT_GT(contrastWithWhite(luminance(&icon.argb[at])), 4.5) << symbol;
  }
}

TEST(TrayIcon, LeavesOutWhatItDoesNotKnowAndStaysSmall) {
  EXPECT_EQ(wide("powerplug", "x8é2?").front().width, wide("powerplug", "82").front().width);
  for (const std::string& text :
       {std::string(), std::string("\0\xff\xfe", 3), std::string("-5"), std::string("999999999999"),
        std::string(100'000, '8'), std::string(100'000, '\xc2'), std::string("\xc2"),
        std::string("½ %%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%%")}) {
    for (const auto& icons : {inside("battery.75", text), wide("battery.75", text)}) {
      ASSERT_EQ(icons.size(), 6U);
      for (const Icon& icon : icons) EXPECT_LE(icon.width, 24 * icon.height);
    }
  }
}

}  // namespace
}  // namespace lumora::test
