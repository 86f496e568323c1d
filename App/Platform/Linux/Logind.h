// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/ServiceWatch.h"
#include "Platform/Linux/SignalSubscription.h"
#include "Platform/SleepEvents.h"

#include <functional>
#include <memory>

namespace lumora {

/// Sleep and wake-up as logind tells them on the system bus. A delay lock is held while the machine
/// is awake and let go once `willSleep` has returned: until then the machine does not sleep.
class Logind final : public SleepEvents, public sigc::trackable {
 public:
  Logind();

  void observe(std::function<void()> willSleep, std::function<void()> didWake) override;

 private:
  void onAppeared(const BusConnection& connection);
  void onVanished();
  void onPrepareForSleep(bool starting);
  void takeLock();
  void onLock(const Glib::RefPtr<Gio::AsyncResult>& result);

  std::function<void()> willSleep_;
  std::function<void()> didWake_;
  BusConnection connection_;
  bool asleep_ = false;
  // Holds the lock: its descriptor is closed with the list.
  Glib::RefPtr<Gio::UnixFDList> lock_;
  std::unique_ptr<SignalSubscription> prepareForSleep_;
  ServiceWatch watch_;
};

}  // namespace lumora
