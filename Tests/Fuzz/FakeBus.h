// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/ExportedObject.h"

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::test {

/// Stands in for the message bus, without a thread or a socket: who links this gets it in place of
/// giomm's calls and signals and of `ExportedObject`. Calls of the program wait for `settle`;
/// signals, and calls to it, arrive at once.
class FakeBus {
 public:
  using Arguments = Glib::VariantContainerBase;
  using Signal = Gio::DBus::Connection::SlotSignal;

  struct Call {
    std::string method;
    Arguments arguments;
    Gio::SlotAsyncReady answered;
    Glib::RefPtr<Gio::Cancellable> cancellable = {};
    bool succeeded = false;  ///< Once it was answered: not by an error.
  };

  struct Subscription {
    std::string name;
    std::string path;  ///< Empty: of any object.
    Signal received;
  };

  /// Somebody who wants to know whether a name is owned.
  struct Watch {
    std::string name;
    Gio::DBus::SlotNameAppeared appeared;
    Gio::DBus::SlotNameVanished vanished;
  };

  struct Object {
    Glib::RefPtr<Gio::DBus::InterfaceInfo> interface;
    const ExportedObject::Members* members = nullptr;
  };

  /// There is one.
  static FakeBus& get();

  /// One that leads here, and nowhere else.
  static const BusConnection& connection();

  /// How the next call of that method is answered: with an error where there are no arguments. A
  /// method without an answer in store gets the usual one, or else an error.
  void answer(const std::string& method, const std::optional<Arguments>& arguments);
  void answerUsually(const std::string& method, const Arguments& arguments);

  /// Answers the calls of the program, and those that it makes then, in their order.
  void settle();

  /// A signal from whoever sends those of that name; without a path, from every object.
  void signal(const std::string& name, const Arguments& arguments, const std::string& path = {});

  void appear(std::string_view name);
  void vanish(std::string_view name);

  /// Calls the program. As on a real bus, what is not of the interface's types gets an error.
  void call(const std::string& path, const std::string& method, const Arguments& arguments);

  void getProperty(const std::string& path, const std::string& name);
  void getAllProperties(const std::string& path);

  /// What the program called since it was last asked.
  std::vector<Call> heard();

  /// Forgets all that was said. Whoever listened has gone by then.
  void reset();

  // What takes the place of the real ones.
  void onCall(Call call);
  Arguments takeAnswer();
  Arguments answerNow(const std::string& method);
  unsigned subscribe(Subscription subscription);
  void unsubscribe(unsigned subscription);
  unsigned watch(Watch watch);
  void unwatch(unsigned watch);
  unsigned add(const std::string& path, Object object);
  void remove(const std::string& path);

 private:
  void prepareAnswer(const std::string& method);
  std::vector<Watch> watchesOf(std::string_view name) const;

  std::deque<Call> waiting_;
  std::vector<Call> heard_;
  std::optional<Arguments> next_;
  std::map<std::string, std::deque<std::optional<Arguments>>> answers_;
  std::map<std::string, Arguments> usual_;
  std::map<unsigned, Subscription> subscriptions_;
  std::map<unsigned, Watch> watches_;
  std::map<std::string, Object> objects_;
  unsigned lastId_ = 0;
};

}  // namespace lumora::test
