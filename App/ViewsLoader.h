// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Module.h"
#include "Views/ViewsModule.h"

#include <filesystem>
#include <memory>

namespace lumora {

/// Loads the module of the views when they are first wanted, and keeps it for the life of the
/// process: its libraries cannot be unloaded.
class ViewsLoader {
 public:
  /// `module` is the shared object; `host` must outlive the loader.
  ViewsLoader(const std::filesystem::path& module, ViewsHost& host)
      : module_(module), host_(host) {}

  /// Null where the views cannot be loaded or there is no display; it is tried again each time.
  Views* load();

  /// The views if they have been loaded.
  Views* loaded() const { return views_.get(); }

 private:
  Module module_;
  ViewsHost& host_;
  std::unique_ptr<Views> views_;
};

}  // namespace lumora
