// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Laptop.h"
#include "Platform/Linux/DesktopAppearance.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using ColorScheme = Appearance::ColorScheme;
using Color = std::tuple<double, double, double>;

class DesktopAppearanceTest : public testing::Test {
 protected:
  DesktopAppearanceTest() { laptop.reset(); }

  static bool becomes(DesktopAppearance& desktop, const Appearance& expected) {
    return waitFor([&] { return *desktop.appearance() == expected; });
  }

  Laptop laptop;
};

TEST_F(DesktopAppearanceTest, HasNoWishesWithoutAPortalOrABus) {
  DesktopAppearance desktop(laptop.session());
  EXPECT_EQ(*desktop.appearance(), Appearance{});
  DesktopAppearance none(nullptr);
  EXPECT_EQ(*none.appearance(), Appearance{});
}

TEST_F(DesktopAppearanceTest, KnowsTheWishesFromTheStart) {
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  laptop.setAppearance("accent-color", variant(Color{1.0, 0.5, 0.0}));
  DesktopAppearance desktop(laptop.session());
  EXPECT_EQ(*desktop.appearance(), (Appearance{ColorScheme::dark, 0xFF8000U}));
}

TEST_F(DesktopAppearanceTest, FollowsEachChangeAndAnnouncesItOnce) {
  DesktopAppearance desktop(laptop.session());
  int changes = 0;
  const auto subscription = desktop.appearance().subscribe([&] { ++changes; });
  laptop.setAppearance("color-scheme", variant(std::uint32_t{2}));
  EXPECT_TRUE(becomes(desktop, {ColorScheme::light, std::nullopt}));
  laptop.setAppearance("color-scheme", variant(std::uint32_t{2}));
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  EXPECT_TRUE(becomes(desktop, {ColorScheme::dark, std::nullopt}));
  EXPECT_EQ(changes, 2);
}

TEST_F(DesktopAppearanceTest, TakesWhatItCannotReadAsNoWish) {
  laptop.setAppearance("color-scheme", variant("dark"));
  laptop.setAppearance("accent-color", variant(Color{-1.0, 0.5, 0.5}));
  laptop.setAppearance("contrast", variant(std::uint32_t{1}));
  DesktopAppearance desktop(laptop.session());
  EXPECT_EQ(*desktop.appearance(), Appearance{});
}

}  // namespace
}  // namespace lumora::test
