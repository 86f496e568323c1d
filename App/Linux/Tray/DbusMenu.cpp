// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/DbusMenu.h"

#include "Base/Texts.h"
#include "Interfaces.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace lumora {
namespace {

using Gio::DBus::Error;
using Ids = std::vector<MenuItems::Id>;

template <typename T>
Glib::VariantBase variant(const T& value) {
  return Glib::Variant<T>::create(value);
}

Glib::VariantContainerBase tuple(const std::vector<Glib::VariantBase>& values) {
  return Glib::VariantContainerBase::create_tuple(values);
}

constexpr const char* kClicked = "clicked";

bool contains(const Ids& ids, MenuItems::Id id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

DbusMenu::DbusMenu(BusConnection session, std::string path, std::function<Menu()> menu)
    : menu_(std::move(menu)),
      object_(std::move(session), std::move(path), interfaces::dbusmenu, members()) {}

ExportedObject::Members DbusMenu::members() {
  const auto method = [this](Answer (DbusMenu::*member)(const Arguments&)) {
    return [this, member](const Arguments& arguments) { return (this->*member)(arguments); };
  };
  return {.methods = {{"GetLayout", method(&DbusMenu::layout)},
                      {"GetGroupProperties", method(&DbusMenu::groupProperties)},
                      {"GetProperty", method(&DbusMenu::property)},
                      {"Event", method(&DbusMenu::event)},
                      {"EventGroup", method(&DbusMenu::eventGroup)},
                      {"AboutToShow", method(&DbusMenu::aboutToShow)},
                      {"AboutToShowGroup", method(&DbusMenu::aboutToShowGroup)}},
          .properties = {{"Version", [] { return variant(std::uint32_t{3}); }},
                         {"TextDirection",
                          [] { return variant(Glib::ustring(isRightToLeft() ? "rtl" : "ltr")); }},
                         {"Status", [] { return variant(Glib::ustring("normal")); }},
                         {"IconThemePath", [] { return variant(MenuItems::Names{}); }}}};
}

DbusMenu::Answer DbusMenu::layout(const Arguments& arguments) {
  refresh();
  const Id parent = checked(argument<Id>(arguments, 0));
  return {.values = tuple(
              {variant(revision_), items().layout(parent, argument<std::int32_t>(arguments, 1),
                                                  argument<MenuItems::Names>(arguments, 2))})};
}

DbusMenu::Answer DbusMenu::groupProperties(const Arguments& arguments) {
  auto wanted = argument<Ids>(arguments, 0);
  if (wanted.empty()) wanted = items().ids();
  const auto names = argument<MenuItems::Names>(arguments, 1);
  std::vector<std::tuple<Id, Properties>> found;
  for (const Id id : sorted(wanted).known) found.emplace_back(id, items().properties(id, names));
  return {.values = tuple({variant(found)})};
}

DbusMenu::Answer DbusMenu::property(const Arguments& arguments) {
  const auto name = argument<Glib::ustring>(arguments, 1);
  const auto value = items().property(checked(argument<Id>(arguments, 0)), name);
  if (!value) throw Error(Error::INVALID_ARGS, "No such property: " + name);
  return {.values = tuple({variant(*value)})};
}

DbusMenu::Answer DbusMenu::event(const Arguments& arguments) {
  const Id id = checked(argument<Id>(arguments, 0));
  const bool clicked = argument<Glib::ustring>(arguments, 1) == kClicked;
  return {.afterwards = clicked ? items().chosen(id) : nullptr};
}

DbusMenu::Answer DbusMenu::eventGroup(const Arguments& arguments) {
  Ids ids;
  Ids clicked;
  std::vector<std::function<void()>> effects;
  Glib::VariantContainerBase events;
  arguments.get_child(events);
  for (gsize index = 0; index < events.get_n_children(); ++index) {
    Glib::VariantContainerBase event;
    events.get_child(event, index);
    ids.push_back(argument<Id>(event, 0));
    if (!items().contains(ids.back()) || contains(clicked, ids.back())) continue;
    if (argument<Glib::ustring>(event, 1) != kClicked) continue;
    // However often the group says so.
    clicked.push_back(ids.back());
    effects.push_back(items().chosen(ids.back()));
  }
  return {.values = tuple({variant(checkedGroup(ids).unknown)}),
          .afterwards = [effects = std::move(effects)] {
            for (const auto& run : effects) {
              if (run) run();
            }
          }};
}

DbusMenu::Answer DbusMenu::aboutToShow(const Arguments& arguments) {
  const Id id = checked(argument<Id>(arguments, 0));
  return {.values = tuple({variant(id == MenuItems::kRoot && refresh())})};
}

DbusMenu::Answer DbusMenu::aboutToShowGroup(const Arguments& arguments) {
  const Sorted ids = checkedGroup(argument<Ids>(arguments, 0));
  Ids updates;
  for (const Id id : ids.known) {
    if (id == MenuItems::kRoot && refresh()) updates.push_back(id);
  }
  return {.values = tuple({variant(updates), variant(ids.unknown)})};
}

/// What was told last; the menu as it is, if nothing was.
const MenuItems& DbusMenu::items() {
  if (!told_) told_.emplace(menu_());
  return *told_;
}

/// Asks for the menu. True when it no longer looks as it was told; this tells the tray.
bool DbusMenu::refresh() {
  const bool wasTold = told_.has_value();
  MenuItems now(menu_());
  if (!wasTold || now == *told_) {
    told_ = std::move(now);
    return false;
  }
  const auto changes = now.changesSince(*told_);
  told_ = std::move(now);
  ++revision_;
  // GNOME has the layout told again, but keeps the labels of lines that it knows; others know only
  // the layout.
  if (changes) object_.emit("ItemsPropertiesUpdated", *changes);
  object_.emit("LayoutUpdated", tuple({variant(revision_), variant(MenuItems::kRoot)}));
  return true;
}

DbusMenu::Id DbusMenu::checked(Id id) {
  if (!items().contains(id)) {
    throw Error(Error::INVALID_ARGS, "No such item: " + std::to_string(id));
  }
  return id;
}

DbusMenu::Sorted DbusMenu::sorted(const std::vector<Id>& ids) {
  Sorted sorted;
  for (const Id id : ids) {
    if (!items().contains(id)) {
      sorted.unknown.push_back(id);
    } else if (!contains(sorted.known, id)) {
      sorted.known.push_back(id);
    }
  }
  return sorted;
}

/// As the interface has it, a group of which no item is known gets an error.
DbusMenu::Sorted DbusMenu::checkedGroup(const std::vector<Id>& ids) {
  Sorted group = sorted(ids);
  if (group.known.empty() && !ids.empty()) checked(ids.front());
  return group;
}

}  // namespace lumora
