// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Pixels.h"
#include "Views/WindowIcon.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

TEST(WindowIcon, IsLumorasInTheSizesThatPanelsTake) {
  const QIcon icon = windowIcon();
  for (const int side : {16, 24, 32, 48, 64}) {
    ASSERT_TRUE(icon.availableSizes().contains(QSize(side, side))) << side;
    const QImage image = icon.pixmap(side).toImage();
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0) << side;
    // The white ring at three o'clock, the ground beside it, the battery in the middle.
    EXPECT_TRUE(hasNear(image, QPoint(102 * side / 128, side / 2), QColor(0xee, 0xf6, 0xf5)))
        << side;
    EXPECT_TRUE(hasNear(image, QPoint(side / 2, 13 * side / 128), QColor(0x2d, 0xb0, 0x8a), 2))
        << side;
    if (side < 32) continue;  // Too small for a plain spot.
    EXPECT_TRUE(hasNear(image, QPoint(54 * side / 128, 80 * side / 128), Qt::white)) << side;
  }
}

}  // namespace
}  // namespace lumora::test
