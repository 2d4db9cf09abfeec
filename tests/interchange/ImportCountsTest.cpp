// What is in the files equals what was made and what was told as skipped, row by row. One side is
// a counts.json beside the files, the other the repository and the report.
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <simdjson.h>

#include "interchange/ModelImport.h"
#include "platform/Shell.h"
#include "store/components.h"

namespace brisel::interchange {
namespace {

using platform::Node;
namespace types = platform::types;
using Facts = std::map<std::string, std::int64_t>;

bool isModelFile(const std::string& name) {
  return name.ends_with(".uml") || name.ends_with(".xmi") || name.ends_with(".ecore");
}

/// The facts of the files of a folder that this program reads.
std::map<std::string, Facts> factsOf(const std::string& folder) {
  simdjson::dom::parser parser;
  std::map<std::string, Facts> files;
  for (const auto [name, facts] : parser.load(folder + "/counts.json").get_object()) {
    const std::string_view dialect = facts["dialect"];
    if (!isModelFile(std::string(name)) || dialect.starts_with("XMI 1")) continue;
    for (const auto [key, value] : facts.get_object()) {
      if (value.is_int64()) files[std::string(name)][std::string(key)] = value.get_int64();
    }
  }
  return files;
}

struct Side {
  ImportResult result;
  std::string name;

  [[nodiscard]] std::int64_t skipped(std::string_view kind) const {
    std::int64_t count = 0;
    for (const auto& entry : result.report.skipped) count += entry.kind == kind;
    return count;
  }
  [[nodiscard]] std::int64_t nodes(std::string_view type) const {
    return result.repository->MetaNodes(type)->extension()->Count();
  }
  /// Nodes of the type that have one of the stereotypes.
  [[nodiscard]] std::int64_t nodes(std::string_view type,
                                   const std::vector<std::string>& stereotypes) const {
    std::int64_t count = 0;
    for (Node& node : platform::each<Node>(result.repository->MetaNodes(type)->extension())) {
      const auto links = node.outgoing(std::string(type) + ".As.Stereotype");
      if (links->Count() == 0) continue;
      const std::string found = platform::as<platform::Link>(links->Item(1))->Target()->name();
      count += std::find(stereotypes.begin(), stereotypes.end(), found) != stereotypes.end();
    }
    return count;
  }
  [[nodiscard]] std::int64_t stereotypeLinks() const {
    std::int64_t count = 0;
    for (platform::MetaType& type :
         platform::each<platform::MetaType>(result.repository->linkTypes())) {
      if (type.name().ends_with(".As.Stereotype")) count += type.extension()->Count();
    }
    return count;
  }
  [[nodiscard]] std::int64_t documented() const {
    std::int64_t count = 0;
    for (platform::MetaType& type :
         platform::each<platform::MetaType>(result.repository->nodeTypes())) {
      for (Node& node : platform::each<Node>(type.extension())) {
        for (const char* key : {"Description", "SourceDescription", "TargetDescription"}) {
          count += !node.GetProperty(key).text().empty();
        }
      }
    }
    return count;
  }
};

const std::vector<std::string> kDependencies = {"dependency", "use", "abstraction"};

void compare(const Side& side, Facts facts) {
  SCOPED_TRACE(side.name);
  const auto stubs = static_cast<std::int64_t>(side.result.report.stubs.size());
  const std::int64_t structured = side.nodes(types::kClass, {"COM::TypeDef"});
  const std::int64_t enums = side.nodes(types::kClass, {"COM::Enum"});
  const std::int64_t interfaces = side.nodes(types::kClass, {"COM::Interface"});
  const std::int64_t dependencies = side.nodes(types::kAssociation, kDependencies);
  const std::int64_t realizations = side.nodes(types::kGeneralization, {"realize"});

  EXPECT_EQ(side.nodes(types::kClass) - stubs - structured - enums - interfaces, facts["classes"]);
  EXPECT_EQ(enums, facts["enumerations"]);
  EXPECT_EQ(interfaces, facts["interfaces"]);
  EXPECT_EQ(side.nodes(types::kAttrib) + side.skipped("attribute") + side.skipped("literal"),
            facts["attributes"] + facts["literals"]);
  EXPECT_EQ(side.nodes(types::kOperation) + side.skipped("operation"), facts["operations"]);
  EXPECT_EQ(side.nodes(types::kParameter) + side.skipped("parameter"), facts["parameters"]);
  EXPECT_EQ(side.nodes(types::kAssociation) - dependencies + side.nodes(types::kAggregation) +
                side.skipped("association"),
            facts["associations"]);
  EXPECT_EQ(dependencies + side.skipped("dependency"), facts["dependencies"]);
  EXPECT_EQ(realizations + side.skipped("realization"), facts["realizations"]);
  EXPECT_EQ(side.nodes(types::kGeneralization) - realizations + side.skipped("generalization"),
            facts["generalizations"]);

  std::int64_t composites = 0;
  for (Node& node :
       platform::each<Node>(side.result.repository->MetaNodes(types::kAggregation)->extension())) {
    composites += node.Prop_("isComposite").isTrue();
  }
  const std::int64_t shared = side.nodes(types::kAggregation) - composites;
  const std::int64_t aggregations = facts["aggregations"] + facts["compositions"];
  EXPECT_LE(composites, facts["compositions"]);
  EXPECT_LE(shared, facts["aggregations"]);
  EXPECT_GE(composites + shared + side.skipped("association"), aggregations);

  const std::int64_t own = structured + enums + interfaces + dependencies + realizations;
  EXPECT_EQ(side.stereotypeLinks() - own + side.skipped("stereotype"), facts["stereotype_uses"]);
  EXPECT_EQ(side.documented() + side.skipped("comment"), facts["comments"]);
  // Types that members name are data types too, so there may be more of them.
  EXPECT_GE(structured + side.nodes(types::kDataType) + side.skipped("dataType"),
            facts["datatypes"]);
}

Side import(const std::string& folder, const std::vector<std::string>& names) {
  platform::ComponentRegistry registry(nullptr);
  store::registerComponents(registry);
  Side side;
  std::vector<std::string> paths;
  for (const std::string& name : names) {
    paths.push_back(folder + "/" + name);
    side.name += (side.name.empty() ? "" : " ") + name;
  }
  side.result = readModel(paths, registry);
  return side;
}

void compareFolder(const std::string& folder, std::size_t atLeast) {
  const std::map<std::string, Facts> files = factsOf(folder);
  EXPECT_GE(files.size(), atLeast) << folder;
  for (const auto& [name, facts] : files) compare(import(folder, {name}), facts);
}

TEST(ImportCountsTest, SmallModels) { compareFolder(BRISEL_SOURCE_DIR "/tests/data/models", 3); }

TEST(ImportCountsTest, RealModels) {
  const char* folder = std::getenv("BRISEL_MODELS");
  if (folder == nullptr) {
    std::cout << "BRISEL_MODELS names no folder of real models; only the small ones were read\n";
    return;
  }
  compareFolder(folder, 8);
}

/// What the one file leaves as stubs, the other has.
TEST(ImportCountsTest, FilesOfOneModelTogether) {
  const char* folder = std::getenv("BRISEL_MODELS");
  if (folder == nullptr) return;
  const Side alone = import(folder, {"TapiTopology.uml"});
  const Side together = import(folder, {"TapiTopology.uml", "TapiCommon.uml"});
  EXPECT_GT(alone.result.report.stubs.size(), together.result.report.stubs.size());
  std::map<std::string, Facts> files = factsOf(folder);
  Facts sum = files["TapiTopology.uml"];
  for (const auto& [key, value] : files["TapiCommon.uml"]) sum[key] += value;
  compare(together, sum);
}

}  // namespace
}  // namespace brisel::interchange
