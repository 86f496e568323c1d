// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/Disclosure.h"
#include "Views/Controls/Switch.h"
#include "Views/Patience.h"
#include "Views/Pixels.h"
#include "Views/Popover/RingView.h"
#include "Views/Theme/DesktopLooks.h"
#include "Views/Theme/Glide.h"

#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

/// Holds a widget that moves after a part of its way: the whole divided by `parts`.
QVariantAnimation& hold(QWidget& widget, int parts) {
  auto& way = *widget.findChild<QVariantAnimation*>();
  EXPECT_EQ(way.state(), QVariantAnimation::Running);
  way.pause();
  way.setCurrentTime(way.duration() / parts);
  return way;
}

class GlideTest : public testing::Test {
 public:
  ~GlideTest() override { Glide::allow(true); }

 protected:
  void show() {
    widget.show();
    ASSERT_TRUE(waitUntilExposed(&widget));
  }

  QWidget widget;
  Glide glide{widget};
};

TEST_F(GlideTest, GetsThereInAMomentAndThenRests) {
  show();
  const auto* way = widget.findChild<QVariantAnimation*>();
  glide.moveTo(100);
  EXPECT_LT(glide.value(), 100);
  EXPECT_GT(way->duration(), 0);
  EXPECT_LE(way->duration(), 300);
  EXPECT_TRUE(waitFor([&] { return way->state() == QVariantAnimation::Stopped; }));
  EXPECT_EQ(glide.value(), 100);
}

TEST_F(GlideTest, TurnsRoundWhereItIs) {
  show();
  glide.moveTo(100);
  hold(widget, 4);
  const double reached = glide.value();
  EXPECT_GT(reached, 0);
  EXPECT_LT(reached, 100);
  glide.moveTo(0);
  EXPECT_DOUBLE_EQ(glide.value(), reached);
  arrive(widget);
  EXPECT_EQ(glide.value(), 0);
}

TEST_F(GlideTest, GoesOnWhenItIsAskedAgain) {
  show();
  glide.moveTo(100);
  const QVariantAnimation& way = hold(widget, 2);
  glide.moveTo(100);
  EXPECT_EQ(way.currentTime(), way.duration() / 2);
  arrive(widget);
  glide.moveTo(100);
  EXPECT_NE(way.state(), QVariantAnimation::Running);
}

TEST_F(GlideTest, IsThereAtOnceWhereItIsNotSeen) {
  glide.moveTo(100);
  EXPECT_EQ(glide.value(), 100);
}

TEST_F(GlideTest, IsThereAtOnceWhereTheDesktopWishesNoMotion) {
  show();
  DesktopLooks looks;
  Appearance still;
  still.reducedMotion = true;
  Appearance without;
  without.animations = false;
  double next = 0;
  for (const Appearance& wish : {still, without}) {
    looks.apply(wish);
    glide.moveTo(next += 100);
    EXPECT_EQ(glide.value(), next);
    looks.apply({});
    glide.moveTo(next += 100);
    EXPECT_LT(glide.value(), next);
    arrive(widget);
  }
}

/// A widget in the middle of its way, which is held there.
QImage underway(QWidget& widget) {
  hold(widget, 4);
  return widget.grab().toImage();
}

template <typename Button>
void expectAWayBetweenOffAndOn(Button& button) {
  button.show();
  ASSERT_TRUE(waitUntilExposed(&button));
  const QImage off = picture(button);
  button.setChecked(true);
  const QImage between = underway(button);
  const QImage on = picture(button);
  EXPECT_GT(differences(off, between), 0);
  EXPECT_GT(differences(between, on), 0);
  EXPECT_GT(differences(off, on), 0);
}

TEST(Motion, TakesASwitchFromOffToOn) {
  Switch toggle;
  expectAWayBetweenOffAndOn(toggle);
}

TEST(Motion, TurnsTheArrowOfWhatUnfolds) {
  Disclosure disclosure(TextRole::callout, "Daily summary");
  expectAWayBetweenOffAndOn(disclosure);
}

/// A checkable button at both ends of its way, as it is drawn in a direction.
template <typename Button>
std::pair<QImage, QImage> offAndOn(Button& button, Qt::LayoutDirection direction) {
  button.setLayoutDirection(direction);
  button.setChecked(false);
  const QImage off = picture(button);
  button.setChecked(true);
  return {off, picture(button)};
}

QImage turnedAround(const QImage& image) { return image.transformed(QTransform::fromScale(-1, 1)); }

TEST(Motion, EndsAtTheOtherSideFromRightToLeft) {
  Switch toggle;
  toggle.resize(toggle.sizeHint());
  const auto [off, on] = offAndOn(toggle, Qt::LeftToRight);
  const auto [mirroredOff, mirroredOn] = offAndOn(toggle, Qt::RightToLeft);
  EXPECT_GT(differences(off, mirroredOff), 0);
  EXPECT_EQ(differences(turnedAround(off), mirroredOff), 0);
  EXPECT_EQ(differences(turnedAround(on), mirroredOn), 0);

  Disclosure arrow(TextRole::callout, "");
  arrow.resize(arrow.sizeHint());
  const auto [closed, open] = offAndOn(arrow, Qt::LeftToRight);
  const auto [mirroredClosed, mirroredOpen] = offAndOn(arrow, Qt::RightToLeft);
  EXPECT_EQ(differences(turnedAround(closed), mirroredClosed), 0);
  EXPECT_EQ(differences(turnedAround(open), mirroredOpen), 0);
}

TEST(Motion, FillsTheRingAtOpeningWhileItsTextIsThere) {
  RingView ring;
  ring.show(60, Tint::green);
  ring.QWidget::show();
  const QImage between = underway(ring);
  EXPECT_EQ(ring.value(), 60);
  const QImage full = picture(ring);
  constexpr QPoint kAtTwentyPercent{95, 38};
  constexpr QPoint kAtFiftyPercent{52, 98};
  EXPECT_TRUE(hasNear(between, kAtTwentyPercent, full.pixelColor(kAtTwentyPercent), 0));
  EXPECT_FALSE(hasNear(between, kAtFiftyPercent, full.pixelColor(kAtFiftyPercent), 0));
  const QRect text(26, 38, 52, 28);
  EXPECT_EQ(between.copy(text), full.copy(text));
  // And at each opening.
  ring.hide();
  ring.QWidget::show();
  const QImage again = underway(ring);
  EXPECT_GT(differences(again, full), 0);
  EXPECT_EQ(picture(ring), full);
}

}  // namespace
}  // namespace lumora::test
