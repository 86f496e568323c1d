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
