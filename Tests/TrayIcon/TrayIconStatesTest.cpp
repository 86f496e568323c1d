// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "IconPixels.h"
#include "TrayIcon/TrayIcon.h"

#include <map>
#include <set>
#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using enum BatteryPicture;

constexpr std::array kPictures = {noBattery, onBattery, low, pluggedIn, charging, full};
constexpr std::array kPercents = {5, 9, 20, 50, 80, 100};

std::size_t differences(const std::vector<bool>& one, const std::vector<bool>& other) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < one.size(); ++i) count += one[i] != other[i] ? 1 : 0;
  return count;
}

/// The pairs of colours that touch, of those that an icon has three of in a row and much of in all:
/// what lies between two areas and is of neither is left out.
std::set<std::pair<Pixel, Pixel>> neighbours(const Icon& icon) {
  std::map<Pixel, int> counts;
  std::set<Pixel> areas;
  std::set<std::pair<Pixel, Pixel>> touching;
  const auto follow = [&](int dx, int dy, const auto& visit) {
    for (int y = 0; y < icon.height - 2 * dy; ++y) {
      for (int x = 0; x < icon.width - 2 * dx; ++x) {
        visit(pixelAt(icon, x, y), pixelAt(icon, x + dx, y + dy),
              pixelAt(icon, x + 2 * dx, y + 2 * dy));
      }
    }
  };
  const auto note = [&](const Pixel& first, const Pixel& second, const Pixel& third) {
    if (first.alpha < 255 || first != second || second != third) return;
    if (++counts[first] * 50 > icon.width * icon.height) areas.insert(first);
  };
  const auto touch = [&](const Pixel& one, const Pixel& other, const Pixel& /*third*/) {
    if (one != other && areas.contains(one) && areas.contains(other)) touching.insert({one, other});
  };
  for (const auto& [dx, dy] : {std::pair(1, 0), {0, 1}}) follow(dx, dy, note);
  for (const auto& [dx, dy] : {std::pair(1, 0), {0, 1}}) follow(dx, dy, touch);
  return touching;
}

/// The colour for which `counts` that covers most of an icon; Pixel{} where there is none.
template <typename Counts>
Pixel mostOf(const Icon& icon, const Counts& counts) {
  std::map<Pixel, int> found;
  for (int y = 0; y < icon.height; ++y) {
    for (int x = 0; x < icon.width; ++x) {
      const Pixel pixel = pixelAt(icon, x, y);
      if (counts(pixel)) ++found[pixel];
    }
  }
  const auto most = std::max_element(
      found.begin(), found.end(), [](auto& one, auto& other) { return one.second < other.second; });
  return most == found.end() ? Pixel{} : most->first;
}

Pixel colorOf(const Icon& icon) { return mostOf(icon, isColored); }

/// That of its charge, which is neither nearly black nor nearly white.
Pixel chargeOf(const Icon& icon) {
  return mostOf(icon, [](const Pixel& pixel) {
    return pixel.alpha == 255 && luminance(pixel) > 0.1 && luminance(pixel) < 0.3;
  });
}

/// Where an icon begins at half its height: beside it there may be a margin.
int firstColumn(const Icon& icon) {
  int x = 0;
  while (x < icon.width && pixelAt(icon, x, icon.height / 2).alpha < 255) ++x;
  return x;
}

TEST(TrayIconStates, DifferInShapeAlsoWithoutTheirColours) {
  for (const int percent : kPercents) {
    for (const BatteryPicture one : kPictures) {
      for (const BatteryPicture other : kPictures) {
        if (one >= other) continue;
        const auto icons = drawTrayIcon({one, percent, ""});
        const auto others = drawTrayIcon({other, percent, ""});
        for (std::size_t size = 0; size < icons.size(); ++size) {
          const int side = icons[size].height;
          // 10 pixels of an icon of 16 by 16.
          const auto least = static_cast<std::size_t>(side * side / 25);
          EXPECT_GE(differences(shape(icons[size]), shape(others[size])), least)
              << static_cast<int>(one) << " and " << static_cast<int>(other) << " at " << percent
              << " % in " << side << " pixels";
        }
      }
    }
  }
}

TEST(TrayIconStates, DifferInShapeBesideATextToo) {
  for (const BatteryPicture one : kPictures) {
    for (const BatteryPicture other : kPictures) {
      if (one >= other) continue;
      const auto icons = drawTrayIcon({one, 80, "80% · 3:05"});
      const auto others = drawTrayIcon({other, 80, "80% · 3:05"});
      for (std::size_t size = 0; size < icons.size(); ++size) {
        if (icons[size].width != others[size].width) continue;
        const int side = icons[size].height;
        EXPECT_GE(differences(shape(icons[size]), shape(others[size])),
                  static_cast<std::size_t>(side * side / 25))
            << static_cast<int>(one) << " and " << static_cast<int>(other) << " in " << side;
      }
    }
  }
  // A sign, where there is one, stands between the battery and the text.
  for (const BatteryPicture picture : {low, pluggedIn, charging, full}) {
    EXPECT_GT(drawTrayIcon({picture, 80, "80%"}).front().width,
              drawTrayIcon({onBattery, 80, "80%"}).front().width);
  }
}

TEST(TrayIconStates, HaveAreasThatStandOutFromTheirNeighbours) {
  for (const BatteryPicture picture : kPictures) {
    for (const int percent : kPercents) {
      for (const Icon& icon : drawTrayIcon({picture, percent, ""})) {
        const auto pairs = neighbours(icon);
        EXPECT_FALSE(pairs.empty());
        for (const auto& [one, other] : pairs) {
          EXPECT_GE(contrast(luminance(one), luminance(other)), 3)
              << static_cast<int>(picture) << " at " << percent << " % in " << icon.height;
        }
      }
    }
  }
}

TEST(TrayIconStates, StandOutFromPanelsOfAnyBrightness) {
  for (const BatteryPicture picture : kPictures) {
    for (const Icon& icon : drawTrayIcon({picture, 80, ""})) {
      const int wall = std::max(1, icon.height / 16);
      const int left = firstColumn(icon);
      ASSERT_LT(left, icon.width / 4);
      const double outer = luminance(pixelAt(icon, left, icon.height / 2));
      const double inner = luminance(pixelAt(icon, left + wall, icon.height / 2));
      for (int step = 0; step <= 100; ++step) {
        const double panel = step / 100.0;
        EXPECT_GE(std::max(contrast(outer, panel), contrast(inner, panel)), 3)
            << static_cast<int>(picture) << " in " << icon.height << " on " << panel;
      }
    }
  }
}

TEST(TrayIconStates, HaveTheColoursOfTheRingWhereSomethingHappensAndElseNone) {
  for (const char* text : {"", "80%"}) {
    for (const Icon& icon : drawTrayIcon({low, 9, text})) {
      const Pixel color = colorOf(icon);
      EXPECT_GT(color.red, 2 * std::max(color.green, color.blue)) << icon.height;
    }
    for (const BatteryPicture picture : {charging, full}) {
      for (const Icon& icon : drawTrayIcon({picture, 80, text})) {
        const Pixel color = colorOf(icon);
        EXPECT_GT(color.green, 1.5 * std::max(color.red, color.blue)) << icon.height;
      }
    }
  }
  for (const BatteryPicture picture : {onBattery, pluggedIn}) {
    for (const char* text : {"", "80%"}) {
      for (const Icon& icon : drawTrayIcon({picture, 80, text})) {
        EXPECT_EQ(colorOf(icon), Pixel{}) << icon.height;
      }
    }
  }
}

TEST(TrayIconStates, FillWithTheCharge) {
  const auto filledRows = [](const Icon& icon, const Pixel& color) {
    int rows = 0;
    for (int y = 0; y < icon.height; ++y) {
      int filled = 0;
      for (int x = 0; x < icon.width; ++x) filled += pixelAt(icon, x, y) == color ? 1 : 0;
      rows += filled > 0 ? 1 : 0;
    }
    return rows;
  };
  for (const BatteryPicture picture : {onBattery, pluggedIn, charging, full}) {
    for (std::size_t size = 0; size < 6; ++size) {
      const Pixel color = chargeOf(drawTrayIcon({picture, 100, ""})[size]);
      ASSERT_NE(color, Pixel{});
      const auto rows = [&](int percent) {
        return filledRows(drawTrayIcon({picture, percent, ""})[size], color);
      };
      EXPECT_EQ(rows(0), 0);
      EXPECT_GE(rows(9), 1);
      EXPECT_LT(rows(9), rows(50));
      EXPECT_LT(rows(50), rows(80));
      EXPECT_LT(rows(80), rows(100));
      EXPECT_EQ(rows(100), rows(1000));
    }
  }
}

}  // namespace
}  // namespace lumora::test
