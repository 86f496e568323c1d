// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/RunLoop.h"

#include <chrono>
#include <functional>

namespace lumora {

/// GLib's default main context. What was given to it runs for as long as the context does: tasks
/// hold their owners weakly.
class MainLoop final : public RunLoop {
 public:
  /// GLib lines whole-second timers of the session up by itself, up to a second late.
  void repeatEvery(std::chrono::seconds interval, std::chrono::seconds tolerance,
                   std::function<void()> task) override;
  void runAfter(std::chrono::milliseconds delay, std::function<void()> task) override;
  void runSoon(std::function<void()> task) override;
};

}  // namespace lumora
