// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Alerts/Notifier.h"
#include "Support/FakeNotificationCentre.h"
#include "Support/FakeRunLoop.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const PendingAlert kLow = {AlertKind::low, "Low battery", "Battery is at 15%. Plug in soon."};

bool always() { return true; }

class NotifierTest : public testing::Test {
 protected:
  /// Answers each dialog with the given button, or not at all.
  Notifier::AskUser answering(std::optional<std::size_t> button) {
    return [this, button](const Dialog& dialog, const std::function<void(std::size_t)>& answer) {
      recorder.add("dialog");
      shown = dialog;
      pending = answer;
      if (button) answer(*button);
    };
  }

  NotificationSound soundOf(const std::string& name) {
    notifier->post(kLow, name, always);
    return centre.added.back().sound;
  }

  Recorder recorder;
  FakeClock clock;
  FakeRunLoop runLoop{clock};
  FakeNotificationCentre centre{&recorder};
  Bundle bundle{"/opt/Lumora.app", "org.example.Lumora"};
  std::unique_ptr<Notifier> notifier = std::make_unique<Notifier>(centre, bundle, runLoop);
  Dialog shown;
  std::function<void(std::size_t)> pending;
};

TEST_F(NotifierTest, IsAvailableOnlyInABundleWithAnIdentifier) {
  const std::vector<std::pair<Bundle, bool>> table = {
      {{"/opt/Lumora.app", "org.example.Lumora"}, true},
      {{"/opt/Lumora.App", "org.example.Lumora"}, false},
      {{"/opt/Lumora.APP", "org.example.Lumora"}, false},
      {{"/opt/Lumora", "org.example.Lumora"}, false},
      {{"/opt/Lumora.app.old", "org.example.Lumora"}, false},
      {{"/opt/Lumora.app/bin", "org.example.Lumora"}, false},
      {{"/opt/Lumoraapp", "org.example.Lumora"}, false},
      {{"", "org.example.Lumora"}, false},
      {{"/opt/Lumora.app", std::nullopt}, false}};
  for (const auto& [where, available] : table) {
    bundle = where;
    EXPECT_EQ(notifier->available(), available) << where.location;
  }
}

TEST_F(NotifierTest, DoesNothingOutsideABundle) {
  bundle.identifier.reset();
  notifier->setup();
  notifier->requestIfNeeded(answering(0));
  notifier->post(kLow, "default", always);
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "");
}

TEST_F(NotifierTest, FindsOutAtEachPostWhetherItIsAvailable) {
  notifier->post(kLow, "default", always);
  bundle.identifier.reset();
  notifier->post(kLow, "default", always);
  bundle.identifier = "org.example.Lumora";
  notifier->post(kLow, "default", always);
  EXPECT_EQ(recorder.take(), "add low, add low");
}

TEST_F(NotifierTest, DeclaresOneCategoryWithTheSnoozeAction) {
  notifier->setup();
  const std::vector<NotificationCategory> expected = {{"LM_ALERT", {{"SNOOZE", "Snooze 1 hour"}}}};
  EXPECT_EQ(centre.categories, expected);
  EXPECT_EQ(recorder.take(), "response handler, categories");
}

TEST_F(NotifierTest, PostsTheAlertUnderTheNameOfItsKind) {
  notifier->post(kLow, "default", always);
  const NotificationRequest expected = {"low", "Low battery", "Battery is at 15%. Plug in soon.",
                                        "LM_ALERT", DefaultSound{}};
  ASSERT_EQ(centre.added.size(), 1U);
  EXPECT_EQ(centre.added[0], expected);
}

TEST_F(NotifierTest, NamesEachKind) {
  for (const AlertKind kind : kAllAlertKinds) notifier->post({kind, "", ""}, "default", always);
  EXPECT_EQ(recorder.take(), "add chargeLimit, add low, add tooLong, add health, add lowPower");
}

TEST_F(NotifierTest, PostsTwoAlertsOfAKindUnderOneName) {
  notifier->post({AlertKind::chargeLimit, "Charge limit reached", "first"}, "default", always);
  notifier->post({AlertKind::chargeLimit, "Charge limit reached", "second"}, "default", always);
  EXPECT_EQ(recorder.take(), "add chargeLimit, add chargeLimit");
  EXPECT_EQ(centre.added[1].body, "second");
}

TEST_F(NotifierTest, ChoosesTheSoundByItsName) {
  EXPECT_EQ(soundOf("none"), NotificationSound(Silence{}));
  EXPECT_EQ(soundOf("default"), NotificationSound(DefaultSound{}));
  EXPECT_EQ(soundOf("Glass"), NotificationSound(NamedSound{"Glass"}));
  EXPECT_EQ(soundOf("None"), NotificationSound(NamedSound{"None"}));
  EXPECT_EQ(soundOf(""), NotificationSound(NamedSound{""}));
}

TEST_F(NotifierTest, CompletesASnoozeBeforeItSnoozes) {
  notifier->setup();
  notifier->onSnooze = [this] { recorder.add("snoozed"); };
  recorder.take();
  centre.pick("SNOOZE");
  EXPECT_EQ(recorder.take(), "completed");
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "snoozed");
}

TEST_F(NotifierTest, CompletesAnyOtherActionAndDoesNothing) {
  notifier->setup();
  notifier->onSnooze = [this] { recorder.add("snoozed"); };
  recorder.take();
  for (const auto* action : {"default", "", "snooze", "SNOOZE "}) {
    centre.pick(action);
    runLoop.drain();
    EXPECT_EQ(recorder.take(), "completed") << action;
  }
}

TEST_F(NotifierTest, CompletesASnoozeThatNobodyHears) {
  notifier->setup();
  recorder.take();
  centre.pick("SNOOZE");
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "completed");
}

TEST_F(NotifierTest, SnoozesNotAfterItsEnd) {
  notifier->setup();
  notifier->onSnooze = [this] { recorder.add("snoozed"); };
  recorder.take();
  centre.pick("SNOOZE");
  notifier.reset();
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "completed");
}

TEST_F(NotifierTest, OnlyCompletesAnActionPickedAfterItsEnd) {
  notifier->setup();
  notifier->onSnooze = [this] { recorder.add("snoozed"); };
  recorder.take();
  notifier.reset();
  centre.pick("SNOOZE");
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "completed");
}

TEST_F(NotifierTest, ExplainsAndAsksWhileTheUserHasNotDecided) {
  notifier->requestIfNeeded(answering(0));
  centre.answerStatus(AuthorizationStatus::notDetermined);
  EXPECT_EQ(recorder.take(), "authorization status");
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "dialog, request authorization");
}

TEST_F(NotifierTest, ExplainsInTheseWords) {
  notifier->requestIfNeeded(answering(std::nullopt));
  centre.answerStatus(AuthorizationStatus::notDetermined);
  runLoop.drain();
  EXPECT_EQ(shown.message, "Allow notifications?");
  EXPECT_EQ(shown.informativeText,
            "Lumora uses notifications to remind you to unplug at your chosen charge level, when "
            "the battery is low, and when you have been plugged in too long. macOS will ask for "
            "permission next.");
  EXPECT_EQ(shown.buttons, (std::vector<std::string>{"Continue", "Not Now"}));
}

TEST_F(NotifierTest, ExplainsAgainAfterNotNow) {
  for (int time = 0; time < 2; ++time) {
    notifier->requestIfNeeded(answering(1));
    centre.answerStatus(AuthorizationStatus::notDetermined);
    runLoop.drain();
    EXPECT_EQ(recorder.take(), "authorization status, dialog");
  }
}

TEST_F(NotifierTest, ShowsNothingOnceTheUserHasDecided) {
  for (const auto status : {AuthorizationStatus::denied, AuthorizationStatus::authorized}) {
    notifier->requestIfNeeded(answering(0));
    centre.answerStatus(status);
    runLoop.drain();
    EXPECT_EQ(recorder.take(), "authorization status");
  }
}

TEST_F(NotifierTest, ShowsNothingWhenItEndsBeforeTheTurnOfTheLoop) {
  notifier->requestIfNeeded(answering(0));
  centre.answerStatus(AuthorizationStatus::notDetermined);
  notifier.reset();
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "authorization status");
}

TEST_F(NotifierTest, ShowsNothingForAStatusToldAfterItsEnd) {
  notifier->requestIfNeeded(answering(0));
  notifier.reset();
  centre.answerStatus(AuthorizationStatus::notDetermined);
  runLoop.drain();
  EXPECT_EQ(recorder.take(), "authorization status");
}

TEST_F(NotifierTest, AsksForNothingWhenTheDialogIsAnsweredAfterItsEnd) {
  notifier->requestIfNeeded(answering(std::nullopt));
  centre.answerStatus(AuthorizationStatus::notDetermined);
  runLoop.drain();
  notifier.reset();
  pending(0);
  EXPECT_EQ(recorder.take(), "authorization status, dialog");
}

}  // namespace
}  // namespace lumora::test
