#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "component/DiagramMembers.h"
#include "component/frmCLSDiagram.h"
#include "platform/ComponentRegistry.h"

namespace brisel::component {

/// The creatable component through which a host uses the editor in a window of its own. Keeps
/// nothing but its form, which exists from Create to Destroy. What is not of its lifecycle goes to
/// the editor or to the editor's canvas, by typed call or by name; errors pass to the host. A call
/// that needs the form is an Error (objectMissing) while there is none.
///
/// A host may destroy the window, or drop its last reference, inside any of its events.
class DiagramWindow : public platform::Object, public DiagramMembers {
 public:
  using ClassRef = platform::Ref<repository::Class>;
  using AssociationRef = platform::Ref<repository::Association>;

  explicit DiagramWindow(platform::ComponentRegistry& registry) : m_registry(registry) {}
  ~DiagramWindow() override { dropForm(); }

  /// Makes the form and its editor, which gets the name and the session (or nothing). Destroys the
  /// form that there was.
  void Create(Text componentName, platform::Object* session);
  void Init() {}
  /// Shows the form. With `modal`, a window system keeps the person in it, and the call returns
  /// when the form was hidden; without windows the call returns at once.
  void PopUp(bool modal);
  /// Hides the form; errors are ignored.
  void Conceal();
  void Deinit() {}
  /// Hides the form and drops it, which ends the editor: it leaves the session's component manager.
  /// Errors are ignored, and so is a second call.
  void Destroy();
  /// Captions the form and draws the model.
  void Populate();

  // Of the editor.
  [[nodiscard]] ObjectRef PackageObject() const { return editor()->PackageObject(); }
  void PackageObject(platform::Object* package) { editor()->PackageObject(package); }
  [[nodiscard]] std::string RepositoryFileName() const { return editor()->RepositoryFileName(); }
  void RepositoryFileName(Text name) { editor()->RepositoryFileName(name); }
  [[nodiscard]] std::string Path() const { return editor()->Path(); }
  void Path(Text path) { editor()->Path(path); }
  [[nodiscard]] platform::Ref<platform::MetaRepository> Repository() const {
    return editor()->Repository();
  }
  void Repository(platform::MetaRepository* repository) { editor()->Repository(repository); }
  [[nodiscard]] ObjectRef UUIDGenerator() const { return editor()->UUIDGenerator(); }
  void UUIDGenerator(platform::Object* generator) { editor()->UUIDGenerator(generator); }
  [[nodiscard]] platform::Ref<repository::CLSRepository> CLSRepository() const {
    return editor()->CLSRepository();
  }

  AssociationRef CreateAggregation(Text id, Text name, Text intention, Text srcId, Text tgtId,
                                   bool isComposite) {
    return editor()->CreateAggregation(id, name, intention, srcId, tgtId, isComposite);
  }
  AssociationRef CreateAssociation(Text id, Text name, Text intention, Text srcId, Text tgtId) {
    return editor()->CreateAssociation(id, name, intention, srcId, tgtId);
  }
  ClassRef CreateClass(Text id, Text name, Text intention, Text category, Text comment,
                       Text scope) {
    return editor()->CreateClass(id, name, intention, category, comment, scope);
  }
  AssociationRef CreateGeneralization(Text id, Text name, Text intention, Text srcId, Text tgtId) {
    return editor()->CreateGeneralization(id, name, intention, srcId, tgtId);
  }
  void CreateMode() { editor()->CreateMode(); }
  void DeleteClass(Text key) { editor()->DeleteClass(key); }
  void EditAssociation(Text key) { editor()->EditAssociation(key); }
  void EditClass(Text key) { editor()->EditClass(key); }
  void ShowCompartments(Text key, Text compartment, bool checked) {
    editor()->ShowCompartments(key, compartment, checked);
  }
  void SizeToFit(Text key) { editor()->SizeToFit(key); }
  void SynchronizeDataTypes() { editor()->SynchronizeDataTypes(); }
  void ExtractAttribute(Text key) { editor()->ExtractAttribute(key); }
  [[nodiscard]] AssociationRef GetAssociationFromLink(Text key) {
    return editor()->GetAssociationFromLink(key);
  }
  [[nodiscard]] ClassRef GetClassFromNode(Text key) { return editor()->GetClassFromNode(key); }
  void PropertyNode(std::int64_t no) { editor()->PropertyNode(no); }
  void MakeDemo() { editor()->MakeDemo(); }
  void MatrixBrowser() { editor()->MatrixBrowser(); }
  void OpenDiagram() { editor()->OpenDiagram(); }
  void SaveDiagram() { editor()->SaveDiagram(); }
  void ShowTemplateEditor() { editor()->ShowTemplateEditor(); }
  void MorphingAssoc(Text key, Text typ) { editor()->MorphingAssoc(key, typ); }
  void MorphingClass(Text key, Text kind) { editor()->MorphingClass(key, kind); }
  void SplitClass(Text key, bool semantic) { editor()->SplitClass(key, semantic); }
  void ShowPopupMenu(Text what) { editor()->ShowPopupMenu(what); }

  [[nodiscard]] platform::Ref<frmCLSDiagram> form() const { return m_form; }
  void terminate() override { Destroy(); }

  platform::Event<> FormChanged;   ///< the form was made or dropped, shown or hidden
  platform::Event<> ShownModally;  ///< the end of PopUp(true): a window system may wait in it

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  void dropForm();
  [[nodiscard]] platform::Ref<frmCLSDiagram> loadedForm() const;
  [[nodiscard]] platform::Ref<editor::CLSEditor> editor() const { return loadedForm()->Editor(); }
  [[nodiscard]] ObjectRef canvas() const override { return editor()->diagram(); }

  platform::ComponentRegistry& m_registry;
  platform::Ref<frmCLSDiagram> m_form;
};

}  // namespace brisel::component
