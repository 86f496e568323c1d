// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/TrayDouble.h"

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
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kConventionalPath = "/StatusNotifierItem";
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

/// The name and the path of an item.
std::pair<std::string, std::string> split(const std::string& item) {
  const auto slash = std::min(item.find('/'), item.size());
  return {item.substr(0, slash), item.substr(slash)};
}

}  // namespace

TrayDouble::TrayDouble(TrayRules rules)
    : rules_(std::move(rules)),
      processBefore_(currentProcessName()),
      table_(
          [this](const auto&, const Glib::ustring& sender, const auto&, const auto&, const auto&,
                 const auto& arguments, const auto& invocation) {
            onCall(sender, arguments);
            invocation->return_value({});
          },
          [this](Glib::VariantBase& value, const auto&, const auto&, const auto&, const auto&,
                 const auto& name) { value = property(name); }) {
  prctl(PR_SET_NAME, rules_.process.c_str());
  const auto node = Gio::DBus::NodeInfo::create_for_xml(kWatcherInterface);
  watcher_ = client_.connection()->register_object(kWatcherPath, node->lookup_interface(), table_);
  callBus(client_.connection(), "RequestName",
          arguments(Glib::ustring(kWatcher), kAllowReplacementAndReplace));
}

TrayDouble::~TrayDouble() {
  client_.connection()->unregister_object(watcher_);
  callBus(client_.connection(), "ReleaseName", arguments(Glib::ustring(kWatcher)));
  prctl(PR_SET_NAME, processBefore_.c_str());
}

Glib::VariantBase TrayDouble::property(const Glib::ustring& name) const {
  if (name == "IsStatusNotifierHostRegistered") {
    return Glib::Variant<bool>::create(!rules_.showsLater);
  }
  if (name == "ProtocolVersion") return Glib::Variant<std::int32_t>::create(0);
  return Glib::Variant<std::vector<Glib::ustring>>::create({items_.begin(), items_.end()});
}

void TrayDouble::onCall(const Glib::ustring& sender, const Glib::VariantContainerBase& arguments) {
  const std::string service = argument<Glib::ustring>(arguments, 0);
  const std::string item =
      service.starts_with('/') ? sender.raw() + service : service + kConventionalPath;
  registrations_.push_back(item);
  const bool known = std::find(items_.begin(), items_.end(), item) != items_.end();
  if (known && rules_.ignoresKnownItems) return;
  std::erase(items_, item);
  items_.push_back(item);
  labelKnown_ = false;
  if (propertiesChanged_) return;
  const auto [name, path] = split(item);
  client_.hear(path);
  propertiesChanged_.emplace(
      client_.connection(),
      SignalSubscription::Source{name, path, "org.freedesktop.DBus.Properties",
                                 "PropertiesChanged"},
      [this](const Glib::VariantContainerBase& changes) { onPropertiesChanged(changes); });
}

void TrayDouble::onPropertiesChanged(const Glib::VariantContainerBase& arguments) {
  const auto invalidated = argument<std::vector<Glib::ustring>>(arguments, 2);
  labelKnown_ =
      labelKnown_ || argument<Properties>(arguments, 1).contains("XAyatanaLabel") ||
      std::find(invalidated.begin(), invalidated.end(), "XAyatanaLabel") != invalidated.end();
}

std::vector<std::string> TrayDouble::shown() const {
  std::vector<std::string> shown;
  if (rules_.showsLater) return shown;
  for (const std::string& item : items_) {
    const Properties all = properties(item);
    const bool complete = all.contains("Id") && all.contains("Menu");
    if (!all.empty() && (complete || !rules_.needsIdAndMenu)) shown.push_back(item);
  }
  return shown;
}

void TrayDouble::showItems() {
  rules_.showsLater = false;
  client_.connection()->emit_signal(kWatcherPath, kWatcher, "StatusNotifierHostRegistered");
}

std::string TrayDouble::iconFor(const std::string& item) const {
  const Properties all = properties(item);
  const std::string name = field<Glib::ustring>(all, "IconName");
  const std::filesystem::path folder = std::string(field<Glib::ustring>(all, "IconThemePath"));
  if (!name.empty()) return fileExists(folder, name) ? name : "nothing";
  using Pixmap = std::tuple<std::int32_t, std::int32_t, std::vector<guint8>>;
  const auto pixmaps = field<std::vector<Pixmap>>(all, "IconPixmap");
  return pixmaps.empty() ? "nothing" : "a pixmap";
}

std::string TrayDouble::labelOf(const std::string& item) const {
  if (rules_.readsLabelTooEarly && !labelKnown_) return {};
  return field<Glib::ustring>(properties(item), "XAyatanaLabel");
}

std::vector<std::string> TrayDouble::scan() const {
  std::vector<std::string> found;
  const auto names = client_.call("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "ListNames")
                         .get<std::vector<Glib::ustring>>();
  for (const std::string name : names) {
    if (name.starts_with(std::string(kItem) + "-")) found.push_back(name);
    if (!name.starts_with(':')) continue;
    const auto description =
        client_.call(name, kConventionalPath, "org.freedesktop.DBus.Introspectable", "Introspect");
    const std::string xml = description.get<Glib::ustring>();
    if (xml.find(kItem) != std::string::npos) found.push_back(name);
  }
  return found;
}

Properties TrayDouble::properties(const std::string& item) const {
  const auto [name, path] = split(item);
  return client_.properties(name, path, kItem);
}

BusClient::Reply TrayDouble::callItem(const std::string& item, const Glib::ustring& method,
                                      const Glib::VariantContainerBase& sent) const {
  const auto [name, path] = split(item);
  return client_.call(name, path, kItem, method, sent);
}

void TrayDouble::click(const std::string& item, ScreenPoint point) const {
  callItem(item, "Activate", arguments(point.x, point.y));
}

void TrayDouble::doubleClick(const std::string& item, ScreenPoint point, const char* token) const {
  callItem(item, "ProvideXdgActivationToken", arguments(Glib::ustring(token)));
  click(item, point);
}

}  // namespace lumora::test
