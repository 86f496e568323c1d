// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Session/AutostartEntry.h"

#include "Base/Texts.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <system_error>
#include <utility>

#include <gio/gdesktopappinfo.h>
#include <giomm.h>
#include <giomm/desktopappinfo.h>
#include <unistd.h>

namespace lumora {
namespace {

constexpr const char* kGroup = "Desktop Entry";
constexpr const char* kGnomesSwitch = "X-GNOME-Autostart-enabled";

/// One argument of an "Exec" line: quoted, and with nothing in it that has a meaning there.
std::string execArgument(std::string_view argument) {
  std::string text = "\"";
  for (const char character : argument) {
    if (std::string_view("\"`$\\").find(character) != std::string_view::npos) text += '\\';
    text += character;
    if (character == '%') text += '%';
  }
  return text += '"';
}

/// The entry as it stands in the file; empty where there is none that can be read.
Glib::RefPtr<Glib::KeyFile> read(const std::filesystem::path& file) {
  auto entry = Glib::KeyFile::create();
  try {
    entry->load_from_file(
        file, Glib::KeyFile::Flags::KEEP_COMMENTS | Glib::KeyFile::Flags::KEEP_TRANSLATIONS);
  } catch (const Glib::Error&) {
    entry = Glib::KeyFile::create();
  }
  return entry;
}

void remove(const Glib::RefPtr<Glib::KeyFile>& entry, const char* key) {
  if (entry->has_group(kGroup) && entry->has_key(kGroup, key)) entry->remove_key(kGroup, key);
}

std::optional<std::string> write(const Glib::RefPtr<Glib::KeyFile>& entry,
                                 const std::filesystem::path& file) {
  try {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    if (error) return error.message();
    entry->save_to_file(file);
  } catch (const Glib::Error& error) {
    return error.what();
  }
  return std::nullopt;
}

/// Whether this entry, found first, makes the desktop start the program.
bool starts(const std::filesystem::path& file) {
  const auto entry = Gio::DesktopAppInfo::create_from_filename(file);
  // There is none of an entry whose program does not exist.
  if (!entry || entry->is_hidden() || !g_desktop_app_info_get_show_in(entry->gobj(), nullptr)) {
    return false;
  }
  return !entry->has_key(kGnomesSwitch) || entry->get_boolean(kGnomesSwitch);
}

}  // namespace

AutostartEntry::Folders AutostartEntry::configurationFolders() {
  const auto systems = Glib::get_system_config_dirs();
  return {Glib::get_user_config_dir(), {systems.begin(), systems.end()}};
}

AutostartEntry::AutostartEntry(std::filesystem::path executable, const std::string& applicationId,
                               const Folders& folders)
    : executable_(std::move(executable)) {
  const auto below = std::filesystem::path("autostart") / (applicationId + ".desktop");
  users_ = folders.user / below;
  for (const auto& folder : folders.system) systems_.push_back(folder / below);
}

bool AutostartEntry::isEnabled() const {
  const auto exists = [](const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::exists(file, error);
  };
  if (exists(users_)) return starts(users_);
  const auto systems = std::find_if(systems_.begin(), systems_.end(), exists);
  return systems != systems_.end() && starts(*systems);
}

std::optional<std::string> AutostartEntry::registerItem() {
  const auto entry = read(users_);
  for (const char* key : {"Hidden", "OnlyShowIn", "NotShowIn", kGnomesSwitch}) remove(entry, key);
  const auto set = [&entry](const char* key, const std::string& value) {
    entry->set_string(kGroup, key, value);
  };
  set("Type", "Application");
  set("Name", "Lumora");
  set("Comment", translated("Reminds you to unplug and to plug in"));
  set("Exec", execArgument(executable_.string()));
  // A bundle that is gone starts nothing, and nothing complains.
  set("TryExec", executable_);
  set("Icon", "battery");
  return write(entry, users_);
}

std::optional<std::string> AutostartEntry::unregisterItem() {
  if (unlink(users_.c_str()) != 0 && errno != ENOENT) {
    return std::generic_category().message(errno);
  }
  if (!isEnabled()) return std::nullopt;
  const auto entry = Glib::KeyFile::create();
  entry->set_string(kGroup, "Type", "Application");
  entry->set_string(kGroup, "Name", "Lumora");
  entry->set_boolean(kGroup, "Hidden", true);
  return write(entry, users_);
}

}  // namespace lumora
