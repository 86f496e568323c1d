// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppDelegate.h"
#include "ApplicationId.h"
#include "Platform/Linux/Memory.h"
#include "Platform/Linux/Variants.h"

#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>

#include <giomm.h>
#include <glib-unix.h>

namespace {

class LumoraApp;

/// The one that a toolkit ends together with its display.
LumoraApp* atDisplay = nullptr;

/// The program: one for each session, without a window of its own.
class LumoraApp : public Gio::Application {
 public:
  LumoraApp() : Gio::Application(lumora::kApplicationId) {}

 private:
  void on_startup() override {
    Gio::Application::on_startup();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) g_unix_signal_add(signal, onSignal, this);
    hold();
    add_action("settings", [this] { delegate_->openSettings(); });
    add_action("quit", [this] { delegate_->quit(); });
    delegate_.emplace(get_dbus_connection(), [this] { quit(); });
    atDisplay = this;
    std::atexit(onExit);
    delegate_->applicationDidFinishLaunching();
  }

  /// Started, for the first time or again.
  void on_activate() override {
    // The first start activates too; it only takes its place in the background. Where the bus
    // starts it because somebody wants it, that one's wish comes after.
    if (started_) delegate_->togglePopover(std::nullopt);
    started_ = true;
  }

  /// What a desktop hands over to the program it starts or asks for something.
  void before_emit_vfunc(const Glib::VariantBase& platformData) override {
    Gio::Application::before_emit_vfunc(platformData);
    const auto token = lumora::valueUnder<Glib::ustring>("activation-token", platformData);
    if (delegate_ && !token.empty()) delegate_->takeActivationToken(token);
  }

  void on_shutdown() override {
    atDisplay = nullptr;
    delegate_->applicationWillTerminate();
    delegate_.reset();
    Gio::Application::on_shutdown();
  }

  static gboolean onSignal(gpointer app) {
    static_cast<LumoraApp*>(app)->delegate_->quit();
    return G_SOURCE_CONTINUE;
  }

  /// Qt leaves the process by itself when the display is gone, as it is at the end of a session.
  static void onExit() {
    if (atDisplay == nullptr) return;
    atDisplay->delegate_->applicationWillTerminate();
    std::_Exit(0);
  }

  std::optional<lumora::AppDelegate> delegate_;
  bool started_ = false;
};

}  // namespace

int main() {
  lumora::giveLargeBlocksBack();
  // A write beyond a limit of the system fails; it does not end the program.
  std::signal(SIGXFSZ, SIG_IGN);
  Gio::init();
  const auto app = Glib::make_refptr_for_instance(new LumoraApp);
  // No command line: whatever stands there is not ours.
  return app->run(0, nullptr);
}
