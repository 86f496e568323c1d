// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace lumora {

/// A member that lets callbacks outlive their owner: what it guards does nothing once it is gone.
/// The guarded function is to be called on the owner's thread.
class Lifetime {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  std::function<void()> guard(std::function<void()> task) const {
    return [alive = std::weak_ptr(token_), task = std::move(task)] {
      if (!alive.expired()) task();
    };
  }

 private:
  std::shared_ptr<const bool> token_ = std::make_shared<const bool>(true);
};

}  // namespace lumora
