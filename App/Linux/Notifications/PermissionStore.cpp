// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Notifications/PermissionStore.h"

#include <map>
#include <utility>
#include <vector>

namespace lumora {
namespace {

using Permissions = std::map<Glib::ustring, std::vector<Glib::ustring>>;

constexpr RemoteInterface kStore{"org.freedesktop.impl.portal.PermissionStore",
                                 "/org/freedesktop/impl/portal/PermissionStore",
                                 "org.freedesktop.impl.portal.PermissionStore"};
constexpr const char* kNotFound = "org.freedesktop.portal.Error.NotFound";
constexpr const char* kTable = "notifications";
constexpr const char* kEntry = "notification";
constexpr std::chrono::seconds kTimeout{2};

AuthorizationStatus statusOf(const Permissions& permissions, const std::string& applicationId) {
  const auto found = permissions.find(applicationId);
  if (found == permissions.end()) return AuthorizationStatus::notDetermined;
  if (found->second == std::vector<Glib::ustring>{"yes"}) return AuthorizationStatus::authorized;
  if (found->second == std::vector<Glib::ustring>{"no"}) return AuthorizationStatus::denied;
  return AuthorizationStatus::notDetermined;
}

}  // namespace

PermissionStore::PermissionStore(BusConnection session, std::string applicationId)
    : session_(std::move(session)), applicationId_(std::move(applicationId)) {}

void PermissionStore::status(const Answer& answer) {
  if (!session_) return answer(AuthorizationStatus::authorized);
  callMethod(session_,
             {.remote = kStore,
              .method = "Lookup",
              .arguments = busArguments<Glib::ustring, Glib::ustring>(kTable, kEntry),
              .timeout = kTimeout},
             sigc::bind(sigc::mem_fun(*this, &PermissionStore::onLookup), answer));
}

void PermissionStore::onLookup(const BusReply& reply, const Answer& answer) {
  if (reply.succeeded()) {
    return answer(statusOf(reply.value<Permissions>().value_or(Permissions{}), applicationId_));
  }
  // The store has no such entry before the first program is recorded.
  answer(reply.errorName() == kNotFound ? AuthorizationStatus::notDetermined
                                        : AuthorizationStatus::authorized);
}

void PermissionStore::allow() {
  if (!session_) return;
  using Permission = std::vector<Glib::ustring>;
  constexpr bool kCreateTable = true;
  callMethod(
      session_,
      {.remote = kStore,
       .method = "SetPermission",
       .arguments = busArguments<Glib::ustring, bool, Glib::ustring, Glib::ustring, Permission>(
           kTable, kCreateTable, kEntry, applicationId_, {"yes"}),
       .timeout = kTimeout});
}

}  // namespace lumora
