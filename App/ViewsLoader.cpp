// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewsLoader.h"

#include <dlfcn.h>

namespace lumora {

Views* ViewsLoader::load() {
  if (views_) return views_.get();
  void* module = dlopen(module_.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) return nullptr;
  const auto make = reinterpret_cast<MakeViews>(dlsym(module, kMakeViewsName));
  if (make != nullptr) views_.reset(make(host_));
  return views_.get();
}

}  // namespace lumora
