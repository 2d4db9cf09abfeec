#pragma once

#include <map>
#include <string>
#include <string_view>

#include "tools/CodeModel.h"

namespace brisel::tools {

/// Fills in what a relationship's properties tell; its classes are set already.
void readAssociation(const platform::Node& node, CodeAssociation& association);

/// Completes one class whose bases are complete: its members, their names, and what its C++ text
/// needs in order to compile.
class ClassReader {
 public:
  ClassReader(CodeModel& model, CodeClass& cls);

  void read();

 private:
  void readBases();
  void readAttributes();
  void readRoles();
  void readRole(const CodeAssociation& association, bool isSource);
  void readOperations();
  [[nodiscard]] CodeOperation readOperation(const platform::Node& node);
  void nameMember(Names& names, const std::string& name, std::string_view fallback);
  /// Names an operation so that C++ accepts it beside the others and beside those of the bases.
  void nameOperation(CodeOperation& operation, const std::string& name);
  void addOperation(CodeOperation operation, const std::string& name);
  void readTyped(CodeTyped& typed, const platform::Node& node, std::string_view linkType);
  /// The initial value of an attribute may be a literal of its enumeration.
  void makeEnumerationLiteral(CodeTyped& typed);
  void chooseColumns();
  void makeGroups();
  void need(const CodeType& type);
  void findNeeds();

  CodeModel& m_model;
  CodeClass& m_class;
  NameScope m_cpp{Language::cpp};
  NameScope m_java{Language::java};
  NameScope m_sql{Language::sql, NameScope::Case::ignored};
  std::map<std::string, std::string> m_operationNames;  ///< C++ name by the word it was made of
  std::map<std::string, std::string> m_javaOperationNames;
  std::map<std::string, bool> m_signatures;  ///< whether it is one of a constructor
};

}  // namespace brisel::tools
