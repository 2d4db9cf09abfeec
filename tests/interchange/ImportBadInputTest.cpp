// Files that are broken, foreign or hostile: one line that names file, line and cause, or a model
// with what was wrong told.
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "interchange/ModelImport.h"
#include "platform/Error.h"
#include "support/Model.h"

namespace brisel::interchange {
namespace {

using platform::Error;

std::string inModel(const std::string& elements) {
  return "<uml:Model xmi:version='2.1' xmlns:xmi='http://www.omg.org/spec/XMI/20131001'\n"
         " xmlns:uml='http://www.eclipse.org/uml2/5.0.0/UML' name='m'>\n" +
         elements + "\n</uml:Model>\n";
}

std::string repeated(std::string_view text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result.append(text);
  return result;
}

std::string fileBytes(const std::string& name) {
  std::ifstream stream(BRISEL_SOURCE_DIR "/tests/data/models/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

struct BadModel {
  std::string what;
  std::string bytes;
  std::string message;  ///< how it begins
};

TEST(ImportBadInputTest, OneLineWithFileLineAndCause) {
  const std::string shop = fileBytes("shop.uml");
  const std::string deep = inModel(repeated("<nestedPackage name='p'>", 100'000) +
                                   repeated("</nestedPackage>", 100'000));
  const std::vector<BadModel> files = {
      {"nothing", "", "x.uml:1: the file is empty"},
      {"blanks", " \n\n", "x.uml:1: the file is empty"},
      {"cut off", shop.substr(0, shop.find("<ownedLiteral")), "x.uml:49: the file ends inside"},
      {"cut off in a tag", shop.substr(0, shop.find("<ownedLiteral") + 9),
       "x.uml:49: the file ends inside"},
      {"binary",
       std::string("\x7F"
                   "ELF\0\0\1\2",
                   8),
       "x.uml:1: "},
      {"an archive", "PK\x03\x04zip", "x.uml:1: this is an archive"},
      {"text", "\nclass A {}\n", "x.uml:2: this is no XML file"},
      {"another XML", "<?xml version='1.0'?>\n<html><body/></html>",
       "x.uml:2: the element \"html\""},
      {"XMI 1", "<XMI xmi.version='1.2'/>", "x.uml:1: XMI 1.2 is not read"},
      {"XMI without a model", "<xmi:XMI xmlns:xmi='http://www.omg.org/XMI'/>", "x.uml:1: the XMI"},
      {"not UTF-8", inModel("<packagedElement name='\xE4'/>"), "x.uml:3: the byte 0xE4"},
      {"a zero byte", inModel(std::string("a\0b", 3)), "x.uml:3: the byte 0x00"},
      {"half a character", inModel("<ownedComment body='a&#xD800;'/>"), "x.uml:3: a character ref"},
      {"beyond all characters", inModel("\n<ownedComment body='&#x7FFFFFFF;'/>"),
       "x.uml:4: a char"},
      {"an unknown encoding", "<?xml version='1.0' encoding='EBCDIC'?><a/>", "x.uml:1: the encod"},
      {"odd UTF-16", std::string("\xFF\xFE<\0a", 5), "x.uml:1: an odd number"},
      {"wrong end tag", inModel("<ownedComment></ownedRule>"), "x.uml:3: the end tag"},
      {"nested 100,000 deep", deep, "x.uml:3: elements are nested deeper"},
      {"nested and never closed", inModel(repeated("<a>", 100'000)), "x.uml:"},
  };
  for (const BadModel& file : files) {
    SCOPED_TRACE(file.what);
    test::Model bench;
    try {
      importModel({{"x.uml", file.bytes}}, *bench.model);
      ADD_FAILURE() << "it was read";
    } catch (const Error& error) {
      const std::string message = error.what();
      EXPECT_TRUE(message.starts_with(file.message)) << message;
      EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    }
    EXPECT_EQ(bench.count(platform::types::kClass), 0);
  }
}

TEST(ImportBadInputTest, OneBadFileOfSeveralMakesNothing) {
  test::Model bench;
  EXPECT_THROW(importModel({{"shop.uml", fileBytes("shop.uml")}, {"x.uml", "<a>"}}, *bench.model),
               Error);
  EXPECT_EQ(bench.count(platform::types::kClass), 0);
}

struct OddModel {
  std::string what;
  std::string elements;
  std::int64_t classes;
  std::string skipped;  ///< kinds and identifiers, parted by blanks
};

TEST(ImportBadInputTest, OddModelsAreReadAndTold) {
  const std::string classA = "<packagedElement xmi:type='uml:Class' xmi:id='A' name='A'>";
  const std::string closed = "</packagedElement>";
  const std::vector<OddModel> models = {
      {"twice the same identifier", classA + closed + classA + closed, 2, ""},
      {"no identifiers, no names",
       "<packagedElement xmi:type='uml:Class'><ownedAttribute/><ownedOperation/></packagedElement>",
       1, ""},
      {"super class nowhere", classA + "<generalization xmi:id='g' general='B'/>" + closed, 1,
       "generalization g"},
      {"super class not stated", classA + "<generalization xmi:id='g'/>" + closed, 1,
       "generalization g"},
      {"its own super class", classA + "<generalization xmi:id='g' general='A'/>" + closed, 1, ""},
      {"an end of no association", classA + "<ownedAttribute xmi:id='e' association='X'/>" + closed,
       1, "associationEnd e"},
      {"an association of one end that has no type",
       "<packagedElement xmi:type='uml:Association' xmi:id='s' memberEnd='e'>"
       "<ownedEnd xmi:id='e'/></packagedElement>",
       0, "association s"},
      {"an association without ends", "<packagedElement xmi:type='uml:Association' xmi:id='s'/>", 0,
       "association s"},
      {"an association with an attribute as end of two",
       classA + "<ownedAttribute xmi:id='e' type='A' association='s'/>" + closed +
           "<packagedElement xmi:type='uml:Association' xmi:id='s' memberEnd='e e'/>" +
           "<packagedElement xmi:type='uml:Association' xmi:id='t' memberEnd='e e'/>",
       1, ""},
      {"a class in an attribute",
       "<packagedElement xmi:type='uml:Class' xmi:id='B'>"
       "<ownedAttribute xmi:id='a'><packagedElement xmi:type='uml:Class' xmi:id='A'/>"
       "</ownedAttribute></packagedElement>",
       2, ""},
      {"members of nothing", "<ownedAttribute xmi:id='a'/><ownedOperation xmi:id='o'/>", 0,
       "attribute a operation o"},
      {"a dependency of itself",
       "<packagedElement xmi:type='uml:Dependency' xmi:id='d' client='d' supplier='d'/>", 0,
       "dependency d"},
  };
  for (const OddModel& odd : models) {
    SCOPED_TRACE(odd.what);
    test::Model bench;
    const ImportReport report = importModel({{"x.uml", inModel(odd.elements)}}, *bench.model);
    EXPECT_EQ(bench.count(platform::types::kClass), odd.classes);
    std::string skipped;
    for (const auto& entry : report.skipped) {
      skipped.append(skipped.empty() ? "" : " ").append(entry.kind).append(" ").append(entry.id);
      EXPECT_TRUE(entry.reason.starts_with("x.uml:")) << entry.reason;
    }
    EXPECT_EQ(skipped, odd.skipped);
  }
}

}  // namespace
}  // namespace brisel::interchange
