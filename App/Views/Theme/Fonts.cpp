// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Theme/Fonts.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHash>
#include <QStringList>

namespace lumora {
namespace {

constexpr double kLargestFont = 100;  // points or pixels
// Of a description, in bytes. Longer ones name no font, and take long to read.
constexpr std::size_t kLongestDescription = 256;

/// Whether the word is a size: points, or pixels with "px" behind.
bool takeSize(QString word, double scale, QFont& font) {
  const bool pixels = word.endsWith("px");
  if (pixels) word.chop(2);
  bool isNumber = false;
  const double size = word.toDouble(&isNumber) * scale;
  if (!isNumber) return false;
  if (!(size >= 1 && size < kLargestFont)) return true;
  pixels ? font.setPixelSize(qRound(size)) : font.setPointSizeF(size);
  return true;
}

/// Whether the word is a style of those that Pango knows.
bool takeStyle(QString word, QFont& font) {
  const QHash<QString, QFont::Weight> weights = {
      {"thin", QFont::Thin},         {"ultralight", QFont::ExtraLight},
      {"light", QFont::Light},       {"semilight", QFont::Light},
      {"book", QFont::Normal},       {"regular", QFont::Normal},
      {"normal", QFont::Normal},     {"medium", QFont::Medium},
      {"semibold", QFont::DemiBold}, {"demibold", QFont::DemiBold},
      {"bold", QFont::Bold},         {"ultrabold", QFont::ExtraBold},
      {"heavy", QFont::Black},       {"black", QFont::Black}};
  word = word.toLower().remove('-');
  if (const auto weight = weights.find(word); weight != weights.end()) {
    font.setWeight(*weight);
  } else if (word == "italic" || word == "oblique") {
    font.setItalic(true);
  } else if (word.endsWith("condensed")) {
    font.setStretch(QFont::Condensed);
  } else if (word.endsWith("expanded")) {
    font.setStretch(QFont::Expanded);
  } else {
    return false;
  }
  return true;
}

}  // namespace

QFont fontFor(TextRole role) {
  QFont font = QApplication::font();
  const auto scale = [&font](double factor) {
    if (font.pointSizeF() > 0) {
      font.setPointSizeF(font.pointSizeF() * factor);
    } else {
      font.setPixelSize(qRound(font.pixelSize() * factor));
    }
  };
  switch (role) {
    case TextRole::headline:
      font.setWeight(QFont::DemiBold);
      break;
    case TextRole::body:
    case TextRole::callout:
      break;
    case TextRole::caption:
      scale(0.9);
      break;
    case TextRole::caption2:
      scale(0.85);
      break;
  }
  return font;
}

QFont fontThatFits(TextRole role, const std::function<bool(const QFont&)>& fits) {
  QFont font = fontFor(role);
  for (int pixels = QFontInfo(font).pixelSize(); !fits(font) && pixels > 1;) {
    font.setPixelSize(--pixels);
  }
  return font;
}

QFont fontOf(const std::string& description, double scale) {
  QFont font = QApplication::font();
  if (description.size() > kLongestDescription) return font;
  // Behind an "@" stand the axes of variable fonts.
  QStringList words =
      QString::fromStdString(description).section('@', 0, 0).split(' ', Qt::SkipEmptyParts);
  if (!words.isEmpty() && takeSize(words.last(), scale, font)) words.removeLast();
  while (!words.isEmpty() && !QFontDatabase::families().contains(words.join(' ')) &&
         takeStyle(words.last(), font)) {
    words.removeLast();
  }
  QString family = words.join(' ');
  if (family.endsWith(',')) family.chop(1);
  if (!family.isEmpty()) font.setFamilies({family});
  return font;
}

}  // namespace lumora
