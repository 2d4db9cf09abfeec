#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

#include "controls/Combo.h"
#include "controls/ListView.h"
#include "repository/CLSRepository.h"
#include "store/Meta.h"
#include "store/UUIDGenerator.h"

namespace brisel::benchmarks {
namespace {

using controls::Combo;
using controls::ListView;
using platform::Link;
using platform::make;
using platform::Node;
using platform::Ref;

/// A class of so many attributes beside another of as many.
struct Members {
  explicit Members(std::int64_t count) {
    store->Init();
    generator->Init("controls");
    model->Create(generator.get());
    model->SetRepository(store.get());
    const std::string type = model->MakeDataType("Integer", "", "")->identifier();
    Ref<Link> link;
    for (const char* name : {"A", "B"}) {
      model->MakeClass(name, name, "", "", "", "public");
      for (std::int64_t i = 0; i < count; ++i) {
        (void)model->AddAttributeS(name, "attribute" + std::to_string(i), type, link);
      }
    }
    owner = as<Node>(store->MetaNodes("Class")->find("A"));
  }

  Ref<store::Meta> store = make<store::Meta>();
  Ref<store::UUIDGenerator> generator = make<store::UUIDGenerator>();
  Ref<repository::CLSRepository> model = make<repository::CLSRepository>();
  Ref<Node> owner;
};

/// Filling a list from the extension of the link type, which holds twice as many.
void ListFill(benchmark::State& state) {
  const Members members(state.range(0));
  const auto links = members.store->MetaLinks("Class.Has.Attrib")->extension();
  const auto list = make<ListView>();
  for (auto _ : state) list->fill(*links, *members.owner);
  if (list->rowCount() != static_cast<std::size_t>(state.range(0))) {
    throw std::runtime_error("rows are missing");
  }
}
BENCHMARK(ListFill)->Arg(2000)->Arg(20000)->Unit(benchmark::kMicrosecond);

/// A row added behind so many.
void ListAddRow(benchmark::State& state) {
  const Members members(state.range(0));
  const auto list = make<ListView>();
  list->addColumn("Name", "Name", 1000);
  list->fill(*members.store->MetaLinks("Class.Has.Attrib"), *members.owner);
  const Ref<Link> last = &list->link(list->rowCount() - 1);
  for (auto _ : state) list->addRow(*last);
}
BENCHMARK(ListAddRow)->Arg(2000)->Arg(20000)->Iterations(2000);

/// All cells of three columns, more than any view asks for at once.
void ListCells(benchmark::State& state) {
  const Members members(state.range(0));
  const auto list = make<ListView>();
  for (const char* key : {"Name", "Identifier", "Scope"}) list->addColumn(key, key, 1000);
  list->fill(*members.store->MetaLinks("Class.Has.Attrib"), *members.owner);
  for (auto _ : state) {
    for (std::size_t row = 0; row < list->rowCount(); ++row) {
      for (std::size_t column = 0; column < 3; ++column) {
        benchmark::DoNotOptimize(list->cell(row, column));
      }
    }
  }
}
BENCHMARK(ListCells)->Arg(2000)->Unit(benchmark::kMicrosecond);

/// Data types of readable names: "Buffer17", "Collection18", ...
struct Types {
  explicit Types(std::int64_t count) {
    store->Init();
    constexpr const char* kWords[] = {"Buffer", "Collection", "IntegerRange", "StringMap", "Url"};
    for (std::int64_t i = 0; i < count; ++i) {
      store->MakeNode("DataType", kWords[i % 5] + std::to_string(i), "T" + std::to_string(i));
    }
    nodes = store->MetaNodes("DataType")->extension();
  }

  Ref<store::Meta> store = make<store::Meta>();
  Ref<platform::Collection> nodes;
};

void ComboFill(benchmark::State& state) {
  const Types types(state.range(0));
  const auto combo = make<Combo>();
  for (auto _ : state) combo->fill(*types.nodes, "Name");
}
BENCHMARK(ComboFill)->Arg(2000)->Arg(20000)->Unit(benchmark::kMicrosecond);

/// A text that many entries contain, one that few do, and one that none does.
void ComboMatch(benchmark::State& state) {
  static constexpr const char* kTyped[] = {"ing", "range199", "nowhere"};
  const Types types(20000);
  const auto combo = make<Combo>();
  combo->fill(*types.nodes, "Name");
  const char* typed = kTyped[state.range(0)];
  for (auto _ : state) benchmark::DoNotOptimize(combo->matches(typed, 50));
  state.SetLabel(typed);
}
BENCHMARK(ComboMatch)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

/// The last entry chosen by its text, as a person does.
void ComboChoose(benchmark::State& state) {
  const Types types(20000);
  const auto combo = make<Combo>();
  combo->fill(*types.nodes, "Name");
  const std::string last = combo->entryText(19999);
  for (auto _ : state) combo->Choose(last);
}
BENCHMARK(ComboChoose)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace brisel::benchmarks
