// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ViewsModule.h"

#include "Views/DisplayProbe.h"
#include "Views/PopoverWindow.h"
#include "Views/SettingsWindow.h"
#include "Views/Theme.h"

#include <QApplication>
#include <QPixmapCache>

namespace lumora {
namespace {

/// Everything of Qt, from the first click to the end.
class QtViews final : public Views {
 public:
  explicit QtViews(ViewsHost& host) : host_(host), application_(argumentCount_, arguments_) {
    QApplication::setApplicationName("Lumora");
    QApplication::setDesktopFileName("org.lumora.Lumora");
    QApplication::setQuitOnLastWindowClosed(false);
    applyAppearance(*host_.appearance());
    // A change is announced before it happens.
    appearanceChanged_ = host_.appearance().subscribe([this] {
      QMetaObject::invokeMethod(
          &application_, [this] { applyAppearance(*host_.appearance()); }, Qt::QueuedConnection);
    });
    popover_.emplace(host_);
  }

  bool popoverShown() const override { return popover_->isShownToTheUser(); }
  bool anyShown() const override {
    return popover_->isVisible() || (settings_ && settings_->isVisible());
  }
  void rest() override {
    popover_->leaveScreen();
    QPixmapCache::clear();
  }
  void showPopover(std::optional<ScreenPoint> click) override { popover_->showAt(click); }
  void closePopover() override { popover_->hideFromTheUser(); }

  void showSettings() override {
    if (!settings_) settings_.emplace(host_);
    settings_->present();
  }

  void run() override {
    if (!stopped_) QApplication::exec();
    // The desktop's session may end Qt's loop by itself.
    if (!stopped_) host_.quit();
  }

  void stop() override {
    stopped_ = true;
    QApplication::quit();
  }

 private:
  ViewsHost& host_;
  bool stopped_ = false;
  // Qt keeps references to these for as long as the application lives.
  int argumentCount_ = 1;
  char name_[7] = "lumora";
  char* arguments_[2] = {name_, nullptr};
  QApplication application_;
  Subscription appearanceChanged_;
  std::optional<PopoverWindow> popover_;
  std::optional<SettingsWindow> settings_;
};

}  // namespace
}  // namespace lumora

extern "C" __attribute__((visibility("default"))) lumora::Views* makeLumoraViews(
    lumora::ViewsHost& host) {
  return lumora::displayAnswers() ? new lumora::QtViews(host) : nullptr;
}
