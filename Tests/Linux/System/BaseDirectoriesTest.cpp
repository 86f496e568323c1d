// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/BaseDirectories.h"

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

/// A variable of the environment, which is then as before.
class BaseDirectoriesTest : public testing::Test {
 protected:
  void TearDown() override {
    for (const auto& [name, value] : before_) {
      if (value) {
        setenv(name.c_str(), value->c_str(), 1);
      } else {
        unsetenv(name.c_str());
      }
    }
  }

  static std::optional<std::string> held(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? std::nullopt : std::optional<std::string>(value);
  }

  /// What is left of it.
  std::optional<std::string> left(const char* name, const char* value) {
    before_.emplace(name, held(name));
    setenv(name, value, 1);
    ignoreRelativeBaseDirectories();
    return held(name);
  }

 private:
  std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(BaseDirectoriesTest, LosesRelativeFolders) {
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
    EXPECT_EQ(left(name, "relative/folder"), std::nullopt) << name;
    EXPECT_EQ(left(name, ""), std::nullopt) << name;
    EXPECT_EQ(left(name, "/absolute"), "/absolute") << name;
  }
}

TEST_F(BaseDirectoriesTest, LosesRelativeOnesAmongMany) {
  for (const char* name : {"XDG_CONFIG_DIRS", "XDG_DATA_DIRS"}) {
    EXPECT_EQ(left(name, "one:/two:./three:/four"), "/two:/four") << name;
    EXPECT_EQ(left(name, "one"), "") << name;
    EXPECT_EQ(left(name, "/two:/four"), "/two:/four") << name;
  }
}

}  // namespace
}  // namespace lumora::test
