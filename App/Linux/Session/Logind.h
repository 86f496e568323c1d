// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/Backoff.h"
#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Bus/SignalSubscription.h"
#include "Platform/SleepEvents.h"

#include <functional>
#include <memory>

namespace lumora {

/// Sleep and wake-up as logind tells them on the system bus. A delay lock is held while the machine
/// is awake and let go once `willSleep` has returned and nobody has a `hold` on it. A lock
/// that is refused is asked for again with a growing pause (`Backoff`). A logind that goes away
/// amid a sleep counts as the wake-up: nobody else would tell it.
class Logind final : public SleepEvents, public sigc::trackable {
 public:
  Logind();

  void observe(std::function<void()> willSleep, std::function<void()> didWake) override;
  std::shared_ptr<const void> hold() override { return lock_; }

 private:
  void onAppeared(const BusConnection& connection);
  void onVanished();
  void onPrepareForSleep(bool starting);
  void takeLock();
  void onLock(const BusReply& reply, const BusConnection& connection);

  std::function<void()> willSleep_;
  std::function<void()> didWake_;
  BusConnection connection_;
  bool asleep_ = false;
  // Holds the lock: its descriptor is closed with the list, once nobody shares it any more.
  Glib::RefPtr<Gio::UnixFDList> lock_;
  Backoff takeLockAgain_{[this] { takeLock(); }};
  std::unique_ptr<SignalSubscription> prepareForSleep_;
  ServiceWatch watch_;
};

}  // namespace lumora
