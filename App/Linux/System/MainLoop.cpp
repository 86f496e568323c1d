// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/MainLoop.h"

#include <memory>
#include <utility>

#include <glib.h>

namespace lumora {
namespace {

using Task = std::function<void()>;

// GLib's own functions, because glibmm's are not for other threads.
template <gboolean again>
gboolean run(gpointer task) {
  (*static_cast<Task*>(task))();
  return again;
}

gpointer keep(Task task) { return std::make_unique<Task>(std::move(task)).release(); }

void drop(gpointer task) { std::unique_ptr<Task>(static_cast<Task*>(task)); }

}  // namespace

void MainLoop::repeatEvery(std::chrono::seconds interval, std::chrono::seconds /*tolerance*/,
                           std::function<void()> task) {
  g_timeout_add_seconds_full(G_PRIORITY_DEFAULT, static_cast<guint>(interval.count()),
                             run<G_SOURCE_CONTINUE>, keep(std::move(task)), drop);
}

void MainLoop::runAfter(std::chrono::milliseconds delay, std::function<void()> task) {
  g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(delay.count()), run<G_SOURCE_REMOVE>,
                     keep(std::move(task)), drop);
}

void MainLoop::runSoon(std::function<void()> task) {
  g_idle_add_full(G_PRIORITY_DEFAULT, run<G_SOURCE_REMOVE>, keep(std::move(task)), drop);
}

}  // namespace lumora
