// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Laptop.h"
#include "Linux/Session/DesktopAppearance.h"
#include "Linux/WaitFor.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using ColorScheme = Appearance::ColorScheme;
using Color = std::tuple<double, double, double>;

const Glib::ustring kGnome = "org.gnome.desktop.interface";

class DesktopAppearanceTest : public testing::Test {
 protected:
  DesktopAppearanceTest() { laptop.reset(); }

  static bool becomes(DesktopAppearance& desktop, const Appearance& expected) {
    return waitFor([&] { return *desktop.appearance() == expected; });
  }

  /// Whether one that was just made knows it. A busy machine may let the portal's time pass.
  bool isKnownAtOnce(const char* name, const Appearance& expected) {
    return waitFor(
        [&] { return *DesktopAppearance(laptop.session(), name, "").appearance() == expected; });
  }

  Laptop laptop;
};

TEST_F(DesktopAppearanceTest, HasNoWishesWithoutAPortalOrABus) {
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  EXPECT_EQ(*desktop.appearance(), Appearance{});
  DesktopAppearance none(nullptr, "", "");
  EXPECT_EQ(*none.appearance(), Appearance{});
}

TEST_F(DesktopAppearanceTest, KnowsTheWishesFromTheStart) {
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  laptop.setAppearance("accent-color", variant(Color{1.0, 0.5, 0.0}));
  EXPECT_TRUE(isKnownAtOnce("XFCE", {ColorScheme::dark, 0xFF8000U}));
}

TEST_F(DesktopAppearanceTest, FollowsEachChangeAndAnnouncesItOnce) {
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  int changes = 0;
  const auto subscription = desktop.appearance().subscribe([&] { ++changes; });
  laptop.setAppearance("color-scheme", variant(std::uint32_t{2}));
  EXPECT_TRUE(becomes(desktop, {ColorScheme::light, std::nullopt}));
  laptop.setAppearance("color-scheme", variant(std::uint32_t{2}));
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  EXPECT_TRUE(becomes(desktop, {ColorScheme::dark, std::nullopt}));
  EXPECT_EQ(changes, 2);
}

TEST_F(DesktopAppearanceTest, BelievesWhatThePortalAnswersAndNotWhatItAnnounces) {
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  DesktopAppearance desktop(laptop.session(), "KDE", "");
  Appearance expected{ColorScheme::dark, {}};
  EXPECT_TRUE(becomes(desktop, expected));
  bool wasLight = false;
  const auto subscription = desktop.appearance().subscribe(
      [&] { wasLight |= desktop.appearance()->colorScheme == ColorScheme::light; });
  laptop.announceAppearance("color-scheme", variant(std::uint32_t{2}));
  laptop.setAppearance("contrast", variant(std::uint32_t{1}));
  expected.highContrast = true;
  EXPECT_TRUE(becomes(desktop, expected));
  EXPECT_FALSE(wasLight);
}

TEST_F(DesktopAppearanceTest, ForgetsWhatAPortalThatStartsAgainNoLongerTells) {
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  EXPECT_TRUE(becomes(desktop, {ColorScheme::dark, {}}));
  laptop.reset();
  laptop.setAppearance("contrast", variant(std::uint32_t{1}));
  Appearance expected;
  expected.highContrast = true;
  EXPECT_TRUE(becomes(desktop, expected));
}

TEST_F(DesktopAppearanceTest, TakesWhatItCannotReadAsNoWish) {
  laptop.setAppearance("color-scheme", variant("dark"));
  laptop.setAppearance("accent-color", variant(Color{-1.0, 0.5, 0.5}));
  laptop.setAppearance("contrast", variant(std::uint32_t{7}));
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  EXPECT_EQ(*desktop.appearance(), Appearance{});
}

TEST_F(DesktopAppearanceTest, HearsAPortalThatIsSlow) {
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  laptop.slowAppearance(std::chrono::milliseconds(300));
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  EXPECT_EQ(*desktop.appearance(), Appearance{});
  EXPECT_TRUE(becomes(desktop, {ColorScheme::dark, std::nullopt}));
}

TEST_F(DesktopAppearanceTest, HearsAPortalThatStartsLater) {
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  drainMainLoop();
  EXPECT_EQ(*desktop.appearance(), Appearance{});
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  EXPECT_TRUE(becomes(desktop, {ColorScheme::dark, std::nullopt}));
}

TEST_F(DesktopAppearanceTest, StartsThePortalWhereTheDesktopLeavesThatToPrograms) {
  for (const char* name : {"GNOME", "ubuntu:GNOME", "KDE"}) {
    laptop.reset();
    laptop.offerAppearance("color-scheme", variant(std::uint32_t{1}));
    DesktopAppearance desktop(laptop.session(), name, "");
    EXPECT_TRUE(becomes(desktop, {ColorScheme::dark, std::nullopt})) << name;
  }
}

TEST_F(DesktopAppearanceTest, FollowsTheWishForContrast) {
  laptop.setAppearance("contrast", variant(std::uint32_t{1}));
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  Appearance expected;
  expected.highContrast = true;
  EXPECT_TRUE(becomes(desktop, expected));
  laptop.setAppearance("contrast", variant(std::uint32_t{0}));
  EXPECT_TRUE(becomes(desktop, {}));
}

TEST_F(DesktopAppearanceTest, FollowsTheWishForLessMotionAndForNone) {
  DesktopAppearance desktop(laptop.session(), "XFCE", "");
  Appearance expected;
  laptop.setAppearance("reduced-motion", variant(std::uint32_t{1}));
  expected.reducedMotion = true;
  EXPECT_TRUE(becomes(desktop, expected));
  laptop.setAppearance(kGnome + " enable-animations", variant(false));
  expected.animations = false;
  EXPECT_TRUE(becomes(desktop, expected));
  EXPECT_TRUE(isKnownAtOnce("XFCE", expected));
  laptop.setAppearance("reduced-motion", variant(std::uint32_t{0}));
  laptop.setAppearance(kGnome + " enable-animations", variant("what is this"));
  EXPECT_TRUE(becomes(desktop, {}));
}

TEST_F(DesktopAppearanceTest, HasGnomesFontOnGnomeAndWhereNothingElseTellsOne) {
  laptop.setAppearance(kGnome + " font-name", variant("Cantarell 11"));
  laptop.setAppearance(kGnome + " text-scaling-factor", variant(1.25));
  for (const char* other : {"", "KDE", "XFCE", "GNOMEX:swayed"}) {
    EXPECT_EQ(*DesktopAppearance(laptop.session(), other, "").appearance(), Appearance{}) << other;
  }
  Appearance expected;
  expected.font = "Cantarell 11";
  expected.textScale = 1.25;
  for (const char* told :
       {"GNOME", "ubuntu:GNOME", "GNOME-Classic:GNOME", "sway", "sway:wlroots", "labwc:wlroots"}) {
    EXPECT_TRUE(isKnownAtOnce(told, expected)) << told;
  }
}

TEST_F(DesktopAppearanceTest, LeavesTheFontToTheThemeThatIsChosenForQt) {
  laptop.setAppearance(kGnome + " font-name", variant("Cantarell 11"));
  Appearance expected;
  expected.font = "Cantarell 11";
  EXPECT_TRUE(waitFor([&] {
    return *DesktopAppearance(laptop.session(), "GNOME", "qt6ct").appearance() == expected;
  }));
  EXPECT_EQ(*DesktopAppearance(laptop.session(), "sway", "qt6ct").appearance(), Appearance{});
}

TEST_F(DesktopAppearanceTest, FollowsGnomesFontAndNothingElseOfGnomes) {
  laptop.setAppearance("color-scheme", variant(std::uint32_t{1}));
  laptop.setAppearance(kGnome + " color-scheme", variant("prefer-dark"));
  DesktopAppearance desktop(laptop.session(), "GNOME", "");
  laptop.setAppearance(kGnome + " color-scheme", variant("default"));
  laptop.setAppearance("font-name", variant("of no account here"));
  laptop.setAppearance(kGnome + " font-name", variant("Serif 13"));
  Appearance expected{ColorScheme::dark, {}};
  expected.font = "Serif 13";
  EXPECT_TRUE(becomes(desktop, expected));
  for (const double senseless : {0.0, -1.0, 1e9}) {
    laptop.setAppearance(kGnome + " text-scaling-factor", variant(2.0));
    expected.textScale = 2;
    EXPECT_TRUE(becomes(desktop, expected));
    laptop.setAppearance(kGnome + " text-scaling-factor", variant(senseless));
    expected.textScale = 1;
    EXPECT_TRUE(becomes(desktop, expected));
  }
  laptop.setAppearance(kGnome + " font-name", variant(""));
  expected.font.reset();
  EXPECT_TRUE(becomes(desktop, expected));
}

}  // namespace
}  // namespace lumora::test
