// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace lumora {

/// Runs `work` on a thread of its own, for what may block, and then `done` on the main thread.
/// There is no time limit and no way to cancel: `work` must own all that it uses, and `done` hold
/// its owner weakly. Where no thread can be had only `done` runs.
void runInBackground(std::function<void()> work, std::function<void()> done);

}  // namespace lumora
