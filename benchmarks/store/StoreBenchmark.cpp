#include <algorithm>
#include <list>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "store/Meta.h"
#include "store/UUIDGenerator.h"
#include "support/GeneratedModel.h"

namespace brisel::benchmarks {
namespace {

namespace types = platform::types;
using platform::each;
using platform::Element;
using platform::MetaType;
using platform::Node;
using platform::Ref;
using store::Meta;

std::size_t heapInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

std::size_t countNodes(const Meta& repository) {
  std::size_t count = 0;
  for (MetaType& type : each<MetaType>(repository.nodeTypes())) {
    count += static_cast<std::size_t>(type.extension()->Count());
  }
  return count;
}

const GeneratedModel& modelOf(std::int64_t classes) {
  static std::vector<std::pair<std::int64_t, GeneratedModel>> made;
  for (const auto& [size, model] : made) {
    if (size == classes) return model;
  }
  return made.emplace_back(classes, generateModel({.classes = static_cast<int>(classes)})).second;
}

/// What identifiers and names there are, in an order that has nothing to do with that of making.
std::vector<std::string> shuffled(MetaType& type, bool names) {
  std::vector<std::string> texts;
  for (Element& element : each<Element>(type.extension())) {
    texts.push_back(names ? element.name() : element.identifier());
  }
  std::shuffle(texts.begin(), texts.end(), std::mt19937(7));
  return texts;
}

/// First of all, as the models are made that all others measure on: bytes a node with its
/// properties and links. Its time is that of making the model.
void BytesANode(benchmark::State& state) {
  for (auto _ : state) {
    const std::size_t before = heapInUse();
    const GeneratedModel& model = modelOf(state.range(0));
    const auto nodes = static_cast<double>(countNodes(*model.repository));
    state.counters["nodes"] = nodes;
    state.counters["bytes/node"] = static_cast<double>(heapInUse() - before) / nodes;
  }
}
BENCHMARK(BytesANode)->Arg(1000)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

void FindByIdentifier(benchmark::State& state) {
  const Ref<MetaType> type = modelOf(state.range(0)).repository->MetaNodes(types::kAttrib);
  const std::vector<std::string> ids = shuffled(*type, false);
  std::size_t at = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(type->extension(ids[at]));
    if (++at == ids.size()) at = 0;
  }
}
BENCHMARK(FindByIdentifier)->Arg(1000)->Arg(10000);

void FindByName(benchmark::State& state) {
  const auto& model = modelOf(state.range(0));
  const Ref<MetaType> type = model.repository->MetaNodes(types::kClass);
  const std::vector<std::string> names = shuffled(*type, true);
  std::size_t at = 0;
  for (auto _ : state) {
    const Ref<Element> found = type->findByName(names[at]);
    if (!found) throw std::logic_error("a name was not found");
    if (++at == names.size()) at = 0;
  }
}
BENCHMARK(FindByName)->Arg(1000)->Arg(10000);

void SearchParameterByName(benchmark::State& state) {
  const auto& model = modelOf(state.range(0));
  const std::vector<std::string> names =
      shuffled(*model.repository->MetaNodes(types::kParameter), true);
  std::size_t at = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(model.model->SearchObject(types::kParameter, "Name", names[at]));
    if (++at == names.size()) at = 0;
  }
}
BENCHMARK(SearchParameterByName)->Arg(1000)->Arg(10000);

void WalkLinksOfClass(benchmark::State& state) {
  const auto& model = modelOf(state.range(0));
  std::int64_t links = 0;
  for (auto _ : state) {
    for (Node& node : each<Node>(model.repository->MetaNodes(types::kClass)->extension())) {
      for (platform::Link& link : each<platform::Link>(node.outgoing(types::kClassHasAttrib))) {
        benchmark::DoNotOptimize(link.Target());
        ++links;
      }
    }
  }
  state.SetItemsProcessed(links);
}
BENCHMARK(WalkLinksOfClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// An attribute with its six properties and its owner's link, made and removed in a full model.
void MakeAndRemoveAttribute(benchmark::State& state) {
  const auto& model = modelOf(state.range(0));
  Meta& repository = *model.repository;
  const auto owner = platform::as<Node>(
      repository.MetaNodes(types::kClass)->extension()->Item(state.range(0) / 2));
  const auto extension = repository.MetaNodes(types::kAttrib)->extension();
  store::UUIDGenerator identifiers;
  const std::string ownerId = owner->identifier();
  for (auto _ : state) {
    const std::string id = identifiers.GetUUID();
    const Ref<Node> made = repository.MakeNode(types::kAttrib, "attribute", id);
    for (const char* key : {"final", "static_", "transient", "volatile"}) {
      made->SetProperty(key, false);
    }
    made->SetProperty("scope", "private");
    made->SetProperty("value", "");
    repository.MakeLink(types::kClassHasAttrib, ownerId + ".Has." + id, identifiers.GetUUID(),
                        *owner, *made);
    owner->outgoing(types::kClassHasAttrib)->Clear();
    extension->Remove(id, false);
  }
}
BENCHMARK(MakeAndRemoveAttribute)->Arg(1000)->Arg(10000);

/// The bare store as a reader of files uses it: nodes, properties, links, identifiers at hand.
void BulkLoad(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  store::UUIDGenerator identifiers;
  std::vector<std::string> ids;
  for (std::size_t i = 0; i < 2 * count; ++i) ids.push_back(identifiers.GetUUID());
  for (auto _ : state) {
    state.PauseTiming();
    auto repository = platform::make<Meta>();
    repository->Init();
    const Ref<Node> owner = repository->MakeNode(types::kClass, "Owner", "owner");
    state.ResumeTiming();
    repository->reserveNodes(types::kAttrib, count);
    repository->reserveLinks(types::kClassHasAttrib, count);
    for (std::size_t i = 0; i < count; ++i) {
      const Ref<Node> made = repository->MakeNode(types::kAttrib, "attribute", ids[2 * i]);
      made->SetProperty("final", false);
      made->SetProperty("scope", "private");
      made->SetProperty("static_", false);
      made->SetProperty("transient", false);
      made->SetProperty("value", "");
      made->SetProperty("volatile", false);
      repository->MakeLink(types::kClassHasAttrib, "owner.Has." + ids[2 * i], ids[2 * i + 1],
                           *owner, *made);
    }
    state.PauseTiming();
    repository = nullptr;
    state.ResumeTiming();
  }
  state.SetItemsProcessed(static_cast<std::int64_t>(2 * count) * state.iterations());
}
BENCHMARK(BulkLoad)->Arg(6000)->Arg(60000)->Unit(benchmark::kMillisecond);

void TearDown(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    GeneratedModel model = generateModel({.classes = static_cast<int>(state.range(0))});
    state.ResumeTiming();
    model = {};
  }
}
BENCHMARK(TearDown)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::benchmarks
