// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Fonts.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

TEST(Fonts, ReadsAFontAsPangoDescribesIt) {
  const QFont usual = QApplication::font();
  EXPECT_EQ(fontOf("Cantarell 11", 1).families(), QStringList{"Cantarell"});
  EXPECT_DOUBLE_EQ(fontOf("Cantarell 11", 1).pointSizeF(), 11);
  EXPECT_DOUBLE_EQ(fontOf("Noto Sans 10.5", 1.5).pointSizeF(), 15.75);
  EXPECT_EQ(fontOf("Noto Sans, 10.5", 1).families(), QStringList{"Noto Sans"});
  EXPECT_EQ(fontOf("Inter Bold 11", 1).families(), QStringList{"Inter"});
  EXPECT_EQ(fontOf("Inter, Bold 11", 1).families(), QStringList{"Inter"});
  EXPECT_EQ(fontOf("Inter Semi-Bold Italic 11", 1).families(), QStringList{"Inter"});
  EXPECT_EQ(fontOf("Inter Semi-Bold Italic 11", 1).weight(), QFont::DemiBold);
  EXPECT_TRUE(fontOf("Inter Semi-Bold Italic 11", 1).italic());
  EXPECT_EQ(fontOf("Ubuntu Condensed 11", 1).stretch(), QFont::Condensed);
  EXPECT_EQ(fontOf("Inter 11 @wght=500", 1).families(), QStringList{"Inter"});
  EXPECT_DOUBLE_EQ(fontOf("Inter 11 @wght=500", 1).pointSizeF(), 11);
  EXPECT_EQ(fontOf("Inter 15px", 2).pixelSize(), 30);
  EXPECT_EQ(fontOf("Cantarell", 1).pointSizeF(), usual.pointSizeF());
  for (const char* nothing : {"", " ", "@", "0", "-3", "1e9", "inf", "nan", "0px"}) {
    EXPECT_EQ(fontOf(nothing, 1), usual) << nothing;
  }
}

TEST(Fonts, TakesNoDescriptionThatIsTooLong) {
  const QFont usual = QApplication::font();
  EXPECT_EQ(fontOf(std::string(100'000, 'x') + " 11", 1), usual);
  std::string words;
  while (words.size() < 100'000) words += "Bold ";
  EXPECT_EQ(fontOf(words + "11", 1), usual);
  EXPECT_DOUBLE_EQ(fontOf(std::string(253, 'x') + " 17", 1).pointSizeF(), 17);
}

TEST(Fonts, ScalesTheDesktopsFontByItsRole) {
  const double size = QApplication::font().pointSizeF();
  EXPECT_DOUBLE_EQ(fontFor(TextRole::callout).pointSizeF(), size);
  EXPECT_DOUBLE_EQ(fontFor(TextRole::caption).pointSizeF(), size * 0.9);
  EXPECT_DOUBLE_EQ(fontFor(TextRole::caption2).pointSizeF(), size * 0.85);
  EXPECT_GT(fontFor(TextRole::headline).weight(), fontFor(TextRole::body).weight());
}

}  // namespace
}  // namespace lumora::test
