// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Windows that are open while the desktop changes its looks end up as if they had been opened then.
#include "Views/Controls/Labels.h"
#include "Views/Pixels.h"
#include "Views/Popover/PopoverWindow.h"
#include "Views/Settings/SettingsWindow.h"
#include "Views/Theme/Contrast.h"
#include "Views/Theme/DesktopLooks.h"
#include "Views/ViewTest.h"

#include <QScrollArea>
#include <QScrollBar>

namespace lumora::test {
namespace {

using ColorScheme = Appearance::ColorScheme;

class FollowingTest : public ViewTest {
 protected:
  FollowingTest() {
    host.setHistory(minuteSamples(host.clock.time - Seconds(60), 7 * 1440));
    host.bundle.identifier.reset();
    host.login.error = "Permission denied";
    host.setBattery(73, {{"Power Source State", "AC Power"}},
                    {{"CycleCount", 412}, {"DesignCapacity", 50'000}, {"MaxCapacity", 43'500}});
    host.model().snooze();
    host.model().refresh(AppModel::Reason::change);
  }

 public:
  ~FollowingTest() override {
    looks.apply({});
    QApplication::setFont(usual_);
  }

 protected:
  std::unique_ptr<PopoverWindow> openPopover() {
    auto window = std::make_unique<PopoverWindow>(host);
    window->showAt(std::nullopt);
    for (auto* found : window->findChildren<QAbstractButton*>()) {
      if (found->text() == "Daily summary") found->click();
    }
    return window;
  }

  std::unique_ptr<SettingsWindow> openSettings() {
    auto window = std::make_unique<SettingsWindow>(host);
    window->present();
    for (auto* found : window->findChildren<QAbstractButton*>()) {
      if (found->accessibleName() == "Launch at Login") found->click();
    }
    QCoreApplication::processEvents();
    auto* bar = window->findChild<QScrollArea*>()->verticalScrollBar();
    bar->setValue(bar->maximum());
    return window;
  }

  /// Opens a window in the first looks, changes them to the others, and compares with a new one.
  template <typename Open>
  void expectToFollow(const Appearance& first, const Appearance& then, const Open& openWindow) {
    looks.apply(first);
    auto window = openWindow();
    picture(*window);
    looks.apply(then);
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    if (auto* scroll = window->template findChild<QScrollArea*>()) {
      scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
    }
    const QImage followed = picture(*window);
    for (const auto* label : childrenOf<Label>(*window)) {
      const QColor ground = label->palette().color(QPalette::Active, QPalette::Window);
      const QColor ink = label->palette().color(QPalette::Active, QPalette::WindowText);
      EXPECT_GE(contrast(ink, ground), 4.5) << label->text().toStdString();
    }
    window.reset();
    auto fresh = openWindow();
    for (int i = 0; i < 5; ++i) QCoreApplication::processEvents();
    if (auto* scroll = fresh->template findChild<QScrollArea*>()) {
      scroll->verticalScrollBar()->setValue(scroll->verticalScrollBar()->maximum());
    }
    const QImage expected = picture(*fresh);
    ASSERT_EQ(followed.size(), expected.size());
    EXPECT_EQ(differences(followed, expected), 0);
  }

  void expectBothToFollow(const Appearance& first, const Appearance& then) {
    expectToFollow(first, then, [this] { return openPopover(); });
    expectToFollow(first, then, [this] { return openSettings(); });
  }

  DesktopLooks looks;

 private:
  QFont usual_ = QApplication::font();
};

TEST_F(FollowingTest, TheDark) {
  expectBothToFollow({ColorScheme::light, {}}, {ColorScheme::dark, {}});
}

TEST_F(FollowingTest, TheLight) {
  expectBothToFollow({ColorScheme::dark, {}}, {ColorScheme::light, {}});
}

TEST_F(FollowingTest, TheAccent) {
  expectBothToFollow({ColorScheme::dark, 0xC88800U}, {ColorScheme::dark, 0x9141ACU});
}

TEST_F(FollowingTest, TheWishForHighContrast) {
  Appearance strong{ColorScheme::dark, {}};
  strong.highContrast = true;
  expectBothToFollow({ColorScheme::dark, {}}, strong);
}

TEST_F(FollowingTest, TheTextSizeInTheDark) {
  Appearance usual{ColorScheme::dark, {}};
  usual.font = "Sans 10";
  Appearance larger = usual;
  larger.font = "Sans 13";
  expectBothToFollow(usual, larger);
  larger.font = "Sans 18";  // larger than the table has room for
  expectBothToFollow(usual, larger);
}

}  // namespace
}  // namespace lumora::test
