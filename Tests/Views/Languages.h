// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Texts.h"
#include "Support/ScopedLocale.h"

#include <QApplication>
#include <QLocale>
#include <filesystem>
#include <set>
#include <string>

namespace lumora::test {

/// The languages that there are catalogues of. Each is the name of a locale of the tests, too.
inline std::set<std::string> languages() {
  std::set<std::string> found;
  for (const auto& folder : std::filesystem::directory_iterator(LUMORA_TEST_CATALOGUES)) {
    const std::string name = folder.path().filename();
    // q1 and its like are nobody's.
    const bool spoken = name.find_first_of("0123456789") == std::string::npos;
    if (folder.is_directory() && spoken) found.insert(name);
  }
  return found;
}

/// A locale and the language of the texts until it goes out of scope, as the windows take them.
class ScopedLanguage {
 public:
  ScopedLanguage(const std::string& locale, const std::string& language)
      : locale_(locale, language) {
    QLocale::setDefault(QLocale(QString::fromStdString(locale)));
    QApplication::setLayoutDirection(isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  }
  ~ScopedLanguage() {
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
    QApplication::setLayoutDirection(Qt::LeftToRight);
  }
  ScopedLanguage(const ScopedLanguage&) = delete;
  ScopedLanguage& operator=(const ScopedLanguage&) = delete;

 private:
  ScopedLocale locale_;
};

}  // namespace lumora::test
