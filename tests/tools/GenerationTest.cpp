// The template language over a model: what is shown, which files come out, which faults are told.
#include <algorithm>
#include <random>
#include <set>

#include "platform/Error.h"
#include "tools/GeneratedCode.h"
#include "tools/TemplateFolder.h"

namespace brisel::tools {
namespace {

namespace fs = std::filesystem;

class GenerationTest : public ::testing::Test {
 protected:
  GenerationTest() {
    for (const char* name : {"Order", "Item", "Base"}) model.addClass(name);
    model.addClass("Color", "enumeration");
    model.addAttribute("Color", "red", "int");
    model.addAttribute("Order", "number", "int");
    model.addAttribute("Order", "color", "Color");
    model.addAttribute("Order", "items", "List<Item>");
    model.addParameter(*model.addOperation("Order", "add", "void"), "item", "Item");
    model.model->MakeGeneralization("g", "Base", "Order");
    const auto parts = model.model->MakeAggregation("holds", "h", "Order", "Item");
    parts->SetProperty("isComposite", true);
    parts->SetProperty("TargetRolename", "line");
    parts->SetProperty("TargetMultiplicity", "0..*");
    parts->SetProperty("SourceMultiplicity", "1");
  }

  test::Model model;
};

TEST_F(GenerationTest, ShowsWhatTheModelSays) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"{{modelName}} {{{modelName}}} {{&modelName}}", "test test test"},
      {"{{#classes}}{{name}}{{^isLast}}, {{/isLast}}{{/classes}}", "Base, Order, Item"},
      {"{{#enumerations}}{{name}}:{{#attributes}}{{name}}{{/attributes}}{{/enumerations}}",
       "Color:red"},
      {"{{#classes}}\n{{index}}{{#isFirst}}!{{/isFirst}}\n{{/classes}}\n", "1!\n2\n3\n"},
      {"{{#classes}}{{#attributes}}{{owner.name}}.{{name}}:{{type.name}}"
       "{{#type.isEnumeration}}({{#type.class.attributes}}{{.}}{{/type.class.attributes}})"
       "{{/type.isEnumeration}} {{/attributes}}{{/classes}}",
       "Order.number:int Order.color:Color(red) Order.items:List<Item> "},
      {"{{#classes}}{{#roles}}{{owner.name}}>{{class.name}} {{name}}{{#isMany}}*{{/isMany}}"
       "{{#ownsParts}} parts{{/ownsParts}}{{#isOwner}} whole{{/isOwner}};{{/roles}}{{/classes}}",
       "Order>Item line* parts;Item>Order  whole;"},
      {"{{#classes}}{{#bases}}{{name}}{{/bases}}{{^bases}}-{{/bases}} {{/classes}}", "- Base - "},
      {"{{#associations}}{{source.class.name}}-{{target.class.name}}{{/associations}}",
       "Order-Item"},
      {"a\n\n  {{#hasDataTypes}}\nno\n{{/hasDataTypes}}  \n\nb\n{{! c }}\nc", "a\n\n\nb\nc"},
      {"{{=<% %>=}}<%modelName%>{{x}}", "test{{x}}"},
      {"<&\"'>{{#classes}}{{/classes}}", "<&\"'>"},
  };
  for (const auto& [text, shown] : cases) EXPECT_EQ(output(*model.store, text), shown) << text;
  EXPECT_EQ(output(*model.store, "{{#classes}}{{name}} {{/classes}}", {"Item", "Base"}),
            "Item Base ");
}

TEST_F(GenerationTest, TellsLineAndCauseOfFaults) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"ok\n{{#classes}}\n", "2: unclosed section \"classes\""},
      {"ok\n\n{{/classes}}", "3: unopened section \"classes\""},
      {"{{#a}}\n{{/b}}", "1: unclosed section \"a\""},
      {"\n{{name", "2: unclosed tag"},
      {"x\n{{}}\n", "2: a tag without a name"},
      {"{{#classes}}\n{{name}}\n{{nmae}}\n{{/classes}}\n", "3: there is no \"nmae\" here"},
      {"{{! {{/}}\n{{#nothing}}\n{{/nothing}}\n", "2: there is no \"nothing\" here"},
      {"{{#classes}}\n{{#attributes}}\n{{type}}\n{{/attributes}}\n{{/classes}}",
       "3: \"type\" has values but is none itself"},
      {"{{#classes}}{{#attributes}}\n{{type.nothing}}{{/attributes}}{{/classes}}",
       "2: there is no \"type.nothing\" here"},
      {"\n{{> other}}", "2: templates cannot be put into others (\"other\")"},
      {"\n{{#file}}../x{{/file}}", "2: \"../x\" cannot be the name of a file to write"},
      {"{{#classes}}\n{{#file}}a{{/file}}\n{{/classes}}", "2: two files would be called \"a\""},
      {"{{#file}}{{/file}}", "1: a file without a name"},
      {"a\x1E", "1: a control character"},
  };
  for (const auto& [text, told] : cases) EXPECT_EQ(output(*model.store, text), told) << text;
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "{{#classes}}";
  EXPECT_EQ(output(*model.store, deep), "1: too many sections in sections");
  deep = "{{=<% %>=}}\n";
  for (int i = 0; i < 100000; ++i) deep += "<%#classes%>";
  EXPECT_EQ(output(*model.store, deep), "2: too many sections in sections");
}

/// Whatever is typed, something comes out or a line is told that is there.
TEST_F(GenerationTest, StandsAnyText) {
  const auto check = [this](const std::string& text) {
    const auto generation = generate(*model.store, text);
    const auto lines = 1 + std::count(text.begin(), text.end(), '\n');
    if (!generation->fault()) return;
    EXPECT_GE(generation->fault()->line, 1) << text;
    EXPECT_LE(generation->fault()->line, lines) << text;
    EXPECT_FALSE(generation->fault()->cause.empty()) << text;
  };
  const std::string whole = installedTemplate("C++.tml");
  for (std::size_t i = 0; i < whole.size(); i += 29) {
    check(whole.substr(0, i));
    check(whole.substr(i));
  }
  const std::vector<std::string> words = {"{{",
                                          "}}",
                                          "{{{",
                                          "}}}",
                                          "}",
                                          " ",
                                          "\n",
                                          "name",
                                          ".",
                                          "#",
                                          "^",
                                          "/",
                                          "!",
                                          ">",
                                          "=",
                                          "&",
                                          "{{#classes}}",
                                          "{{/classes}}",
                                          "\n{{#classes}}\n",
                                          "\n{{/classes}}\n",
                                          "{{^bases}}",
                                          "{{/bases}}",
                                          "{{.}}",
                                          "{{name}}",
                                          "{{=<% %>=}}",
                                          "<%",
                                          "%>",
                                          "{{#file}}a{{/file}}",
                                          "{{#type.class}}",
                                          "{{/type.class}}",
                                          "{{#isFirst}}",
                                          "{{/isFirst}}",
                                          "\xFF",
                                          "{{= =}}"};
  std::mt19937 random(7);
  for (int i = 0; i < 20000; ++i) {
    std::string text;
    for (int length = static_cast<int>(random() % 12); length >= 0; --length) {
      text += words[random() % words.size()];
    }
    check(text);
  }
}

TEST_F(GenerationTest, SplitsTheOutputIntoFiles) {
  const auto generation =
      generate(*model.store,
               "\n{{#classes}}\n{{#file}}src/{{cppName}}.h{{/file}}\n<{{name}}>\n"
               "{{/classes}}\n{{#file}}all{{/file}}\n{{#file}}none{{/file}}\nx");
  ASSERT_FALSE(generation->fault());
  std::string shown;
  for (const auto& file : generation->files()) shown += file.name + "=" + file.text + ";";
  EXPECT_EQ(shown, "src/Base.h=<Base>\n;src/Order.h=<Order>\n;src/Item.h=<Item>\n;all=;none=x;");
  for (const char* name :
       {"/etc/x", "a/../b", "..", "a//b", "a\\b", "c:x", "a/", ".", "a\nb", "x."}) {
    EXPECT_NE(output(*model.store, std::string("{{#file}}") + name + "{{/file}}").find("1: "),
              std::string::npos)
        << name;
  }
}

TEST_F(GenerationTest, EveryKeyIsDescribed) {
  const std::string page = readTextFile(BRISEL_SOURCE_DIR "/docs/templates.md");
  for (const KeyTable* table : allKeyTables()) {
    for (const auto& key : table->keys()) {
      EXPECT_NE(page.find("`" + std::string(key.name) + "`"), std::string::npos)
          << table->kind() << "." << key.name;
    }
  }
}

TEST_F(GenerationTest, TablesAreAcceptedByADatabase) {
  ASSERT_TRUE(runCommand("python3 -c 'import sqlite3'").succeeded) << "a database is needed";
  for (const char* name : {"select", "Order Item", "order item", "", "Größe"}) {
    model.model->MakeClass(name, std::string("id") + name, "it's --\n*/", "", "", "public");
    for (const char* attribute : {"id", "ID", "table", "group", "x y", "", "item_id"}) {
      for (const char* type :
           {"String", "Color", "Order", "List<Color>", "bool", "Money", "Date"}) {
        const auto made = model.addAttribute(std::string("id") + name, attribute, type);
        made->SetProperty("value", type[0] == 'C' ? "red" : type[0] == 'b' ? "true" : "it's");
        if (type[0] == 'O') made->SetProperty("Multiplicity", "*");
      }
    }
    model.model->MakeAssociation("", std::string("s") + name, std::string("id") + name, "Order");
    const auto many =
        model.model->MakeAssociation("", std::string("m") + name, "Item", std::string("id") + name);
    many->SetProperty("SourceMultiplicity", "*");
    many->SetProperty("TargetMultiplicity", "1..*");
    model.model->MakeGeneralization(std::string("general") + name, "Base",
                                    std::string("id") + name);
  }
  const TemporaryFolder folder;
  const auto generation = generate(*model.store, installedTemplate("SQL.tml"));
  ASSERT_FALSE(generation->fault()) << generation->fault()->cause;
  writeOutput(folder.path(), generation->files(), false);
  const auto result = runCommand(
      "python3 -c 'import sqlite3,sys; c=sqlite3.connect(\":memory:\");"
      "c.execute(\"PRAGMA foreign_keys=ON\"); c.executescript(open(sys.argv[1]).read());"
      "c.execute(\"INSERT INTO Base VALUES (1)\");"
      "c.execute(\"INSERT INTO order_ (id, number, color) VALUES (1, 2, \\x27red\\x27)\");"
      "c.execute(\"INSERT INTO Item VALUES (7, 1)\");"
      "print(len(c.execute(\"SELECT * FROM Item JOIN order_ ON order_.id = "
      "order_id\").fetchall()))' '" +
      folder.path("schema.sql") + "'");
  EXPECT_EQ(result.said, "1\n");
}

TEST(OutputFolder, WritesAllOrNothing) {
  const TemporaryFolder folder;
  const std::string out = folder.path("new/out");
  const std::vector<GeneratedFile> files = {{"a.h", "one"}, {"sub/b.h", "two"}, {"c.h", "three"}};
  writeOutput(out, files, false);
  EXPECT_EQ(readTextFile(out + "/sub/b.h"), "two");
  const auto old = fs::last_write_time(out + "/a.h") - std::chrono::hours(1);
  fs::last_write_time(out + "/a.h", old);

  const std::vector<GeneratedFile> changed = {
      {"a.h", "one"}, {"sub/b.h", "2"}, {"c.h", "3"}, {"d.h", "4"}};
  try {
    writeOutput(out, changed, false);
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find("sub/b.h, c.h"), std::string::npos) << error.what();
  }
  EXPECT_EQ(readTextFile(out + "/c.h"), "three");
  EXPECT_FALSE(fs::exists(out + "/d.h"));
  const OutputPlan plan = writeOutput(out, changed, true);
  EXPECT_EQ(plan.made.size() + plan.differing.size(), 3U);
  EXPECT_EQ(readTextFile(out + "/c.h"), "3");
  EXPECT_EQ(fs::last_write_time(out + "/a.h"), old) << "what does not differ is left untouched";

  // A folder where a file should be, a file where a folder should be.
  for (const char* name : {"sub", "a.h/x"}) {
    EXPECT_THROW(writeOutput(out, {{"e.h", "5"}, {name, "6"}}, true), platform::Error) << name;
    EXPECT_FALSE(fs::exists(out + "/e.h"));
  }
  EXPECT_THROW(writeOutput(folder.path("new/out/a.h/deep"), files, true), platform::Error);
  int entries = 0;
  for (const auto& entry : fs::recursive_directory_iterator(out))
    entries += entry.is_regular_file();
  EXPECT_EQ(entries, 4) << "nothing is left behind";
}

TEST(TemplateFolder, OwnTemplatesGoBeforeInstalledOnes) {
  const TemporaryFolder folder;
  const std::string installed = folder.path("installed");
  const std::string own = folder.path("own");
  writeTextFile(installed + "/A.tml", "a");
  writeTextFile(installed + "/B.tml", "b");
  writeTextFile(installed + "/C.txt", "c");
  const TemplateFolder templates(installed, own);
  EXPECT_EQ(templates.list(), (std::vector<std::string>{"A.tml", "B.tml"}));
  EXPECT_EQ(templates.pathToSave("A.tml"), installed + "/A.tml");
  EXPECT_EQ(templates.pathToSave("New"), own + "/New.tml");
  writeTextFile(own + "/A.tml", "mine");
  EXPECT_EQ(readTextFile(templates.find("A")), "mine");
  EXPECT_EQ(templates.pathToSave("A"), own + "/A.tml");
  EXPECT_EQ(templates.find("B.tml"), installed + "/B.tml");
  try {
    static_cast<void>(templates.find("C"));
    FAIL();
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find("A.tml, B.tml"), std::string::npos) << error.what();
  }
}

}  // namespace
}  // namespace brisel::tools
