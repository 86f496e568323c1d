// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/PersistedFile.h"
#include "Support/MemoryFiles.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const std::filesystem::path kPath = "/data/list.txt";
const std::filesystem::path kKept = "/data/list.txt.unreadable";

/// Decodes any text but "bad".
std::optional<std::string> decode(std::string& bytes) {
  return bytes == "bad" ? std::nullopt : std::optional(bytes);
}

class PersistedFileTest : public testing::Test {
 protected:
  Recorder recorder;
  MemoryFiles files{&recorder};
  PersistedFile file{files, kPath};
};

TEST_F(PersistedFileTest, LoadsWhatItsFileHolds) {
  files.edit(kPath, "good");
  EXPECT_EQ(file.load(decode), "good");
}

TEST_F(PersistedFileTest, LoadsNothingWithoutAFile) { EXPECT_EQ(file.load(decode), std::nullopt); }

TEST_F(PersistedFileTest, ReplacesItsFile) {
  files.edit(kPath, "good");
  file.load(decode);
  EXPECT_TRUE(file.replace("better"));
  EXPECT_EQ(files.text(kPath), "better");
  EXPECT_EQ(files.text(kKept), std::nullopt);
}

TEST_F(PersistedFileTest, MakesAFileWhereThereWasNone) {
  file.load(decode);
  EXPECT_TRUE(file.replace("new"));
  EXPECT_EQ(files.text(kPath), "new");
  EXPECT_EQ(recorder.take(), "read list.txt, replace list.txt");
}

TEST_F(PersistedFileTest, KeepsAnUndecodableFileBesideBeforeItReplacesIt) {
  files.edit(kPath, "bad");
  EXPECT_EQ(file.load(decode), std::nullopt);
  EXPECT_TRUE(file.replace("new"));
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kPath), "new");
  EXPECT_EQ(recorder.take(), "read list.txt, keep as list.txt.unreadable, replace list.txt");
}

TEST_F(PersistedFileTest, KeepsAnUnreadableFileBesideBeforeItReplacesIt) {
  files.edit(kPath, "good");
  files.failsReading = true;
  EXPECT_EQ(file.load(decode), std::nullopt);
  EXPECT_TRUE(file.replace("new"));
  EXPECT_EQ(files.text(kKept), "good");
  EXPECT_EQ(files.text(kPath), "new");
}

TEST_F(PersistedFileTest, KeepsNothingBesideAtTheSecondReplacement) {
  files.edit(kPath, "bad");
  file.load(decode);
  file.replace("new");
  file.replace("newer");
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kPath), "newer");
}

TEST_F(PersistedFileTest, ReplacesNothingWhenKeepingFails) {
  files.edit(kPath, "bad");
  file.load(decode);
  files.failsKeeping = true;
  EXPECT_FALSE(file.replace("new"));
  EXPECT_EQ(files.text(kPath), "bad");
  EXPECT_EQ(files.text(kKept), std::nullopt);
}

TEST_F(PersistedFileTest, KeepsTheFileOnceKeepingWorks) {
  files.edit(kPath, "bad");
  file.load(decode);
  files.failsKeeping = true;
  file.replace("new");
  files.failsKeeping = false;
  EXPECT_TRUE(file.replace("newer"));
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kPath), "newer");
}

TEST_F(PersistedFileTest, StillHasToKeepTheFileAfterAFailedReplacement) {
  files.edit(kPath, "bad");
  file.load(decode);
  files.failsReplacing = true;
  EXPECT_FALSE(file.replace("new"));
  EXPECT_EQ(files.text(kPath), "bad");
  files.failsReplacing = false;
  EXPECT_TRUE(file.replace("newer"));
  EXPECT_EQ(files.text(kKept), "bad");
}

TEST_F(PersistedFileTest, KeepsTheOldFileWhenTheReplacementFails) {
  files.edit(kPath, "good");
  file.load(decode);
  files.failsReplacing = true;
  EXPECT_FALSE(file.replace("new"));
  EXPECT_EQ(files.text(kPath), "good");
}

TEST_F(PersistedFileTest, FindsItsOwnReplacementNotChangedElsewhere) {
  file.load(decode);
  EXPECT_FALSE(file.changedElsewhere());
  file.replace("new");
  EXPECT_FALSE(file.changedElsewhere());
}

TEST_F(PersistedFileTest, FindsTheEditOfAnotherProgram) {
  files.edit(kPath, "good");
  file.load(decode);
  EXPECT_FALSE(file.changedElsewhere());
  files.edit(kPath, "edit");
  EXPECT_TRUE(file.changedElsewhere());
  file.load(decode);
  EXPECT_FALSE(file.changedElsewhere());
}

TEST_F(PersistedFileTest, FindsAFileThatAppearedOrDisappeared) {
  file.load(decode);
  files.edit(kPath, "edit");
  EXPECT_TRUE(file.changedElsewhere());
  file.load(decode);
  files.remove(kPath);
  EXPECT_TRUE(file.changedElsewhere());
}

}  // namespace
}  // namespace lumora::test
