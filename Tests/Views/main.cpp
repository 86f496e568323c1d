// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Style/Style.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // A screen that nobody sees, and texts as they stand in the source.
  qputenv("LC_ALL", "C.UTF-8");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  lumora::installStyle();
  return RUN_ALL_TESTS();
}
