// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewsLoader.h"

#include "ModuleFunction.h"

namespace lumora {

Views* ViewsLoader::load() {
  if (views_) return views_.get();
  const auto make = moduleFunction<MakeViews>(module_, kMakeViewsName);
  if (make != nullptr) views_.reset(make(host_));
  return views_.get();
}

}  // namespace lumora
