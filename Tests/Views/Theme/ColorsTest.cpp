// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Colors.h"
#include "Views/Theme/Contrast.h"
#include "Views/Theme/DesktopLooks.h"

#include <QColor>
#include <QPalette>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using ColorScheme = Appearance::ColorScheme;

constexpr Tint kTints[] = {Tint::accent, Tint::green, Tint::orange, Tint::red};
constexpr Touch kTouches[] = {Touch::none, Touch::hovered, Touch::pressed};
constexpr TextColor kTexts[] = {TextColor::primary, TextColor::secondary, TextColor::link,
                                TextColor::green,   TextColor::orange,    TextColor::red};

struct Look {
  std::string name;
  QPalette palette;
};

/// What a desktop without a wish for a scheme hands to Qt.
QPalette desktop(QRgb window, QRgb text, QRgb base, QRgb button, QRgb highlight) {
  QPalette palette(QColor::fromRgb(button), QColor::fromRgb(window));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    palette.setColor(role, QColor::fromRgb(text));
  }
  palette.setColor(QPalette::Base, QColor::fromRgb(base));
  palette.setColor(QPalette::Highlight, QColor::fromRgb(highlight));
  return palette;
}

std::vector<Look> desktops() {
  return {{"Fusion", desktop(0xefefef, 0x000000, 0xffffff, 0xefefef, 0x308cc6)},
          {"Breeze", desktop(0xeff0f1, 0x232629, 0xfcfcfc, 0xfcfcfc, 0x3daee9)},
          {"Breeze Dark", desktop(0x2a2e32, 0xfcfcfc, 0x1b1e20, 0x31363b, 0x3daee9)},
          {"Breeze Twilight", desktop(0x31363b, 0xeff0f1, 0x232629, 0x31363b, 0x3daee9)},
          {"Adwaita", desktop(0xf6f5f4, 0x2e3436, 0xffffff, 0xedebe9, 0x3584e4)},
          {"Adwaita Dark", desktop(0x353535, 0xeeeeec, 0x2d2d2d, 0x373737, 0x15539e)},
          {"Yaru Dark", desktop(0x2b2b2b, 0xf7f7f7, 0x3d3d3d, 0x393939, 0xe95420)},
          {"Mint-Y", desktop(0xf0f0f0, 0x303030, 0xffffff, 0xf5f5f5, 0x35a854)},
          {"Menta", desktop(0xededed, 0x212121, 0xffffff, 0xe8e8e8, 0x9ccd6c)},
          {"Clearlooks", desktop(0xd4d0c8, 0x000000, 0xffffff, 0xd4d0c8, 0x86abd9)},
          {"Arc Dark", desktop(0x383c4a, 0xd3dae3, 0x404552, 0x444a58, 0x5294e2)}};
}

/// The accents that desktops offer, and some that nobody should.
std::vector<std::uint32_t> accents() {
  return {0x3584e4, 0x2190a4, 0x3a944a, 0xc88800, 0xed5b00, 0xe62d42, 0xd56199, 0x9141ac,  // GNOME
          0x6f8396, 0x3daee9, 0xe93a9a, 0xe93d58, 0xe8cb2d, 0x3dd425, 0x00d3b8, 0xb875dc,  // Plasma
          0x926ee4, 0xe95420, 0x787859, 0x657b69, 0x308280, 0x7764d8, 0xb34cb3, 0xda3450,  // Yaru
          0x8c5e0f, 0x64baff, 0xa56de2, 0xf9c440, 0xff8c82,                                // others
          0x000000, 0xffffff, 0xffff00, 0x0000ff, 0x00ff00, 0x808080};
}

/// Every desktop as it is, and both schemes of our own, each with every accent.
std::vector<Look> looks() {
  std::vector<Look> all = desktops();
  const auto plain = all;
  for (const auto& [name, palette] : plain) {
    for (const auto scheme : {ColorScheme::noPreference, ColorScheme::dark, ColorScheme::light}) {
      const std::string title = name + " scheme " + std::to_string(static_cast<int>(scheme));
      all.push_back({title, paletteFor({scheme, {}}, palette)});
      for (const std::uint32_t accent : accents()) {
        all.push_back({title + " accent " + QColor::fromRgb(accent).name().toStdString(),
                       paletteFor({scheme, accent}, palette)});
      }
    }
  }
  return all;
}

QColor window(const QPalette& palette) { return palette.color(QPalette::Window); }
QColor card(const QPalette& palette) { return over(window(palette), cardColor(palette)); }
QColor well(const QPalette& palette) { return over(window(palette), wellColor(palette)); }

struct Pair {
  std::string what;
  QColor on;
  QColor ground;
};

/// Every text and where it stands.
std::vector<Pair> texts(const QPalette& palette) {
  std::vector<Pair> all;
  for (const TextColor text : kTexts) {
    const std::string name = "text " + std::to_string(static_cast<int>(text));
    all.push_back({name + " on the window", textColor(text, palette), window(palette)});
    all.push_back({name + " on a card", textColor(text, palette), card(palette)});
  }
  const QColor primary = textColor(TextColor::primary, palette);
  all.push_back({"the chosen segment", primary, raisedColor(palette)});
  all.push_back({"the other segment", primary, well(palette)});
  for (const QColor& ground : {window(palette), card(palette)}) {
    for (const Touch touch : kTouches) {
      all.push_back({"on a control", primary, over(ground, fieldColor(palette, touch))});
      all.push_back({"on a button that destroys", dangerColor(palette),
                     over(ground, dangerFieldColor(palette, touch))});
    }
  }
  for (const Touch touch : kTouches) {
    const QColor action = actionColor(palette, touch);
    all.push_back({"on the default button", textOn(action), action});
  }
  all.push_back({"on a list", primary, popupColor(palette)});
  return all;
}

/// Every mark that means something and what it lies on.
std::vector<Pair> marks(const QPalette& palette) {
  std::vector<Pair> all;
  for (const Tint tint : kTints) {
    const std::string name = "mark " + std::to_string(static_cast<int>(tint));
    const QColor mark = markColor(tint, palette);
    all.push_back({name + " on the window", mark, window(palette)});
    all.push_back({name + " on its track", mark, over(window(palette), trackColor(palette))});
  }
  for (const Tint tint : {Tint::accent, Tint::green}) {
    const QColor area = over(window(palette), areaColor(tint, palette));
    const std::string on = " on the area " + std::to_string(static_cast<int>(tint));
    all.push_back({"the chart's line" + on, markColor(Tint::accent, palette), area});
    all.push_back({"a threshold" + on, neutralMarkColor(palette), area});
    all.push_back({"the bar of charging" + on, markColor(Tint::green, palette), area});
  }
  const QColor on = markColor(Tint::accent, palette);
  const QColor off = neutralMarkColor(palette);
  for (const QColor& track : {on, off}) {
    all.push_back({"a switch on a card", track, card(palette)});
    all.push_back({"its knob", knobColor(track), track});
  }
  all.push_back({"the focus on the window", focusColor(palette), window(palette)});
  all.push_back({"the focus on a card", focusColor(palette), card(palette)});
  all.push_back({"the focus in a well", focusColor(palette), well(palette)});
  all.push_back({"a tick", off, window(palette)});
  all.push_back({"a scroll bar's handle over a card", off, card(palette)});
  all.push_back({"the default button", actionColor(palette), window(palette)});
  all.push_back({"the outline of the chosen segment", off, well(palette)});
  return all;
}

TEST(Contrast, IsWhatTheGuidelinesCount) {
  EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), 21);
  EXPECT_DOUBLE_EQ(contrast(Qt::white, Qt::black), 21);
  EXPECT_DOUBLE_EQ(contrast(Qt::red, Qt::red), 1);
  EXPECT_NEAR(contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
  EXPECT_NEAR(contrast(Qt::red, Qt::white), 4.0, 0.01);
}

TEST(TextOn, IsWhiteWhereThatCanBeReadAndBlackElsewhere) {
  EXPECT_EQ(textOn(QColor(0x76, 0x76, 0x76)), QColor(Qt::white));
  EXPECT_EQ(textOn(QColor(0x78, 0x78, 0x78)), QColor(Qt::black));
}

TEST(Legible, ChangesNoMoreThanItMust) {
  const QColor blue(0x1f, 0x6f, 0xeb);
  EXPECT_EQ(legible(blue, {Qt::white}, 4.5), blue);
  const QColor darker = legible(QColor(0x3d, 0xae, 0xe9), {Qt::white}, 4.5);
  EXPECT_GE(contrast(darker, Qt::white), 4.5);
  EXPECT_LT(contrast(darker, Qt::white), 4.8);
  EXPECT_NEAR(darker.hslHueF(), QColor(0x3d, 0xae, 0xe9).hslHueF(), 0.02);
  EXPECT_EQ(legible(blue, {QColor(0x80, 0x80, 0x80)}, 21), QColor(Qt::black));
}

TEST(Colors, LetEveryTextBeRead) {
  for (const auto& [name, palette] : looks()) {
    for (const Pair& pair : texts(palette)) {
      EXPECT_GE(contrast(pair.on, pair.ground), 4.5) << name << ": " << pair.what;
    }
  }
}

TEST(Colors, LetEveryMarkBeSeen) {
  for (const auto& [name, palette] : looks()) {
    for (const Pair& pair : marks(palette)) {
      EXPECT_GE(contrast(pair.on, pair.ground), 3) << name << ": " << pair.what;
    }
  }
}

TEST(Colors, LetTheToolkitsOwnTextsBeRead) {
  for (const auto scheme : {ColorScheme::dark, ColorScheme::light}) {
    for (const std::uint32_t accent : accents()) {
      const QPalette other = desktops()[scheme == ColorScheme::dark ? 0 : 2].palette;
      const QPalette palette = paletteFor({scheme, accent}, other);
      for (const auto& [text, ground] : {std::pair(QPalette::Text, QPalette::Base),
                                         {QPalette::ButtonText, QPalette::Button},
                                         {QPalette::ToolTipText, QPalette::ToolTipBase},
                                         {QPalette::PlaceholderText, QPalette::Base},
                                         {QPalette::HighlightedText, QPalette::Highlight}}) {
        EXPECT_GE(contrast(palette.color(text), palette.color(ground)), 4.5)
            << text << " " << accent;
      }
    }
  }
}

TEST(Colors, AreTheStrongestWhereHighContrastIsWished) {
  for (const auto& [name, own] : desktops()) {
    for (const auto scheme : {ColorScheme::dark, ColorScheme::light}) {
      Appearance wish{scheme, 0xC88800U};
      wish.highContrast = true;
      const QPalette palette = paletteFor(wish, own);
      for (const TextColor text : {TextColor::primary, TextColor::secondary}) {
        EXPECT_DOUBLE_EQ(contrast(textColor(text, palette), window(palette)), 21);
      }
      for (const TextColor text : kTexts) {
        EXPECT_GE(contrast(textColor(text, palette), card(palette)), 7);
      }
      for (const Tint tint : kTints) {
        EXPECT_GE(contrast(markColor(tint, palette), window(palette)), 7);
      }
      EXPECT_GE(contrast(neutralMarkColor(palette), window(palette)), 7);
      EXPECT_GE(contrast(over(window(palette), hairlineColor(palette)), window(palette)), 4.5);
    }
  }
}

TEST(Colors, KeepTheAccentWhereItCanBeSeen) {
  const QPalette light = desktops().front().palette;
  const QPalette palette = paletteFor({ColorScheme::noPreference, 0xC01C28U}, light);
  EXPECT_EQ(markColor(Tint::accent, palette), QColor(0xC0, 0x1C, 0x28));
  EXPECT_EQ(textColor(TextColor::link, palette), QColor(0xC0, 0x1C, 0x28));
}

TEST(Colors, ShowHowAControlIsTouched) {
  for (const auto& desktop : desktops()) {
    const QPalette& palette = desktop.palette;
    const auto differ = [&](auto colorOf, Touch one, Touch other) {
      const QColor first = over(card(palette), colorOf(palette, one));
      EXPECT_GT(contrast(first, over(card(palette), colorOf(palette, other))), 1.03)
          << desktop.name;
    };
    for (const auto colorOf : {fieldColor, actionColor, dangerFieldColor}) {
      differ(colorOf, Touch::none, Touch::hovered);
      differ(colorOf, Touch::none, Touch::pressed);
      differ(colorOf, Touch::hovered, Touch::pressed);
    }
  }
}

TEST(Colors, DrawTheTrackInTheSecondaryColorAtAFifth) {
  for (const auto& [name, palette] : desktops()) {
    QColor secondary = textColor(TextColor::secondary, palette);
    secondary.setAlphaF(0.2F);
    EXPECT_EQ(trackColor(palette), secondary) << name;
  }
}

}  // namespace
}  // namespace lumora::test
