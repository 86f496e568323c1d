// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ViewsLoader.h"

namespace lumora {

Views* ViewsLoader::load() {
  if (views_) return views_.get();
  const auto make = module_.function<MakeViews>(kMakeViewsName);
  if (make != nullptr) views_.reset(make(host_));
  return views_.get();
}

}  // namespace lumora
