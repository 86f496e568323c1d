// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <utility>

namespace lumora {

/// A member that lets callbacks outlive their owner: what it guards does nothing once it is gone,
/// and answers with its type's default. The guarded function is to be called on the owner's thread.
class Lifetime {
 public:
  Lifetime() = default;
  Lifetime(const Lifetime&) = delete;
  Lifetime& operator=(const Lifetime&) = delete;

  /// Takes the same arguments as `task`, and answers what it answers; once the owner is gone, with
  /// a value of that type made from nothing.
  template <typename Task>
  auto guard(Task task) const {
    return [alive = std::weak_ptr(token_), task = std::move(task)](auto&&... arguments) {
      using Answer = decltype(task(std::forward<decltype(arguments)>(arguments)...));
      return alive.expired() ? Answer() : task(std::forward<decltype(arguments)>(arguments)...);
    };
  }

 private:
  std::shared_ptr<const bool> token_ = std::make_shared<const bool>(true);
};

}  // namespace lumora
