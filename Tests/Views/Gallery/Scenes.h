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
#include <string>

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

/// Renders scenes in their order to pictures of their names, up to one that cannot be kept.
bool renderAll(const auto& scenes, const std::filesystem::path& folder, const auto& render) {
  return std::ranges::all_of(scenes, [&](const auto& scene) {
    const auto file = folder / (std::string(scene.name) + ".png");
    const bool kept = render(scene).save(QString::fromStdString(file.string()));
    if (!kept) std::cerr << "could not render " << scene.name << '\n';
    return kept;
  });
}

/// The first control of that text or accessible name; null if there is none.
QWidget* withName(const QWidget& window, const QString& name);

/// Puts the keyboard's focus on the control of that text or name, as the tab key does.
void focus(QWidget& window, const QString& name);

}  // namespace lumora::test
