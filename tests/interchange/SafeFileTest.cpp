#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "interchange/DimTestSupport.h"
#include "interchange/SafeFile.h"

namespace brisel::interchange {
namespace {

namespace fs = std::filesystem;

class SafeFileTest : public ::testing::Test {
 protected:
  SafeFileTest() {
    fs::remove_all(folder);
    fs::create_directory(folder);
    std::ofstream(path) << "old";
  }
  ~SafeFileTest() override { fs::remove_all(folder); }

  static std::string contents(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
  }
  void expectUntouched() const {
    EXPECT_EQ(contents(path), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
  }

  const fs::path folder = fs::path(::testing::TempDir()) / "brisel-safe-file";
  const fs::path path = folder / "model.dim";
};

TEST_F(SafeFileTest, keepsPermissionsAndLinks) {
  fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
  const fs::path link = folder / "link.dim";
  fs::create_symlink("model.dim", link);
  SafeFile file(link);
  file.write("new");
  EXPECT_EQ(contents(path), "old");
  file.commit();
  EXPECT_EQ(contents(path), "new");
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 2);
}

TEST_F(SafeFileTest, leavesTheOldFileWithoutCommit) {
  { SafeFile(path).write("half"); }
  expectUntouched();
}

TEST_F(SafeFileTest, leavesTheOldFileWhenTheDiskIsFull) {
  DimKit kit;
  const auto model = kit.empty();
  for (int i = 0; i < 30'000; ++i) model->MakeNode("Class", "Some class", std::to_string(i));
  const auto exporter = kit.registry.create("BriselExporter.DIMExport");
  const auto failWith = [&](const fs::path& file) {
    return failureOf([&] { exporter->call("Export", {file.string(), "BriselCLS", Value(model)}); });
  };
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{1'200'000, before.rlim_max};
  ::setrlimit(RLIMIT_FSIZE, &small);
  const Failure failure = failWith(path);
  ::setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, oldHandler);

  EXPECT_EQ(failure.text, "Cannot write " + path.string() + ": File too large");
  EXPECT_EQ(exporter->get("LastError"), Value(failure.text));
  expectUntouched();
  EXPECT_EQ(failWith("/dev/full").text, "Cannot write /dev/full: No space left on device");
}

TEST_F(SafeFileTest, leavesTheOldFileWhenTheModelCannotBeWritten) {
  DimKit kit;
  const auto model = kit.empty();
  model->MakeNode("Class", "broken \xFF", "c");
  EXPECT_EQ(failureOf([&] { DimWriter::write(path.string(), *model); }).number,
            ErrorNumber::invalidCall);
  expectUntouched();
}

TEST_F(SafeFileTest, tellsWhyAPathCannotBeWritten) {
  const auto errorOf = [](const fs::path& file) {
    return failureOf([&] { SafeFile opened(file.string()); }).text;
  };
  const auto told = [](const fs::path& file, std::string_view cause) {
    return "Cannot write " + file.string() + ": " + std::string(cause);
  };
  EXPECT_EQ(errorOf(folder), told(folder, "Is a directory"));
  EXPECT_EQ(errorOf(folder / "none" / "x.dim"),
            told(folder / "none" / "x.dim", "No such file or directory"));
  EXPECT_EQ(errorOf(path / "x.dim"), told(path / "x.dim", "Not a directory"));

  // A folder that may be read only, for a user who may not write everywhere.
  fs::permissions(folder, fs::perms::all & ~(fs::perms::owner_write | fs::perms::group_write |
                                             fs::perms::others_write));
  const bool isRoot = ::geteuid() == 0;
  ASSERT_EQ(::seteuid(isRoot ? 65534 : ::geteuid()), 0);
  const std::string error = errorOf(path);
  ASSERT_EQ(::seteuid(isRoot ? 0 : ::geteuid()), 0);
  fs::permissions(folder, fs::perms::owner_all);
  EXPECT_EQ(error, told(path, "Permission denied"));
  expectUntouched();
}

}  // namespace
}  // namespace brisel::interchange
