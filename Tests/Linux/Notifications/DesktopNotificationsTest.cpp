// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/BusClient.h"
#include "Linux/Laptop.h"
#include "Linux/Notifications/DesktopNotifications.h"
#include "Linux/WaitFor.h"
#include "Support/FakeSoundPlayer.h"

#include <algorithm>

#include <gmock/gmock.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;
using testing::UnorderedElementsAre;

/// Xfce's settings as far as they tell of its notifications, owning `org.xfce.Xfconf`.
class XfceSettings {
 public:
  XfceSettings()
      : table_([this](const auto&, const auto&, const auto&, const auto&, const auto&,
                      const auto& keys, const auto& invocation) {
          ++asked;
          const bool known = argument<Glib::ustring>(keys, 0) == "xfce4-notifyd" &&
                             argument<Glib::ustring>(keys, 1) == "/do-not-disturb";
          invocation->return_value(
              busArguments<Glib::VariantBase>(Glib::Variant<bool>::create(known && doNotDisturb)));
        }) {
    const auto node = Gio::DBus::NodeInfo::create_for_xml(
        "<node><interface name='org.xfce.Xfconf'><method name='GetProperty'>"
        "<arg type='s'/><arg type='s'/><arg type='v' "
        "direction='out'/></method></interface></node>");
    object_ =
        client_.connection()->register_object("/org/xfce/Xfconf", node->lookup_interface(), table_);
    name("RequestName", arguments(Glib::ustring("org.xfce.Xfconf"), std::uint32_t{0}));
  }

  ~XfceSettings() {
    client_.connection()->unregister_object(object_);
    name("ReleaseName", arguments(Glib::ustring("org.xfce.Xfconf")));
  }

  XfceSettings(const XfceSettings&) = delete;
  XfceSettings& operator=(const XfceSettings&) = delete;

  bool doNotDisturb = false;
  int asked = 0;

 private:
  void name(const char* method, const Glib::VariantContainerBase& what) {
    EXPECT_EQ(client_.call(kMessageBus.service, kMessageBus.path, kMessageBus.name, method, what)
                  .get<std::uint32_t>(),
              1U);
  }

  BusClient client_;
  Gio::DBus::InterfaceVTable table_;
  guint object_ = 0;
};

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
    notifications.add(request(identifier, title, std::move(sound)), [this] { return stillSo; });
  }

  static NotificationRequest request(const std::string& identifier, const std::string& title,
                                     NotificationSound sound) {
    return {identifier, title, "Body of " + title, "CATEGORY", std::move(sound)};
  }

  /// Adds it, and waits until a server was asked to show it, and where there is none that failed.
  void addAndAsk(const std::string& identifier, const std::string& title) {
    const auto before = laptop.notifications().size();
    add(identifier, title);
    EXPECT_TRUE(waitFor([&] { return laptop.notifications().size() > before; }));
    // The bus answered before the laptop did.
    drainMainLoop();
  }

  /// What was shown in the end, in its order: `last` is added, with a sound of its own, and must be
  /// the last to be shown and heard.
  std::vector<std::string> shownUntil(const std::string& last) {
    drainMainLoop();
    const auto heard = player.played.size();
    notifications.add(request("last", last, kLastSound), [] { return true; });
    std::vector<std::string> titles;
    EXPECT_TRUE(waitFor([&] {
      titles.clear();
      for (const auto& sent : laptop.notifications()) {
        if (sent.id != 0) titles.push_back(sent.summary);
      }
      return !titles.empty() && titles.back() == last && player.played.size() > heard &&
             player.played.back() == kLastSound;
    }));
    return titles;
  }

  void restart() {
    laptop.kill("notifications");
    laptop.start("notifications");
    drainMainLoop();
  }

  void setPermission(const Glib::ustring& permission) {
    using Permission = std::vector<Glib::ustring>;
    laptop.session()->call_sync(
        "/org/freedesktop/impl/portal/PermissionStore",
        "org.freedesktop.impl.portal.PermissionStore", "SetPermission",
        busArguments<Glib::ustring, bool, Glib::ustring, Glib::ustring, Permission>(
            "notifications", true, "notification", "org.lumora.Test", {permission}),
        "org.freedesktop.impl.portal.PermissionStore");
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

  const NotificationSound kLastSound = NamedSound{"Pop"};
  Laptop laptop;
  PermissionStore permissions{laptop.session(), "org.lumora.Test"};
  FakeSoundPlayer player;
  bool stillSo = true;
  DesktopNotifications notifications{
      laptop.session(), {"org.lumora.Test", "/sounds", "/icons/lumora.svg"}, permissions, player};
  std::vector<std::string> actions;
};

TEST_F(DesktopNotificationsTest, ShowsTitleBodyAndTheButton) {
  add("low", "Low battery");
  const auto got = shown(1).front();
  EXPECT_EQ(got.summary, "Low battery");
  EXPECT_EQ(got.body, "Body of Low battery");
  EXPECT_EQ(got.actions, (std::vector<Glib::ustring>{"SNOOZE", "Snooze 1 hour"}));
  EXPECT_EQ(valueOr<Glib::ustring>(got.hints.at("desktop-entry")), "org.lumora.Test");
  EXPECT_EQ(got.icon, "/icons/lumora.svg");
}

TEST_F(DesktopNotificationsTest, MayEndWhileAQuestionIsOnItsWay) {
  {
    DesktopNotifications ended(
        laptop.session(), {"org.lumora.Test", "/sounds", "/icons/lumora.svg"}, permissions, player);
    ended.add({"low", "Asked for", "Body", "CATEGORY", DefaultSound{}}, [] { return true; });
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
  DesktopNotifications other(laptop.session(), {"org.example.Other", "/sounds", "/icons/other.svg"},
                             otherPermissions, player);
  other.setCategories({{"CATEGORY", {{"SNOOZE", "Later"}}}});
  bool otherPressed = false;
  other.setResponseHandler([&](const auto&, const auto&) { otherPressed = true; });
  other.add({"meeting", "Meeting", "Soon", "CATEGORY", Silence{}}, [] { return true; });
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

TEST_F(DesktopNotificationsTest, ShowsToAServerThatComesWhatNoneWasThereFor) {
  laptop.kill("notifications");
  addAndAsk("low", "First");
  addAndAsk("health", "Other");
  laptop.start("notifications");
  EXPECT_EQ(shownUntil("Last"), (std::vector<std::string>{"First", "Other", "Last"}));
  EXPECT_EQ(player.played.size(), 3U);
}

TEST_F(DesktopNotificationsTest, ShowsToAServerThatComesTheNewestOfEachIdentifier) {
  laptop.kill("notifications");
  addAndAsk("low", "First");
  addAndAsk("low", "Newer");
  laptop.start("notifications");
  EXPECT_EQ(shownUntil("Last"), (std::vector<std::string>{"Newer", "Last"}));
}

TEST_F(DesktopNotificationsTest, ShowsAgainWhatAServerDiedOver) {
  add("tooLong", "Seen");
  EXPECT_EQ(shown(1).front().summary, "Seen");
  laptop.hang("notifications");
  addAndAsk("low", "First");
  add("health", "Waiting");
  restart();
  // Which of the two is sent first depends on which of the server's end and return is heard first.
  EXPECT_THAT(shownUntil("Last"), UnorderedElementsAre("Seen", "First", "Waiting", "Last"));
}

TEST_F(DesktopNotificationsTest, ShowsNothingTwiceHoweverOftenServersCome) {
  laptop.kill("notifications");
  addAndAsk("low", "First");
  laptop.start("notifications");
  EXPECT_EQ(shownUntil("Second"), (std::vector<std::string>{"First", "Second"}));
  restart();
  EXPECT_EQ(shownUntil("Third"), (std::vector<std::string>{"First", "Second", "Third"}));
}

TEST_F(DesktopNotificationsTest, DropsWhatIsNoLongerSoWhenAServerComes) {
  laptop.kill("notifications");
  addAndAsk("low", "First");
  stillSo = false;
  laptop.start("notifications");
  EXPECT_EQ(shownUntil("Last"), std::vector<std::string>{"Last"});
  EXPECT_EQ(player.played, std::vector<NotificationSound>{kLastSound});
}

TEST_F(DesktopNotificationsTest, StartsNoServerForWhatComesLate) {
  laptop.kill("notifications");
  addAndAsk("low", "First");
  laptop.start("notifications");
  shownUntil("Last");
  const auto sent = laptop.notifications();
  ASSERT_EQ(sent.size(), 3U);
  EXPECT_TRUE(sent[0].starts);
  EXPECT_EQ(sent[1].summary, "First");
  EXPECT_FALSE(sent[1].starts);
  EXPECT_TRUE(sent[2].starts);
}

TEST_F(DesktopNotificationsTest, DropsWhatIsNoLongerSoWhenAServerGoesOn) {
  add("tooLong", "Seen");
  EXPECT_EQ(shown(1).front().summary, "Seen");
  laptop.hang("notifications");
  addAndAsk("low", "First");
  add("health", "Waiting");
  stillSo = false;
  laptop.resume("notifications");
  // By then the answer is here, too.
  EXPECT_TRUE(waitFor([&] { return player.played.size() == 2; }));
  EXPECT_EQ(shownUntil("Last"), (std::vector<std::string>{"Seen", "First", "Last"}));
}

TEST_F(DesktopNotificationsTest, DropsWhatIsNoLongerSoWhenAServerAtLastTellsWhatItCanDo) {
  laptop.hang("notifications");
  add("low", "First");
  stillSo = false;
  laptop.resume("notifications");
  EXPECT_EQ(shownUntil("Last"), std::vector<std::string>{"Last"});
}

TEST_F(DesktopNotificationsTest, NeitherShowsNorPlaysLaterWhatIsDeniedThen) {
  laptop.kill("notifications");
  addAndAsk("low", "First");
  setPermission("no");
  laptop.start("notifications");
  drainMainLoop();
  std::optional<AuthorizationStatus> status;
  notifications.authorizationStatus([&](AuthorizationStatus answer) { status = answer; });
  EXPECT_TRUE(waitFor([&] { return status.has_value(); }));
  setPermission("yes");
  restart();
  EXPECT_EQ(shownUntil("Last"), std::vector<std::string>{"Last"});
  EXPECT_EQ(player.played, std::vector<NotificationSound>{kLastSound});
}

TEST_F(DesktopNotificationsTest, NeverWaitsForAServerThatHangs) {
  laptop.hang("notifications");
  const auto start = std::chrono::steady_clock::now();
  add("low", "First");
  add("chargeLimit", "Second");
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
  laptop.resume("notifications");
  EXPECT_EQ(shown(2).back().summary, "Second");
}

TEST_F(DesktopNotificationsTest, SendsNothingOnceDenied) {
  setPermission("no");
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
  EXPECT_EQ(shownUntil("Wanted"), std::vector<std::string>{"Wanted"});
  EXPECT_EQ(player.played, std::vector<NotificationSound>{kLastSound});
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
  EXPECT_TRUE(waitFor([&] { return player.played.size() == 3; }));
  EXPECT_EQ(player.played,
            (std::vector<NotificationSound>{DefaultSound{}, NamedSound{"Ping"}, Silence{}}));
}

TEST_F(DesktopNotificationsTest, IsSilentWhileTheServerIsNotToDisturb) {
  laptop.mockNotifications({"body", "actions"});
  const auto setInhibited = [&](bool inhibited) {
    laptop.session()->call_sync("/org/freedesktop/Notifications", "org.freedesktop.DBus.Mock",
                                "UpdateProperties",
                                busArguments<Glib::ustring, Properties>(
                                    "org.freedesktop.Notifications",
                                    {{"Inhibited", Glib::Variant<bool>::create(inhibited)}}),
                                "org.freedesktop.Notifications");
  };
  setInhibited(true);
  add("low", "Not to be heard", NamedSound{"Ping"});
  EXPECT_EQ(shown(1).front().summary, "Not to be heard");
  setInhibited(false);
  add("health", "To be heard", NamedSound{"Pop"});
  EXPECT_TRUE(waitFor([&] { return !player.played.empty(); }));
  EXPECT_EQ(player.played, (std::vector<NotificationSound>{NamedSound{"Pop"}}));
}

TEST_F(DesktopNotificationsTest, IsSilentWhileXfceIsNotToDisturb) {
  XfceSettings settings;
  settings.doNotDisturb = true;
  add("low", "Not to be heard", NamedSound{"Ping"});
  EXPECT_EQ(shown(1).front().summary, "Not to be heard");
  EXPECT_TRUE(waitFor([&] { return settings.asked == 1; }));
  settings.doNotDisturb = false;
  add("health", "To be heard", NamedSound{"Pop"});
  EXPECT_TRUE(waitFor([&] { return !player.played.empty(); }));
  EXPECT_EQ(player.played, (std::vector<NotificationSound>{NamedSound{"Pop"}}));
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
  DesktopNotifications none(nullptr, {"org.lumora.Test", "/sounds", "/icons/lumora.svg"}, nobody,
                            player);
  none.add({"low", "Low battery", "Body", "CATEGORY", DefaultSound{}}, [] { return true; });
  drainMainLoop();
  EXPECT_TRUE(laptop.notifications().empty());
  EXPECT_TRUE(player.played.empty());
}

}  // namespace
}  // namespace lumora::test
