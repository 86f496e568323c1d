// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FakeBus.h"

#include "Fuzzer.h"

#include <utility>

namespace lumora::test {
namespace {

std::string typeOf(GDBusArgInfo** arguments) {
  std::string type = "(";
  for (; arguments != nullptr && *arguments != nullptr; ++arguments) {
    type += (*arguments)->signature;
  }
  return type + ")";
}

}  // namespace

FakeBus& FakeBus::get() {
  static FakeBus bus;
  return bus;
}

const BusConnection& FakeBus::connection() {
  // Never told to connect.
  static const BusConnection kConnection =
      Glib::wrap(G_DBUS_CONNECTION(g_object_new(G_TYPE_DBUS_CONNECTION, nullptr)));
  return kConnection;
}

void FakeBus::answer(const std::string& method, const std::optional<Arguments>& arguments) {
  answers_[method].push_back(arguments);
}

void FakeBus::answerUsually(const std::string& method, const Arguments& arguments) {
  usual_.insert_or_assign(method, arguments);
}

void FakeBus::settle() {
  while (!waiting_.empty()) {
    const Call call = std::move(waiting_.front());
    waiting_.pop_front();
    next_.reset();
    if (auto& answers = answers_[call.method]; !answers.empty()) {
      next_ = std::move(answers.front());
      answers.pop_front();
    } else if (const auto usual = usual_.find(call.method); usual != usual_.end()) {
      next_ = usual->second;
    }
    if (!call.answered.empty()) {
      Glib::RefPtr<Gio::AsyncResult> result;
      call.answered(result);
    }
    heard_.push_back(call);
  }
}

void FakeBus::signal(std::string_view name, const Arguments& arguments) {
  const auto subscriptions = subscriptions_;
  for (const auto& [id, subscription] : subscriptions) {
    const auto& [wanted, received] = subscription;
    if (wanted == name && subscriptions_.contains(id)) {
      received(connection(), ":1.2", "/", "interface", wanted, arguments);
    }
  }
}

void FakeBus::call(const std::string& path, const std::string& method, const Arguments& arguments) {
  const auto object = objects_.find(path);
  if (object == objects_.end()) return;
  const auto& [interface, members] = object->second;
  const auto* const info = g_dbus_interface_info_lookup_method(interface->gobj(), method.c_str());
  if (info == nullptr || arguments.get_type_string() != typeOf(info->in_args)) return;
  ExportedObject::Answer answer;
  try {
    answer = members->methods.at(method)(arguments);
  } catch (const Glib::Error&) {
    return;
  }
  const std::string type = answer.values.gobj() == nullptr ? "()" : answer.values.get_type_string();
  expect(type == typeOf(info->out_args), "an answer has the types of the interface");
  if (answer.afterwards) answer.afterwards();
}

void FakeBus::getProperty(const std::string& path, const std::string& name) {
  const auto object = objects_.find(path);
  if (object == objects_.end()) return;
  const auto& [interface, members] = object->second;
  const auto* const info = g_dbus_interface_info_lookup_property(interface->gobj(), name.c_str());
  if (info == nullptr) return;
  expect(members->properties.at(name)().get_type_string() == info->signature,
         "a property has the type of the interface");
}

void FakeBus::getAllProperties(const std::string& path) {
  const auto object = objects_.find(path);
  if (object == objects_.end()) return;
  for (auto** info = object->second.interface->gobj()->properties; *info != nullptr; ++info) {
    getProperty(path, (*info)->name);
  }
}

std::vector<FakeBus::Call> FakeBus::heard() { return std::exchange(heard_, {}); }

void FakeBus::reset() {
  expect(subscriptions_.empty() && objects_.empty(), "nobody listens after the end");
  settle();
  heard_.clear();
  answers_.clear();
  usual_.clear();
  lastId_ = 0;
}

void FakeBus::onCall(Call call) { waiting_.push_back(std::move(call)); }

FakeBus::Arguments FakeBus::takeAnswer() {
  if (!next_) throw Gio::DBus::Error(Gio::DBus::Error::FAILED, "no");
  return *next_;
}

unsigned FakeBus::subscribe(const std::string& name, const Signal& received) {
  subscriptions_.emplace(++lastId_, std::pair(name, received));
  return lastId_;
}

void FakeBus::unsubscribe(unsigned subscription) { subscriptions_.erase(subscription); }

unsigned FakeBus::add(const std::string& path, Object object) {
  objects_.insert_or_assign(path, std::move(object));
  return ++lastId_;
}

void FakeBus::remove(const std::string& path) { objects_.erase(path); }

}  // namespace lumora::test
