// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/FakeHost.h"
#include "Views/Gallery/LifelikeBattery.h"
#include "Views/Gallery/Scenes.h"
#include "Views/Pixels.h"
#include "Views/Settings/SettingsWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QScrollArea>
#include <QScrollBar>

namespace lumora::test {
namespace {

constexpr int kBottom = 100'000;

struct SettingsScene {
  const char* name;
  const char* settings = "{}";
  bool dark = false;
  bool strong = false;
  double points = 10;  // of the desktop's font
  bool failing = false;
  int scrolled = 0;
  const char* focused = nullptr;  // by its text or accessible name
  bool darkLater = false;         // the desktop turns dark while it is open
  const char* dialog = nullptr;   // the control that opens it
  const char* hovered = nullptr;  // by its text or accessible name
  const char* pressed = nullptr;
  bool listOpen = false;  // of the first sound
  const char* locale = nullptr;
  const char* language = nullptr;
  bool framed = true;  // by the desktop
};

std::vector<SettingsScene> settingsScenes() {
  constexpr const char* kOff = R"({"limitEnabled": false, "lowEnabled": false,
      "quietEnabled": true, "limit": 120, "low": 5, "lowSound": "Submarine"})";
  constexpr const char* kPing = R"({"limitSound": "Ping"})";
  constexpr const char* kQuack = R"({"limitSound": "Quack"})";
  return {
      {.name = "settings"},
      {.name = "settings-end", .failing = true, .scrolled = kBottom},
      {.name = "settings-changed", .settings = kOff},
      {.name = "settings-quiet", .settings = kOff, .scrolled = kBottom},
      {.name = "settings-dark", .settings = kOff, .dark = true},
      {.name = "settings-dark-end", .dark = true, .failing = true, .scrolled = kBottom},
      {.name = "settings-strong", .strong = true},
      {.name = "settings-strong-dark",
       .settings = kOff,
       .dark = true,
       .strong = true,
       .scrolled = kBottom},
      {.name = "settings-large", .points = 15},
      {.name = "settings-turned-dark", .failing = true, .scrolled = kBottom, .darkLater = true},
      {.name = "settings-focus-switch", .focused = "Charge limit"},
      {.name = "settings-focus-stepper", .focused = "Alert when charging reaches 80%"},
      {.name = "settings-focus-sound-dark", .dark = true, .focused = "Sound"},
      {.name = "settings-focus-time", .settings = kOff, .scrolled = kBottom, .focused = "From"},
      {.name = "settings-permission", .dialog = "Charge limit"},
      {.name = "settings-reset", .dark = true, .dialog = "Reset History…"},
      {.name = "settings-reset-pressed",
       .dialog = "Reset History…",
       .hovered = "Cancel",
       .pressed = "Reset"},
      {.name = "settings-reset-strong", .strong = true, .dialog = "Reset History…"},
      {.name = "settings-reset-focus", .focused = "Cancel", .dialog = "Reset History…"},
      {.name = "settings-list", .settings = kQuack, .listOpen = true},
      {.name = "settings-list-dark", .settings = kPing, .dark = true, .listOpen = true},
      {.name = "settings-list-strong", .settings = kPing, .strong = true, .listOpen = true},
      {.name = "settings-list-mirrored",
       .settings = kPing,
       .listOpen = true,
       .locale = "fa_IR",
       .language = "q2"},
      {.name = "settings-touched",
       .scrolled = kBottom,
       .hovered = "Launch at Login",
       .pressed = "Reset History…"},
      {.name = "settings-touched-dark",
       .dark = true,
       .hovered = "Increase",
       .pressed = "Charge limit"},
      {.name = "settings-german", .locale = "de_DE"},
      {.name = "settings-german-end", .scrolled = kBottom, .locale = "de_DE"},
      {.name = "settings-arabic", .locale = "ar_EG"},
      {.name = "settings-arabic-end", .scrolled = kBottom, .locale = "ar_EG"},
      {.name = "settings-mirrored",
       .settings = kOff,
       .dialog = "«Reset History…»",
       .locale = "fa_IR",
       .language = "q2"},
      {.name = "settings-mirrored-end",
       .settings = kOff,
       .scrolled = kBottom,
       .locale = "fa_IR",
       .language = "q2"},
      {.name = "settings-own-frame", .framed = false},
      {.name = "settings-own-frame-dark", .dark = true, .points = 15, .framed = false},
      {.name = "settings-own-frame-end", .scrolled = kBottom, .locale = "ar_EG", .framed = false},
      {.name = "settings-own-frame-reset", .dialog = "Reset History…", .framed = false},
  };
}

QImage render(const SettingsScene& scene, DesktopLooks& looks) {
  const ScopedWords words(scene);
  FakeHost host;
  host.clock.time = kNow;
  host.files.edit("/config/defaults.json", scene.settings);
  host.store.synchronize();
  if (scene.failing) {
    host.bundle.identifier.reset();
    host.login.error = "Permission denied";
  }
  looks.apply(appearanceOf(scene));
  SettingsWindow window(host, scene.framed);
  window.present();
  const QString pressed = scene.failing ? "Launch at Login" : scene.dialog;
  for (auto* button : window.findChildren<QAbstractButton*>()) {
    if (pressed.isEmpty()) break;
    if (button->accessibleName() == pressed || button->text() == pressed) button->click();
  }
  host.centre.answerStatus(AuthorizationStatus::notDetermined);
  host.runLoop.drain();
  QApplication::processEvents();
  if (scene.darkLater) looks.apply({Appearance::ColorScheme::dark, {}});
  if (scene.focused != nullptr) focus(window, scene.focused);
  QApplication::processEvents();
  window.findChild<QScrollArea*>()->verticalScrollBar()->setValue(scene.scrolled);
  QApplication::processEvents();
  if (scene.hovered != nullptr) {
    withName(window, scene.hovered)->setAttribute(Qt::WA_UnderMouse);
  }
  if (scene.pressed != nullptr) {
    qobject_cast<QAbstractButton*>(withName(window, scene.pressed))->setDown(true);
  }
  QWidget* shown = &window;
  if (auto* dialog = window.findChild<QDialog*>()) shown = dialog;
  if (scene.listOpen) {
    auto* sound = window.findChild<QComboBox*>();
    sound->showPopup();
    QApplication::processEvents();
    shown = sound->view()->window();
  }
  return picture(*shown);
}

}  // namespace

bool renderSettingsScenes(DesktopLooks& looks, const std::filesystem::path& folder) {
  return renderAll(settingsScenes(), folder,
                   [&](const SettingsScene& scene) { return render(scene, looks); });
}

}  // namespace lumora::test
