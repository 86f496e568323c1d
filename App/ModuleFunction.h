// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

#include <dlfcn.h>

namespace lumora {

/// The function that a shared object exports by this name, loaded for the life of the process; null
/// where there is none.
template <typename Function>
Function moduleFunction(const std::filesystem::path& module, const char* name) {
  void* loaded = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
  return loaded == nullptr ? nullptr : reinterpret_cast<Function>(dlsym(loaded, name));
}

}  // namespace lumora
