// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Session/DesktopAppearance.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
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
constexpr std::chrono::milliseconds kPatience{30};
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

Appearance appearanceOf(const Glib::VariantBase& wishes, const Glib::VariantBase& gnomes,
                        bool takesFont) {
  using Color = std::tuple<double, double, double>;
  Appearance appearance;
  appearance.colorScheme = colorScheme(valueUnder<std::uint32_t>("color-scheme", wishes));
  appearance.accent = rgb(valueUnder("accent-color", wishes, Color{-1, -1, -1}));
  appearance.highContrast = valueUnder<std::uint32_t>("contrast", wishes) == 1;
  appearance.reducedMotion = valueUnder<std::uint32_t>("reduced-motion", wishes) == 1;
  appearance.animations = valueUnder("enable-animations", gnomes, true);
  if (!takesFont) return appearance;
  const auto font = valueUnder<Glib::ustring>("font-name", gnomes);
  if (!font.empty()) appearance.font = font.raw();
  const auto factor = valueUnder<double>("text-scaling-factor", gnomes, 1);
  if (factor >= kLeastScale && factor <= kMostScale) appearance.textScale = factor;
  return appearance;
}

/// Whether one of the names with colons between them is among these.
bool isOneOf(const std::string& desktop, std::initializer_list<std::string_view> wanted) {
  std::istringstream names(desktop);
  for (std::string name; std::getline(names, name, ':');) {
    if (std::find(wanted.begin(), wanted.end(), name) != wanted.end()) return true;
  }
  return false;
}

bool isGnome(const std::string& desktop) { return isOneOf(desktop, {"GNOME"}); }

/// GNOME and Plasma leave it to the first program that needs a portal to start it.
ServiceWatch::Start portalStart(const std::string& desktop) {
  return isOneOf(desktop, {"GNOME", "KDE"}) ? ServiceWatch::Start::onDemand
                                            : ServiceWatch::Start::ifRunning;
}

bool isCompositorAlone(const std::string& desktop) {
  return isOneOf(desktop, {"sway", "labwc", "wlroots"});
}

}  // namespace

DesktopAppearance::DesktopAppearance(const BusConnection& session, const std::string& desktop,
                                     const std::string& toolkitTheme)
    : session_(session),
      takesFont_(isGnome(desktop) || (isCompositorAlone(desktop) && toolkitTheme.empty())) {
  if (!session_) return;
  const std::vector<Glib::ustring> namespaces{kAppearance, kGnome};
  for (const Glib::ustring& name : namespaces) {
    settingChanged_.emplace_back(
        session_, SignalSubscription::Source{kName, kPath, kInterface, "SettingChanged", name},
        [this](const Glib::VariantContainerBase& /*arguments*/) { ask(); });
  }
  readAll_ = {.remote = {kName, kPath, kInterface},
              .method = "ReadAll",
              .arguments = busArguments(namespaces),
              .timeout = kPatience,
              .start = ServiceWatch::Start::ifRunning};
  take(callMethodAndWait(session_, readAll_));
  // A portal that is slow, starts later or starts again tells then.
  readAll_.timeout = kNoTimeout;
  watch_.emplace(
      Gio::DBus::BusType::SESSION, kName, portalStart(desktop),
      [this](const BusConnection& /*session*/) { ask(); }, [] {});
}

/// What is announced may be what was, or what another program behind the portal would have.
void DesktopAppearance::ask() {
  callMethod(session_, readAll_, sigc::mem_fun(*this, &DesktopAppearance::take));
}

void DesktopAppearance::take(const BusReply& reply) {
  if (!reply.succeeded()) return;
  const Glib::VariantBase settings = argument(reply.values(), 0);
  const Appearance now =
      appearanceOf(under(kAppearance, settings), under(kGnome, settings), takesFont_);
  if (now != *appearance_) appearance_.set(now);
}

}  // namespace lumora
