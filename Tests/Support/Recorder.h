// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace lumora::test {

/// What happened, word by word, so that one comparison tells the order and what did not happen.
class Recorder {
 public:
  void add(std::string word) { words_.push_back(std::move(word)); }

  std::string words() const {
    std::string all;
    for (const auto& word : words_) all += all.empty() ? word : ", " + word;
    return all;
  }

  /// The words so far, which are then forgotten.
  std::string take() {
    std::string all = words();
    words_.clear();
    return all;
  }

 private:
  std::vector<std::string> words_;
};

/// For the fakes: a test that compares no words gives them no recorder.
inline void record(Recorder* recorder, std::string word) {
  if (recorder != nullptr) recorder->add(std::move(word));
}

}  // namespace lumora::test
