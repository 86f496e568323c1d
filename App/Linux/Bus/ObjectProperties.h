// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/BusCall.h"
#include "Linux/Bus/SignalSubscription.h"
#include "Linux/Bus/Variants.h"

#include <functional>

namespace lumora {

/// Follows the properties of one interface of a D-Bus object for as long as it lives: all of them
/// once they have been fetched, then each change. Fetching has no timeout: a service that
/// hangs is heard when it goes on.
class ObjectProperties : public sigc::trackable {
 public:
  /// Takes values by name, see `valueUnder`.
  using Callback = std::function<void(const Glib::VariantBase& properties)>;

  /// `fetched` runs once, without properties when the object could not tell them.
  ObjectProperties(const BusConnection& connection, const Glib::ustring& busName,
                   const Glib::ustring& path, const Glib::ustring& interface, Callback fetched,
                   Callback changed);

 private:
  void onFetched(const BusReply& reply);

  Callback fetched_;
  SignalSubscription changes_;
};

}  // namespace lumora
