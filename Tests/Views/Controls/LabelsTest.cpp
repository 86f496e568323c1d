// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Labels.h"
#include "Views/Pixels.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

/// The first and the last column of pixels with something of the text, for each of its lines.
std::vector<std::pair<int, int>> lines(Label& label) {
  const QImage image = picture(label);
  const QColor ground = label.palette().color(QPalette::Window);
  std::vector<std::pair<int, int>> found;
  bool inLine = false;
  for (int y = 0; y < image.height(); ++y) {
    int first = image.width();
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
      if (distance(image.pixelColor(x, y), ground) < 64) continue;
      first = std::min(first, x);
      last = x;
    }
    if (last >= 0 && !inLine) found.emplace_back(first, last);
    inLine = last >= 0;
    if (!inLine) continue;
    found.back() = {std::min(found.back().first, first), std::max(found.back().second, last)};
  }
  return found;
}

/// Three lines of words of a letter that is a bar from side to side.
std::unique_ptr<Label> threeLines(Qt::Alignment alignment) {
  std::unique_ptr<Label> label(makeWrapping(TextRole::body, "םםם םםם םםם םםם םםם םםם"));
  label->setLayoutDirection(Qt::RightToLeft);
  label->setAlignment(alignment);
  const int width = longestWord("םםם\u00A0םםם", label->font()) + 16;
  label->resize(width, label->heightForWidth(width));
  return label;
}

TEST(Labels, BeginsEachLineFromRightToLeftAtTheSameEdge) {
  const auto found = lines(*threeLines(Qt::AlignLeft | Qt::AlignVCenter));
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0], found[2]);
  EXPECT_EQ(found[1], found[2]);
}

TEST(Labels, HaveLinesOfAboutTheSameLength) {
  for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    const std::unique_ptr<Label> label(
        makeWrapping(TextRole::headline, "On battery, 2 h 47 min left"));
    label->setLayoutDirection(direction);
    const int width =
        longestWord("On\u00A0battery,\u00A02\u00A0h\u00A047\u00A0min", label->font()) + 2;
    label->resize(width, label->heightForWidth(width));
    const auto found = lines(*label);
    ASSERT_EQ(found.size(), 2U);
    const auto length = [&](std::size_t line) { return found[line].second - found[line].first; };
    EXPECT_GT(length(1) * 2, length(0)) << direction;
  }
}

TEST(Labels, KeepNumbersWithTheirUnits) {
  // Half of it would end behind the number.
  const std::unique_ptr<Label> label(makeWrapping(TextRole::body, "HHHH HHHH 2 HHHHHH HHH"));
  const QFont font = label->font();
  const int width = longestWord("HHHH\u00A0HHHH\u00A02\u00A0HHHHHH", font) + 2;
  label->resize(width, label->heightForWidth(width));
  const auto found = lines(*label);
  ASSERT_EQ(found.size(), 2U);
  const int kept = longestWord("HHHH\u00A0HHHH", font);
  const int parted = longestWord("HHHH\u00A0HHHH\u00A02", font);
  EXPECT_LT(found[0].second, (kept + parted) / 2);
}

TEST(Labels, TakeNoFurtherLineForThat) {
  const std::unique_ptr<Label> label(makeWrapping(TextRole::body, "HHH 2 HHH HHH"));
  const int width = longestWord("HHH\u00A0HHH", label->font()) + 2;
  label->resize(width, label->heightForWidth(width) + 40);
  EXPECT_EQ(lines(*label).size(), 2U);
}

TEST(Labels, CutNoWordForThat) {
  const std::unique_ptr<Label> label(makeWrapping(TextRole::body, "2 HHHHHHHHH HH"));
  const int width = longestWord("HHHHHHHHH", label->font()) + 2;
  label->resize(width, label->heightForWidth(width));
  EXPECT_EQ(lines(*label).size(), 3U);
}

TEST(Labels, StandInTheMiddleOfTheirHeightAndFromTheLeft) {
  const std::unique_ptr<Label> label(makeWrapping(TextRole::body, "HHH HHH H"));
  const int width = longestWord("HHH\u00A0HHH", label->font()) + 4;
  label->resize(width, label->heightForWidth(width) + 40);
  const QImage image = picture(*label);
  int first = image.height();
  int last = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (distance(image.pixelColor(x, y), label->palette().color(QPalette::Window)) < 64) continue;
      first = std::min(first, y);
      last = std::max(last, y);
    }
  }
  EXPECT_GT(first, 20);
  EXPECT_LT(last, image.height() - 20);
  for (const auto& [left, right] : lines(*label)) EXPECT_LT(left, 4);
}

TEST(Labels, CentresEachLineFromRightToLeft) {
  const auto found = lines(*threeLines(Qt::AlignCenter));
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found[0], found[2]);
  EXPECT_EQ(found[1], found[2]);
}

TEST(Labels, BeginsALineFromRightToLeftWhereASingleOneBegins) {
  const auto wrapped = threeLines(Qt::AlignLeft | Qt::AlignVCenter);
  Label single(TextRole::body, "םםם םםם");
  single.setLayoutDirection(Qt::RightToLeft);
  single.resize(wrapped->width(), single.sizeHint().height());
  EXPECT_EQ(lines(*wrapped).front(), lines(single).front());
}

TEST(Labels, StandInTheMiddleOfTheirRoomInBothDirections) {
  const auto top = [](Qt::LayoutDirection direction) {
    const std::unique_ptr<Label> label(makeWrapping(TextRole::body, "םםם"));
    label->setLayoutDirection(direction);
    label->resize(100, 61);
    const QImage image = picture(*label);
    int y = 0;
    while (y < image.height() && !hasNear(image, {50, y}, QColor(Qt::black), 50, 64)) ++y;
    return y;
  };
  EXPECT_EQ(top(Qt::RightToLeft), top(Qt::LeftToRight));
}

}  // namespace
}  // namespace lumora::test
