// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Storage/PersistedFile.h"
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
  /// Whether it is on the disk then.
  static bool replaced(PersistedFile& file, const char* bytes) {
    bool saved = false;
    file.replace(bytes, [&] { saved = true; });
    return saved;
  }

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
  EXPECT_TRUE(replaced(file, "better"));
  EXPECT_EQ(files.text(kPath), "better");
  EXPECT_EQ(files.text(kKept), std::nullopt);
}

TEST_F(PersistedFileTest, MakesAFileWhereThereWasNone) {
  file.load(decode);
  EXPECT_TRUE(replaced(file, "new"));
  EXPECT_EQ(files.text(kPath), "new");
  EXPECT_EQ(recorder.take(), "read list.txt, replace list.txt");
}

TEST_F(PersistedFileTest, KeepsAnUndecodableFileBesideBeforeItReplacesIt) {
  files.edit(kPath, "bad");
  EXPECT_EQ(file.load(decode), std::nullopt);
  EXPECT_TRUE(replaced(file, "new"));
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kPath), "new");
  EXPECT_EQ(recorder.take(), "read list.txt, keep as list.txt.unreadable, replace list.txt");
}

TEST_F(PersistedFileTest, KeepsWhatIsNoFileOfOursBesideBeforeItReplacesIt) {
  files.edit(kPath, "good");
  files.unfit = true;
  EXPECT_EQ(file.load(decode), std::nullopt);
  EXPECT_TRUE(replaced(file, "new"));
  EXPECT_EQ(files.text(kKept), "good");
  EXPECT_EQ(files.text(kPath), "new");
}

TEST_F(PersistedFileTest, ReplacesNothingThatTheSystemFailsToRead) {
  files.edit(kPath, "good");
  files.failsReading = true;
  EXPECT_EQ(file.load(decode), std::nullopt);
  EXPECT_EQ(file.state(), PersistedFile::State::unknown);
  EXPECT_TRUE(file.changedElsewhere());
  EXPECT_FALSE(replaced(file, "new"));
  EXPECT_EQ(files.text(kPath), "good");
  EXPECT_EQ(files.text(kKept), std::nullopt);
  files.failsReading = false;
  EXPECT_EQ(file.load(decode), "good");
  EXPECT_TRUE(replaced(file, "new"));
}

TEST_F(PersistedFileTest, TakesTooLittleMemoryForNoDamage) {
  files.edit(kPath, "good");
  const auto outOfMemory = [](std::string& /*bytes*/) -> std::optional<std::string> {
    throw std::bad_alloc();
  };
  EXPECT_EQ(file.load(outOfMemory), std::nullopt);
  EXPECT_FALSE(replaced(file, "new"));
  EXPECT_EQ(files.text(kPath), "good");
}

TEST_F(PersistedFileTest, TriesAFailingReadAfterTwiceAsManyOccasionsEachTimeUpToSixtyFour) {
  files.failsReading = true;
  file.load(decode);
  std::string occasions;
  for (int occasion = 1; occasion <= 300; ++occasion) {
    if (!file.isWorthLoading()) continue;
    occasions += std::to_string(occasion) + " ";
    file.load(decode);
  }
  EXPECT_EQ(occasions, "1 3 7 15 31 63 127 191 255 ");
  files.failsReading = false;
  file.load(decode);
  EXPECT_FALSE(file.isWorthLoading());
  files.failsReading = true;
  file.load(decode);
  EXPECT_TRUE(file.isWorthLoading());
}

TEST_F(PersistedFileTest, TakesAFileThatCameMeanwhileForDamagedOnlyWhenItStaysSo) {
  file.load(decode);
  files.edit(kPath, "bad");
  file.load(decode);
  EXPECT_EQ(file.state(), PersistedFile::State::unknown);
  files.edit(kPath, "good now that it is whole");
  EXPECT_EQ(file.load(decode), "good now that it is whole");
  files.edit(kPath, "bad");
  file.load(decode);
  EXPECT_FALSE(replaced(file, "new"));
  file.load(decode);
  EXPECT_EQ(file.state(), PersistedFile::State::damaged);
  EXPECT_TRUE(replaced(file, "new"));
  EXPECT_EQ(files.text(kKept), "bad");
}

TEST_F(PersistedFileTest, KeepsEachDamagedFileAndOnlyTheNewestGivesWay) {
  for (int number = 1; number <= 12; ++number) {
    files.edit(kPath, "bad");
    PersistedFile later{files, kPath};
    later.load([](std::string&) { return std::optional<int>(); });
    files.edit(kPath, "bad " + std::to_string(number));
    later.load([](std::string&) { return std::optional<int>(); });
    later.load([](std::string&) { return std::optional<int>(); });
    EXPECT_TRUE(replaced(later, "new"));
  }
  EXPECT_EQ(files.text(kKept), "bad 1");
  for (int number = 2; number <= 9; ++number) {
    EXPECT_EQ(files.text(kKept.string() + "." + std::to_string(number)),
              "bad " + std::to_string(number));
  }
  EXPECT_EQ(files.text(kKept.string() + ".10"), "bad 12");
  EXPECT_EQ(files.text(kKept.string() + ".11"), std::nullopt);
}

TEST_F(PersistedFileTest, KeepsADamagedFileOnceHoweverOftenTheReplacementFails) {
  files.edit(kPath, "bad");
  file.load(decode);
  files.failsReplacing = true;
  for (int attempt = 0; attempt < 3; ++attempt) EXPECT_FALSE(replaced(file, "new"));
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kKept.string() + ".2"), std::nullopt);
}

TEST_F(PersistedFileTest, KeepsNothingBesideAtTheSecondReplacement) {
  files.edit(kPath, "bad");
  file.load(decode);
  replaced(file, "new");
  replaced(file, "newer");
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kPath), "newer");
}

TEST_F(PersistedFileTest, ReplacesNothingWhenKeepingFails) {
  files.edit(kPath, "bad");
  file.load(decode);
  files.failsKeeping = true;
  EXPECT_FALSE(replaced(file, "new"));
  EXPECT_EQ(files.text(kPath), "bad");
  EXPECT_EQ(files.text(kKept), std::nullopt);
}

TEST_F(PersistedFileTest, KeepsTheFileOnceKeepingWorks) {
  files.edit(kPath, "bad");
  file.load(decode);
  files.failsKeeping = true;
  replaced(file, "new");
  files.failsKeeping = false;
  EXPECT_TRUE(replaced(file, "newer"));
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kPath), "newer");
}

TEST_F(PersistedFileTest, StillHasToKeepTheFileAfterAFailedReplacement) {
  files.edit(kPath, "bad");
  file.load(decode);
  files.failsReplacing = true;
  EXPECT_FALSE(replaced(file, "new"));
  EXPECT_EQ(files.text(kPath), "bad");
  files.failsReplacing = false;
  EXPECT_TRUE(replaced(file, "newer"));
  EXPECT_EQ(files.text(kKept), "bad");
}

TEST_F(PersistedFileTest, KeepsTheOldFileWhenTheReplacementFails) {
  files.edit(kPath, "good");
  file.load(decode);
  files.failsReplacing = true;
  EXPECT_FALSE(replaced(file, "new"));
  EXPECT_EQ(files.text(kPath), "good");
}

TEST_F(PersistedFileTest, FindsItsOwnReplacementNotChangedElsewhere) {
  file.load(decode);
  EXPECT_FALSE(file.changedElsewhere());
  replaced(file, "new");
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

/// A disk that takes its time.
class SlowPersistedFile : public PersistedFileTest {
 protected:
  SlowPersistedFile() {
    files.isSlow = true;
    file.load(decode);
  }

  void replace(const char* bytes) {
    file.replace(bytes, [this, bytes] { saved += bytes; });
  }

  std::string saved;
};

TEST_F(SlowPersistedFile, IsSavedWhenItIsOnTheDisk) {
  replace("new");
  EXPECT_TRUE(file.isWriting());
  EXPECT_EQ(saved, "");
  files.endWrite();
  EXPECT_FALSE(file.isWriting());
  EXPECT_EQ(saved, "new");
  EXPECT_EQ(files.text(kPath), "new");
}

TEST_F(SlowPersistedFile, IsNotChangedElsewhereAmidAReplacement) {
  replace("new");
  files.edit(kPath, "as the disk has it before we hear of it");
  EXPECT_FALSE(file.changedElsewhere());
  files.endWrite();
  EXPECT_FALSE(file.changedElsewhere());
  files.edit(kPath, "by another program");
  EXPECT_TRUE(file.changedElsewhere());
}

TEST_F(SlowPersistedFile, GetsOfManyReplacementsTheBegunAndTheNewest) {
  for (const char* bytes : {"1", "2", "3", "4"}) replace(bytes);
  EXPECT_EQ(files.writesLeft(), 2U);
  files.endWrite();
  EXPECT_EQ(files.text(kPath), "1");
  EXPECT_TRUE(file.isWriting());
  EXPECT_EQ(saved, "");
  files.endWrite();
  EXPECT_EQ(files.text(kPath), "4");
  EXPECT_EQ(saved, "4");
}

TEST_F(SlowPersistedFile, IsNotSavedWhenTheReplacementFailsAfterAll) {
  replace("new");
  files.failsReplacing = true;
  files.endWrite();
  EXPECT_EQ(saved, "");
  EXPECT_FALSE(file.isWriting());
}

TEST_F(SlowPersistedFile, KeepsADamagedFileOnceForAllThatReplacesIt) {
  files.edit(kPath, "bad");
  file.load(decode);
  file.load(decode);
  replace("new");
  replace("newer");
  files.endWrite();
  replace("newest");
  files.endWrite();
  files.endWrite();
  EXPECT_EQ(files.text(kPath), "newest");
  EXPECT_EQ(files.text(kKept), "bad");
  EXPECT_EQ(files.text(kKept.string() + ".2"), std::nullopt);
}

TEST_F(SlowPersistedFile, MayBeGoneWhenTheDiskIsDone) {
  std::optional<PersistedFile> shortLived(std::in_place, files, kPath);
  shortLived->replace("new", [] { FAIL(); });
  shortLived.reset();
  files.endWrite();
  EXPECT_EQ(files.text(kPath), "new");
}

}  // namespace
}  // namespace lumora::test
