// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <functional>

namespace lumora::test {

/// Runs the main loop until the condition holds; false when it does not in time.
bool waitFor(const std::function<bool()>& condition,
             std::chrono::milliseconds patience = std::chrono::seconds(10));

/// Runs the main loop until all that has been sent to us by now was dealt with.
void drainMainLoop();

}  // namespace lumora::test
