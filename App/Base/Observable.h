// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <utility>

namespace lumora {

/// Keeps a subscriber subscribed for as long as it lives.
using Subscription = std::shared_ptr<const std::function<void()>>;

/// Tells its subscribers, in the order they came, that something happens. Subscribers may come and
/// go while it tells.
class Announcement {
 public:
  /// `subscriber` runs at each announcement for as long as the subscription is held.
  [[nodiscard]] Subscription subscribe(std::function<void()> subscriber) {
    auto subscription = std::make_shared<const std::function<void()>>(std::move(subscriber));
    subscribers_.push_back(subscription);
    return subscription;
  }

  /// Runs the subscribers that there are when it begins.
  void announce() {
    subscribers_.remove_if([](const auto& subscriber) { return subscriber.expired(); });
    const auto present = subscribers_;
    for (const auto& subscriber : present) {
      if (const Subscription held = subscriber.lock()) (*held)();
    }
  }

 private:
  std::list<std::weak_ptr<const std::function<void()>>> subscribers_;
};

/// A value that announces each change before it happens: a subscriber that needs the new value
/// reads it on a later turn of the loop.
template <typename T>
class Observable {
 public:
  explicit Observable(T value) : value_(std::move(value)) {}

  const T& get() const { return value_; }
  const T& operator*() const { return value_; }
  const T* operator->() const { return &value_; }

  /// Announces the change, also to an equal value, and then makes it.
  void set(T value) {
    willChange_.announce();
    value_ = std::move(value);
  }

  /// `willChange` runs before each change for as long as the subscription is held.
  [[nodiscard]] Subscription subscribe(std::function<void()> willChange) {
    return willChange_.subscribe(std::move(willChange));
  }

 private:
  T value_;
  Announcement willChange_;
};

}  // namespace lumora
