// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Controls/Stepper.h"
#include "Views/FakeHost.h"
#include "Views/Patience.h"
#include "Views/Pixels.h"
#include "Views/Settings/SettingsWindow.h"
#include "Views/Theme/Colors.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QTimeEdit>
#include <memory>
#include <set>

#include <gtest/gtest.h>

namespace lumora::test {

/// The settings window on a screen nobody sees, worked with mouse and keys.
class SettingsTest : public testing::Test {
 protected:
  SettingsTest() {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    host.clock.time = dateSince1970(1'795'525'980);
    host.setHistory(minuteSamples(host.clock.time, 600));
  }

  void open() { present(true); }

  /// Where neither the desktop nor the toolkit frames windows.
  void openWithoutFrames() { present(false); }

  void present(bool framed) {
    window = std::make_unique<SettingsWindow>(host, framed);
    window->present();
    EXPECT_TRUE(waitUntilExposed(window.get()));
  }

  /// One more key in the file, as another program writes it.
  void write(const std::string& key, const std::string& json) {
    written[key] = json;
    std::string object;
    for (const auto& [name, value] : written) {
      object.append(object.empty() ? "\"" : ", \"").append(name).append("\": ").append(value);
    }
    host.files.edit("/config/defaults.json", "{" + object + "}");
    host.store.synchronize();
  }

  std::optional<std::string> file() const { return host.files.text("/config/defaults.json"); }

  /// What stands in the file for a key, as JSON; empty where it does not.
  std::string stored(const std::string& key) const {
    const std::string text = file().value_or("");
    const std::string name = "\"" + key + "\": ";
    const auto begin = text.find(name);
    if (begin == std::string::npos) return {};
    const auto value = begin + name.size();
    return text.substr(value, text.find_first_of(",}\n", value) - value);
  }

  template <typename Widget>
  Widget* named(const QString& name) const {
    for (auto* widget : window->findChildren<Widget*>()) {
      if (widget->accessibleName() == name) return widget;
    }
    return nullptr;
  }

  QCheckBox* toggle(const QString& name) const { return named<QCheckBox>(name); }
  QSlider* stepper(const QString& name) const { return named<QSlider>(name); }
  QTimeEdit* time(const QString& name) const { return named<QTimeEdit>(name); }
  QList<QComboBox*> sounds() const { return window->findChildren<QComboBox*>(); }

  QStringList soundTexts() const {
    QStringList shown;
    for (const auto* sound : sounds()) shown << sound->currentText();
    return shown;
  }

  QAbstractButton* stepButton(const QString& number, const QString& name) const {
    QSlider* whole = stepper(number);
    EXPECT_NE(whole, nullptr) << number.toStdString();
    for (auto* button : whole->findChildren<QAbstractButton*>()) {
      if (button->accessibleName() == name) return button;
    }
    return nullptr;
  }

  QPushButton* button(const QString& text) const {
    for (auto* found : window->findChildren<QPushButton*>()) {
      if (found->text() == text) return found;
    }
    return nullptr;
  }

  QLabel* label(const QString& text) const {
    for (auto* found : window->findChildren<QLabel*>()) {
      if (found->text() == text) return found;
    }
    return nullptr;
  }

  static void click(QWidget* widget) {
    ASSERT_NE(widget, nullptr);
    QTest::mouseClick(widget, Qt::LeftButton);
  }

  /// Chooses an entry of a menu as a user with a keyboard.
  static void pick(QComboBox* sound, const QString& entry) {
    sound->showPopup();
    auto* list = sound->view();
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < sound->count() && list->currentIndex().data() != entry; ++i) {
      QTest::keyClick(list, Qt::Key_Down);
    }
    QTest::keyClick(list, Qt::Key_Return);
  }

  QDialog* dialog() const {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return window->findChild<QDialog*>();
  }

  QStringList dialogTexts() const {
    QStringList shown;
    for (const auto* text : dialog()->findChildren<QLabel*>()) shown << text->text();
    for (const char* title : {"Reset", "Continue", "Cancel", "Not Now"}) {
      if (button(title) != nullptr) shown << title;
    }
    return shown;
  }

  void answer(const QString& title) { click(button(title)); }

  void answerStatus(AuthorizationStatus status) {
    host.centre.answerStatus(status);
    host.runLoop.drain();
  }

  /// How often leave was asked for.
  int requests() const { return host.centre.requests; }

  /// The visible texts from top to bottom.
  QStringList texts() const {
    QStringList seen;
    for (const auto* found : window->findChildren<QLabel*>()) {
      if (found->isVisible()) seen << found->text();
    }
    return seen;
  }

  FakeHost host;
  std::map<std::string, std::string> written;
  std::unique_ptr<SettingsWindow> window;
};

}  // namespace lumora::test
