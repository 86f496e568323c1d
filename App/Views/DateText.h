// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Date.h"

#include <QDateTime>
#include <QLocale>

namespace lumora {

inline QDateTime dateTime(Date date) {
  return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(secondsSince1970(date) * 1000));
}

/// The locale's time of day without seconds, which some locales' short form has.
inline QString shortTimeFormat() {
  QString format = QLocale().timeFormat(QLocale::ShortFormat);
  return format.remove(":ss").remove(".ss");
}

}  // namespace lumora
