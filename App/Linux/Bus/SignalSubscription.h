// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/ServiceWatch.h"

#include <functional>

namespace lumora {

/// Hears one D-Bus signal for as long as it lives.
class SignalSubscription : public sigc::trackable {
 public:
  struct Source {
    Glib::ustring busName;
    Glib::ustring path;  ///< Empty: of any object.
    Glib::ustring interface;
    Glib::ustring member;
    Glib::ustring firstArgument = {};  ///< Empty: with any.
  };

  SignalSubscription(BusConnection connection, const Source& source,
                     std::function<void(const Glib::VariantContainerBase& arguments)> received);
  SignalSubscription(const SignalSubscription&) = delete;
  SignalSubscription& operator=(const SignalSubscription&) = delete;
  ~SignalSubscription();

 private:
  void onSignal(const BusConnection& connection, const Glib::ustring& sender,
                const Glib::ustring& path, const Glib::ustring& interface,
                const Glib::ustring& member, const Glib::VariantContainerBase& arguments);

  BusConnection connection_;
  std::function<void(const Glib::VariantContainerBase&)> received_;
  guint subscription_;
};

}  // namespace lumora
