// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrayDouble.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <tuple>
#include <utility>

#include <sys/prctl.h>

namespace lumora::test {
namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kItem = "org.kde.StatusNotifierItem";
constexpr const char* kItemPath = "/StatusNotifierItem";
constexpr std::uint32_t kAllowReplacementAndReplace = 1 | 2;

constexpr const char* kWatcherInterface = R"xml(<node>
 <interface name="org.kde.StatusNotifierWatcher">
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <method name="RegisterStatusNotifierItem">
   <arg name="service" type="s" direction="in"/>
  </method>
  <signal name="StatusNotifierHostRegistered"/>
 </interface>
</node>)xml";

std::string currentProcessName() {
  std::array<char, 16> name{};
  prctl(PR_GET_NAME, name.data());
  return name.data();
}

void callBus(const BusConnection& connection, const char* method,
             const Glib::VariantContainerBase& arguments) {
  connection->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
                        "org.freedesktop.DBus");
}

template <typename T>
T field(const Properties& properties, const char* name) {
  const auto found = properties.find(name);
  return found == properties.end() ? T{} : valueOr<T>(found->second);
}

bool fileExists(const std::filesystem::path& folder, const std::string& name) {
  for (const char* ending : {".svg", ".png"}) {
    if (std::filesystem::exists(folder / (name + ending))) return true;
  }
  return false;
}

}  // namespace

TrayDouble::TrayDouble(TrayRules rules)
    : rules_(std::move(rules)),
      processBefore_(currentProcessName()),
      watcher_(client_.connection(), "/StatusNotifierWatcher", kWatcherInterface, members()) {
  prctl(PR_SET_NAME, rules_.process.c_str());
  client_.hear(kItemPath);
  callBus(client_.connection(), "RequestName",
          arguments(Glib::ustring(kWatcher), kAllowReplacementAndReplace));
}

TrayDouble::~TrayDouble() {
  callBus(client_.connection(), "ReleaseName", arguments(Glib::ustring(kWatcher)));
  prctl(PR_SET_NAME, processBefore_.c_str());
}

ExportedObject::Members TrayDouble::members() {
  return {
      .methods = {{"RegisterStatusNotifierItem",
                   [this](const auto& received) { return onRegister(received); }}},
      .properties = {{"IsStatusNotifierHostRegistered",
                      [this] { return Glib::Variant<bool>::create(!rules_.showsLater); }},
                     {"RegisteredStatusNotifierItems",
                      [this] {
                        return Glib::Variant<std::vector<Glib::ustring>>::create(
                            {items_.begin(), items_.end()});
                      }},
                     {"ProtocolVersion", [] { return Glib::Variant<std::int32_t>::create(0); }}}};
}

ExportedObject::Answer TrayDouble::onRegister(const Glib::VariantContainerBase& received) {
  const std::string name = argument<Glib::ustring>(received, 0);
  registrations_.push_back(name);
  const bool known = std::find(items_.begin(), items_.end(), name) != items_.end();
  if (known && rules_.ignoresKnownItems) return {};
  std::erase(items_, name);
  items_.push_back(name);
  return {};
}

std::vector<std::string> TrayDouble::shown() const {
  std::vector<std::string> shown;
  if (rules_.showsLater) return shown;
  for (const std::string& name : items_) {
    const Properties item = properties(name);
    const bool complete = item.contains("Id") && item.contains("Menu");
    if (!item.empty() && (complete || !rules_.needsIdAndMenu)) shown.push_back(name);
  }
  return shown;
}

void TrayDouble::showItems() {
  rules_.showsLater = false;
  watcher_.emit("StatusNotifierHostRegistered");
}

std::string TrayDouble::iconFor(const std::string& busName) const {
  const Properties item = properties(busName);
  const std::string name = field<Glib::ustring>(item, "IconName");
  const std::filesystem::path folder = std::string(field<Glib::ustring>(item, "IconThemePath"));
  if (!name.empty()) return fileExists(folder, name) ? name : "nothing";
  using Pixmap = std::tuple<std::int32_t, std::int32_t, std::vector<guint8>>;
  const auto pixmaps = field<std::vector<Pixmap>>(item, "IconPixmap");
  return pixmaps.empty() ? "nothing" : "a pixmap";
}

std::vector<std::string> TrayDouble::scan() const {
  std::vector<std::string> found;
  const auto names = client_.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ListNames")
                         .get<std::vector<Glib::ustring>>();
  for (const std::string name : names) {
    if (!name.starts_with(':')) continue;
    const auto description =
        client_.call(name, kItemPath, "org.freedesktop.DBus.Introspectable", "Introspect");
    const std::string xml = description.get<Glib::ustring>();
    if (xml.find(kItem) != std::string::npos) found.push_back(name);
  }
  return found;
}

Properties TrayDouble::properties(const std::string& busName) const {
  return client_.properties(busName, kItemPath, kItem);
}

BusClient::Reply TrayDouble::callItem(const std::string& busName, const Glib::ustring& method,
                                      const Glib::VariantContainerBase& sent) const {
  return client_.call(busName, kItemPath, kItem, method, sent);
}

void TrayDouble::click(const std::string& busName, ScreenPoint point) const {
  callItem(busName, "Activate", arguments(point.x, point.y));
}

void TrayDouble::doubleClick(const std::string& busName, ScreenPoint point,
                             const char* token) const {
  callItem(busName, "ProvideXdgActivationToken", arguments(Glib::ustring(token)));
  click(busName, point);
}

}  // namespace lumora::test
