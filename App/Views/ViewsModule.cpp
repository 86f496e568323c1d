// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/ViewsModule.h"

#include "Base/Texts.h"
#include "Views/Display.h"
#include "Views/DisplayProbe.h"
#include "Views/Popover/PopoverWindow.h"
#include "Views/Settings/SettingsWindow.h"
#include "Views/Style/StyleKeeper.h"
#include "Views/Theme/DesktopLooks.h"
#include "Views/WindowIcon.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QLoggingCategory>
#include <QPixmapCache>
#include <QTranslator>

namespace lumora {
namespace {

/// Everything of Qt, from the first click to the end.
class QtViews final : public Views {
 public:
  explicit QtViews(ViewsHost& host) : host_(host), application_(argumentCount_, arguments_) {
    keepToUtf8();  // Qt has set the locale anew.
    QApplication::setApplicationName("Lumora");
    QApplication::setDesktopFileName("org.lumora.Lumora");
    QApplication::setWindowIcon(windowIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    // Qt's own texts, those of a field's menu, where its catalogues are installed.
    if (toolkitsTexts_.load(QLocale(), "qtbase", "_",
                            QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
      QApplication::installTranslator(&toolkitsTexts_);
    }
    looks_.apply(*host_.appearance());
    // A change is announced before it happens.
    appearanceChanged_ = host_.appearance().subscribe([this] {
      QMetaObject::invokeMethod(
          &application_, [this] { looks_.apply(*host_.appearance()); }, Qt::QueuedConnection);
    });
    popover_.emplace(host_);
  }

  bool popoverShown() const override { return popover_->isShownToTheUser(); }
  bool anyShown() const override {
    return popover_->isVisible() || (settings_ && settings_->isVisible());
  }
  bool displayMayComeBack() const override { return onWayland_; }
  void rest() override {
    popover_->leaveScreen();
    QPixmapCache::clear();
  }
  void showPopover(std::optional<ScreenPoint> click) override {
    if (displayStillAnswers()) popover_->showAt(click);
  }
  void closePopover() override { popover_->hideFromTheUser(); }

  void showSettings() override {
    if (!displayStillAnswers()) return;
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
  const bool onWayland_ = isOnWayland();
  StyleKeeper styleKeeper_;
  QTranslator toolkitsTexts_;
  DesktopLooks looks_;
  Subscription appearanceChanged_;
  std::optional<PopoverWindow> popover_;
  std::optional<SettingsWindow> settings_;
};

}  // namespace
}  // namespace lumora

extern "C" __attribute__((visibility("default"))) lumora::Views* makeLumoraViews(
    lumora::ViewsHost& host) {
  if (!lumora::displayAnswers()) return nullptr;
  // The windows are painted by the processor: what the graphics card takes would be 30 MiB for
  // nothing.
  qputenv("QT_WAYLAND_CLIENT_BUFFER_INTEGRATION", "none");
  // The popover takes its place in a layer by itself, where there are any.
  qputenv("QT_WAYLAND_USE_BYPASSWINDOWMANAGERHINT", "1");
  // Qt would complain that there is no buffer integration of that name, and of what a shell tells
  // of text input when the popover has gone. What it complains of without a category is for its own
  // developers, as a scale that changes while it paints.
  QLoggingCategory::setFilterRules("qt.qpa.wayland*.warning=false\ndefault.warning=false");
  // Qt's own threads need no loop of GLib's, and of Qt 6.8 they end it too late: when GLib has
  // already taken the thread's account of its loops down, of which GLib then complains.
  qputenv("QT_NO_THREADED_GLIB", "1");
  return new lumora::QtViews(host);
}
