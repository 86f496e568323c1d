// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/EndSignals.h"

#include <array>
#include <csignal>
#include <utility>

#include <glib-unix.h>
#include <poll.h>
#include <sys/eventfd.h>

namespace lumora {
namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};

// Readable while one has come; a handler may know nothing but a global.
int came = -1;

void onSignal(int /*signal*/) { eventfd_write(came, 1); }

bool isReadable(int descriptor, std::chrono::milliseconds patience) {
  pollfd asked{.fd = descriptor, .events = POLLIN, .revents = 0};
  // Interrupted by a signal, it came.
  return poll(&asked, 1, static_cast<int>(patience.count())) != 0;
}

}  // namespace

EndSignals::EndSignals(std::function<void()> end) : end_(std::move(end)) {
  came = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  for (const int signal : kSignals) std::signal(signal, onSignal);
  const auto call = [](int descriptor, GIOCondition /*condition*/, gpointer self) -> gboolean {
    eventfd_t count = 0;
    eventfd_read(descriptor, &count);
    static_cast<EndSignals*>(self)->end_();
    return G_SOURCE_CONTINUE;
  };
  g_unix_fd_add(came, G_IO_IN, call, this);
}

bool EndSignals::lastCame(std::chrono::milliseconds patience) const {
  const bool one = isReadable(came, patience);
  for (const int signal : kSignals) std::signal(signal, SIG_DFL);
  return one || isReadable(came, {});
}

}  // namespace lumora
