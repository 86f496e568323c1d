// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <cmath>
#include <filesystem>
#include <fstream>

namespace lumora::test {

/// Before there is an application: has Qt show everything on a screen that nobody sees, of that
/// size, with that many of the display's pixels for each of its own. Written down in `file`.
inline void useUnseenScreen(const std::filesystem::path& file, int width, int height,
                            double scale) {
  std::ofstream(file) << R"({"screens": [{"name": "laptop", "x": 0, "y": 0, "width": )"
                      << std::floor(width * scale) << R"(, "height": )"
                      << std::floor(height * scale)
                      << R"(, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";
  const auto path = std::filesystem::absolute(file).string();
  qputenv("QT_QPA_PLATFORM", QByteArray::fromStdString("offscreen:configfile=" + path));
  // The plugin's own scale does not reach the windows of newer releases.
  qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
}

}  // namespace lumora::test
