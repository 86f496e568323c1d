// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/MenuItems.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace lumora {
namespace {

/// An underscore would mark the letter after it as the line's key.
Glib::ustring escaped(const std::string& label) {
  std::string text;
  for (const char character : label) text.append(character == '_' ? 2 : 1, character);
  return Glib::ustring(text).make_valid();
}

Glib::VariantBase text(const Glib::ustring& value) {
  return Glib::Variant<Glib::ustring>::create(value);
}

Glib::VariantBase truth(bool value) { return Glib::Variant<bool>::create(value); }

}  // namespace

std::vector<MenuItems::Id> MenuItems::ids() const {
  std::vector<Id> ids(menu_.size() + 1);
  std::iota(ids.begin(), ids.end(), kRoot);
  return ids;
}

Properties MenuItems::properties(Id id, const Names& names) const {
  Properties all;
  if (id == kRoot) {
    all.emplace("children-display", text("submenu"));
  } else {
    all.emplace("label", text(escaped(entry(id).label)));
    if (!entry(id).chosen) all.emplace("enabled", truth(false));
  }
  if (names.empty()) return all;
  std::erase_if(all, [&](const auto& property) {
    return std::find(names.begin(), names.end(), property.first) == names.end();
  });
  return all;
}

std::optional<Glib::VariantBase> MenuItems::property(Id id, const Glib::ustring& name) const {
  const Properties told = properties(id, {name});
  if (!told.empty()) return told.begin()->second;
  if (name == "enabled" || name == "visible") return truth(true);
  if (name == "type") return text("standard");
  if (name == "label" || name == "children-display") return text("");
  return std::nullopt;
}

Glib::VariantContainerBase MenuItems::layout(Id id, std::int32_t depth, const Names& names) const {
  std::vector<Glib::VariantBase> children;
  if (id == kRoot && depth != 0) {
    for (Id child = 1; contains(child); ++child) children.push_back(layout(child, 0, names));
  }
  return Glib::VariantContainerBase::create_tuple(
      {Glib::Variant<Id>::create(id), Glib::Variant<Properties>::create(properties(id, names)),
       Glib::Variant<std::vector<Glib::VariantBase>>::create(children)});
}

std::optional<Glib::VariantContainerBase> MenuItems::changesSince(const MenuItems& before) const {
  std::vector<std::tuple<Id, Properties>> updated;
  std::vector<std::tuple<Id, Names>> removed;
  for (const Id id : ids()) {
    if (!before.contains(id)) continue;
    const Properties then = before.properties(id, {});
    const Properties now = properties(id, {});
    Properties changed;
    for (const auto& [name, value] : now) {
      const auto old = then.find(name);
      if (old == then.end() || !old->second.equal(value)) changed.emplace(name, value);
    }
    Names gone;
    for (const auto& [name, value] : then) {
      if (!now.contains(name)) gone.push_back(name);
    }
    if (!changed.empty()) updated.emplace_back(id, changed);
    if (!gone.empty()) removed.emplace_back(id, gone);
  }
  if (updated.empty() && removed.empty()) return std::nullopt;
  return Glib::VariantContainerBase::create_tuple(
      {Glib::Variant<decltype(updated)>::create(updated),
       Glib::Variant<decltype(removed)>::create(removed)});
}

std::function<void()> MenuItems::chosen(Id id) const {
  if (id == kRoot) return {};
  return entry(id).chosen;
}

bool MenuItems::operator==(const MenuItems& other) const {
  return std::equal(menu_.begin(), menu_.end(), other.menu_.begin(), other.menu_.end(),
                    [](const MenuEntry& left, const MenuEntry& right) {
                      return left.label == right.label &&
                             static_cast<bool>(left.chosen) == static_cast<bool>(right.chosen);
                    });
}

}  // namespace lumora
