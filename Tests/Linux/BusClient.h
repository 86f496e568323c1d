// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/SignalSubscription.h"
#include "Linux/Bus/Variants.h"

#include <optional>
#include <string>
#include <vector>

namespace lumora::test {

/// Another program on the session bus: it calls objects of the test's own process while their main
/// loop runs.
class BusClient {
 public:
  /// What a call came back with: values, or the name of an error.
  struct Reply {
    std::optional<Glib::VariantContainerBase> values;
    std::string error;

    template <typename T>
    T get(gsize index = 0) const {
      return values ? argument<T>(*values, index) : T{};
    }
  };

  BusClient();

  Reply call(const Glib::ustring& name, const Glib::ustring& path, const Glib::ustring& interface,
             const Glib::ustring& method, const Glib::VariantContainerBase& arguments = {}) const;

  Properties properties(const Glib::ustring& name, const Glib::ustring& path,
                        const Glib::ustring& interface) const;

  /// Notes the name of every signal from this path.
  void hear(const Glib::ustring& path);

  /// The names noted since the last time, of all that was sent before by `sender`.
  std::vector<std::string> heard(const Glib::ustring& sender);

  const BusConnection& connection() const { return connection_; }

 private:
  BusConnection connection_;
  std::vector<std::string> heard_;
  guint hearing_ = 0;
};

/// The arguments of a call; not for variants in variants.
template <typename... T>
Glib::VariantContainerBase arguments(const T&... values) {
  return Glib::VariantContainerBase::create_tuple(
      std::vector<Glib::VariantBase>{Glib::Variant<T>::create(values)...});
}

inline constexpr const char* kInvalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";
inline constexpr const char* kUnknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";

}  // namespace lumora::test
