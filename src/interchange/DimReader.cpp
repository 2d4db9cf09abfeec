#include "interchange/DimReader.h"

#include <deque>

#include "interchange/DimLoader.h"
#include "interchange/DimText.h"
#include "platform/Error.h"

namespace brisel::interchange {

using platform::MetaRepository;
using platform::Ref;

namespace {

Ref<MetaRepository> loadAll(platform::ComponentRegistry& registry, std::deque<DimText>& texts) {
  const auto repository = registry.create<MetaRepository>("BriselCLS.Meta");
  repository->Init();
  DimLoader loader(registry, *repository);
  for (DimText& text : texts) loader.load(text);
  return repository;
}

}  // namespace

DimReader::DimReader(platform::ComponentRegistry& registry) : m_registry(registry) {}

Ref<MetaRepository> DimReader::read(std::span<const std::string> files) {
  if (files.empty()) {
    throw platform::Error(platform::ErrorNumber::invalidCall, "No file was given to be read");
  }
  std::deque<DimText> texts;
  for (const std::string& file : files) texts.emplace_back(file);
  return loadAll(m_registry, texts);
}

Ref<MetaRepository> DimReader::readText(const std::string& name, std::string_view text) {
  std::deque<DimText> texts;
  texts.emplace_back(name, text);
  return loadAll(m_registry, texts);
}

}  // namespace brisel::interchange
