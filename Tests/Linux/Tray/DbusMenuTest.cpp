// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/SignalSubscription.h"
#include "Linux/BusClient.h"
#include "Linux/Laptop.h"
#include "Linux/Tray/DbusMenu.h"
#include "Linux/WaitFor.h"

#include <limits>
#include <map>
#include <numeric>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using Ids = std::vector<std::int32_t>;
using Names = std::vector<Glib::ustring>;
using Lines = std::vector<std::string>;
using Item = std::tuple<std::int32_t, Properties>;

constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

/// The arguments of EventGroup in GVariant's text format.
Glib::VariantContainerBase parsed(const std::string& text) {
  GVariant* const value =
      g_variant_parse(G_VARIANT_TYPE("(a(isvu))"), text.c_str(), nullptr, nullptr, nullptr);
  return Glib::VariantContainerBase(value);
}

/// What GNOME shows of a menu: it asks for the layout again when that has changed, but of lines
/// that it knows only what ItemsPropertiesUpdated tells of them.
class GnomesMenu {
 public:
  explicit GnomesMenu(const Glib::ustring& program)
      : program_(program),
        layoutUpdated_(client_.connection(), source("LayoutUpdated"),
                       [this](const auto& /*arguments*/) { layoutIsNew_ = true; }),
        propertiesUpdated_(client_.connection(), source("ItemsPropertiesUpdated"),
                           [this](const auto& arguments) { onUpdated(arguments); }) {
    readLayout();
  }

  /// The lines as they are seen when the menu is opened; in front of one that cannot be chosen,
  /// "-".
  std::vector<std::string> open() {
    client_.call(program_, "/MenuBar", "com.canonical.dbusmenu", "AboutToShow", arguments(0));
    client_.heard(program_);
    if (std::exchange(layoutIsNew_, false)) readLayout();
    std::vector<std::string> lines;
    for (const auto& [id, properties] : lines_) {
      const auto label = properties.find("label");
      lines.push_back((properties.contains("enabled") ? "-" : "") +
                      (label == properties.end() ? "" : valueOr<Glib::ustring>(label->second)));
    }
    return lines;
  }

 private:
  SignalSubscription::Source source(const char* member) const {
    return {program_, "/MenuBar", "com.canonical.dbusmenu", member};
  }

  void readLayout() {
    const auto told = client_.call(program_, "/MenuBar", "com.canonical.dbusmenu",
                                   "GetGroupProperties", arguments(Ids{}, Names{}));
    std::map<std::int32_t, Properties> lines;
    for (const auto& [id, properties] : told.get<std::vector<Item>>()) {
      if (id == 0) continue;
      const auto known = lines_.find(id);
      lines[id] = known == lines_.end() ? properties : known->second;
    }
    lines_ = std::move(lines);
  }

  void onUpdated(const Glib::VariantContainerBase& arguments) {
    using Removed = std::vector<std::tuple<std::int32_t, Names>>;
    for (const auto& [id, properties] : argument<std::vector<Item>>(arguments, 0)) {
      if (!lines_.contains(id)) continue;
      for (const auto& [name, value] : properties) lines_[id][name] = value;
    }
    for (const auto& [id, names] : argument<Removed>(arguments, 1)) {
      if (!lines_.contains(id)) continue;
      for (const auto& name : names) lines_[id].erase(name);
    }
  }

  Glib::ustring program_;
  BusClient client_;
  std::map<std::int32_t, Properties> lines_;
  bool layoutIsNew_ = false;
  SignalSubscription layoutUpdated_;
  SignalSubscription propertiesUpdated_;
};

/// Asks as trays do, from a connection of its own.
class DbusMenuTest : public testing::Test {
 protected:
  DbusMenuTest() { tray.hear("/MenuBar"); }

  MenuEntry entry(const std::string& label) {
    return {label, [this, label] { chosen.push_back(label); }};
  }

  BusClient::Reply call(const char* method, const Glib::VariantContainerBase& sent = {}) const {
    return tray.call(laptop.session()->get_unique_name(), "/MenuBar", "com.canonical.dbusmenu",
                     method, sent);
  }

  BusClient::Reply layout(std::int32_t parent = 0, std::int32_t depth = -1,
                          const Names& names = {}) const {
    return call("GetLayout", arguments(parent, depth, names));
  }

  std::string printedLayout(std::int32_t parent = 0, std::int32_t depth = -1,
                            const Names& names = {}) const {
    const auto reply = layout(parent, depth, names);
    if (!reply.values) return reply.error;
    Glib::VariantBase printed;
    reply.values->get_child(printed, 1);
    return printed.print();
  }

  BusClient::Reply event(std::int32_t id, const char* name) const {
    return call("Event", Glib::VariantContainerBase::create_tuple(
                             {variant(id), variant(name),
                              Glib::Variant<Glib::VariantBase>::create(variant("data of no use")),
                              variant(std::uint32_t{0})}));
  }

  std::vector<std::string> heard() { return tray.heard(laptop.session()->get_unique_name()); }

  Laptop laptop;
  BusClient tray;
  std::vector<std::string> chosen;
  Menu entries{entry("Open Lumora"), {"82 % · on battery", {}}, entry("Quit")};
  int asked = 0;
  DbusMenu menu{laptop.session(), "/MenuBar", [this] {
                  ++asked;
                  return entries;
                }};
};

TEST_F(DbusMenuTest, TellsTheWholeMenu) {
  EXPECT_EQ(printedLayout(),
            "(0, {'children-display': <'submenu'>}, ["
            "<(1, {'label': <'Open Lumora'>}, @av [])>, "
            "<(2, {'enabled': <false>, 'label': <'82 % · on battery'>}, @av [])>, "
            "<(3, {'label': <'Quit'>}, @av [])>])");
  EXPECT_EQ(layout().values->get_type_string(), "(u(ia{sv}av))");
}

TEST_F(DbusMenuTest, TellsOnlyAsMuchAsIsAskedFor) {
  EXPECT_EQ(printedLayout(0, 0), "(0, {'children-display': <'submenu'>}, [])");
  EXPECT_EQ(printedLayout(3, -1), "(3, {'label': <'Quit'>}, [])");
  EXPECT_EQ(printedLayout(2, 1, {"enabled", "nonsense"}), "(2, {'enabled': <false>}, [])");
  EXPECT_EQ(printedLayout(1, 1, {"enabled"}), "(1, {}, [])");
}

TEST_F(DbusMenuTest, TakesAnyDepthForADepth) {
  const std::string whole = printedLayout();
  EXPECT_EQ(printedLayout(0, 1), whole);
  EXPECT_EQ(printedLayout(0, kHighest), whole);
  EXPECT_EQ(printedLayout(0, -7), whole);
  EXPECT_EQ(printedLayout(0, kLowest), whole);
}

TEST_F(DbusMenuTest, RefusesItemsThatThereAreNot) {
  for (const std::int32_t id : {4, -1, kHighest, kLowest}) {
    EXPECT_EQ(layout(id).error, kInvalidArguments) << id;
    EXPECT_EQ(event(id, "clicked").error, kInvalidArguments) << id;
    EXPECT_EQ(call("AboutToShow", arguments(id)).error, kInvalidArguments) << id;
    EXPECT_EQ(call("GetProperty", arguments(id, Glib::ustring("label"))).error, kInvalidArguments)
        << id;
  }
  EXPECT_TRUE(chosen.empty());
}

TEST_F(DbusMenuTest, ShowsUnderscoresAndBrokenLettersAsTheyAre) {
  entries = {{"a_b__c\xFF", {}}};
  EXPECT_EQ(printedLayout(1, 0, {"label"}), "(1, {'label': <'a__b____c\uFFFD'>}, [])");
}

TEST_F(DbusMenuTest, RunsWhatIsClicked) {
  layout();
  EXPECT_TRUE(event(3, "clicked").values);
  EXPECT_TRUE(event(1, "clicked").values);
  drainMainLoop();
  EXPECT_EQ(chosen, (std::vector<std::string>{"Quit", "Open Lumora"}));
}

TEST_F(DbusMenuTest, DoesNothingForOtherEventsOrLinesThatOnlyTell) {
  layout();
  for (const char* name : {"opened", "closed", "hovered", "", "CLICKED"}) event(3, name);
  event(2, "clicked");
  event(0, "clicked");
  drainMainLoop();
  EXPECT_TRUE(chosen.empty());
}

TEST_F(DbusMenuTest, RefusesEventsThatAreNone) {
  EXPECT_EQ(call("Event").error, kInvalidArguments);
  EXPECT_EQ(call("Event", arguments(Glib::ustring("3"), 3)).error, kInvalidArguments);
  EXPECT_EQ(call("Event", arguments(3, Glib::ustring("clicked"), Glib::ustring("no variant"),
                                    std::uint32_t{0}))
                .error,
            kInvalidArguments);
  EXPECT_EQ(call("EventGroup", arguments(Ids{3})).error, kInvalidArguments);
  EXPECT_EQ(call("GetLayout", arguments(Glib::ustring("0"))).error, kInvalidArguments);
  EXPECT_TRUE(chosen.empty());
}

TEST_F(DbusMenuTest, RunsAGroupOfEventsAndNamesTheUnknown) {
  const auto some = call("EventGroup", parsed("([(3, 'clicked', <1>, 0), (9, 'clicked', <'x'>, 0),"
                                              " (1, 'hovered', <true>, 0),"
                                              " (-1, 'clicked', <1.5>, 0)],)"));
  drainMainLoop();
  EXPECT_EQ(some.get<Ids>(), (Ids{9, -1}));
  EXPECT_EQ(chosen, std::vector<std::string>{"Quit"});
  EXPECT_EQ(call("EventGroup", parsed("([(9, 'clicked', <1>, 0)],)")).error, kInvalidArguments);
  const auto none = call("EventGroup", parsed("([],)"));
  EXPECT_TRUE(none.values);
  EXPECT_EQ(none.get<Ids>(), Ids{});
}

TEST_F(DbusMenuTest, TellsPropertiesOneByOneAndInGroups) {
  EXPECT_EQ(call("GetProperty", arguments(2, Glib::ustring("enabled"))).values->print(),
            "(<false>,)");
  EXPECT_EQ(call("GetProperty", arguments(3, Glib::ustring("enabled"))).values->print(),
            "(<true>,)");
  EXPECT_EQ(call("GetProperty", arguments(3, Glib::ustring("label"))).values->print(),
            "(<'Quit'>,)");
  EXPECT_EQ(call("GetProperty", arguments(3, Glib::ustring("taste"))).error, kInvalidArguments);
  const auto group = [&](const Ids& ids, const Names& names) {
    return call("GetGroupProperties", arguments(ids, names)).values->print();
  };
  EXPECT_EQ(group({3, 77, 2}, {"enabled"}), "([(3, {}), (2, {'enabled': <false>})],)");
  EXPECT_EQ(group({-5}, {}), "([],)");
  EXPECT_EQ(call("GetGroupProperties", arguments(Ids{}, Names{})).get<std::vector<Item>>().size(),
            4U);
}

TEST_F(DbusMenuTest, AnswersForEachLineOnceHoweverOftenItIsAskedFor) {
  const Ids million(1'000'000, 3);
  EXPECT_EQ(call("GetGroupProperties", arguments(million, Names{"label"})).values->print(),
            "([(3, {'label': <'Quit'>})],)");
  Ids counting(1'000'000);
  std::iota(counting.begin(), counting.end(), -500'000);
  EXPECT_EQ(
      call("GetGroupProperties", arguments(counting, Names{})).get<std::vector<Item>>().size(), 4U);
  asked = 0;
  EXPECT_TRUE(call("AboutToShowGroup", arguments(Ids(1'000'000, 0))).values);
  EXPECT_LE(asked, 1);
}

TEST_F(DbusMenuTest, CountsAClickInAGroupOnce) {
  std::string events;
  for (int i = 0; i < 20'000; ++i) events += "(3, 'clicked', <1>, 0), (1, 'hovered', <1>, 0), ";
  EXPECT_TRUE(call("EventGroup", parsed("([" + events + "(1, 'clicked', <1>, 0)],)")).values);
  drainMainLoop();
  EXPECT_EQ(chosen, (std::vector<std::string>{"Quit", "Open Lumora"}));
}

TEST_F(DbusMenuTest, AnnouncesOnlyAMenuThatLooksDifferent) {
  const auto first = layout().get<std::uint32_t>();
  entries[0].chosen = [this] { chosen.emplace_back("Other"); };
  EXPECT_FALSE(call("AboutToShow", arguments(0)).get<bool>());
  EXPECT_EQ(layout().get<std::uint32_t>(), first);
  EXPECT_TRUE(heard().empty());

  entries[1].label = "81 % · on battery";
  EXPECT_TRUE(call("AboutToShow", arguments(0)).get<bool>());
  EXPECT_FALSE(call("AboutToShow", arguments(0)).get<bool>());
  EXPECT_EQ(heard(), (Lines{"ItemsPropertiesUpdated", "LayoutUpdated"}));
  EXPECT_EQ(layout().get<std::uint32_t>(), first + 1);

  entries[2].chosen = nullptr;
  EXPECT_EQ(layout().get<std::uint32_t>(), first + 2);
  entries.pop_back();
  EXPECT_EQ(layout().get<std::uint32_t>(), first + 3);
  EXPECT_EQ(heard(), (Lines{"ItemsPropertiesUpdated", "LayoutUpdated", "LayoutUpdated"}));
  event(1, "clicked");
  EXPECT_EQ(chosen, std::vector<std::string>{"Other"});
}

TEST_F(DbusMenuTest, IsTrueInATrayThatKeepsTheLinesItKnows) {
  GnomesMenu shown(laptop.session()->get_unique_name());
  EXPECT_EQ(shown.open(), (Lines{"Open Lumora", "-82 % · on battery", "Quit"}));
  entries[1].label = "19 % · on battery";
  EXPECT_EQ(shown.open(), (Lines{"Open Lumora", "-19 % · on battery", "Quit"}));
  entries[0].label = "End snooze";
  entries[1].chosen = [] {};
  entries[2].chosen = nullptr;
  EXPECT_EQ(shown.open(), (Lines{"End snooze", "19 % · on battery", "-Quit"}));
  entries.push_back(entry("More"));
  entries[0].label = "Snooze 1 hour";
  EXPECT_EQ(shown.open(), (Lines{"Snooze 1 hour", "19 % · on battery", "-Quit", "More"}));
  entries.erase(entries.begin());
  EXPECT_EQ(shown.open(), (Lines{"19 % · on battery", "-Quit", "More"}));
}

TEST_F(DbusMenuTest, TellsWhichMenusOfAGroupChange) {
  layout();
  entries.pop_back();
  const auto reply = call("AboutToShowGroup", arguments(Ids{0, 1, 88}));
  EXPECT_EQ(reply.get<Ids>(0), Ids{0});
  EXPECT_EQ(reply.get<Ids>(1), Ids{88});
  EXPECT_EQ(call("AboutToShowGroup", arguments(Ids{-4})).error, kInvalidArguments);
}

TEST_F(DbusMenuTest, IsAskedForOnlyWhenATrayAsks) {
  drainMainLoop();
  EXPECT_EQ(asked, 0);
  layout();
  EXPECT_GT(asked, 0);
}

TEST_F(DbusMenuTest, TellsItsVersion) {
  const auto all =
      tray.properties(laptop.session()->get_unique_name(), "/MenuBar", "com.canonical.dbusmenu");
  EXPECT_EQ(all.at("Version").print(), "3");
  EXPECT_EQ(all.at("Status").print(), "'normal'");
  EXPECT_EQ(all.at("TextDirection").print(), "'ltr'");
  EXPECT_EQ(all.at("IconThemePath").print(), "[]");
}

TEST_F(DbusMenuTest, MayBeEmpty) {
  entries.clear();
  EXPECT_EQ(printedLayout(), "(0, {'children-display': <'submenu'>}, [])");
}

}  // namespace
}  // namespace lumora::test
