// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DbusMenu.h"

#include "Platform/Linux/TrayInterfaces.h"

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

/// What an event does: nothing unless it is a click.
std::function<void()> effect(const MenuItems& items, MenuItems::Id id, const Glib::ustring& event) {
  return event == "clicked" ? items.chosen(id) : nullptr;
}

}  // namespace

DbusMenu::DbusMenu(BusConnection session, std::string path, std::function<Menu()> menu)
    : menu_(std::move(menu)),
      object_(std::move(session), std::move(path), kDbusMenuInterface, members()) {}

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
                         {"TextDirection", [] { return variant(Glib::ustring("ltr")); }},
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
  return {.afterwards = effect(items(), id, argument<Glib::ustring>(arguments, 1))};
}

DbusMenu::Answer DbusMenu::eventGroup(const Arguments& arguments) {
  Ids ids;
  std::vector<std::function<void()>> effects;
  Glib::VariantContainerBase events;
  arguments.get_child(events);
  for (gsize index = 0; index < events.get_n_children(); ++index) {
    Glib::VariantContainerBase event;
    events.get_child(event, index);
    ids.push_back(argument<Id>(event, 0));
    if (!items().contains(ids.back())) continue;
    effects.push_back(effect(items(), ids.back(), argument<Glib::ustring>(event, 1)));
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
  const bool changed = wasTold && now != *told_;
  told_ = std::move(now);
  if (!changed) return false;
  ++revision_;
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
  for (const Id id : ids) (items().contains(id) ? sorted.known : sorted.unknown).push_back(id);
  return sorted;
}

/// As the interface has it, a group of which no item is known gets an error.
DbusMenu::Sorted DbusMenu::checkedGroup(const std::vector<Id>& ids) {
  Sorted group = sorted(ids);
  if (group.known.empty() && !ids.empty()) checked(ids.front());
  return group;
}

}  // namespace lumora
