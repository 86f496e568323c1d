// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

namespace lumora::test {

/// Long enough for a machine that has ten times as much to do; whoever waits sees at once when it
/// is over.
constexpr std::chrono::seconds kPatience{60};

/// Runs the main loop until the condition holds; false when it does not in time.
bool waitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds patience = kPatience);

/// Runs the main loop until all that has been sent to us by now was dealt with.
void drainMainLoop();

}  // namespace lumora::test
