// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/SignalSubscription.h"
#include "Platform/StatusItem.h"

#include <functional>
#include <string_view>

#include <giomm.h>

namespace lumora {

/// Where the tray has room for text that belongs to this process, named as in /proc/PID/comm.
TextPlace textPlaceOf(std::string_view process);

/// The tray of the session, known by whoever owns org.kde.StatusNotifierWatcher. It may come at any
/// time, go, or be replaced by another without a moment in between.
class TrayHost : public sigc::trackable {
 public:
  /// `ready` runs each time the tray is new, or starts to show items: then they are to register
  /// themselves, again too.
  TrayHost(BusConnection session, std::function<void(TextPlace)> ready);

  /// Tells the tray of an item of ours at this path. Failures are ignored: a tray that cannot be
  /// told now is told when it is ready.
  void registerItem(const Glib::ustring& path);

 private:
  void askTheBus(const char* method, const Glib::ustring& name,
                 void (TrayHost::*answered)(const BusReply&));
  void onOwnerKnown(const BusReply& reply);
  void onOwner(const Glib::ustring& owner);
  void onProcessKnown(const BusReply& reply);

  BusConnection session_;
  std::function<void(TextPlace)> ready_;
  SignalSubscription ownerChanged_;
  SignalSubscription hostRegistered_;
};

}  // namespace lumora
