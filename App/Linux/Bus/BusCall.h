// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/ServiceWatch.h"
#include "Linux/Bus/Variants.h"

#include <chrono>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include <giomm.h>

namespace lumora {

/// One interface of an object of a service on a bus.
struct RemoteInterface {
  const char* service = nullptr;  ///< Bus name.
  const char* path = nullptr;
  const char* name = nullptr;
};

/// The message bus itself.
inline constexpr RemoteInterface kMessageBus{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                             "org.freedesktop.DBus"};

/// D-Bus's own.
inline constexpr std::chrono::milliseconds kDefaultTimeout{25'000};
/// A service that hangs is heard when it goes on.
inline constexpr std::chrono::milliseconds kNoTimeout = std::chrono::milliseconds::max();

/// One call of a method. It is sent at once; what `remote` and `method` point to may end then.
struct BusCall {
  RemoteInterface remote = {};
  const char* method = nullptr;
  Glib::VariantContainerBase arguments = {};  ///< A tuple, see `busArguments`.
  std::chrono::milliseconds timeout = kDefaultTimeout;
  ServiceWatch::Start start = ServiceWatch::Start::onDemand;
  Glib::RefPtr<Gio::Cancellable> cancellable = {};
};

/// The arguments of a call with their D-Bus types: `busArguments<Glib::ustring, bool>("a", true)`.
template <typename... T>
Glib::VariantContainerBase busArguments(T... values) {
  return Glib::Variant<std::tuple<T...>>::create(std::tuple<T...>(std::move(values)...));
}

/// What came of a call: values, or an error of the service, of the bus or of the timeout.
class BusReply {
 public:
  static BusReply of(Glib::VariantContainerBase values,
                     Glib::RefPtr<Gio::UnixFDList> descriptors = {}) {
    return {std::move(values), std::move(descriptors), {}};
  }
  static BusReply of(const Glib::Error& error);

  /// Whether it was answered, and not by an error.
  bool succeeded() const { return errorName_.empty(); }

  /// The value at `index`; absent where it is missing or of another type, as after an error.
  template <typename T>
  std::optional<T> value(gsize index = 0) const {
    const Glib::VariantBase found = succeeded() ? argument(values_, index) : Glib::VariantBase();
    if (found.gobj() == nullptr || !found.is_of_type(Glib::Variant<T>::variant_type())) {
      return std::nullopt;
    }
    return Glib::VariantBase::cast_dynamic<Glib::Variant<T>>(found).get();
  }

  /// All values; empty after an error.
  const Glib::VariantContainerBase& values() const { return values_; }

  /// What came with the values; null where nothing did.
  const Glib::RefPtr<Gio::UnixFDList>& descriptors() const { return descriptors_; }

  /// Such as "org.freedesktop.DBus.Error.ServiceUnknown"; empty when it succeeded.
  const std::string& errorName() const { return errorName_; }

 private:
  BusReply(Glib::VariantContainerBase values, Glib::RefPtr<Gio::UnixFDList> descriptors,
           std::string errorName)
      : values_(std::move(values)),
        descriptors_(std::move(descriptors)),
        errorName_(std::move(errorName)) {}

  Glib::VariantContainerBase values_;
  Glib::RefPtr<Gio::UnixFDList> descriptors_;
  std::string errorName_;
};

/// Calls a method. `answered` runs later on the main loop, once; a slot of a `sigc::trackable` does
/// not run after that one's end. Without a slot no answer is asked for.
void callMethod(const BusConnection& connection, const BusCall& call,
                const sigc::slot<void(const BusReply&)>& answered = {});

/// Calls a method and waits for its answer, at most for the timeout.
BusReply callMethodAndWait(const BusConnection& connection, const BusCall& call);

}  // namespace lumora
