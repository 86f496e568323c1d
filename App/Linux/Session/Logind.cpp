// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Session/Logind.h"

#include "Base/Texts.h"
#include "Linux/Bus/BusCall.h"

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
  takeLockAgain_.reset();
  connection_.reset();
  if (std::exchange(asleep_, false) && didWake_) didWake_();
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
  callMethod(connection_,
             {.remote = {kName, kPath, kInterface},
              .method = "Inhibit",
              .arguments = busArguments<Glib::ustring, Glib::ustring, Glib::ustring, Glib::ustring>(
                  // TRANSLATORS: Why the computer waits a moment before it goes to sleep.
                  "sleep", "Lumora", translated("Save the battery history"), "delay")},
             sigc::bind(sigc::mem_fun(*this, &Logind::onLock), connection_));
}

void Logind::onLock(const BusReply& reply, const BusConnection& connection) {
  if (connection_ != connection) return;
  // Without the lock the history is saved all the same, if the machine leaves time for it.
  if (!reply.succeeded()) return takeLockAgain_.failed();
  takeLockAgain_.reset();
  if (!asleep_) lock_ = reply.descriptors();
}

}  // namespace lumora
