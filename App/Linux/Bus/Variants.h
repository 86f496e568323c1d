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

/// The value under `name` in values by name that came over D-Bus. Looked up where they lie: making
/// `Properties` of them first would compare their names as texts of the user's language.
template <typename T>
T valueUnder(const char* name, const Glib::VariantBase& values, T otherwise = {}) {
  auto* const dictionary = const_cast<GVariant*>(values.gobj());
  if (dictionary == nullptr || !g_variant_is_of_type(dictionary, G_VARIANT_TYPE_VARDICT)) {
    return otherwise;
  }
  const auto value = Glib::wrap(g_variant_lookup_value(dictionary, name, nullptr));
  return valueOr<T>(value, otherwise);
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
