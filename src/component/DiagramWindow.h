#pragma once

#include <string>
#include <string_view>

#include "component/frmCLSDiagram.h"
#include "platform/ComponentRegistry.h"

namespace brisel::component {

/// The creatable component through which a host uses the editor in a window of its own. Keeps
/// nothing but its form, which exists from Create to Destroy. What is not of its lifecycle goes to
/// the editor or to the editor's canvas, by typed call or by name; errors pass to the host. A call
/// that needs the form is an Error (objectMissing) while there is none.
class DiagramWindow : public platform::Object {
 public:
  explicit DiagramWindow(platform::ComponentRegistry& registry) : m_registry(registry) {}
  ~DiagramWindow() override { Destroy(); }

  void Create(std::string_view componentName, platform::Object* session);
  void Init() {}
  void PopUp(bool modal);
  void Conceal();
  void Deinit() {}
  void Destroy();
  void Populate();

  [[nodiscard]] platform::Ref<frmCLSDiagram> form() const { return m_form; }
  void terminate() override { Destroy(); }

  platform::Event<> FormChanged;  ///< the form was made or dropped, shown or hidden

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] editor::CLSEditor& editor() const;

  platform::ComponentRegistry& m_registry;
  platform::Ref<frmCLSDiagram> m_form;
};

}  // namespace brisel::component
