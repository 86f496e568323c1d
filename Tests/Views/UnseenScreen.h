// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <filesystem>
#include <fstream>

namespace lumora::test {

/// Before there is an application: has Qt show everything on a screen that nobody sees, of that
/// size, with that many of the display's pixels for each of its own. Written down in `file`.
inline void useUnseenScreen(const std::filesystem::path& file, int width, int height,
                            double scale) {
  std::ofstream(file) << R"({"screens": [{"name": "laptop", "x": 0, "y": 0, "width": )" << width
                      << R"(, "height": )" << height << R"(, "logicalDpi": 96,
      "logicalBaseDpi": 96, "dpr": )"
                      << scale << "}]}";
  const auto path = std::filesystem::absolute(file).string();
  qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + path));
}

}  // namespace lumora::test
