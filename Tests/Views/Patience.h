// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTest>
#include <utility>

namespace lumora::test {

/// Long enough for a machine that has ten times as much to do; whoever waits sees at once when it
/// is over.
constexpr int kPatienceMs = 60'000;

/// Runs the main loop until the condition holds; false when it does not in time.
template <typename Condition>
bool waitFor(Condition condition) {
  return QTest::qWaitFor(std::move(condition), kPatienceMs);
}

/// Runs the main loop until the window can be seen; false when it cannot in time.
inline bool waitUntilExposed(QWidget* window) {
  return QTest::qWaitForWindowExposed(window, kPatienceMs);
}

}  // namespace lumora::test
