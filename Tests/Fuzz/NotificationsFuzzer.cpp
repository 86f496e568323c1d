// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeBus.h"
#include "Fuzzer.h"
#include "Linux/Bus/Variants.h"
#include "Linux/Notifications/DesktopNotifications.h"
#include "Script.h"
#include "Support/FakeSoundPlayer.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace lumora::test {
namespace {

constexpr std::size_t kMostLines = 64;

/// The program's side, and what the script has happen to it.
class Desktop {
 public:
  explicit Desktop(FakeBus& bus) : bus_(bus) {
    notifications_.emplace(FakeBus::connection(),
                           DesktopNotifications::Identity{"org.lumora.Lumora", "/sounds"},
                           permissions_, player_);
    notifications_->setCategories({{"CATEGORY", {{"SNOOZE", "Snooze 1 hour"}}}});
    notifications_->setResponseHandler(
        [](const std::string& action, const std::function<void()>& completionHandler) {
          expect(Glib::ustring(action).validate(), "an action is a text");
          completionHandler();
        });
    bus.answerUsually("Notify", Glib::Variant<std::tuple<std::uint32_t>>::create({1}));
    bus.answerUsually(
        "GetCapabilities",
        Glib::Variant<std::tuple<std::vector<Glib::ustring>>>::create({{"actions", "body"}}));
  }

  void follow(std::string_view line) {
    Words words(line);
    const auto command = words.next();
    if (!notifications_) return;
    if (command == "add") return add(words);
    if (command == "answer") return answer(words);
    if (command == "refuse") return bus_.answer(words.text(), std::nullopt);
    if (command == "signal") return signal(words);
    if (command == "restart") return bus_.signal("NameOwnerChanged", argumentsFrom(words));
    if (command == "ask") {
      return notifications_->authorizationStatus([this](AuthorizationStatus) { ++answered_; });
    }
    if (command == "allow") return notifications_->requestAuthorization();
    if (command == "settle") return bus_.settle();
    // With whatever is still on its way.
    if (command == "leave") notifications_.reset();
  }

  void end() {
    bus_.settle();
    for (std::size_t refusal = 0; refusal <= kMostLines; ++refusal) comeServer();
    std::set<std::string> shown;
    for (const auto& call : bus_.heard()) {
      if (call.method != "Notify" || !call.succeeded) continue;
      expect(shown.insert(argument<Glib::ustring>(call.arguments, 3)).second,
             "what was added is shown once at most");
    }
    expect(player_.played.size() <= shown.size(), "only what is shown is heard");
    if (!notifications_ || permissionAnswered_) return;
    for (const auto& [identifier, title] : last_) {
      expect(shown.contains(title), "the last one of each identifier is shown");
    }
  }

 private:
  /// Gets what was refused, and may refuse it again.
  void comeServer() {
    bus_.signal("NameOwnerChanged", busArguments<Glib::ustring, Glib::ustring, Glib::ustring>(
                                        "org.freedesktop.Notifications", "", ":1.3"));
    bus_.settle();
  }

  void add(Words& words) {
    const auto identifier = words.text();
    const auto sound = words.text();
    const auto title = std::to_string(++added_);
    last_[identifier] = title;
    notifications_->add({.identifier = identifier,
                         .title = title,
                         .body = "Body",
                         .categoryIdentifier = "CATEGORY",
                         .sound = sound.empty() ? NotificationSound(DefaultSound{})
                                                : NotificationSound(NamedSound{sound})},
                        [] { return true; });
  }

  void answer(Words& words) {
    const auto method = words.text();
    permissionAnswered_ = permissionAnswered_ || method == "Lookup";
    bus_.answer(method, argumentsFrom(words));
  }

  void signal(Words& words) {
    const auto name = words.text();
    bus_.signal(name.raw(), argumentsFrom(words));
  }

  FakeBus& bus_;
  PermissionStore permissions_{FakeBus::connection(), "org.lumora.Lumora"};
  FakeSoundPlayer player_;
  std::optional<DesktopNotifications> notifications_;
  bool permissionAnswered_ = false;
  std::map<std::string, std::string> last_;  // Titles by identifier.
  std::size_t added_ = 0;
  std::size_t answered_ = 0;
};

}  // namespace

/// A script of what the program asks for ("add", "ask", "allow"), of the server's next answers and
/// of its signals.
void fuzz(std::string_view input) {
  FakeBus& bus = FakeBus::get();
  {
    Desktop desktop(bus);
    Pieces lines(input, '\n');
    for (std::size_t line = 0; line < kMostLines && !lines.empty(); ++line) {
      desktop.follow(lines.next());
    }
    desktop.end();
  }
  bus.reset();
}

}  // namespace lumora::test
