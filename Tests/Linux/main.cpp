// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include <giomm.h>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  Gio::init();
  // A warning of a library is a mistake of ours.
  g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING));
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
