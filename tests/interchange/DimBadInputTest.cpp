#include <fstream>

#include <gtest/gtest.h>

#include "interchange/DimTestSupport.h"
#include "interchange/FileList.h"

namespace brisel::interchange {
namespace {

const std::string kClass = R"({"node":"Class","id":"c","name":"C"},)"
                           "\n";

struct BadFile {
  std::string text;
  std::string error;
  friend std::ostream& operator<<(std::ostream& out, const BadFile& file) {
    return out << file.error;
  }
};

std::string deep(std::string_view before, char bracket, std::string_view after) {
  return std::string(before) + std::string(100'000, bracket) + std::string(after);
}

/// A class whose line holds the given rest.
std::string rest(std::string_view words) {
  return dimFile(R"({"node":"Class","id":"d","name":"D",)" + std::string(words) + "},\n");
}

class DimBadInput : public ::testing::TestWithParam<BadFile> {};

TEST_P(DimBadInput, isToldInOneLine) {
  DimKit kit;
  const Failure failure = failureOf([&] { static_cast<void>(kit.read(GetParam().text)); });
  EXPECT_EQ(failure.text, "model.dim:" + GetParam().error);
  EXPECT_EQ(failure.number, ErrorNumber::badFile);
}

INSTANTIATE_TEST_SUITE_P(
    OtherKinds, DimBadInput,
    ::testing::Values(
        BadFile{"", "1: the file is empty"}, BadFile{"\n \n", "1: the file is blank"},
        BadFile{"\x89PNG\r\n\x1a\n\0\0", "1: not a DIM file (no bracket at the beginning)"},
        BadFile{"<?xml version=\"1.0\"?>\n<x/>", "1: not a DIM file (no bracket at the beginning)"},
        BadFile{"\xFF\xFE[\0", "1: not a DIM file (no bracket at the beginning)"},
        BadFile{"{\"nodes\":[]}", "1: not a DIM file (no bracket at the beginning)"},
        BadFile{"[]", "1: not a DIM file (nothing in it)"},
        BadFile{"[\n1,2]", "2: not a DIM file (not an object)"},
        BadFile{"[{\"a\":[1]}]", "1: not a DIM file (unknown key \"a\")"},
        BadFile{deep("", '[', ""), "1: not a DIM file (the file breaks off in this line)"},
        BadFile{deep(deep("", '[', ""), ']', ""), "1: not a DIM file (not an object)"},
        BadFile{"[" + kClass + "{\"end\":\"DIM\"}]",
                "1: not a DIM file (no header in its first line)"}));

INSTANTIATE_TEST_SUITE_P(
    Headers, DimBadInput,
    ::testing::Values(
        BadFile{R"([{"format":"DIM","version":2,"kind":"BriselCLS","new":[{}]},{"more":1}])",
                "1: the file is of version 2 of the format; this program reads up to version 1"},
        BadFile{R"([{"format":"DIM","version":1,"kind":"Other"}])",
                "1: the file holds a model of the kind \"Other\", not \"BriselCLS\""},
        BadFile{R"([{"format":"DIM","version":"1","kind":"BriselCLS"}])",
                "1: \"version\" is not a whole number"},
        BadFile{R"([{"format":"DIM","version":1}])", "1: a header without \"kind\""},
        BadFile{dimFile(R"({"format":"DIM","version":1,"kind":"BriselCLS"},)"
                        "\n"),
                "2: a second header"}));

INSTANTIATE_TEST_SUITE_P(
    Json, DimBadInput,
    ::testing::Values(
        BadFile{dimFile(kClass + "{\"node\":\"Class\",\"id\":\"\xFF\",\"name\":\"\"},\n"),
                "3: not UTF-8"},
        BadFile{dimFile(kClass + "{\"node\":\"Class\",\"id\":\"x,\n" + kClass),
                "3: a text that is not closed, or a control character in it"},
        BadFile{dimFile(R"({"node":"Class","id":"\ud800","name":""},)"
                        "\n"),
                "2: broken JSON: Problem while parsing a string"},
        BadFile{dimFile(R"({"node":"Class" "id":"x","name":""},)"
                        "\n"),
                "2: broken JSON: The JSON document has an improper structure: missing or "
                "superfluous commas, braces, missing keys, etc."},
        BadFile{dimFile(kClass) + "[]", "4: text behind the last bracket"},
        BadFile{dimFile(kClass).substr(0, 80), "2: the file breaks off in this line"},
        BadFile{dimFile("").substr(0, 30), "1: the file breaks off in this line"},
        BadFile{R"([{"format":"DIM","version":1,"kind":"BriselCLS"},)"
                "\n" +
                    kClass.substr(0, kClass.size() - 2) + "]",
                "2: the file breaks off behind this line: its end is missing"},
        BadFile{dimFile("{\"end\":\"DIM\"},\n"), "3: an element behind the end"},
        BadFile{dimFile(deep(R"({"node":"Class","id":"d","name":)", '[', "},\n")),
                "2: \"name\" is not a text"},
        BadFile{dimFile(deep("", '[', "")), "2: not an object"}));

INSTANTIATE_TEST_SUITE_P(
    Elements, DimBadInput,
    ::testing::Values(
        BadFile{dimFile("{},\n"), "2: neither a node nor a link"},
        BadFile{dimFile("{\"id\":\"x\"},\n"), "2: neither a node nor a link"},
        BadFile{dimFile(R"({"node":"Class","link":"A.B.C"},)"
                        "\n"),
                "2: both a node and a link"},
        BadFile{dimFile(R"({"node":"Class","name":"x"},)"
                        "\n"),
                "2: a node without \"id\""},
        BadFile{dimFile(R"({"node":"Class","id":null,"name":"x"},)"
                        "\n"),
                "2: \"id\" is not a text"},
        BadFile{rest(R"("id":"e")"), "2: \"id\" stands here twice"},
        BadFile{rest(R"("source":"c")"), "2: \"source\" has no place in a node"},
        BadFile{rest(R"("color":"red")"), "2: unknown key \"color\""},
        BadFile{rest(R"("properties":[])"), "2: \"properties\" is not an object"},
        BadFile{rest(R"("properties":{"a":null})"),
                "2: the property \"a\" is neither a text, a number nor true or false"},
        BadFile{rest(R"("properties":{"a":18446744073709551615})"),
                "2: the property \"a\" is too large a number"},
        BadFile{rest(R"("properties":{"a":{"double":"many"}})"),
                "2: the property \"a\" is no number"},
        BadFile{rest(deep(R"("properties":{"a":)", '[', "}")),
                "2: the property \"a\" is neither a text, a number nor true or false"},
        BadFile{rest(R"("properties":{"Name":"x"})"), "2: \"Name\" cannot be among the properties"},
        BadFile{rest(R"("area":{"left":1,"top":2,"width":3})"),
                "2: an area has left, top, width and height"},
        BadFile{rest(R"("area":{"left":1.5,"top":2,"width":3,"height":1})"),
                "2: \"left\" is not a whole number"},
        BadFile{rest(R"("points":[[1]])"), "2: points are pairs of whole numbers"},
        BadFile{rest(R"("points":[[1,2,3]])"), "2: points are pairs of whole numbers"}));

INSTANTIATE_TEST_SUITE_P(
    Meaning, DimBadInput,
    ::testing::Values(
        BadFile{dimFile(kClass + "\n" + kClass), "4: a second Class \"c\"; the first is in line 2"},
        BadFile{dimFile(R"({"node":"A.B","id":"x","name":""},)"
                        "\n"),
                "2: No name for a node type: 'A.B'"},
        BadFile{
            dimFile(kClass + R"({"link":"Class.Has.Attrib","id":"l","source":"c","target":"x"},)"
                             "\n"),
            "3: link \"Class.Has.Attrib\" ends at unknown Attrib \"x\""},
        BadFile{dimFile(kClass + R"({"link":"Odd.Has.Class","id":"l","source":"x","target":"c"},)"
                                 "\n"),
                "3: link \"Odd.Has.Class\" begins at unknown Odd \"x\""},
        BadFile{dimFile(kClass + R"({"link":"Class","id":"l","source":"c","target":"c"},)"
                                 "\n"),
                "3: \"Class\" is no type of links: three words are, with \".\" between them"},
        BadFile{dimFile(kClass + R"({"link":"Class..Class","id":"l","source":"c","target":"c"},)"
                                 "\n"),
                "3: No link of type 'Class..Class' joins a Class with a Class"}));

TEST(DimBadInputInLargeFiles, isFoundInItsLine) {
  DimKit kit;
  std::string lines;
  for (int i = 1; i <= 30'000; ++i) {
    lines += R"({"node":"Class","id":"c)" + std::to_string(i) +
             R"(","name":"Some class"},)"
             "\n";
  }
  const auto errorWith = [&](std::string_view line) {
    return failureOf([&] { static_cast<void>(kit.read(dimFile(lines + std::string(line)))); }).text;
  };
  EXPECT_EQ(errorWith(R"({"node":"Class","id":"c7","name":""},)"
                      "\n"),
            "model.dim:30002: a second Class \"c7\"; the first is in line 8");
  EXPECT_EQ(errorWith("{\"node\":\"\xFF\"},\n"), "model.dim:30002: not UTF-8");
  EXPECT_EQ(errorWith("{\"node\":\"},\n"),
            "model.dim:30002: a text that is not closed, or a control character in it");
  // Every possible truncation of a short file, the last bracket's line break aside.
  const std::string whole = dimFile(kClass);
  for (std::size_t size = 0; size + 1 < whole.size(); ++size) {
    EXPECT_EQ(failureOf([&] { static_cast<void>(kit.read(whole.substr(0, size))); }).number,
              ErrorNumber::badFile)
        << size;
  }
}

TEST(DimFiles, becomeOneModelOrAnErrorThatNamesBoth) {
  DimKit kit;
  const std::string folder = ::testing::TempDir();
  const auto file = [&](const std::string& name, const std::string& text) {
    std::ofstream(folder + name, std::ios::binary) << text;
    return Value(folder + name);
  };
  const Value first = file("first.dim", dimFile(kClass));
  const Value second = file(
      "second.dim", dimFile(R"({"node":"Class","id":"d","name":"D"},)"
                            "\n"
                            R"({"link":"Class.Knows.Class","id":"l","source":"d","target":"c"},)"
                            "\n"));
  const auto import = kit.registry.create("BriselImporter.DIMImport");
  const auto imported = [&](const std::vector<Value>& files) {
    const auto list = kit.registry.create("BriselImporter.FileList");
    for (const Value& each : files) list->call("Add", {each});
    EXPECT_EQ(list->get("Count"), Value(static_cast<int>(files.size())));
    return platform::as<MetaRepository>(import->call("Import", {Value(list)}).object());
  };
  const auto both = imported({first, second});
  EXPECT_EQ(both->MetaNodes("Class")->extension()->Count(), 2);
  EXPECT_EQ(import->get("LastError"), Value(""));

  EXPECT_EQ(failureOf([&] { imported({second}); }).text,
            folder + "second.dim:3: link \"Class.Knows.Class\" ends at unknown Class \"c\"");
  EXPECT_EQ(
      failureOf([&] {
        imported({first, second, first});
      }).text,
      folder + "first.dim:2: a second Class \"c\"; the first is in " + folder + "first.dim:2");
  EXPECT_EQ(failureOf([&] {
              imported({first, folder + "none.dim"});
            }).number,
            ErrorNumber::fileNotFound);
  EXPECT_EQ(import->get("LastError"),
            Value("Cannot read " + folder + "none.dim: No such file or directory"));
  EXPECT_EQ(failureOf([&] { imported({folder}); }).text,
            "Cannot read " + folder + ": Is a directory");
  EXPECT_EQ(failureOf([&] { imported({}); }).text, "No file was given to be read");
}

}  // namespace
}  // namespace brisel::interchange
