// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Texts.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace lumora::test {

/// Puts the process into a locale of those that the tests have ("fi_FI", UTF-8 if it says no
/// encoding), with the texts of a language, and back into its own at the end. Without a language
/// the texts are the source's.
class ScopedLocale {
 public:
  explicit ScopedLocale(const std::string& name, const std::string& language = "none") {
    setenv("LOCPATH", LUMORA_TEST_LOCALES, 1);
    setenv("LANGUAGE", language.c_str(), 1);
    const std::string encoding = name.find('.') == std::string::npos ? ".UTF-8" : "";
    if (std::setlocale(LC_ALL, (name + encoding).c_str()) == nullptr) {
      throw std::runtime_error("no locale " + name);
    }
    useCatalogues(LUMORA_TEST_CATALOGUES);
  }

  ~ScopedLocale() {
    unsetenv("LANGUAGE");
    unsetenv("LOCPATH");
    std::setlocale(LC_ALL, before_.c_str());
  }

  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;

 private:
  std::string before_ = std::setlocale(LC_ALL, nullptr);
};

}  // namespace lumora::test
