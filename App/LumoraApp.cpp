// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppDelegate.h"
#include "ApplicationId.h"
#include "Linux/Bus/Variants.h"
#include "Linux/System/BaseDirectories.h"
#include "Linux/System/EndSignals.h"
#include "Linux/System/FileWriter.h"
#include "Linux/System/LocalFiles.h"
#include "Linux/System/MainBundle.h"
#include "Linux/System/MainLoop.h"
#include "Linux/System/Memory.h"

#include <atomic>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>

#include <giomm.h>
#include <linux/close_range.h>
#include <unistd.h>

namespace {

class LumoraApp;

// By then a session manager's patience is over, too.
constexpr std::chrono::seconds kPatienceAtEnd{60};

// A session that ends takes its compositor, its bus and its programs away in any order.
constexpr std::chrono::milliseconds kSessionsEnd{1000};

/// The running program, for when the display is lost: Qt calls exit() on X11 then, and GTK, where
/// Qt takes its looks from that, _exit(); on Wayland both call _exit(). It comes on the main thread
/// in the middle of anything, and on one of Qt's own.
LumoraApp* running = nullptr;

/// The program: one for each session, without a window of its own.
class LumoraApp : public Gio::Application {
 public:
  LumoraApp() : Gio::Application(lumora::kApplicationId) {}

  /// Runs until the end, which no disk holds up: the item is gone from the tray by then, and the
  /// process stays until its files are written.
  int runAndFinish() {
    // No command line: whatever stands there is not ours.
    const int code = run(0, nullptr);
    // It may have been the bus that ended it.
    if (session_) g_dbus_connection_close_sync(session_->gobj(), nullptr, nullptr);
    if (!files_.finish(kPatienceAtEnd)) std::_Exit(code);
    running = nullptr;
    return code;
  }

  bool isThisProcess() const { return getpid() == process_; }

  /// The display is lost.
  [[noreturn]] void loseDisplay() {
    if (gettid() != process_) {
      // At the end the main thread waits for this one.
      loop_.runSoon([this] { loseDisplay(); });
      isEnding_.wait(false);
    }
    leaveDisplay(delegate_ && delegate_->displayMayComeBack());
  }

 private:
  /// Saves. Where the display may come back, the program starts anew in its process, without one,
  /// for reminders need none; unless the session ends. Also on another thread while the display
  /// keeps the main one, which then touches nothing.
  [[noreturn]] void leaveDisplay(bool mayComeBack) {
    save();
    const bool isAsked = isQuitting_ || end_->lastCame(kSessionsEnd);
    if (mayComeBack && !isAsked && session_ && !session_->is_closed()) {
      close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
      execl(executable_.c_str(), executable_.c_str(), nullptr);
    }
    std::_Exit(0);
  }

  void on_startup() override {
    Gio::Application::on_startup();
    end_.emplace([this] { delegate_->quit(); });
    hold();
    add_action("settings", [this] { delegate_->openSettings(); });
    add_action("quit", [this] { delegate_->quit(); });
    session_ = get_dbus_connection();
    delegate_.emplace(
        session_, files_,
        [this] {
          isQuitting_ = true;
          quit();
        },
        [this] { leaveDisplay(true); });
    running = this;
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
    isQuitting_ = true;
    delegate_->applicationWillTerminate();
    isEnding_ = true;
    isEnding_.notify_all();
    delegate_.reset();
    Gio::Application::on_shutdown();
  }

  static void onExit() {
    if (running != nullptr) running->leaveDisplay(false);
  }

  /// Where the loop no longer runs.
  void save() {
    if (!isEnding_) delegate_->applicationWillTerminate();
    files_.finish(kPatienceAtEnd);
  }

  const pid_t process_ = getpid();
  // The link to it says so only until an upgrade replaces it.
  const std::filesystem::path executable_ = lumora::mainBundle().location / "lumora";
  std::optional<lumora::EndSignals> end_;

  lumora::LocalFiles disk_;
  lumora::MainLoop loop_;
  lumora::FileWriter files_{disk_, loop_};
  lumora::BusConnection session_;
  std::optional<lumora::AppDelegate> delegate_;
  bool started_ = false;
  std::atomic<bool> isQuitting_ = false;
  std::atomic<bool> isEnding_ = false;  // Then all that is to be written is on its way.
};

}  // namespace

/// In the place of the C library's, which libraries call. Not for a child that is about to start
/// another program.
extern "C" void _exit(int status) {
  if (running != nullptr && running->isThisProcess()) running->loseDisplay();
  std::_Exit(status);
}

int main() {
  lumora::giveLargeBlocksBack();
  lumora::ignoreRelativeBaseDirectories();
  // A write beyond a limit of the system fails; it does not end the program.
  std::signal(SIGXFSZ, SIG_IGN);
  // Of the locale what texts take, and the C library's alone: the C++ library's would be another
  // account of the same, and GLib complains of one that the system does not have.
  Glib::set_init_to_users_preferred_locale(false);
  for (const int category : {LC_CTYPE, LC_MESSAGES, LC_NUMERIC, LC_TIME}) {
    std::setlocale(category, "");
  }
  Gio::init();
  return Glib::make_refptr_for_instance(new LumoraApp)->runAndFinish();
}
