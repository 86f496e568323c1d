// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Where the keyboard is, is seen.
#include "Views/Pixels.h"
#include "Views/Settings/SettingsWindow.h"
#include "Views/Theme/DesktopLooks.h"
#include "Views/ViewTest.h"

#include <QScrollArea>
#include <algorithm>

namespace lumora::test {
namespace {

/// All within that the tab key reaches.
QList<QWidget*> controls(const QWidget& whole) {
  QList<QWidget*> found;
  for (auto* widget : whole.findChildren<QWidget*>()) {
    const bool reached = widget->isVisible() && widget->isEnabled() &&
                         (widget->focusPolicy() & Qt::TabFocus) != 0 &&
                         widget->focusProxy() == nullptr;
    if (reached && dynamic_cast<QAbstractScrollArea*>(widget) == nullptr) found << widget;
  }
  return found;
}

/// Each is drawn otherwise while it has the focus: by at least half of the line around it.
void expectToShowTheFocus(QWidget& whole, int atLeast) {
  const auto all = controls(whole);
  EXPECT_GE(all.size(), atLeast);
  for (QWidget* widget : all) {
    whole.setFocus();
    const QImage without = picture(*widget);
    widget->setFocus(Qt::TabFocusReason);
    // As the tab key does: some styles show the focus only then.
    whole.window()->setAttribute(Qt::WA_KeyboardFocusChange);
    EXPECT_TRUE(widget->hasFocus());
    const QImage with = picture(*widget);
    EXPECT_GE(differences(without, with), widget->width() / 2)
        << widget->metaObject()->className() << " " << widget->accessibleName().toStdString() << " "
        << widget->height();
  }
}

class FocusTest : public ViewTest {
 protected:
 public:
  ~FocusTest() override { looks.apply({}); }

 protected:
  DesktopLooks looks;
};

TEST_F(FocusTest, IsSeenOnEveryControlOfThePopover) {
  for (const auto scheme : {Appearance::ColorScheme::light, Appearance::ColorScheme::dark}) {
    looks.apply({scheme, {}});
    host.model().snooze();
    open();
    view->activateWindow();
    // Cancel, a segment or two, the chart, the summary, two buttons.
    expectToShowTheFocus(*view, 6);
  }
}

TEST_F(FocusTest, IsSeenOnEveryControlOfTheSettings) {
  for (const auto scheme : {Appearance::ColorScheme::light, Appearance::ColorScheme::dark}) {
    looks.apply({scheme, {}});
    host.files.edit("/config/defaults.json", R"({"quietEnabled": true})");
    host.store.synchronize();
    SettingsWindow window(host);
    window.present();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.activateWindow();
    window.setFocusPolicy(Qt::StrongFocus);
    expectToShowTheFocus(window, 22);
  }
}

}  // namespace
}  // namespace lumora::test
