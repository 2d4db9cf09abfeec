#pragma once

#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/Repository.h"
#include "platform/Text.h"

namespace brisel::store::test {

/// What a repository should hold, kept in the simplest way: lists that are searched one by one.
/// Fed by who changes the repository, or by what its change records tell.
class StoreModel {
 public:
  using Value = platform::Value;

  struct NodeEntry {
    const platform::Element* key;
    std::string type, name, id;
    std::map<std::string, Value> properties;  ///< by their keys in lower case
  };
  struct LinkEntry {
    const platform::Element* key;
    std::string type, name, id;
    const NodeEntry* source;
    const NodeEntry* target;  ///< perhaps removed
  };

  void addNode(const platform::Element& key, std::string type, std::string name, std::string id) {
    m_nodes.push_back(&m_allNodes.emplace_back(
        NodeEntry{&key, std::move(type), std::move(name), std::move(id), {}}));
  }
  void addLink(const platform::Element& key, std::string type, std::string name, std::string id,
               const platform::Element& source, const platform::Element& target) {
    m_links.push_back(
        {&key, std::move(type), std::move(name), std::move(id), node(source), node(target)});
  }
  /// Of nodes and links alike; what is not there is left alone.
  void remove(const platform::Element& key) {
    const auto isMeant = [&](const LinkEntry& link) {
      return link.key == &key || link.source->key == &key;
    };
    std::erase_if(m_links, isMeant);
    std::erase_if(m_nodes, [&](const NodeEntry* one) { return one->key == &key; });
  }
  void rename(const platform::Element& key, const std::string& name) {
    if (NodeEntry* found = node(key)) found->name = name;
    for (LinkEntry& link : m_links) {
      if (link.key == &key) link.name = name;
    }
  }
  void identify(const platform::Element& key, const std::string& id) {
    if (NodeEntry* found = node(key)) found->id = id;
    for (LinkEntry& link : m_links) {
      if (link.key == &key) link.id = id;
    }
  }
  void set(const platform::Element& key, std::string_view property, const Value& value) {
    std::string lower(property);
    for (char& c : lower) c = platform::lowerCase(c);
    if (value.isEmpty()) {
      node(key)->properties.erase(lower);
    } else {
      node(key)->properties[lower] = value;
    }
  }

  [[nodiscard]] bool has(const std::string& type, const std::string& id) const {
    for (const NodeEntry* each : m_nodes) {
      if (each->type == type && each->id == id) return true;
    }
    for (const LinkEntry& each : m_links) {
      if (each.type == type && each.id == id) return true;
    }
    return false;
  }

  [[nodiscard]] std::string text(const std::vector<std::string>& types) const {
    std::string all;
    for (const std::string& type : types) {
      for (const NodeEntry* each : m_nodes) {
        if (each->type != type) continue;
        all += type + " " + each->id + " '" + each->name + "'";
        for (const auto& [key, value] : each->properties) all += propertyText(key, value);
        all += "\n";
      }
      for (const LinkEntry& each : m_links) {
        if (each.type != type) continue;
        all += linkText(type, each.id, each.name, each.source->id, each.target->id);
      }
    }
    return all;
  }

  /// The same of a repository.
  [[nodiscard]] static std::string text(const platform::MetaRepository& repository,
                                        const std::vector<std::string>& types) {
    std::string all;
    for (const std::string& type : types) {
      if (type.find('.') != std::string::npos) {
        const auto links = repository.MetaLinks(type)->extension();
        for (const auto& link : platform::each<platform::Link>(links)) {
          all += linkText(type, link.identifier(), link.name(), link.source()->identifier(),
                          link.Target()->identifier());
        }
        continue;
      }
      const auto found = repository.MetaNodes(type);
      for (const auto& each : platform::each<platform::Node>(found->extension())) {
        all += type + " " + each.identifier() + " '" + each.name() + "'";
        all += propertiesText(*found, each) + "\n";
      }
    }
    return all;
  }

 private:
  static std::string propertyText(const std::string& key, const Value& value) {
    return " " + key + "=" + std::string(value.kindName()) + ":" + value.text();
  }
  static std::string propertiesText(const platform::MetaType& type, const platform::Node& node) {
    std::map<std::string, std::string> texts;
    const auto definitions = type.properties();
    for (const auto& each : platform::each<platform::PropertyDefinition>(definitions)) {
      std::string key = each.name();
      for (char& c : key) c = platform::lowerCase(c);
      if (key == "name" || key == "identifier") continue;
      const Value value = node.GetProperty(each.name());
      if (!value.isEmpty()) texts[key] = propertyText(key, value);
    }
    std::string all;
    for (const auto& [key, text] : texts) all += text;
    return all;
  }
  static std::string linkText(const std::string& type, const std::string& id,
                              const std::string& name, const std::string& source,
                              const std::string& target) {
    return type + " " + id + " '" + name + "' " + source + " > " + target + "\n";
  }

  /// The last of the address, should a removed node's have been given to another.
  NodeEntry* node(const platform::Element& key) {
    for (auto each = m_allNodes.rbegin(); each != m_allNodes.rend(); ++each) {
      if (each->key == &key) return &*each;
    }
    return nullptr;
  }

  std::deque<NodeEntry> m_allNodes;
  std::vector<NodeEntry*> m_nodes;
  std::vector<LinkEntry> m_links;
};

}  // namespace brisel::store::test
