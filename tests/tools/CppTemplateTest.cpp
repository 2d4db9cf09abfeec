// What C++.tml makes of a model compiles, without a warning, whatever the model says.
#include <map>
#include <sstream>

#include "component/ModelFile.h"
#include "component/Suite.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"
#include "tools/GeneratedCode.h"

namespace brisel::tools {
namespace {

using platform::Node;
using platform::Ref;

/// Generates and compiles; the text of a file by its name.
class CppTemplate : public ::testing::Test {
 protected:
  void compile(platform::MetaRepository& store, Compile how = Compile::together) {
    const auto generation = generate(store, installedTemplate("C++.tml"));
    ASSERT_FALSE(generation->fault()) << generation->fault()->line << generation->fault()->cause;
    writeOutput(folder.path(), generation->files(), false);
    for (const auto& file : generation->files()) files[file.name] = file.text;
    expectCompiles(folder.path(), how);
  }
  [[nodiscard]] bool says(const std::string& file, const std::string& text) {
    return files[file].find(text) != std::string::npos;
  }

  TemporaryFolder folder;
  std::map<std::string, std::string> files;
  test::Model model;
};

Ref<Node> stated(Ref<Node> node, std::string_view key, const platform::Value& value) {
  node->SetProperty(key, value);
  return node;
}

TEST_F(CppTemplate, NamesThatNoLanguageWouldTake) {
  const std::vector<std::string> names = {
      "class",    "int",  "std",      "New Class 1", "",        "",      "3D",     "Größe",
      "größe",    "名前", "a*b/c\\",  "x__y",        "_Bad",    "size",  "SIZE",   "NULL",
      "EOF",      "\xFF", "operator", "data_types",  "con",     "model", "vector", "string",
      "override", "😀",    "errno",    "a\nb",        "Unnamed", "main",  "memory", "assert"};
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string id = "c" + std::to_string(i);
    model.model->MakeClass(names[i], id, "Ends with */ and \\\n/* or \?\?/\n\\user \xE2\x80\xAE x",
                           "", "", "public");
    for (const std::string& member : names) {
      model.addAttribute(id, member, i % 2 == 0 ? "String" : names[(i + 1) % names.size()]);
      const auto operation = model.addOperation(id, member, "void");
      for (const std::string& parameter :
           {names[i], member, std::string("same"), std::string("same")}) {
        model.addParameter(*operation, parameter, "int");
      }
    }
    model.addClass("enum" + id, "COM::Enum");
    for (const std::string& member : names) model.addAttribute("enum" + id, member, "int");
  }
  compile(*model.store);
}

TEST_F(CppTemplate, EveryMacroOfTheHeadersThatAreIncluded) {
  const auto macros = runCommand(
      "printf '#include <%s>\\n' any chrono cstdint map memory optional string vector | "
      "c++ -std=gnu++20 -dM -E -x c++ - | sed 's/^#define \\([A-Za-z0-9_]*\\).*/\\1/'");
  ASSERT_TRUE(macros.succeeded);
  model.addClass("Macros", "enumeration");
  model.addClass("Holder");
  std::istringstream lines(macros.said);
  int count = 0;
  for (std::string name; std::getline(lines, name); ++count) {
    model.addAttribute("Macros", name, "int");
    model.addAttribute("Holder", name, "bool");
  }
  ASSERT_GT(count, 100);
  for (const char* type : {"Map<String, any>", "Date", "optional<long>", "vector<Holder>"}) {
    model.addAttribute("Holder", "needs", type);
  }
  compile(*model.store);
}

TEST_F(CppTemplate, TypesOfEveryKindAndValuesOfThem) {
  model.addClass("Color", "COM::Enum");
  stated(model.addAttribute("Color", "red", "Color"), "value", "0x7");
  stated(model.addAttribute("Color", "dark green", "Color"), "value", "12");
  model.addClass("Order");
  const std::map<std::string, std::string> values = {{"String", "say \"hi\"\?\?/\\"},
                                                     {"int", "007"},
                                                     {"long", "99999999999999"},
                                                     {"bool", "True"},
                                                     {"double", "1e400"},
                                                     {"float", "-.5"},
                                                     {"Color", "Color.dark green"},
                                                     {"byte", "300"},
                                                     {"unsigned int", "-1"},
                                                     {"Date", "today"},
                                                     {"Money", "12 €"},
                                                     {"Order", "new Order()"},
                                                     {"char", "x"},
                                                     {"<untyped>", "nil"},
                                                     {"void", "0"}};
  const std::vector<std::string> types = {"List<Order>",  "std::vector<std::map<int, Money>>",
                                          "const Order&", "Order*",
                                          "Order[3][4]",  "Map<String, List<Color>>",
                                          "Foo<Bar, 3>",  "Set(Money)",
                                          "List<>",       "shared_ptr<Order>",
                                          "char*",        "void*",
                                          "varchar(20)",  "optional<Unheard>",
                                          "f(int",        "Map<int>",
                                          "unsigned int", "xs:string",
                                          "model::Order", "List<void>"};
  const auto addAll = [this](const std::string& type, const std::string& value) {
    for (const char* multiplicity : {"", "0..1", "*", "2..5", "nonsense"}) {
      const auto attribute = stated(model.addAttribute("Order", "m", type), "value", value);
      attribute->SetProperty("Multiplicity", multiplicity);
      const auto returns = model.addOperation("Order", "f", type);
      returns->SetProperty("Multiplicity", multiplicity);
      const auto takes = model.addParameter(*returns, "p", type);
      takes->SetProperty("Multiplicity", multiplicity);
      takes->SetProperty("direction", multiplicity[0] == '*' ? "out" : "");
      for (const char* flag : {"final", "static_", "volatile"}) {
        stated(model.addAttribute("Order", "flagged", type), "value", value)
            ->SetProperty(flag, true);
      }
    }
  };
  for (const auto& [type, value] : values) addAll(type, value);
  for (const std::string& type : types) addAll(type, "1");
  compile(*model.store);
  EXPECT_TRUE(says("Color.hpp", "  red,\n  dark_green = 12,\n"));
  EXPECT_TRUE(says("Order.hpp", "= Color::dark_green;"));
  EXPECT_TRUE(says("Order.hpp", "int m_11 = 7;") || says("Order.hpp", " = 7;"));
  EXPECT_TRUE(says("Order.hpp", "std::vector<std::shared_ptr<Order>> m"));
  EXPECT_TRUE(says("Order.hpp", "std::map<std::string, std::vector<Color>> m"));
  EXPECT_TRUE(says("data_types.hpp", "struct Money {"));
  EXPECT_FALSE(says("data_types.hpp", "struct Order"));
}

TEST_F(CppTemplate, BasesInCirclesAndOperationsThatClash) {
  for (const char* name : {"A", "B", "C", "D", "Lone"}) model.addClass(name);
  model.addClass("I", "COM::Interface");
  model.addClass("E", "COM::Enum");
  int number = 0;
  const auto derive = [&](const char* sub, const char* super) {
    model.model->MakeGeneralization("g" + std::to_string(number++), super, sub);
  };
  for (const auto& [sub, super] : std::vector<std::pair<const char*, const char*>>{{"B", "A"},
                                                                                   {"C", "B"},
                                                                                   {"A", "C"},
                                                                                   {"D", "A"},
                                                                                   {"D", "B"},
                                                                                   {"D", "B"},
                                                                                   {"D", "I"},
                                                                                   {"D", "D"},
                                                                                   {"I", "A"},
                                                                                   {"E", "A"},
                                                                                   {"A", "E"}}) {
    derive(sub, super);
  }
  stated(model.find("Class", "A"), "final", true);
  stated(model.addOperation("A", "run", "int"), "abstract", true);
  stated(model.addOperation("A", "end", "void"), "abstract", true)->SetProperty("final", true);
  for (const char* name : {"A", "B", "C", "D", "I"}) {
    model.addOperation(name, "run", "double");
    model.addOperation(name, "run", "int");
    stated(model.addOperation(name, "run", "int"), "static_", true);
    model.addOperation(name, "end", "void");
    model.addOperation(name, "~" + std::string(name), "void");
    model.addAttribute(name, "run", "int");
    model.addAttribute(name, name, "E");
    model.addAttribute(name, "E", "E");
    const auto own = model.addOperation(name, name, "void");
    own->SetProperty("scope", "private");
    model.addParameter(*model.addOperation(name, name, "void"), "E", "E");
    model.addParameter(*model.addOperation(name, name, "void"), "other", "E");
    for (const char* scope : {"private", "Protected", "nobody"}) {
      model.addParameter(*stated(model.addOperation(name, "overloaded", "A"), "scope", scope),
                         scope, scope);
    }
  }
  compile(*model.store);
  EXPECT_TRUE(says("D.hpp", " override"));
  EXPECT_FALSE(says("A.hpp", " final"));
}

TEST_F(CppTemplate, AssociationsOfEveryKindContainEachOther) {
  for (const char* name : {"A", "B"}) model.addClass(name);
  model.addClass("E", "COM::Enum");
  int number = 0;
  for (const char* multiplicity : {"", "1", "0..1", "*"}) {
    for (const auto& [source, target] : std::vector<std::pair<const char*, const char*>>{
             {"A", "B"}, {"B", "A"}, {"A", "A"}, {"A", "E"}}) {
      for (int kind = 0; kind < 6; ++kind) {
        const std::string id = "r" + std::to_string(number++);
        const auto made = kind < 2 ? model.model->MakeAssociation("x", id, source, target)
                                   : model.model->MakeAggregation("x", id, source, target);
        made->SetProperty("isComposite", kind > 3);
        made->SetProperty("TargetNavigable", kind % 2 == 1);
        made->SetProperty("TargetMultiplicity", multiplicity);
        made->SetProperty("TargetRolename", kind % 2 == 1 ? "B" : "");
        made->SetProperty("SourceRoleName", "class");
      }
    }
  }
  compile(*model.store);
  EXPECT_TRUE(says("A.hpp", "std::vector<std::unique_ptr<B>>"));
  EXPECT_TRUE(says("A.hpp", "std::shared_ptr<B> "));
  EXPECT_TRUE(says("B.hpp", "A* class_ = nullptr;"));
}

TEST_F(CppTemplate, RealModels) {
  platform::ComponentRegistry registry(nullptr);
  component::registerSuite(registry);
  const auto example =
      component::readModel(registry, {BRISEL_SOURCE_DIR "/examples/city-building.dim"});
  compile(*example.repository, Compile::alone);
  EXPECT_GT(files.size(), 20U);
  const char* models = std::getenv("BRISEL_MODELS");
  if (!models) return;
  for (const char* name : {"library.uml", "TapiCommon.uml", "BPMN20.ecore", "CityGML_3.0.xml"}) {
    SCOPED_TRACE(name);
    std::filesystem::remove_all(folder.path());
    compile(*component::readModel(registry, {std::string(models) + "/" + name}).repository);
  }
}

}  // namespace
}  // namespace brisel::tools
