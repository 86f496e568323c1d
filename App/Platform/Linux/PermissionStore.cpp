// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/PermissionStore.h"

#include "Platform/Linux/Variants.h"

#include <map>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace lumora {
namespace {

using Permissions = std::map<Glib::ustring, std::vector<Glib::ustring>>;

constexpr const char* kName = "org.freedesktop.impl.portal.PermissionStore";
constexpr const char* kPath = "/org/freedesktop/impl/portal/PermissionStore";
constexpr const char* kNotFound = "org.freedesktop.portal.Error.NotFound";
constexpr const char* kTable = "notifications";
constexpr const char* kEntry = "notification";
constexpr int kPatience = 2000;  // milliseconds

AuthorizationStatus statusOf(const Permissions& permissions, const std::string& applicationId) {
  const auto found = permissions.find(applicationId);
  if (found == permissions.end()) return AuthorizationStatus::notDetermined;
  if (found->second == std::vector<Glib::ustring>{"yes"}) return AuthorizationStatus::authorized;
  if (found->second == std::vector<Glib::ustring>{"no"}) return AuthorizationStatus::denied;
  return AuthorizationStatus::notDetermined;
}

/// giomm's own function for the name leaks it.
bool isRemoteError(const Glib::Error& error, std::string_view name) {
  const auto told = Glib::make_unique_ptr_gfree(g_dbus_error_get_remote_error(error.gobj()));
  return told && told.get() == name;
}

}  // namespace

PermissionStore::PermissionStore(BusConnection session, std::string applicationId)
    : session_(std::move(session)), applicationId_(std::move(applicationId)) {}

void PermissionStore::status(const Answer& answer) {
  if (!session_) return answer(AuthorizationStatus::authorized);
  session_->call(kPath, kName, "Lookup",
                 Glib::Variant<std::tuple<Glib::ustring, Glib::ustring>>::create({kTable, kEntry}),
                 sigc::bind(sigc::mem_fun(*this, &PermissionStore::onLookup), answer), kName,
                 kPatience);
}

void PermissionStore::onLookup(const Glib::RefPtr<Gio::AsyncResult>& result, const Answer& answer) {
  try {
    const auto reply = session_->call_finish(result);
    answer(statusOf(argument<Permissions>(reply, 0), applicationId_));
  } catch (const Glib::Error& error) {
    // The store has no such entry before the first program is recorded.
    answer(isRemoteError(error, kNotFound) ? AuthorizationStatus::notDetermined
                                           : AuthorizationStatus::authorized);
  }
}

void PermissionStore::allow() {
  if (!session_) return;
  using Arguments =
      std::tuple<Glib::ustring, bool, Glib::ustring, Glib::ustring, std::vector<Glib::ustring>>;
  constexpr bool kCreateTable = true;
  session_->call(
      kPath, kName, "SetPermission",
      Glib::Variant<Arguments>::create({kTable, kCreateTable, kEntry, applicationId_, {"yes"}}), {},
      kName, kPatience);
}

}  // namespace lumora
