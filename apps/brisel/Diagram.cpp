#include "Diagram.h"

namespace brisel::app {

namespace {

bool isLaidOut(const platform::MetaRepository& model) {
  return model.MetaNodes(platform::types::kGeomArea)->extension()->Count() > 0;
}

}  // namespace

Diagram::Diagram(Program& program, platform::MetaRepository& model)
    : m_program(program),
      m_editor(program.registry().create<editor::CLSEditor>("BriselCLS.CLSEditor")),
      m_fresh(!isLaidOut(model)) {
  m_editor->Repository(&model);
  m_editor->Populate();
  m_program.shell().throwFailure();
}

Diagram::~Diagram() { m_editor->terminate(); }

void Diagram::layout(std::string_view code) {
  m_editor->Layout(code);
  m_program.shell().throwFailure();
}

const canvas::Scene& Diagram::scene() const {
  return platform::as<canvas::DiagramControl>(m_editor->diagram())->scene();
}

}  // namespace brisel::app
