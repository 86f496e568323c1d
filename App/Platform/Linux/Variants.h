// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include <glibmm.h>

namespace lumora {

/// Values by name, as D-Bus carries them: a{sv}.
using Properties = std::map<Glib::ustring, Glib::VariantBase>;

/// The value if it is of that type; else, and where there is none, `otherwise`.
template <typename T>
T valueOr(const Glib::VariantBase& value, T otherwise = {}) {
  if (value.gobj() == nullptr || !value.is_of_type(Glib::Variant<T>::variant_type())) {
    return otherwise;
  }
  return Glib::VariantBase::cast_dynamic<Glib::Variant<T>>(value).get();
}

/// The argument at `index` of a message.
template <typename T>
T argument(const Glib::VariantContainerBase& arguments, gsize index, T otherwise = {}) {
  if (index >= arguments.get_n_children()) return otherwise;
  Glib::VariantBase child;
  arguments.get_child(child, index);
  return valueOr<T>(child, otherwise);
}

}  // namespace lumora
