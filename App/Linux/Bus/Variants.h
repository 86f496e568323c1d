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

/// What a dictionary that came over D-Bus has under `name`, taken out of its variant: empty where
/// it has nothing, the first where it has the name twice. Looked up where it lies: making
/// `Properties` of it first would compare the names as texts of the user's language.
inline Glib::VariantBase under(const char* name, const Glib::VariantBase& values) {
  auto* const dictionary = const_cast<GVariant*>(values.gobj());
  if (dictionary == nullptr || !g_variant_is_of_type(dictionary, G_VARIANT_TYPE("a{s*}"))) {
    return {};
  }
  return Glib::wrap(g_variant_lookup_value(dictionary, name, nullptr));
}

/// The value under `name` if it is of that type; else, and where there is none, `otherwise`.
template <typename T>
T valueUnder(const char* name, const Glib::VariantBase& values, T otherwise = {}) {
  return valueOr<T>(under(name, values), otherwise);
}

/// The argument at `index` of a message; an empty one where it has none.
inline Glib::VariantBase argument(const Glib::VariantContainerBase& arguments, gsize index) {
  Glib::VariantBase child;
  if (index < arguments.get_n_children()) arguments.get_child(child, index);
  return child;
}

template <typename T>
T argument(const Glib::VariantContainerBase& arguments, gsize index, T otherwise = {}) {
  return valueOr<T>(argument(arguments, index), otherwise);
}

}  // namespace lumora
