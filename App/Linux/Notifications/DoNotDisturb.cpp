// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Notifications/DoNotDisturb.h"

#include <array>

namespace lumora {
namespace {

/// A property or setting by which a desktop says that nothing is to disturb, and what gives it.
struct Switch {
  RemoteInterface remote = {};
  const char* method = nullptr;
  const char* owner = nullptr;
  const char* name = nullptr;
};

constexpr std::array kSwitches{
    Switch{{"org.freedesktop.Notifications", "/org/freedesktop/Notifications",
            "org.freedesktop.DBus.Properties"},
           "Get",
           "org.freedesktop.Notifications",
           "Inhibited"},
    Switch{{"org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf"},
           "GetProperty",
           "xfce4-notifyd",
           "/do-not-disturb"}};

void ask(const BusConnection& session, std::size_t index, const sigc::slot<void(bool)>& answer) {
  if (index == kSwitches.size()) return answer(false);
  const Switch& asked = kSwitches.at(index);
  callMethod(session,
             {.remote = asked.remote,
              .method = asked.method,
              .arguments = busArguments<Glib::ustring, Glib::ustring>(asked.owner, asked.name),
              .start = ServiceWatch::Start::ifRunning},
             [session, index, answer](const BusReply& reply) {
               const auto told = reply.value<Glib::VariantBase>();
               if (told && valueOr<bool>(*told)) return answer(true);
               ask(session, index + 1, answer);
             });
}

}  // namespace

void askNotToDisturb(const BusConnection& session, const sigc::slot<void(bool)>& answer) {
  ask(session, 0, answer);
}

}  // namespace lumora
