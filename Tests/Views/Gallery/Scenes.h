// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Appearance.h"
#include "Views/Languages.h"
#include "Views/Pixels.h"
#include "Views/Theme/DesktopLooks.h"

#include <QString>
#include <QWidget>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <optional>

namespace lumora::test {

/// Each renders its scenes to pictures of their names in a folder; whether all could be.
bool renderPopoverScenes(DesktopLooks& looks, const std::filesystem::path& folder);
bool renderSettingsScenes(DesktopLooks& looks, const std::filesystem::path& folder);
bool renderLanguageSheets(DesktopLooks& looks, const std::filesystem::path& folder);

/// What the desktop wishes in a scene.
Appearance appearanceOf(const auto& scene) {
  Appearance appearance;
  appearance.colorScheme =
      scene.dark ? Appearance::ColorScheme::dark : Appearance::ColorScheme::light;
  appearance.highContrast = scene.strong;
  return appearance;
}

/// The language and the size of the texts in a scene, until it goes out of scope.
class ScopedWords {
 public:
  explicit ScopedWords(const auto& scene) : fontSize_(scene.points) {
    if (scene.locale == nullptr) return;
    language_.emplace(scene.locale, scene.language != nullptr ? scene.language : "");
  }

 private:
  std::optional<ScopedLanguage> language_;
  ScopedFontSize fontSize_;
};

/// Renders scenes in their order, up to one that cannot be.
bool renderAll(const auto& scenes, const auto& render) {
  return std::ranges::all_of(scenes, [&](const auto& scene) {
    const bool rendered = render(scene);
    if (!rendered) std::cerr << "could not render " << scene.name << '\n';
    return rendered;
  });
}

/// The first control of that text or accessible name; null if there is none.
QWidget* withName(const QWidget& window, const QString& name);

/// Puts the keyboard's focus on the control of that text or name, as the tab key does.
void focus(QWidget& window, const QString& name);

}  // namespace lumora::test
