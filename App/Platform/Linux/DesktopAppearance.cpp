// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopAppearance.h"

#include "Platform/Linux/Variants.h"

#include <cmath>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

namespace lumora {
namespace {

constexpr const char* kName = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kAppearance = "org.freedesktop.appearance";
constexpr const char* kGnome = "org.gnome.desktop.interface";
// The first window waits for the answer, so that it does not change its colours at once.
constexpr int kPatience = 30;  // milliseconds
constexpr int kNoLimit = std::numeric_limits<int>::max();
// What GNOME lets its users choose.
constexpr double kLeastScale = 0.5;
constexpr double kMostScale = 3;

std::optional<std::uint32_t> rgb(const std::tuple<double, double, double>& color) {
  std::uint32_t packed = 0;
  for (const double part : {std::get<0>(color), std::get<1>(color), std::get<2>(color)}) {
    // Outside the range means that the user has chosen none.
    if (!(part >= 0 && part <= 1)) return std::nullopt;
    packed = packed << 8U | static_cast<std::uint32_t>(std::lround(part * 255));
  }
  return packed;
}

Appearance::ColorScheme colorScheme(std::uint32_t number) {
  if (number == 1) return Appearance::ColorScheme::dark;
  return number == 2 ? Appearance::ColorScheme::light : Appearance::ColorScheme::noPreference;
}

void takeColors(Appearance& appearance, const Glib::ustring& key, const Glib::VariantBase& value) {
  if (key == "color-scheme") {
    appearance.colorScheme = colorScheme(valueOr<std::uint32_t>(value));
  } else if (key == "accent-color") {
    using Color = std::tuple<double, double, double>;
    appearance.accent = rgb(valueOr<Color>(value, Color{-1, -1, -1}));
  } else if (key == "contrast") {
    appearance.highContrast = valueOr<std::uint32_t>(value) == 1;
  }
}

void takeFont(Appearance& appearance, const Glib::ustring& key, const Glib::VariantBase& value) {
  if (key == "font-name") {
    const auto font = valueOr<Glib::ustring>(value);
    appearance.font = font.empty() ? std::nullopt : std::optional(font.raw());
  } else if (key == "text-scaling-factor") {
    const double factor = valueOr<double>(value, 1);
    appearance.textScale = factor >= kLeastScale && factor <= kMostScale ? factor : 1;
  }
}

/// Whether one of the names with colons between them is GNOME's.
bool isGnome(const std::string& desktop) {
  std::istringstream names(desktop);
  for (std::string name; std::getline(names, name, ':');) {
    if (name == "GNOME") return true;
  }
  return false;
}

}  // namespace

DesktopAppearance::DesktopAppearance(const BusConnection& session, const std::string& desktop)
    : session_(session) {
  if (!session_) return;
  std::vector<Glib::ustring> namespaces{kAppearance};
  if (isGnome(desktop)) namespaces.emplace_back(kGnome);
  for (const Glib::ustring& name : namespaces) {
    settingChanged_.emplace_back(
        session_, SignalSubscription::Source{kName, kPath, kInterface, "SettingChanged", name},
        [this](const Glib::VariantContainerBase& arguments) {
          take(argument<Glib::ustring>(arguments, 0), argument<Glib::ustring>(arguments, 1),
               argument<Glib::VariantBase>(arguments, 2));
        });
  }
  const auto question = Glib::Variant<std::tuple<std::vector<Glib::ustring>>>::create({namespaces});
  try {
    takeAll(session_->call_sync(kPath, kInterface, "ReadAll", question, kName, kPatience,
                                Gio::DBus::CallFlags::NO_AUTO_START));
  } catch (const Glib::Error&) {
    // No portal, or one that is slow.
    session_->call(kPath, kInterface, "ReadAll", question,
                   sigc::mem_fun(*this, &DesktopAppearance::onLateAnswer), kName, kNoLimit,
                   Gio::DBus::CallFlags::NO_AUTO_START);
  }
}

void DesktopAppearance::onLateAnswer(const Glib::RefPtr<Gio::AsyncResult>& result) {
  try {
    takeAll(session_->call_finish(result));
  } catch (const Glib::Error&) {
    // No portal.
  }
}

void DesktopAppearance::takeAll(const Glib::VariantContainerBase& answer) {
  for (const auto& [space, wishes] : argument<std::map<Glib::ustring, Properties>>(answer, 0)) {
    for (const auto& [key, value] : wishes) take(space, key, value);
  }
}

void DesktopAppearance::take(const Glib::ustring& space, const Glib::ustring& key,
                             const Glib::VariantBase& value) {
  Appearance appearance = *appearance_;
  // GNOME has keys of the same names and other types.
  if (space == kAppearance) takeColors(appearance, key, value);
  if (space == kGnome) takeFont(appearance, key, value);
  if (appearance != *appearance_) appearance_.set(appearance);
}

}  // namespace lumora
