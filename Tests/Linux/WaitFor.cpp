// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/WaitFor.h"

#include <glibmm.h>

namespace lumora::test {

bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds patience) {
  const auto context = Glib::MainContext::get_default();
  const auto deadline = std::chrono::steady_clock::now() + patience;
  // Conditions may depend on other processes: look again now and then, event or not.
  auto ticks = Glib::signal_timeout().connect([] { return true; }, 5);
  bool holds = condition();
  while (!holds && std::chrono::steady_clock::now() < deadline) {
    context->iteration(true);
    holds = condition();
  }
  ticks.disconnect();
  return holds;
}

void drainMainLoop() {
  const auto context = Glib::MainContext::get_default();
  while (context->iteration(false)) {
  }
}

}  // namespace lumora::test
