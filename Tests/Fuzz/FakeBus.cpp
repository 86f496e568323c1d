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
    Call call = std::move(waiting_.front());
    waiting_.pop_front();
    prepareAnswer(call.method);
    if (call.cancellable && call.cancellable->is_cancelled()) next_.reset();
    call.succeeded = next_.has_value();
    if (!call.answered.empty()) {
      Glib::RefPtr<Gio::AsyncResult> result;
      call.answered(result);
    }
    heard_.push_back(std::move(call));
  }
}

void FakeBus::signal(const std::string& name, const Arguments& arguments, const std::string& path) {
  const auto subscriptions = subscriptions_;
  for (const auto& [id, wanted] : subscriptions) {
    if (wanted.name != name || !subscriptions_.contains(id)) continue;
    if (!path.empty() && !wanted.path.empty() && wanted.path != path) continue;
    wanted.received(connection(), ":1.2", path, "interface", name, arguments);
  }
}

void FakeBus::appear(std::string_view name) {
  for (const Watch& watch : watchesOf(name)) watch.appeared(connection(), watch.name, ":1.2");
}

void FakeBus::vanish(std::string_view name) {
  for (const Watch& watch : watchesOf(name)) watch.vanished(connection(), watch.name);
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
  expect(subscriptions_.empty() && objects_.empty() && watches_.empty(),
         "nobody listens after the end");
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

FakeBus::Arguments FakeBus::answerNow(const std::string& method) {
  prepareAnswer(method);
  return takeAnswer();
}

unsigned FakeBus::subscribe(Subscription subscription) {
  subscriptions_.emplace(++lastId_, std::move(subscription));
  return lastId_;
}

void FakeBus::unsubscribe(unsigned subscription) { subscriptions_.erase(subscription); }

unsigned FakeBus::watch(Watch watch) {
  watches_.emplace(++lastId_, std::move(watch));
  return lastId_;
}

void FakeBus::unwatch(unsigned watch) { watches_.erase(watch); }

unsigned FakeBus::add(const std::string& path, Object object) {
  objects_.insert_or_assign(path, std::move(object));
  return ++lastId_;
}

void FakeBus::remove(const std::string& path) { objects_.erase(path); }

void FakeBus::prepareAnswer(const std::string& method) {
  next_.reset();
  if (auto& answers = answers_[method]; !answers.empty()) {
    next_ = std::move(answers.front());
    answers.pop_front();
  } else if (const auto usual = usual_.find(method); usual != usual_.end()) {
    next_ = usual->second;
  }
}

std::vector<FakeBus::Watch> FakeBus::watchesOf(std::string_view name) const {
  std::vector<Watch> found;
  for (const auto& [id, watch] : watches_) {
    if (watch.name == name) found.push_back(watch);
  }
  return found;
}

}  // namespace lumora::test
