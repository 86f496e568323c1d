// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/Variants.h"
#include "Platform/StatusItem.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace lumora {

/// The lines of a menu as com.canonical.dbusmenu tells them: number 0 is the menu itself, its lines
/// are counted from 1.
class MenuItems {
 public:
  using Id = std::int32_t;
  using Names = std::vector<Glib::ustring>;

  static constexpr Id kRoot = 0;

  MenuItems() = default;
  explicit MenuItems(Menu menu) : menu_(std::move(menu)) {}

  bool contains(Id id) const { return id >= kRoot && static_cast<std::size_t>(id) <= menu_.size(); }

  /// The menu and all its lines.
  std::vector<Id> ids() const;

  /// What differs from the interface's defaults, of these names alone unless there are none.
  Properties properties(Id id, const Names& names) const;

  /// Also a default one; absent for a name that nothing is known by.
  std::optional<Glib::VariantBase> property(Id id, const Glib::ustring& name) const;

  /// The item and, unless `depth` is 0, what is below it: (ia{sv}av).
  Glib::VariantContainerBase layout(Id id, std::int32_t depth, const Names& names) const;

  /// What lines that were there `before`, too, have other than then: (a(ia{sv})a(ias)), the new
  /// values and the names of what is gone. Absent when that is nothing.
  std::optional<Glib::VariantContainerBase> changesSince(const MenuItems& before) const;

  /// What to run when the item is clicked; empty where that does nothing.
  std::function<void()> chosen(Id id) const;

  /// Whether both look the same.
  bool operator==(const MenuItems& other) const;

 private:
  const MenuEntry& entry(Id id) const { return menu_[static_cast<std::size_t>(id) - 1]; }

  Menu menu_;
};

}  // namespace lumora
