// Each row of the mapping, as one line about what was made of an element of the small models.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "interchange/DimWriter.h"
#include "interchange/ModelImport.h"
#include "interchange/TextEncoding.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"
#include "store/components.h"

namespace brisel::interchange {
namespace {

using platform::Link;
using platform::MetaRepository;
using platform::MetaType;
using platform::Node;

std::string textOf(const platform::Value& value) {
  if (!value.isBoolean()) return value.text();
  return value.isTrue() ? "yes" : std::string();
}

/// "Attrib number final=yes scope=private of Order has Integer", properties that say nothing left
/// out: the type, the name, the properties, the owner, and where the node's own links lead to.
std::string lineOf(const MetaRepository& repository, Node& node) {
  const std::string type = node.Parent()->name();
  std::string line = type + " " + node.name();
  for (const char* key : {"category",        "TypeCategory",   "scope",
                          "abstract",        "final",          "static_",
                          "transient",       "volatile",       "IsDerived",
                          "isComposite",     "Multiplicity",   "direction",
                          "value",           "SourceRoleName", "SourceMultiplicity",
                          "SourceNavigable", "TargetRolename", "TargetMultiplicity",
                          "TargetNavigable", "Description",    "TaggedValues"}) {
    const std::string value = textOf(node.GetProperty(key));
    if (!value.empty()) line.append(" ").append(key).append("=").append(value);
  }
  std::string owner;
  for (MetaType& links : platform::each<MetaType>(repository.linkTypes())) {
    const std::string name = links.name();
    const std::string word = name.substr(name.find('.') + 1, name.rfind('.') - name.find('.') - 1);
    if (name.starts_with(type + ".") && !(word == "Has" && !name.ends_with(".DataType"))) {
      for (Link& link : platform::each<Link>(node.outgoing(name))) {
        line.append(" ").append(word).append(":").append(link.Target()->name());
      }
    }
    if (name.ends_with("." + type) && word == "Has" && type != "DataType") {
      for (Link& link : platform::each<Link>(node.Incoming(name))) owner = link.source()->name();
    }
  }
  return owner.empty() ? line : line + " of " + owner;
}

struct Import {
  explicit Import(const std::vector<std::string>& names) {
    platform::ComponentRegistry registry(nullptr);
    store::registerComponents(registry);
    std::vector<std::string> paths;
    for (const std::string& name : names) {
      paths.push_back(BRISEL_SOURCE_DIR "/tests/data/models/" + name);
    }
    result = readModel(paths, registry);
    for (MetaType& type : platform::each<MetaType>(result.repository->nodeTypes())) {
      for (Node& node : platform::each<Node>(type.extension())) {
        lines.push_back(lineOf(*result.repository, node));
      }
    }
  }

  void expect(const std::vector<std::string>& expected) const {
    for (const std::string& line : expected) {
      if (std::find(lines.begin(), lines.end(), line) != lines.end()) continue;
      const std::string head = line.substr(0, line.find(' ', line.find(' ') + 1));
      std::string nearest;
      for (const std::string& other : lines) {
        if (other.starts_with(head)) nearest += "\n  " + other;
      }
      ADD_FAILURE() << "no line\n  " << line << "\nbut" << nearest;
    }
  }
  void expectSkipped(const std::vector<std::string>& expected) const {
    std::vector<std::string> found;
    for (const auto& entry : result.report.skipped) {
      EXPECT_NE(entry.reason.find(": "), std::string::npos) << entry.reason;
      found.push_back(entry.kind + " " + entry.id);
    }
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, expected);
  }
  void expectStubs(const std::vector<std::string>& expected) const {
    std::vector<std::string> found;
    for (const auto& stub : result.report.stubs) found.push_back(stub.id + " " + stub.name);
    EXPECT_EQ(found, expected);
  }

  ImportResult result;
  std::vector<std::string> lines;
};

TEST(ImportMappingTest, Uml) {
  const Import shop({"shop.uml"});
  shop.expect({
      "Class Document category=Shop::Orders scope=public abstract=yes",
      "Class Order category=Shop::Orders Description=What a customer wants.\nOnce. "
      "TaggedValues=Persistent.table=ORDERS As:Persistent",
      "Class Printable category=Shop As:COM::Interface",
      "Class State category=Shop As:COM::Enum",
      "Class Money category=Shop As:COM::TypeDef",
      "Class Store category=Shop",
      "Class Delivery category=Shop",
      "Class Record",
      "DataType Text TypeCategory=Shop",
      "Attrib number scope=private final=yes value=0 Description=Counted up. Has:Integer As:Key of "
      "Order",
      "Attrib state scope=protected value=open Has:State of Order",
      "Attrib tags static_=yes IsDerived=yes Multiplicity=* Has:Text of Order",
      "Attrib main Has:<untyped> of Order",
      "Attrib open value=7 Has:State of State",
      "Attrib closed Has:State of State",
      "Attrib cents Has:Text of Money",
      "Attrib day Has:Text of Delivery",
      "Operation total scope=public static_=yes Has:Money of Order",
      "Operation close abstract=yes Has:void of Order",
      "Parameter round Has:Text of total",
      "Parameter rest direction=out value=none Has:Money of total",
      "Aggregation holds isComposite=yes SourceRoleName=order SourceMultiplicity=1 "
      "TargetRolename=lines TargetMultiplicity=1..* TargetNavigable=yes Source:Order Target:Line "
      "As:Whole",
      "Aggregation  SourceRoleName=shelf SourceMultiplicity=1 TargetRolename=goods "
      "TargetMultiplicity=1 Source:Store Target:Line",
      "Association  SourceRoleName=last SourceMultiplicity=1 TargetRolename=next "
      "TargetMultiplicity=1 TargetNavigable=yes Source:Line Target:Document",
      "Association Delivery SourceMultiplicity=1 TargetMultiplicity=1 Source:Order Target:Store",
      "Association  TargetNavigable=yes Source:Store Target:Order As:dependency",
      "Association  TargetNavigable=yes Source:Store Target:Printable As:use",
      "Association refines TargetNavigable=yes Source:Store Target:Record As:abstraction",
      "Generalization  Super:Document Sub:Order",
      "Generalization  Super:Record Sub:Document",
      "Generalization  Super:Printable Sub:Order As:realize",
  });
  shop.expectSkipped({"actor actor", "association as-three", "comment c-model",
                      "dependency d-package", "packageImport import", "stereotype s2",
                      "stereotype s4", "stereotype s6"});
  shop.expectStubs({"Archive.uml#Record Record"});
}

TEST(ImportMappingTest, UmlWithValuesAsChildren) {
  const Import fleet({"fleet.xmi"});
  fleet.expect({
      "Class Vehicle category=Fleet scope=package Description=\xC2\xABMoves\xC2\xBB\xE2\x80\xA6. "
      "TaggedValues=Asset.value=high As:Asset",
      "Attrib wheels Multiplicity=2..4 Has:Integer of Vehicle",
      "Class Stop category=Fleet As:COM::TypeDef",
      "Aggregation owns SourceRoleName=owner SourceMultiplicity=1 SourceNavigable=yes "
      "TargetRolename=fleet TargetMultiplicity=1 Source:Company Target:Vehicle",
      "Generalization  Super:Vehicle Sub:Car",
      "Generalization  Super:Company Sub:Car As:realize",
  });
  fleet.expectSkipped({"dataType Date2", "generalization lost"});
  fleet.expectStubs({});
}

TEST(ImportMappingTest, Ecore) {
  const Import zoo({"zoo.ecore"});
  zoo.expect({
      "Class Animal category=zoo abstract=yes Description=Lives here.",
      "Class Dangerous category=zoo abstract=yes As:COM::Interface",
      "Class Cage category=zoo::houses",
      "Class Size category=zoo As:COM::Enum",
      "DataType Weight TypeCategory=zoo",
      "Attrib names final=yes transient=yes volatile=yes IsDerived=yes Multiplicity=* value=? "
      "Has:EString of Animal",
      "Attrib large value=5 Has:Size of Size",
      "Operation feed Multiplicity=0..1 Has:EBoolean of Animal",
      "Operation sleep Has:void of Animal",
      "Parameter amount Multiplicity=0..1 Has:Weight of feed",
      "Aggregation  isComposite=yes SourceRoleName=cage SourceMultiplicity=1 SourceNavigable=yes "
      "TargetRolename=animals TargetMultiplicity=* TargetNavigable=yes Source:Cage Target:Animal",
      "Association  TargetRolename=friends TargetMultiplicity=* TargetNavigable=yes Source:Animal "
      "Target:Animal",
      "Generalization  Super:Animal Sub:Lion",
      "Generalization  Super:Cat Sub:Lion",
  });
  zoo.expectSkipped({"association zoo#//Animal/weight"});
  zoo.expectStubs({"other.ecore#//Cat Cat"});
}

/// Whatever the encoding, what is in the model can be written as a file.
TEST(ImportMappingTest, TextOfTheModelIsUtf8) {
  for (const char* name : {"shop.uml", "fleet.xmi", "zoo.ecore"}) {
    const std::string text = DimWriter::text(*Import({name}).result.repository);
    EXPECT_EQ(firstBrokenByte(text), text.size()) << name;
  }
}

TEST(ImportMappingTest, TwoDialectsAreOneModel) {
  const Import both({"shop.uml", "zoo.ecore"});
  both.expect({"Class Animal category=zoo abstract=yes Description=Lives here.",
               "Class Line category=Shop::Orders"});
}

}  // namespace
}  // namespace brisel::interchange
