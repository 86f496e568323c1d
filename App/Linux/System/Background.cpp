// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/Background.h"

#include "Linux/System/MainLoop.h"

#include <system_error>
#include <thread>
#include <utility>

namespace lumora {

void runInBackground(std::function<void()> work, std::function<void()> done) {
  try {
    std::thread([work = std::move(work), done] {
      work();
      MainLoop().runSoon(done);
    }).detach();
  } catch (const std::system_error&) {
    MainLoop().runSoon(std::move(done));
  }
}

}  // namespace lumora
