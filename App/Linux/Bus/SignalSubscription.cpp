// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/SignalSubscription.h"

#include <utility>

namespace lumora {

SignalSubscription::SignalSubscription(
    BusConnection connection, const Source& source,
    std::function<void(const Glib::VariantContainerBase& arguments)> received)
    : connection_(std::move(connection)),
      received_(std::move(received)),
      subscription_(connection_->signal_subscribe(
          sigc::mem_fun(*this, &SignalSubscription::onSignal), source.busName, source.interface,
          source.member, source.path, source.firstArgument)) {}

SignalSubscription::~SignalSubscription() { connection_->signal_unsubscribe(subscription_); }

void SignalSubscription::onSignal(const BusConnection& /*connection*/,
                                  const Glib::ustring& /*sender*/, const Glib::ustring& /*path*/,
                                  const Glib::ustring& /*interface*/,
                                  const Glib::ustring& /*member*/,
                                  const Glib::VariantContainerBase& arguments) {
  received_(arguments);
}

}  // namespace lumora
