// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/Logind.h"

#include "Platform/Linux/Variants.h"

#include <utility>

namespace lumora {
namespace {

constexpr const char* kName = "org.freedesktop.login1";
constexpr const char* kPath = "/org/freedesktop/login1";
constexpr const char* kInterface = "org.freedesktop.login1.Manager";

}  // namespace

Logind::Logind()
    : watch_(
          Gio::DBus::BusType::SYSTEM, kName, ServiceWatch::Start::ifRunning,
          [this](const BusConnection& connection) { onAppeared(connection); },
          [this] { onVanished(); }) {}

void Logind::observe(std::function<void()> willSleep, std::function<void()> didWake) {
  willSleep_ = std::move(willSleep);
  didWake_ = std::move(didWake);
}

void Logind::onAppeared(const BusConnection& connection) {
  connection_ = connection;
  asleep_ = false;
  prepareForSleep_ = std::make_unique<SignalSubscription>(
      connection, SignalSubscription::Source{kName, kPath, kInterface, "PrepareForSleep"},
      [this](const Glib::VariantContainerBase& arguments) {
        onPrepareForSleep(argument<bool>(arguments, 0));
      });
  takeLock();
}

void Logind::onVanished() {
  prepareForSleep_.reset();
  lock_.reset();
}

void Logind::onPrepareForSleep(bool starting) {
  asleep_ = starting;
  if (starting) {
    if (willSleep_) willSleep_();
    lock_.reset();
  } else {
    takeLock();
    if (didWake_) didWake_();
  }
}

void Logind::takeLock() {
  const auto parameters =
      Glib::Variant<std::tuple<Glib::ustring, Glib::ustring, Glib::ustring, Glib::ustring>>::create(
          {"sleep", "Lumora", "Save the battery history", "delay"});
  connection_->call(kPath, kInterface, "Inhibit", parameters, sigc::mem_fun(*this, &Logind::onLock),
                    kName);
}

void Logind::onLock(const Glib::RefPtr<Gio::AsyncResult>& result) {
  try {
    Glib::RefPtr<Gio::UnixFDList> lock;
    connection_->call_finish(result, lock);
    if (!asleep_) lock_ = lock;
  } catch (const Glib::Error&) {
    // Without the lock the history is saved all the same, if the machine leaves time for it.
  }
}

}  // namespace lumora
