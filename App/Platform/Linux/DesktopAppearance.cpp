// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/DesktopAppearance.h"

#include "Platform/Linux/Variants.h"

#include <cmath>
#include <map>
#include <tuple>
#include <vector>

namespace lumora {
namespace {

constexpr const char* kName = "org.freedesktop.portal.Desktop";
constexpr const char* kPath = "/org/freedesktop/portal/desktop";
constexpr const char* kInterface = "org.freedesktop.portal.Settings";
constexpr const char* kNamespace = "org.freedesktop.appearance";
// The first window waits for the answer, so that it does not change its colours at once.
constexpr int kPatience = 30;  // milliseconds

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

}  // namespace

DesktopAppearance::DesktopAppearance(const BusConnection& session) {
  if (!session) return;
  settingChanged_.emplace(
      session, SignalSubscription::Source{kName, kPath, kInterface, "SettingChanged", kNamespace},
      [this](const Glib::VariantContainerBase& arguments) {
        take(argument<Glib::ustring>(arguments, 1), argument<Glib::VariantBase>(arguments, 2));
      });
  try {
    const auto reply = session->call_sync(
        kPath, kInterface, "ReadAll",
        Glib::Variant<std::tuple<std::vector<Glib::ustring>>>::create({{kNamespace}}), kName,
        kPatience, Gio::DBus::CallFlags::NO_AUTO_START);
    const auto settings = argument<std::map<Glib::ustring, Properties>>(reply, 0);
    const auto wishes = settings.find(kNamespace);
    if (wishes == settings.end()) return;
    for (const auto& [key, value] : wishes->second) take(key, value);
  } catch (const Glib::Error&) {
    // No portal, or none that is quick enough.
  }
}

void DesktopAppearance::take(const Glib::ustring& key, const Glib::VariantBase& value) {
  Appearance appearance = *appearance_;
  if (key == "color-scheme") {
    appearance.colorScheme = colorScheme(valueOr<std::uint32_t>(value));
  } else if (key == "accent-color") {
    using Color = std::tuple<double, double, double>;
    appearance.accent = rgb(valueOr<Color>(value, Color{-1, -1, -1}));
  }
  if (appearance != *appearance_) appearance_.set(appearance);
}

}  // namespace lumora
