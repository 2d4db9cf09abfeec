#include <brisel/Core.h>
#include <iostream>

int main() {
  using namespace brisel;
  platform::ComponentRegistry registry(platform::make<component::AutomaticShell>());
  component::registerSuite(registry);
  const auto model = registry.create<platform::MetaRepository>("BriselCLS.Meta");
  model->Init();
  const auto editor = registry.create<editor::CLSEditor>("BriselCLS.CLSEditor");
  editor->Repository(model.get());
  editor->Populate();
  editor->CreateClass("order", "Order", "", "", "", "public");
  editor->CreateClass("line", "OrderLine", "", "", "", "public");
  editor->CreateAggregation("lines", "lines", "", "order", "line", true);
  editor->Layout("%HIERARCHY%");
  const auto canvas = platform::as<canvas::DiagramControl>(editor->diagram());
  std::cout << canvas::toSvg(canvas->scene());
}
