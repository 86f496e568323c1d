// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Laptop.h"
#include "Platform/Linux/DesktopNotifications.h"
#include "Support/FakeSoundPlayer.h"
#include "WaitFor.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

/// Sends to the real notification server of the simulated laptop.
class DesktopNotificationsTest : public testing::Test {
 protected:
  DesktopNotificationsTest() {
    laptop.reset();
    notifications.setCategories({{"CATEGORY", {{"SNOOZE", "Snooze 1 hour"}}}});
    notifications.setResponseHandler(
        [this](const std::string& action, const std::function<void()>& completionHandler) {
          actions.push_back(action);
          completionHandler();
        });
  }

  void add(const std::string& identifier, const std::string& title,
           NotificationSound sound = DefaultSound{}) {
    notifications.add({identifier, title, "Body of " + title, "CATEGORY", std::move(sound)});
  }

  /// What the server got once it has answered that many.
  std::vector<Laptop::Notification> shown(std::size_t count) {
    std::vector<Laptop::Notification> got;
    EXPECT_TRUE(waitFor([&] {
      got = laptop.notifications();
      return std::count_if(got.begin(), got.end(), [](const auto& one) { return one.id != 0; }) >=
             static_cast<std::ptrdiff_t>(count);
    }));
    drainMainLoop();
    EXPECT_EQ(got.size(), count);
    got.resize(count);
    return got;
  }

  Laptop laptop;
  PermissionStore permissions{laptop.session(), "org.lumora.Test"};
  FakeSoundPlayer player;
  DesktopNotifications notifications{
      laptop.session(), {"org.lumora.Test", "/sounds"}, permissions, player};
  std::vector<std::string> actions;
};

TEST_F(DesktopNotificationsTest, ShowsTitleBodyAndTheButton) {
  add("low", "Low battery");
  const auto got = shown(1).front();
  EXPECT_EQ(got.summary, "Low battery");
  EXPECT_EQ(got.body, "Body of Low battery");
  EXPECT_EQ(got.actions, (std::vector<Glib::ustring>{"SNOOZE", "Snooze 1 hour"}));
  EXPECT_EQ(valueOr<Glib::ustring>(got.hints.at("desktop-entry")), "org.lumora.Test");
}

TEST_F(DesktopNotificationsTest, MayEndWhileAQuestionIsOnItsWay) {
  {
    DesktopNotifications ended(laptop.session(), {"org.lumora.Test", "/sounds"}, permissions,
                               player);
    ended.add({"low", "Asked for", "Body", "CATEGORY", DefaultSound{}});
  }
  add("low", "Shown");
  EXPECT_EQ(shown(1).front().summary, "Shown");
}

TEST_F(DesktopNotificationsTest, ReplacesTheOneOfTheSameIdentifier) {
  add("chargeLimit", "First");
  const auto first = shown(1).back();
  add("low", "Other");
  add("chargeLimit", "Second");
  const auto got = shown(3);
  EXPECT_EQ(got[1].replacesId, 0U);
  EXPECT_EQ(got[2].replacesId, first.id);
  EXPECT_EQ(got[2].id, first.id);
}

TEST_F(DesktopNotificationsTest, ReplacesAlsoWhatIsStillOnItsWay) {
  add("chargeLimit", "First");
  add("low", "Waiting");
  add("low", "Newer");
  add("chargeLimit", "Second");
  const auto got = shown(3);
  EXPECT_EQ(got[0].summary, "First");
  EXPECT_EQ(got[1].summary, "Newer");
  EXPECT_EQ(got[2].summary, "Second");
  EXPECT_EQ(got[2].replacesId, got[0].id);
}

TEST_F(DesktopNotificationsTest, HandsOnTheButtonPressed) {
  add("low", "Low battery");
  laptop.pressAction(shown(1).front().id);
  EXPECT_TRUE(waitFor([&] { return !actions.empty(); }));
  EXPECT_EQ(actions, std::vector<std::string>{"SNOOZE"});
}

TEST_F(DesktopNotificationsTest, IgnoresAButtonOfAnotherProgram) {
  PermissionStore otherPermissions(laptop.session(), "org.example.Other");
  DesktopNotifications other(laptop.session(), {"org.example.Other", "/sounds"}, otherPermissions,
                             player);
  other.setCategories({{"CATEGORY", {{"SNOOZE", "Later"}}}});
  bool otherPressed = false;
  other.setResponseHandler([&](const auto&, const auto&) { otherPressed = true; });
  other.add({"meeting", "Meeting", "Soon", "CATEGORY", Silence{}});
  laptop.pressAction(shown(1).front().id);
  EXPECT_TRUE(waitFor([&] { return otherPressed; }));
  EXPECT_TRUE(actions.empty());
}

TEST_F(DesktopNotificationsTest, StartsAnewAfterTheUserClosedOne) {
  add("low", "First");
  laptop.dismiss(shown(1).front().id);
  bool forgotten = false;
  EXPECT_TRUE(waitFor([&] {
    add("low", "Again");
    const auto got = laptop.notifications();
    forgotten = got.size() > 1 && got.back().replacesId == 0;
    return forgotten;
  }));
}

TEST_F(DesktopNotificationsTest, ForgetsTheIdsOfAServerThatRestarted) {
  add("low", "First");
  EXPECT_NE(shown(1).front().id, 0U);
  laptop.kill("notifications");
  laptop.start("notifications");
  drainMainLoop();
  add("low", "Second");
  EXPECT_EQ(shown(2).back().replacesId, 0U);
}

TEST_F(DesktopNotificationsTest, GoesOnWhenAServerComes) {
  laptop.kill("notifications");
  add("low", "Perhaps lost");
  drainMainLoop();
  laptop.start("notifications");
  EXPECT_TRUE(waitFor([&] {
    add("lowPower", "Shown");
    const auto got = laptop.notifications();
    return !got.empty() && got.back().summary == "Shown" && got.back().id != 0;
  }));
}

TEST_F(DesktopNotificationsTest, NeverWaitsForAServerThatHangs) {
  laptop.hang("notifications");
  const auto start = std::chrono::steady_clock::now();
  add("low", "First");
  add("chargeLimit", "Second");
  EXPECT_LT(std::chrono::steady_clock::now() - start, 100ms);
  laptop.resume("notifications");
  EXPECT_EQ(shown(2).back().summary, "Second");
}

TEST_F(DesktopNotificationsTest, SendsNothingOnceDenied) {
  laptop.session()->call_sync(
      "/org/freedesktop/impl/portal/PermissionStore", "org.freedesktop.impl.portal.PermissionStore",
      "SetPermission",
      Glib::Variant<std::tuple<Glib::ustring, bool, Glib::ustring, Glib::ustring,
                               std::vector<Glib::ustring>>>::create({"notifications",
                                                                     true,
                                                                     "notification",
                                                                     "org.lumora.Test",
                                                                     {"no"}}),
      "org.freedesktop.impl.portal.PermissionStore");
  add("low", "Unwanted");
  std::optional<AuthorizationStatus> status;
  notifications.authorizationStatus([&](AuthorizationStatus answer) { status = answer; });
  EXPECT_TRUE(waitFor([&] { return status.has_value(); }));
  EXPECT_EQ(status, AuthorizationStatus::denied);
  notifications.requestAuthorization();
  EXPECT_TRUE(waitFor([&] {
    notifications.authorizationStatus([&](AuthorizationStatus answer) { status = answer; });
    return status == AuthorizationStatus::authorized;
  }));
  add("health", "Wanted");
  EXPECT_EQ(shown(1).front().summary, "Wanted");
  EXPECT_EQ(player.played.size(), 1U);
}

TEST_F(DesktopNotificationsTest, PlaysTheSoundWhereTheServerDoesNot) {
  add("low", "Default");
  add("health", "Named", NamedSound{"Ping"});
  add("tooLong", "Silent", Silence{});
  for (const auto& got : shown(3)) {
    EXPECT_TRUE(valueOr<bool>(got.hints.at("suppress-sound")));
    EXPECT_FALSE(got.hints.contains("sound-name"));
    EXPECT_FALSE(got.hints.contains("sound-file"));
  }
  EXPECT_EQ(player.played,
            (std::vector<NotificationSound>{DefaultSound{}, NamedSound{"Ping"}, Silence{}}));
}

TEST_F(DesktopNotificationsTest, LeavesTheSoundToAServerThatPlaysIt) {
  laptop.mockNotifications({"body", "actions", "sound"});
  add("low", "Default");
  add("health", "Named", NamedSound{"Ping"});
  add("tooLong", "Silent", Silence{});
  const auto got = shown(3);
  EXPECT_EQ(valueOr<Glib::ustring>(got[0].hints.at("sound-name")), "message-new-instant");
  EXPECT_EQ(valueOr<Glib::ustring>(got[1].hints.at("sound-file")), "/sounds/Ping.oga");
  EXPECT_TRUE(valueOr<bool>(got[2].hints.at("suppress-sound")));
  EXPECT_FALSE(got[2].hints.contains("sound-name"));
  EXPECT_TRUE(player.played.empty());
}

TEST_F(DesktopNotificationsTest, HasNoButtonsWhereTheServerHasNone) {
  laptop.mockNotifications({"body"});
  add("low", "Low battery");
  EXPECT_TRUE(shown(1).front().actions.empty());
}

TEST_F(DesktopNotificationsTest, ShowsNothingWithoutABus) {
  PermissionStore nobody(nullptr, "org.lumora.Test");
  DesktopNotifications none(nullptr, {"org.lumora.Test", "/sounds"}, nobody, player);
  none.add({"low", "Low battery", "Body", "CATEGORY", DefaultSound{}});
  drainMainLoop();
  EXPECT_TRUE(laptop.notifications().empty());
  EXPECT_TRUE(player.played.empty());
}

}  // namespace
}  // namespace lumora::test
