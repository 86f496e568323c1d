// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeBus.h"
#include "Fuzzer.h"
#include "Linux/Bus/Variants.h"
#include "Linux/Tray/StatusNotifierItem.h"
#include "Script.h"
#include "Support/FakeRunLoop.h"

#include <optional>
#include <string>

#include <sys/prctl.h>
#include <unistd.h>

namespace lumora::test {
namespace {

constexpr std::size_t kMostLines = 64;
constexpr std::size_t kMostEntries = 16;

std::string pathOf(std::string_view object) {
  return object == "menu" ? "/MenuBar" : "/org/lumora/Lumora/StatusItem";
}

/// The program's item, and the tray that the script plays.
class Tray {
 public:
  explicit Tray(FakeBus& bus) : bus_(bus) {
    using ProcessId = std::tuple<std::uint32_t>;
    bus.answerUsually("GetConnectionUnixProcessID",
                      Glib::Variant<ProcessId>::create({static_cast<std::uint32_t>(getpid())}));
    item_.emplace(FakeBus::connection(), runLoop_,
                  StatusNotifierItem::Identity{"lumora", "Lumora", "/icons"},
                  StatusNotifierItem::Callbacks{
                      .activated = [this](std::optional<ScreenPoint>) { ++clicks_; },
                      .activationToken =
                          [](const std::string& token) {
                            expect(Glib::ustring(token).validate(), "a token is a text");
                          },
                      .menu = [this] { return menu_; },
                      .face = [this](TextPlace place) { return face(place); },
                      .draw =
                          [](const DrawnIcon& icon) {
                            return std::vector<Icon>{{1, 1, {255, 1, 2, 3}},
                                                     {1, 1, {icon.text.begin(), icon.text.end()}}};
                          }});
  }

  void follow(std::string_view line) {
    Words words(line);
    const auto command = words.next();
    if (!item_) return;
    if (command == "show") return show(words);
    if (command == "menu") return changeMenu(words);
    if (command == "call") return call(words);
    if (command == "get") return get(words);
    if (command == "all") return bus_.getAllProperties(pathOf(words.next()));
    if (command == "tray") return appear(words);
    if (command == "host") {
      return bus_.signal("StatusNotifierHostRegistered", argumentsFrom(words));
    }
    if (command == "answer") return answer(words);
    if (command == "settle") return bus_.settle();
    if (command == "wait") return runLoop_.advance(std::chrono::seconds(2));
    // With whatever is still on its way.
    if (command == "leave") item_.reset();
  }

  void end() {
    bus_.settle();
    expect(clicks_ + chosen_ <= clicked_, "only a click does something");
  }

 private:
  void show(Words& words) {
    name_ = words.text();
    text_ = words.text();
    number_ = words.text();
    tip_ = words.text();
    item_->show();
  }

  StatusItemFace face(TextPlace place) const {
    StatusItemFace face{.iconName = name_, .tooltipTitle = tip_};
    if (place == TextPlace::label) {
      face.label = face.labelGuide = text_;
    } else if (!number_.empty()) {
      face.iconName.clear();
      face.drawn = DrawnIcon{.percent = static_cast<int>(number_.size()),
                             .text = place == TextPlace::wide ? text_ : number_};
    }
    return face;
  }

  void changeMenu(Words& words) {
    menu_.clear();
    while (!words.empty() && menu_.size() < kMostEntries) {
      const auto label = words.text();
      menu_.push_back({label, label.empty() ? std::function<void()>() : [this] { ++chosen_; }});
    }
  }

  void call(Words& words) {
    const auto path = pathOf(words.next());
    const auto method = words.text();
    // A group has at most that many events.
    clicked_ += 16;
    bus_.call(path, method, argumentsFrom(words));
  }

  void get(Words& words) {
    const auto path = pathOf(words.next());
    bus_.getProperty(path, words.text());
  }

  /// A tray of that process: it is this one, under another name.
  void appear(Words& words) {
    prctl(PR_SET_NAME, words.text().c_str());
    using Names = std::tuple<Glib::ustring, Glib::ustring, Glib::ustring>;
    bus_.signal("NameOwnerChanged",
                Glib::Variant<Names>::create({"org.kde.StatusNotifierWatcher", "", ":1.2"}));
  }

  void answer(Words& words) {
    const auto method = words.text();
    bus_.answer(method, argumentsFrom(words));
  }

  FakeBus& bus_;
  FakeClock clock_;
  FakeRunLoop runLoop_{clock_};
  Menu menu_;
  std::string name_;
  std::string text_;
  std::string number_;
  std::string tip_;
  std::optional<StatusNotifierItem> item_;
  std::size_t clicked_ = 0;
  std::size_t clicks_ = 0;
  std::size_t chosen_ = 0;
};

}  // namespace

/// A script of what the program shows ("show", "menu") and of what a tray calls, asks and answers.
void fuzz(std::string_view input) {
  FakeBus& bus = FakeBus::get();
  prctl(PR_SET_NAME, "tray");
  {
    Tray tray(bus);
    Pieces lines(input, '\n');
    for (std::size_t line = 0; line < kMostLines && !lines.empty(); ++line) {
      tray.follow(lines.next());
    }
    tray.end();
  }
  bus.reset();
}

}  // namespace lumora::test
