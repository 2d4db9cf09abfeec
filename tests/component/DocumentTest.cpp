#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>
#include <unistd.h>

#include "component/AutomaticShell.h"
#include "component/Document.h"
#include "component/Suite.h"

namespace brisel::component {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void write(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

/// A saved diagram of two classes, in which a third was made since.
class SavedDocument : public testing::Test {
 protected:
  SavedDocument() {
    registerSuite(registry);
    document = std::make_unique<Document>(registry);
    fs::create_directories(folder);
    shell->AnswerFile(platform::Value(file));
    makeClass("a");
    makeClass("b");
    EXPECT_TRUE(document->save());
    makeClass("c");
    asking = shell->Answered.connect([this](const std::string& kind, const auto& answered) {
      if (kind == "message") asked.push_back(answered->get("text").text());
    });
    failing = document->SaveFailed.connect([this](const std::string&) { ++failures; });
  }
  ~SavedDocument() override {
    document.reset();
    fs::remove_all(folder);
  }

  void makeClass(const char* id) const {
    document->editor().CreateClass(id, id, "", "", "", "public");
  }

  const std::string folder =
      (fs::temp_directory_path() / ("brisel_document_" + std::to_string(::getpid()))).string();
  const std::string file = folder + "/a.dim";
  const std::string other = folder + "/other.dim";
  platform::Ref<AutomaticShell> shell = platform::make<AutomaticShell>();
  platform::ComponentRegistry registry{shell};
  std::unique_ptr<Document> document;
  std::vector<std::string> asked;
  int failures = 0;
  platform::Connection asking, failing;
};

TEST_F(SavedDocument, overwritesWhatAnotherProgramWroteOnlyWhenAgreed) {
  const std::string foreign = "what another program wrote";
  const struct {
    const char* answer;
    bool saves;
    const char* writes;
  } cases[] = {{"Cancel", false, ""}, {"Save As", true, "other.dim"}, {"Overwrite", true, "a.dim"}};
  for (const auto& expected : cases) {
    write(file, foreign);
    asked.clear();
    shell->AnswerMessage(expected.answer);
    if (expected.answer == std::string("Save As")) shell->AnswerFile(platform::Value(other));
    EXPECT_EQ(document->save(), expected.saves) << expected.answer;
    ASSERT_EQ(asked.size(), 1U) << expected.answer;
    EXPECT_NE(asked[0].find("\"a.dim\" was changed by another program"), std::string::npos);
    EXPECT_EQ(document->isModified(), !expected.saves) << expected.answer;
    EXPECT_EQ(contentOf(file) == foreign, *expected.writes != 'a') << expected.answer;
    if (!expected.saves) continue;
    EXPECT_EQ(document->path(), folder + "/" + expected.writes);
    EXPECT_EQ(contentOf(document->path()).substr(0, 2), "[{");
    if (document->path() == file) continue;
    fs::copy_file(other, file, fs::copy_options::overwrite_existing);
    document->open({file});
    makeClass("e");
  }
  EXPECT_EQ(failures, 0) << "a person who declines is told nothing";
  asked.clear();
  makeClass("d");
  EXPECT_TRUE(document->save());
  EXPECT_TRUE(asked.empty()) << "its own saves are nobody else's";
}

TEST_F(SavedDocument, noticesAFileThatIsGone) {
  fs::remove(file);
  EXPECT_EQ(document->fileChange(), FileStamp::Change::vanished);
  shell->AnswerMessage("Cancel");
  EXPECT_FALSE(document->save());
  EXPECT_FALSE(fs::exists(file));
  shell->AnswerMessage("Write Again");
  EXPECT_TRUE(document->save());
  EXPECT_TRUE(fs::exists(file));
  EXPECT_EQ(document->fileChange(), FileStamp::Change::none);
  EXPECT_EQ(asked.size(), 2U);
}

TEST_F(SavedDocument, asksNothingWhereTheBytesAreTheSame) {
  write(folder + "/copy", contentOf(file));
  fs::rename(folder + "/copy", file);
  fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(1));
  EXPECT_EQ(document->fileChange(), FileStamp::Change::none);
  EXPECT_TRUE(document->save());
  EXPECT_TRUE(asked.empty());
}

TEST_F(SavedDocument, reloadsWhatTheFileHoldsNowWhereItWasSeen) {
  const std::string two = contentOf(file);
  ASSERT_TRUE(document->save());
  document->canvas().viewport().zoomTo(150);
  document->canvas().viewport().scrollTo({1500, 600});
  const platform::Rect seen = document->canvas().viewport().visible();
  write(file, two);
  EXPECT_EQ(document->fileChange(), FileStamp::Change::changed);
  document->reload();
  EXPECT_EQ(document->counts().classes, 2);
  EXPECT_FALSE(document->isModified());
  EXPECT_EQ(document->fileChange(), FileStamp::Change::none);
  EXPECT_EQ(document->canvas().viewport().zoom(), 150);
  EXPECT_EQ(document->canvas().viewport().visible(), seen);

  write(file, "[");
  EXPECT_THROW(document->reload(), std::exception);
  EXPECT_EQ(document->counts().classes, 2) << "what cannot be read replaces nothing";
}

TEST_F(SavedDocument, knowsWhichFileItShows) {
  EXPECT_TRUE(document->shows(file));
  fs::create_symlink(file, folder + "/link.dim");
  EXPECT_TRUE(document->shows(folder + "/link.dim"));
  EXPECT_FALSE(document->shows(other));
  EXPECT_FALSE(document->isUntouched());
  document->create();
  EXPECT_TRUE(document->isUntouched());
  EXPECT_FALSE(document->shows(file));
  makeClass("x");
  EXPECT_FALSE(document->isUntouched());
}

}  // namespace
}  // namespace brisel::component
