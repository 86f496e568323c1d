// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/NotificationCentre.h"
#include "Support/Recorder.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace lumora::test {

/// Keeps what it was given. The test picks actions and says when questions are answered.
class FakeNotificationCentre final : public NotificationCentre {
 public:
  explicit FakeNotificationCentre(Recorder* recorder = nullptr) : recorder_(recorder) {}

  void setResponseHandler(ResponseHandler handler) override {
    record(recorder_, "response handler");
    handler_ = std::move(handler);
  }

  void setCategories(std::vector<NotificationCategory> given) override {
    record(recorder_, "categories");
    categories = std::move(given);
  }

  void authorizationStatus(std::function<void(AuthorizationStatus)> answer) override {
    record(recorder_, "authorization status");
    questions_.push_back(std::move(answer));
  }

  void requestAuthorization() override {
    record(recorder_, "request authorization");
    ++requests;
  }

  void add(NotificationRequest request, StillSo stillSo) override {
    record(recorder_, "add " + request.identifier);
    added.push_back(std::move(request));
    stillSo_.push_back(std::move(stillSo));
  }

  /// Answers all questions for the status asked so far.
  void answerStatus(AuthorizationStatus status) {
    for (const auto& answer : std::exchange(questions_, {})) answer(status);
  }

  /// As the user does with a button of a notification.
  void pick(const std::string& actionIdentifier) {
    if (handler_) handler_(actionIdentifier, [this] { record(recorder_, "completed"); });
  }

  /// Whether the one that was added last would be shown if somebody to show it came only now.
  bool stillSo() const { return stillSo_.back()(); }

  std::vector<NotificationCategory> categories;
  std::vector<NotificationRequest> added;
  int requests = 0;  ///< How often leave to notify was asked for.

 private:
  Recorder* recorder_;
  ResponseHandler handler_;
  std::vector<StillSo> stillSo_;
  std::vector<std::function<void(AuthorizationStatus)>> questions_;
};

}  // namespace lumora::test
