#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/CodeModel.h"
#include "tools/TemplateKeys.h"

namespace brisel::tools {

/// What is wrong with a template, and in which line, from 1.
struct TemplateFault {
  int line = 1;
  std::string cause;
};

struct GeneratedFile {
  std::string name;  ///< parts joined by "/", none of which leads out of where they are written
  std::string text;
};

/// One run of a template over classes of a model, done in steps so that a window can go on between
/// them: a step is one element of a list that stands at the top of the template, or the text
/// between two of them. The model must not change between steps.
class Generation {
 public:
  /// `name` is the template's file name. The output of a template that names no file goes to one
  /// that is called like the template, with the ending ".txt".
  Generation(std::string_view name, std::string text, std::shared_ptr<CodeModel> model,
             TemplateRoot root);
  ~Generation();
  Generation(const Generation&) = delete;
  Generation& operator=(const Generation&) = delete;

  /// Does one step; false when there is nothing left to do or the template has a fault.
  bool step();
  void run() {
    while (step()) {
    }
  }

  [[nodiscard]] const std::optional<TemplateFault>& fault() const { return m_fault; }
  /// In the order of the template. The last one may still grow while there are steps to do.
  [[nodiscard]] const std::vector<GeneratedFile>& files() const;
  [[nodiscard]] int stepsDone() const { return m_stepsDone; }

 private:
  class Work;

  std::unique_ptr<Work> m_work;
  std::optional<TemplateFault> m_fault;
  int m_stepsDone = 0;
};

}  // namespace brisel::tools
