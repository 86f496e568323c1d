// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/StatusItemFace.h"

#include <algorithm>

namespace lumora {
namespace {

/// The part of the text that is drawn into the icon.
std::string drawnText(const StatusItemContent& content, TextPlace place) {
  switch (place) {
    case TextPlace::label:
      return {};
    case TextPlace::wide:
      return content.text;
    case TextPlace::inside:
      return content.percent;
  }
  return {};
}

bool isDigit(char character) { return character >= '0' && character <= '9'; }

bool tellsAll(const StatusItemContent& content) {
  return content.text == content.percent || content.text == content.percent + "%";
}

}  // namespace

std::string iconName(std::string_view symbol) {
  if (symbol.empty()) return {};
  std::string name = "lumora-" + std::string(symbol) + "-symbolic";
  std::replace(name.begin(), name.end(), '.', '-');
  return name;
}

StatusItemFace statusItemFace(const StatusItemContent& content, TextPlace place) {
  StatusItemFace face{.tooltipTitle = content.tooltip};
  const std::string text = drawnText(content, place);
  if (text.empty()) {
    face.iconName = iconName(content.symbol);
  } else {
    face.drawn = DrawnIcon{content.symbol, text, place};
  }
  if (place == TextPlace::label && !content.text.empty()) {
    // The blank keeps it from the image.
    face.label = face.labelGuide = " " + content.text;
    std::replace_if(face.labelGuide.begin(), face.labelGuide.end(), isDigit, '8');
  }
  if (place == TextPlace::inside && !tellsAll(content)) face.tooltipText = content.text;
  return face;
}

}  // namespace lumora
