// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/ServiceWatch.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <giomm.h>

namespace lumora {

/// One interface of ours at one path of a bus, for as long as it lives. Calls whose arguments are
/// not those of the interface get an error and never arrive here.
class ExportedObject {
 public:
  struct Answer {
    Glib::VariantContainerBase values = {};
    std::function<void()> afterwards = {};  ///< Runs once the answer is on its way.
  };

  /// Answers, or throws a `Glib::Error` for the caller.
  using Method = std::function<Answer(const Glib::VariantContainerBase& arguments)>;
  using Property = std::function<Glib::VariantBase()>;

  /// What the interface declares; a method or a property that is missing here gets an error.
  struct Members {
    std::map<std::string, Method> methods;
    std::map<std::string, Property> properties;
  };

  /// `introspection` describes a node with one interface.
  ExportedObject(BusConnection connection, std::string path, const char* introspection,
                 Members members);
  ExportedObject(const ExportedObject&) = delete;
  ExportedObject& operator=(const ExportedObject&) = delete;
  ~ExportedObject();

  /// Sends a signal of the interface to whoever listens. `arguments` must be a tuple of the types
  /// that the interface declares for it; left out, none.
  void emit(const Glib::ustring& signal, const Glib::VariantContainerBase& arguments = {});

  /// Tells that properties have changed: the first ones with their values, the others without,
  /// for whoever needs one to ask.
  void announce(const std::vector<Glib::ustring>& changed,
                const std::vector<Glib::ustring>& invalidated);

 private:
  void onCall(const Glib::ustring& method, const Glib::VariantContainerBase& arguments,
              const Glib::RefPtr<Gio::DBus::MethodInvocation>& invocation);
  Glib::VariantBase property(const Glib::ustring& name) const;
  void send(const Glib::ustring& interface, const Glib::ustring& signal,
            const Glib::VariantContainerBase& arguments);

  BusConnection connection_;
  std::string path_;
  Members members_;
  Glib::RefPtr<Gio::DBus::InterfaceInfo> interface_;
  Gio::DBus::InterfaceVTable table_;
  guint registration_ = 0;
};

}  // namespace lumora
