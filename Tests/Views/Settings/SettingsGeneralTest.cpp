// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Children.h"
#include "Views/Controls/DrawnButton.h"
#include "Views/Settings/SettingsTest.h"

namespace lumora::test {
namespace {

using SoundPickerTest = SettingsTest;
using LaunchAtLoginTest = SettingsTest;
using ResetTest = SettingsTest;
using PermissionTest = SettingsTest;
using SettingsWindowTest = SettingsTest;

TEST_F(ResetTest, IsAskedForWithTheReturnKey) {
  open();
  QPushButton* reset = button(QStringLiteral("Reset History…"));
  reset->setFocus();
  QTest::keyClick(reset, Qt::Key_Return);
  EXPECT_NE(dialog(), nullptr);
}

TEST_F(SoundPickerTest, OffersDefaultNoneAndFourteenNames) {
  open();
  QStringList entries;
  for (int i = 0; i < sounds()[0]->count(); ++i) entries << sounds()[0]->itemText(i);
  EXPECT_EQ(entries.join(' ').toStdString(),
            "Default None  Glass Ping Hero Submarine Funk Basso Blow Bottle Frog Morse Pop Purr "
            "Sosumi Tink");
}

TEST_F(SoundPickerTest, StoresTheChoiceOfEachAndPlaysItOnce) {
  open();
  const QList<const char*> keys = {"limitSound", "lowSound", "lowPowerSound", "longSound",
                                   "healthSound"};
  for (qsizetype i = 0; i < keys.size(); ++i) {
    host.sounds.played.clear();
    pick(sounds()[i], "Ping");
    EXPECT_EQ(stored(keys[i]), "\"Ping\"");
    EXPECT_EQ(host.sounds.played, std::vector<NotificationSound>{NamedSound{"Ping"}});
  }
}

TEST_F(SoundPickerTest, PlaysNothingForDefaultAndNoneNorForTheSameAgain) {
  write("limitSound", "\"Ping\"");
  open();
  pick(sounds()[0], "Ping");
  pick(sounds()[0], "None");
  EXPECT_EQ(stored("limitSound"), "\"none\"");
  pick(sounds()[0], "Default");
  EXPECT_EQ(stored("limitSound"), "\"default\"");
  EXPECT_TRUE(host.sounds.played.empty());
}

TEST_F(SoundPickerTest, ShowsANameThatIsNotInTheMenu) {
  write("limitSound", "\"Quack\"");
  open();
  EXPECT_EQ(sounds()[0]->currentIndex(), -1);
  EXPECT_EQ(sounds()[0]->placeholderText(), "Quack");
  EXPECT_EQ(stored("limitSound"), "\"Quack\"");
  pick(sounds()[0], "Default");
  EXPECT_EQ(stored("limitSound"), "\"default\"");
}

TEST_F(SoundPickerTest, IsWorkedWithTheKeyboard) {
  open();
  QTest::keyClick(sounds()[0], Qt::Key_Down);
  EXPECT_EQ(stored("limitSound"), "\"none\"");
  QTest::keyClick(sounds()[0], Qt::Key_Down);
  EXPECT_EQ(stored("limitSound"), "\"Glass\"");
  EXPECT_EQ(host.sounds.played, std::vector<NotificationSound>{NamedSound{"Glass"}});
}

TEST_F(SoundPickerTest, PlaysOneAfterTheOtherWhileTheMenuIsOpen) {
  open();
  QComboBox* sound = sounds()[0];
  sound->showPopup();
  auto* list = sound->view();
  const auto pointAt = [&](const char* entry) {
    const auto at = list->visualRect(list->model()->index(sound->findText(entry), 0)).center();
    // The pointer must have left the place where it opened the menu.
    for (const QPoint& way : {QPoint(0, 0), QPoint(12, 0)}) {
      QMouseEvent move(QEvent::MouseMove, at + way, list->viewport()->mapToGlobal(at + way),
                       Qt::NoButton, {}, {});
      QCoreApplication::sendEvent(list->viewport(), &move);
    }
  };
  for (const char* entry : {"Glass", "Tink"}) {
    pointAt(entry);
    EXPECT_NE(sound->currentText(), entry);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(sound->currentText(), entry);
    EXPECT_EQ(stored("limitSound"), "\"" + std::string(entry) + "\"");
    EXPECT_TRUE(list->isVisible());
  }
  const std::vector<NotificationSound> both{NamedSound{"Glass"}, NamedSound{"Tink"}};
  EXPECT_EQ(host.sounds.played, both);
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(host.sounds.played, both);
}

TEST_F(LaunchAtLoginTest, RegistersAndUnregisters) {
  open();
  click(toggle("Launch at Login"));
  EXPECT_TRUE(host.login.enabled);
  EXPECT_TRUE(toggle("Launch at Login")->isChecked());
  click(toggle("Launch at Login"));
  EXPECT_FALSE(host.login.enabled);
  EXPECT_FALSE(toggle("Launch at Login")->isChecked());
  EXPECT_EQ(file(), std::nullopt);
}

TEST_F(LaunchAtLoginTest, ShowsTheStateItFinds) {
  host.login.enabled = true;
  open();
  EXPECT_TRUE(toggle("Launch at Login")->isChecked());
}

TEST_F(LaunchAtLoginTest, SnapsBackAndSaysWhyUntilItSucceeds) {
  host.login.error = "Permission denied";
  open();
  click(toggle("Launch at Login"));
  EXPECT_FALSE(toggle("Launch at Login")->isChecked());
  const QString failure = "Could not change Launch at Login: Permission denied";
  ASSERT_NE(label(failure), nullptr);
  EXPECT_TRUE(label(failure)->isVisible());
  EXPECT_EQ(label(failure)->palette().color(QPalette::WindowText),
            textColor(TextColor::red, window->palette()));
  host.login.error.reset();
  click(toggle("Launch at Login"));
  EXPECT_TRUE(toggle("Launch at Login")->isChecked());
  EXPECT_FALSE(texts().join('\n').contains("Could not change"));
}

TEST_F(ResetTest, AsksAndThenEmptiesTheHistory) {
  open();
  EXPECT_FALSE(host.model().history().samples().empty());
  click(button(QStringLiteral("Reset History…")));
  ASSERT_NE(dialog(), nullptr);
  EXPECT_EQ(dialogTexts(), (QStringList{"Reset history?",
                                        "This deletes all saved battery samples used for the "
                                        "chart.",
                                        "Reset", "Cancel"}));
  answer("Reset");
  EXPECT_TRUE(host.model().history().samples().empty());
  EXPECT_EQ(dialog(), nullptr);
}

TEST_F(ResetTest, LeavesTheHistoryWhenItIsCancelled) {
  open();
  const auto before = host.model().history().samples().size();
  click(button(QStringLiteral("Reset History…")));
  answer("Cancel");
  click(button(QStringLiteral("Reset History…")));
  QTest::keyClick(dialog(), Qt::Key_Return);
  click(button(QStringLiteral("Reset History…")));
  QTest::keyClick(dialog(), Qt::Key_Escape);
  click(button(QStringLiteral("Reset History…")));
  dialog()->close();
  EXPECT_EQ(host.model().history().samples().size(), before);
}

TEST_F(PermissionTest, IsExplainedAndAskedWhenAReminderIsSwitched) {
  for (const char* title : {"Charge limit", "Low battery", "Suggest Low Power Mode",
                            "Plugged in too long", "Battery health below 80% (once)"}) {
    open();
    click(toggle(title));
    answerStatus(AuthorizationStatus::notDetermined);
    ASSERT_NE(dialog(), nullptr) << title;
    EXPECT_EQ(dialogTexts(),
              (QStringList{"Allow notifications?",
                           "Lumora uses notifications to remind you to unplug at your chosen "
                           "charge level, when the battery is low, and when you have been plugged "
                           "in too long. macOS will ask for permission next.",
                           "Continue", "Not Now"}));
    answer("Continue");
    host.runLoop.drain();
  }
  EXPECT_EQ(requests(), 5);
}

TEST_F(PermissionTest, IsNotAskedForAfterNotNowButExplainedAgain) {
  open();
  click(toggle("Charge limit"));
  answerStatus(AuthorizationStatus::notDetermined);
  answer("Not Now");
  click(toggle("Charge limit"));
  answerStatus(AuthorizationStatus::notDetermined);
  ASSERT_NE(dialog(), nullptr);
  QTest::keyClick(dialog(), Qt::Key_Escape);
  host.runLoop.drain();
  EXPECT_EQ(requests(), 0);
}

TEST_F(PermissionTest, IsExplainedOnceAtATime) {
  open();
  click(toggle("Charge limit"));
  click(toggle("Low battery"));
  answerStatus(AuthorizationStatus::notDetermined);
  EXPECT_EQ(window->findChildren<QDialog*>().size(), 1);
}

TEST_F(PermissionTest, IsNotExplainedOnceItIsDecidedNorForOtherSwitches) {
  open();
  for (const auto status : {AuthorizationStatus::authorized, AuthorizationStatus::denied}) {
    click(toggle("Charge limit"));
    answerStatus(status);
    EXPECT_EQ(dialog(), nullptr);
  }
  for (const char* title : {"Repeat every 5 minutes, up to 3 times", "Show time remaining",
                            "Hold alerts during quiet hours", "Show percentage in the menu bar"}) {
    click(toggle(title));
  }
  answerStatus(AuthorizationStatus::notDetermined);
  EXPECT_EQ(dialog(), nullptr);
}

TEST_F(PermissionTest, CannotBeHadOutsideABundle) {
  host.bundle.identifier.reset();
  open();
  auto* warning = label(
      "Notifications need Lumora to run as an app bundle (see make_app). Run from the command "
      "line, alerts cannot be delivered.");
  ASSERT_NE(warning, nullptr);
  EXPECT_EQ(warning->palette().color(QPalette::WindowText),
            textColor(TextColor::orange, window->palette()));
  click(toggle("Charge limit"));
  answerStatus(AuthorizationStatus::notDetermined);
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(stored("limitEnabled"), "false");
}

TEST_F(SettingsWindowTest, CanBeClosedAndMovedAndNothingElse) {
  open();
  const Qt::WindowFlags flags = window->windowFlags();
  EXPECT_EQ(flags & Qt::WindowType_Mask, Qt::Window);
  EXPECT_TRUE(flags.testFlag(Qt::CustomizeWindowHint));
  EXPECT_TRUE(flags.testFlag(Qt::WindowTitleHint));
  EXPECT_TRUE(flags.testFlag(Qt::WindowCloseButtonHint));
  for (const auto absent : {Qt::WindowMinimizeButtonHint, Qt::WindowMaximizeButtonHint,
                            Qt::FramelessWindowHint, Qt::WindowStaysOnTopHint}) {
    EXPECT_FALSE(flags.testFlag(absent)) << absent;
  }
  EXPECT_EQ(window->minimumSize(), QSize(480, 720));
  EXPECT_EQ(window->maximumSize(), QSize(480, 720));
  const QPoint middle = QGuiApplication::primaryScreen()->availableGeometry().center();
  EXPECT_EQ(window->pos(), middle - QRect(0, 0, 480, 720).center());
}

TEST_F(SettingsWindowTest, BringsAFrameWhereNothingFramesWindows) {
  openWithoutFrames();
  EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
  const QRect framed = window->rect().marginsRemoved({8, 8, 8, 8});
  EXPECT_EQ(framed.size(), QSize(480, 40 + 720));
  EXPECT_EQ(window->findChild<QScrollArea*>()->geometry(), framed.adjusted(0, 40, 0, 0));
  const QImage image = picture(*window);
  // Round, with a shadow, and the title in the middle of the bar.
  EXPECT_EQ(image.pixelColor(framed.topLeft() + QPoint(1, 1)).alpha() / 255, 0);
  EXPECT_EQ(image.pixelColor(framed.bottomRight() - QPoint(1, 1)).alpha() / 255, 0);
  EXPECT_GT(image.pixelColor(framed.center().x(), framed.bottom() + 2).alpha(), 0);
  const QRect title(framed.center().x() - 50, framed.top() + 4, 100, 32);
  const QColor ink = textColor(TextColor::primary, window->palette());
  EXPECT_TRUE(hasNear(image, title.center(), ink, 16));
  EXPECT_FALSE(hasNear(image, title.center() - QPoint(150, 0), ink, 16));
  auto* close = named<QAbstractButton>("Close");
  ASSERT_NE(close, nullptr);
  EXPECT_EQ(close->geometry(), QRect(framed.right() + 1 - 8 - 24, framed.top() + 8, 24, 24));
  click(close);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(SettingsWindowTest, ItsQuestionsBringAFrameToo) {
  open();
  click(button("Reset History…"));
  ASSERT_NE(dialog(), nullptr);
  const QSize content = dialog()->size();
  openWithoutFrames();
  click(button("Reset History…"));
  ASSERT_NE(dialog(), nullptr);
  EXPECT_TRUE(dialog()->windowFlags().testFlag(Qt::FramelessWindowHint));
  const auto inside = dialog()->rect().marginsRemoved({8, 8 + 40, 8, 8});
  EXPECT_EQ(inside.size(), content);
  for (const auto* label : dialog()->findChildren<QLabel*>()) {
    EXPECT_TRUE(inside.contains(label->geometry())) << label->text().toStdString();
  }
  click(childrenOf<DrawnButton>(*dialog()).first());
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_TRUE(window->isVisible());
}

TEST_F(SettingsWindowTest, IsHiddenWhenItIsClosedAndShownAgainAsItWas) {
  open();
  window->findChild<QScrollArea*>()->verticalScrollBar()->setValue(200);
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
  host.files.edit("/config/defaults.json", R"({"limit": 70})");
  window->present();
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->findChild<QScrollArea*>()->verticalScrollBar()->value(), 200);
  EXPECT_NE(stepper("Alert when charging reaches 70%"), nullptr);
}

TEST_F(SettingsWindowTest, CanBeWorkedThroughWithTheTabKey) {
  open();
  window->activateWindow();
  EXPECT_TRUE(waitFor([&] { return window->isActiveWindow(); }));
  std::set<QWidget*> reached;
  for (int i = 0; i < 100; ++i) {
    QTest::keyClick(window->focusWidget() != nullptr ? window->focusWidget() : window.get(),
                    Qt::Key_Tab);
    reached.insert(window->focusWidget());
  }
  // Ten switches, four numbers, five sounds and the button; the times are disabled.
  EXPECT_GE(reached.size(), 21U);
}

}  // namespace
}  // namespace lumora::test
