// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace lumora {

/// A shared object that is loaded when it is first needed, and stays. It is the file that lay there
/// when this was made: an upgrade may replace it while the program runs, and the new one would not
/// fit the old program.
class Module {
 public:
  explicit Module(const std::filesystem::path& file)
      : file_(open(file.c_str(), O_PATH | O_CLOEXEC)) {}
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module() {
    if (file_ >= 0) close(file_);
  }

  /// The function that it exports by this name; null where there is none.
  template <typename Function>
  Function function(const char* name) {
    if (loaded_ == nullptr) {
      loaded_ = dlopen(("/proc/self/fd/" + std::to_string(file_)).c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    return loaded_ == nullptr ? nullptr : reinterpret_cast<Function>(dlsym(loaded_, name));
  }

 private:
  int file_;
  void* loaded_ = nullptr;
};

}  // namespace lumora
