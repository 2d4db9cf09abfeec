#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Object.h"

namespace brisel::interchange {

/// The files that an import reads, in the order in which they were added.
class FileList : public platform::Object {
 public:
  // The system's members.
  void Add(std::string_view fileName) { m_files.emplace_back(fileName); }
  [[nodiscard]] std::int64_t Count() const { return static_cast<std::int64_t>(m_files.size()); }
  /// The file name at the position, from 1; an Error (subscript) outside of the list.
  [[nodiscard]] std::string Item(std::int64_t index) const;

  [[nodiscard]] const std::vector<std::string>& files() const { return m_files; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::vector<std::string> m_files;
};

}  // namespace brisel::interchange
