// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AppDelegate.h"

#include "ApplicationId.h"
#include "Content/StatusItem.h"
#include "Linux/System/MainBundle.h"
#include "Linux/System/Memory.h"
#include "TrayIcon/TrayIcon.h"

#include <utility>

namespace lumora {
namespace {

constexpr std::chrono::milliseconds kPatienceAtLaunch{2000};
// Timeout after which start-up, or the last use of a window, is over and memory is given back.
constexpr std::chrono::milliseconds kSettled{10'000};
// A machine may be as busy as that, but not three times in a row.
constexpr std::chrono::milliseconds kDisplayTick{5000};
// None is a tenth as long, and with more than 128 KiB in a variable no program can be started.
constexpr std::size_t kLongestToken = 4096;

std::filesystem::path settingsFolder() {
  return std::filesystem::path(Glib::get_user_config_dir()) / "Lumora";
}

}  // namespace

AppDelegate::AppDelegate(BusConnection session, Files& files, std::function<void()> quit,
                         std::function<void()> displayHung)
    : session_(std::move(session)),
      quit_(std::move(quit)),
      displayHung_(std::move(displayHung)),
      files_(files),
      bundle_(mainBundle()),
      defaults_(files_, settingsFolder() / "defaults.json"),
      loginItem_(bundle_.location / "lumora", kApplicationId,
                 AutostartEntry::configurationFolders()),
      soundPlayer_(bundle_.location / "lumora_sound", bundle_.location / "Resources" / "sounds"),
      permissions_(session_, kApplicationId),
      notifications_(session_,
                     {.applicationId = kApplicationId,
                      .sounds = bundle_.location / "Resources" / "sounds",
                      .icon = bundle_.location / "Resources" / "icons" / "org.lumora.Lumora.svg"},
                     permissions_, soundPlayer_),
      model_({.clock = clock_,
              .runLoop = runLoop_,
              .powerSources = powerSources_,
              .lowPowerMode = lowPowerMode_,
              .sleepEvents = sleepEvents_,
              .notificationCentre = notifications_,
              .bundle = bundle_,
              .files = files_,
              .defaults = defaults_,
              .applicationSupport = Glib::get_user_data_dir()}),
      iconModule_(bundle_.location / "lumora_icon.so"),
      viewsLoader_(bundle_.location / "lumora_views.so", *this) {
  useCatalogues(bundle_.location / "Resources" / "locale");
}

void AppDelegate::applicationDidFinishLaunching() {
  defaults_.registerDefaults(Prefs::defaults());
  makeStatusItem();
  powerSources_.whenReady(kPatienceAtLaunch, [this] {
    model_.start();
    updateStatusItem();
  });
  giveBackOnceSettled();
}

/// Returns unused memory to the system once, ten seconds after the start and after each use of the
/// windows: both map code and fill buffers that the resident program does not use.
void AppDelegate::giveBackOnceSettled() {
  if (std::exchange(givingBack_, true)) return;
  runLoop_.runAfter(kSettled, lifetime_.guard([this] {
    givingBack_ = false;
    if (Views* loaded = viewsLoader_.loaded()) {
      if (loaded->anyShown()) return giveBackOnceSettled();
      loaded->rest();
    }
    displayWatch_.reset();
    giveBackMemory();
  }));
}

void AppDelegate::makeStatusItem() {
  statusItem_.emplace(
      session_, runLoop_,
      StatusNotifierItem::Identity{
          .id = "lumora", .title = "Lumora", .iconThemePath = bundle_.location / "Resources/icons"},
      StatusNotifierItem::Callbacks{
          .activated = [this](std::optional<ScreenPoint> click) { togglePopover(click); },
          .activationToken = takeActivationToken,
          .menu = [this] { return menu(); },
          .face = [this](TextPlace place) { return statusItemFace(place); },
          .draw = [this](const DrawnIcon& icon) { return draw(icon); }});
  // A change of the state is announced before it happens.
  const auto update = [this] { runLoop_.runSoon(lifetime_.guard([this] { updateStatusItem(); })); };
  subscriptions_ = {model_.state().subscribe(update), model_.looking().subscribe(update),
                    defaults_.subscribe(update)};
}

void AppDelegate::updateStatusItem() { statusItem_->show(); }

StatusItemFace AppDelegate::statusItemFace(TextPlace place) {
  const auto hasImage = [this](const std::string& name) {
    std::error_code error;
    return std::filesystem::exists(bundle_.location / "Resources/icons" / (iconName(name) + ".svg"),
                                   error);
  };
  return lumora::statusItemFace(*model_.state(), *model_.looking(), Prefs::current(defaults_),
                                place, hasImage);
}

/// Nothing where the module is missing: then the item has its text in the tooltip alone.
std::vector<Icon> AppDelegate::draw(const DrawnIcon& icon) {
  const auto drawer = iconModule_.function<DrawTrayIcon>(kDrawTrayIconName);
  std::vector<Icon> drawn;
  if (drawer != nullptr) drawer(icon, drawn);
  return drawn;
}

Menu AppDelegate::menu() {
  return statusMenu(*model_.state(), *model_.looking(), *model_.snoozeUntil(),
                    {.open = [this] { togglePopover(std::nullopt); },
                     .snooze = [this] { model_.snooze(); },
                     .cancelSnooze = [this] { model_.cancelSnooze(); },
                     .openSettings = [this] { openSettings(); },
                     .quit = [this] { quit(); }});
}

void AppDelegate::applicationWillTerminate() {
  defaults_.save();
  model_.saveHistory();
}

void AppDelegate::togglePopover(std::optional<ScreenPoint> click) {
  Views* shown = views();
  if (shown == nullptr) return;
  if (shown->popoverShown()) return shown->closePopover();
  model_.refresh(AppModel::Reason::change);
  shown->showPopover(click);
}

/// The windows, which drive the main loop once they are there. Null without a display.
Views* AppDelegate::views() {
  watchDisplay();
  giveBackOnceSettled();
  if (Views* loaded = viewsLoader_.loaded()) return loaded;
  Views* made = viewsLoader_.load();
  if (made != nullptr) runLoop_.runSoon(lifetime_.guard([made] { made->run(); }));
  return made;
}

/// What is said to a display may wait for it for ever.
void AppDelegate::watchDisplay() {
  if (!displayWatch_) displayWatch_.emplace(runLoop_, kDisplayTick, displayHung_);
}

void AppDelegate::quit() {
  quit_();
  if (Views* loaded = viewsLoader_.loaded()) {
    // It closes the windows, and may wait for the display.
    watchDisplay();
    loaded->stop();
  }
}

bool AppDelegate::displayMayComeBack() const {
  const Views* views = viewsLoader_.loaded();
  return views == nullptr || views->displayMayComeBack();
}

/// From there the toolkit takes it, and hands it to the compositor with the window.
void AppDelegate::takeActivationToken(const std::string& token) {
  if (token.size() <= kLongestToken) Glib::setenv("XDG_ACTIVATION_TOKEN", token);
}

Observable<Appearance>& AppDelegate::appearance() {
  if (!appearance_) {
    appearance_.emplace(session_, Glib::getenv("XDG_CURRENT_DESKTOP"),
                        Glib::getenv("QT_QPA_PLATFORMTHEME"));
  }
  return appearance_->appearance();
}

void AppDelegate::openSettings() {
  Views* shown = views();
  if (shown == nullptr) return;
  shown->closePopover();
  shown->showSettings();
}

}  // namespace lumora
