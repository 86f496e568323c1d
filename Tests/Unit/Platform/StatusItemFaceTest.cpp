// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/StatusItemFace.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const StatusItemContent kContent{
    .symbol = "battery.75", .text = "82% · 3:05", .percent = "82", .tooltip = "On battery"};

TEST(StatusItemFace, NamesTheIconAfterItsSymbol) {
  EXPECT_EQ(iconName("battery.100.bolt"), "lumora-battery-100-bolt-symbolic");
  EXPECT_EQ(iconName("battery"), "lumora-battery-symbolic");
  EXPECT_EQ(iconName(""), "");
}

TEST(StatusItemFace, PutsTheTextBesideTheNamedIconWhereThereIsALabel) {
  const auto face = statusItemFace(kContent, TextPlace::label);
  EXPECT_EQ(face.iconName, "lumora-battery-75-symbolic");
  EXPECT_FALSE(face.drawn);
  EXPECT_EQ(face.label, " 82% · 3:05");
  EXPECT_EQ(face.tooltipTitle, "On battery");
  EXPECT_EQ(face.tooltipText, "");
}

TEST(StatusItemFace, DrawsTheWholeTextIntoAWideIcon) {
  const auto face = statusItemFace(kContent, TextPlace::wide);
  EXPECT_EQ(face.iconName, "");
  EXPECT_EQ(face.drawn, (DrawnIcon{"battery.75", "82% · 3:05", TextPlace::wide}));
  EXPECT_EQ(face.label, "");
  EXPECT_EQ(face.tooltipText, "");
}

TEST(StatusItemFace, DrawsThePercentageInsideAndTellsTheRestInTheTooltip) {
  const auto face = statusItemFace(kContent, TextPlace::inside);
  EXPECT_EQ(face.iconName, "");
  EXPECT_EQ(face.drawn, (DrawnIcon{"battery.75", "82", TextPlace::inside}));
  EXPECT_EQ(face.label, "");
  EXPECT_EQ(face.tooltipText, "82% · 3:05");
}

TEST(StatusItemFace, DoesNotRepeatInTheTooltipWhatTheIconTells) {
  StatusItemContent content = kContent;
  content.text = "82%";
  EXPECT_EQ(statusItemFace(content, TextPlace::inside).tooltipText, "");
  content.text = "82";
  EXPECT_EQ(statusItemFace(content, TextPlace::inside).tooltipText, "");
  content.text = "3:05";
  EXPECT_EQ(statusItemFace(content, TextPlace::inside).tooltipText, "3:05");
}

TEST(StatusItemFace, NamesTheIconWhereNothingFitsIntoIt) {
  StatusItemContent content = kContent;
  content.text = "3:05";
  content.percent = "";
  const auto face = statusItemFace(content, TextPlace::inside);
  EXPECT_EQ(face.iconName, "lumora-battery-75-symbolic");
  EXPECT_FALSE(face.drawn);
  EXPECT_EQ(face.tooltipText, "3:05");
}

TEST(StatusItemFace, IsANamedIconEverywhereWithoutAText) {
  const StatusItemContent content{.symbol = "battery.75", .tooltip = "On battery"};
  for (const TextPlace place : {TextPlace::label, TextPlace::wide, TextPlace::inside}) {
    EXPECT_EQ(
        statusItemFace(content, place),
        (StatusItemFace{.iconName = "lumora-battery-75-symbolic", .tooltipTitle = "On battery"}));
  }
}

TEST(StatusItemFace, KeepsTheGuideWhileOnlyDigitsChange) {
  StatusItemContent later = kContent;
  later.text = "81% · 2:59";
  const auto guide = statusItemFace(kContent, TextPlace::label).labelGuide;
  EXPECT_EQ(guide, " 88% · 8:88");
  EXPECT_EQ(statusItemFace(later, TextPlace::label).labelGuide, guide);
}

TEST(StatusItemFace, LooksTheSameInsideWhileThePercentageDoes) {
  StatusItemContent later = kContent;
  later.text = "82% · 3:04";
  EXPECT_EQ(statusItemFace(later, TextPlace::inside).drawn,
            statusItemFace(kContent, TextPlace::inside).drawn);
  EXPECT_NE(statusItemFace(later, TextPlace::wide).drawn,
            statusItemFace(kContent, TextPlace::wide).drawn);
}

}  // namespace
}  // namespace lumora::test
