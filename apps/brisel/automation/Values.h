#pragma once

#include <string>
#include <vector>

#include <simdjson.h>

#include "automation/Handles.h"
#include "platform/Value.h"

namespace brisel::automation {

/// Turns values into JSON and back. Objects go by their handles, as {"ref": 7}; arrays and records
/// go by value.
class Values {
 public:
  explicit Values(Handles& handles) : m_handles(handles) {}

  /// An RpcError (invalid parameters) for an unknown handle and for an object that is no handle.
  [[nodiscard]] platform::Value read(const simdjson::dom::element& json) const;
  /// The object of a handle given as {"ref": 7} or as plain 7; an RpcError for anything else.
  [[nodiscard]] platform::Ref<platform::Object> readObject(
      const simdjson::dom::element& json) const;

  /// Gives a handle out for every object that it meets.
  void write(const platform::Value& value, std::string& out);
  void write(const std::vector<platform::Value>& values, std::string& out);
  static void writeHandle(std::int64_t handle, std::string& out);

 private:
  [[nodiscard]] platform::Ref<platform::Object> objectOf(std::int64_t handle) const;
  void writeObject(const platform::Ref<platform::Object>& object, std::string& out);

  Handles& m_handles;
};

}  // namespace brisel::automation
