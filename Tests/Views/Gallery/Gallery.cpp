// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Renders the popover and the settings in their states to pictures, to be looked at:
// gallery FOLDER [WIDTH HEIGHT SCALE], those of the screen

#include "Views/Gallery/Scenes.h"
#include "Views/Style/Style.h"
#include "Views/UnseenScreen.h"

#include <QApplication>
#include <QLocale>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

int main(int argc, char** argv) try {
  // FOLDER WIDTH HEIGHT SCALE, as small laptops have it.
  const std::filesystem::path folder = argc > 1 ? argv[1] : "gallery";
  const bool isTold = argc > 4;
  std::filesystem::create_directories(folder);
  lumora::test::useUnseenScreen(folder / "screens.json", isTold ? std::atoi(argv[2]) : 1366,
                                isTold ? std::atoi(argv[3]) : 768, isTold ? std::atof(argv[4]) : 1);
  qputenv("LC_ALL", "C.UTF-8");
  const QApplication application(argc, argv);
  lumora::installStyle();
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  lumora::DesktopLooks looks;
  return lumora::test::renderPopoverScenes(looks, folder) &&
                 lumora::test::renderSettingsScenes(looks, folder) &&
                 lumora::test::renderLanguageSheets(looks, folder)
             ? 0
             : 1;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
