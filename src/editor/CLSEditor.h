#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "controls/TextBox.h"
#include "editor/ModelWatch.h"
#include "editor/ViewSettings.h"
#include "editors/CLSClassControl.h"
#include "editors/frmAssociation.h"
#include "platform/ComponentRegistry.h"
#include "platform/Diagram.h"
#include "platform/ErrorTrap.h"
#include "platform/ToolBar.h"
#include "repository/Association.h"
#include "repository/CLSRepository.h"
#include "repository/Class.h"
#include "repository/Relationships.h"

namespace brisel::editors {
class frmClass;
}
namespace brisel::repository {
class MovedAssociation;
}

namespace brisel::editor {

class DrawnGeometry;
struct DemoModel;

/// The class-diagram editor: owns the canvas, the tool-bar control, the class pane, the in-place
/// text box and the one CLSRepository through which every change of the model goes.
///
/// Every public method runs under the error trap: what fails is shown in a message box and an
/// empty result comes back. Usable once `Repository` is set. Host objects (package, session,
/// parent window) are held until terminate().
class CLSEditor : public platform::Object {
 public:
  using Text = std::string_view;
  using ObjectRef = platform::Ref<platform::Object>;
  using ClassRef = platform::Ref<repository::Class>;
  using AssociationRef = platform::Ref<repository::Association>;

  explicit CLSEditor(platform::ComponentRegistry& registry);
  ~CLSEditor() override;

  // The system's members: properties.
  [[nodiscard]] ObjectRef PackageObject() const { return m_packageObject; }
  void PackageObject(platform::Object* package) { m_packageObject = package; }
  [[nodiscard]] std::string RepositoryFileName() const { return m_repositoryFileName; }
  void RepositoryFileName(Text name) { m_repositoryFileName = name; }
  [[nodiscard]] std::string Path() const { return m_path; }
  /// Also the class pane's.
  void Path(Text path);
  [[nodiscard]] ObjectRef UUIDGenerator() const { return m_generator; }
  void UUIDGenerator(platform::Object* generator);
  [[nodiscard]] platform::Ref<repository::CLSRepository> CLSRepository() const {
    return m_repository;
  }
  [[nodiscard]] platform::Ref<platform::MetaRepository> Repository() const;
  void Repository(platform::MetaRepository* repository);
  [[nodiscard]] std::string ComponentName() const { return m_componentName; }
  void ComponentName(Text name) { m_componentName = name; }
  [[nodiscard]] ObjectRef Session() const { return m_session; }
  void Session(platform::Object* session) { m_session = session; }
  [[nodiscard]] ObjectRef ParentWindow() const { return m_parentWindow; }
  void ParentWindow(platform::Object* window) { m_parentWindow = window; }

  // Services.
  void HourglassOn();
  void HourglassOff();
  void Help();
  [[nodiscard]] platform::Ref<platform::DiagramControl> diagram() const { return m_diagram; }

  // Filling the canvas and laying it out.
  /// Draws the model on the empty canvas; call Clear first to draw anew.
  void Populate();
  /// "%HIERARCHY%" or one of the canvas's codes. A hierarchical layout that fails offers "MATRIX".
  void Layout(Text style);
  [[nodiscard]] platform::Ref<platform::Node> GetLayoutNode();
  void Clear();

  // Creation, deletion, modes.
  void SelectMode();
  void CreateMode();
  [[nodiscard]] ClassRef GetClassFromNode(Text key);
  [[nodiscard]] AssociationRef GetAssociationFromLink(Text key);
  ClassRef CreateClass(Text id, Text name, Text intention, Text category, Text comment, Text scope);
  /// The intention of relationships is accepted and not used.
  AssociationRef CreateAssociation(Text id, Text name, Text intention, Text srcId, Text tgtId);
  AssociationRef CreateAggregation(Text id, Text name, Text intention, Text srcId, Text tgtId,
                                   bool isComposite);
  /// `srcId` is the sub class, `tgtId` the super class.
  AssociationRef CreateGeneralization(Text id, Text name, Text intention, Text srcId, Text tgtId);
  /// Takes the class's relationships, stereotype link and geometry along.
  void DeleteClass(Text key);

  // Popup menus and what they reach.
  /// "Class" opens the popup menu of classes, "Link" that of relationships; it acts on the element
  /// whose key is in the tool-bar control's `Tag`.
  void ShowPopupMenu(Text what);
  /// Opens the class pane beside the class's box.
  void EditClass(Text key);
  /// Opens the relationship's dialog and waits until it is closed.
  void EditAssociation(Text key);
  /// Opens the dialog of the model's stereotypes and waits until it is closed.
  void EditStereotypes();
  /// On the class whose key is in the tool-bar control's `Tag`: 1 shows its attributes and
  /// operations, 2 folds the box to its title; another number does nothing.
  void PropertyNode(std::int64_t no);

  // Compartments, positions, data types.
  /// Shows or hides the operations ("Operations") or the attributes (any other word) of one class.
  void ShowCompartments(Text key, Text compartment, bool checked);
  /// Toggles "ViewAttributes", "ViewOperations" or "ViewParameters" and applies all three to every
  /// drawn class. Another word toggles nothing.
  void Compartments(Text compartment);
  void SizeToFit(Text key);
  /// Replaces the stored geometry of drawn classes and of all lines by the current one.
  void AddPositions();
  /// Makes sure that every class is also a data type of the same name.
  void SynchronizeDataTypes();

  // Refactorings. None asks for confirmation but by its dialog, and none can be undone; where one
  // does not apply it does nothing.
  /// Turns a relationship into another kind, on the same line, or into an attribute of the whole:
  /// "ToAssociation", "ToSharedAggregation", "ToCompositeAggregation", "ToGeneralization",
  /// "ToAttribute". The source of a line is the whole and the sub class, its target the part and
  /// the super class.
  void MorphingAssoc(Text key, Text typ);
  /// "Split" or "SplitSemantic".
  void MorphingClass(Text key, Text kind);
  /// Asks for a name and for members, which move to a new class of that name beside the old one;
  /// with `semantic` the new class becomes the super class of the old one.
  void SplitClass(Text key, bool semantic);
  /// Asks for an attribute, which becomes a class of its own, part of the class that had it.
  void ExtractAttribute(Text key);

  // Files. Both are quiet, whatever fails: then model, canvas and file name are as they were before
  // the call, and `LastError` has the cause.
  /// Asks for a DIM file, whose model and name take the place of the current ones.
  void OpenDiagram();
  /// Writes geometry, view settings and model to the file named by `RepositoryFileName`; asks for
  /// one where that is empty.
  void SaveDiagram();

  // Tools of the suite, on the live model. What the template editor changes is seen after the next
  // Populate; what is edited in a matrix browser that tells of it is drawn at once. A tool
  // that cannot be made is passed over quietly.
  void MatrixBrowser();
  void ShowTemplateEditor();

  /// Adds a small shop to the model, which shows all that a diagram can hold, and draws it beside
  /// what is drawn already.
  void MakeDemo();

  // The events raised to the host; the argument is the element's key unless noted.
  platform::Event<std::string> ClassCreated, ClassDeleted, ClassMoved, ClassResized, ClassChanged;
  platform::Event<std::string> ClassEnter, ClassLeave, ClassClicked, ClassRClicked;
  platform::Event<std::string> AssocCreated;
  platform::Event<std::string> AssocDeleted;  ///< declared for hosts, never raised, on purpose
  platform::Event<std::string> AssocChanged, AssocEnter, AssocLeave, AssocClicked, AssocRClicked;
  platform::Event<std::string> ToolbarButton;  ///< the button's key
  platform::Event<int, int> DiagramScrolled;   ///< scrollX, scrollY
  platform::Event<int, int> DiagramZoomed;     ///< zoomX, zoomY
  platform::Event<std::string> PopupButton;    ///< the tool's key

  // Ours.
  /// The matrix browser that was opened last and not closed since; nothing without one.
  [[nodiscard]] ObjectRef MatrixBrowser1() const;
  [[nodiscard]] platform::Ref<platform::ToolBarControl> ActiveBar21() const { return m_activeBar; }
  [[nodiscard]] platform::Ref<controls::TextBox> ClassName() const { return m_className; }
  [[nodiscard]] platform::Ref<editors::CLSClassControl> CLSClassControl1() const {
    return m_classControl;
  }
  /// The canvas fills the whole control; width and height in twips.
  void Resize(double width, double height);
  [[nodiscard]] platform::Rect diagramBounds() const { return m_diagramBounds; }
  /// A key was released over the control or its tool bars: "F1" shows the help, others nothing.
  void KeyUp(Text key);
  /// Why the tool's command would do nothing to the element: a short sentence for a menu. Empty
  /// where it would do something, and for a tool that is not known.
  [[nodiscard]] std::string objection(Text tool, Text element);
  /// How many relationships "SplitSemantic" and "Extract attribute" made so far.
  [[nodiscard]] std::int64_t relationshipsExtracted() const { return m_relationshipsExtracted; }
  /// Writes what was typed so far, the name in place and what is pending in the class pane, which
  /// stays open.
  void finishEditing();
  /// Writes geometry and view settings into the model, as every save does before the export.
  /// Errors pass to the caller.
  void storeDiagram();
  /// What the last OpenDiagram or SaveDiagram failed with; empty after one that did not, and after
  /// a dialog that was cancelled.
  [[nodiscard]] std::string LastError() const { return m_lastError; }
  /// Draws another model in the place of the current one. An Error leaves the current one, drawn as
  /// it was.
  void showRepository(platform::MetaRepository& repository);
  /// Unregisters from the host's component manager and lets go of everything of the host's.
  void terminate() override;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  /// What a link that is made next becomes.
  using RelationshipKind = repository::RelationshipKind;
  class Busy;
  /// Of the names of classes, in points at 100 %.
  static constexpr double kNameFontSize = 15;

  template <class Body>
  auto trap(Text procedure, Body&& body) const {
    return platform::trapped(m_registry.shell(), "CLSEditor", procedure, std::forward<Body>(body));
  }

  // Start-up and tear-down.
  void initialize();
  void configureCanvas();
  void connectCanvas();
  void passThrough();
  void BuildPropertyBand();
  void removeFromHost();
  void callParentWindow(Text member);

  // Files.
  platform::Ref<platform::MetaRepository> importDiagram(const std::string& path);
  /// Keeps the text of the exception that is being handled.
  void noteFailure();
  /// The canvas is empty then.
  void takeRepository(platform::MetaRepository* repository);
  void redraw(const DrawnGeometry& drawn);

  [[nodiscard]] ObjectRef createTool(Text progId);

  // Populating.
  void populate();
  void ensureConventions();
  /// Nothing in a model that has none.
  [[nodiscard]] platform::Ref<platform::Node> layoutNode() const;
  /// Writes the view settings to the model's "Layout" node, which is made where it is missing.
  void saveView();
  void drawModel();
  void drawClasses();
  void drawRelationships(const repository::RelationshipType& drawnType);
  void drawRelationship(platform::Node& relationship, const repository::RelationshipType& type);
  /// Gives the keys of the boxes that have one.
  std::set<std::string> restoreAreas();
  [[nodiscard]] bool isStacked() const;
  void placeBoxesWithoutArea(const std::set<std::string>& placed);
  void restorePoints();
  [[nodiscard]] bool IsClassShown(platform::Node& classNode);
  [[nodiscard]] bool IsNodeShown(Text key) const;
  void layoutHierarchically();
  void SyncViewButtons();
  void SyncCategoryButtons();
  void showPressed(Text button, bool pressed);

  // Answers to the canvas.
  void nodeCreated(const std::string& key);
  void linkCreated(const std::string& key);
  void nodeDeleted(const std::string& key);
  void nodePressed(const std::string& key);
  void nodeRightClicked(const std::string& key);
  void linkRightClicked(const std::string& key);
  void deleteSelection();
  void memberDropped(const std::string& tag, platform::Point at);
  void moveMember(Text ownership, platform::Link& owned, platform::Node& to);
  ClassRef makeOperationClass(platform::Point at);
  [[nodiscard]] bool mayDrop(Text node, Text tag, Text target) const;
  void reconnect(const std::string& key, const std::string& classKey, bool atSource);
  [[nodiscard]] std::string refusal(Text link, Text source, Text target);
  void viewChanged();
  void canvasCleared();
  struct KindRow;
  [[nodiscard]] static const std::array<KindRow, 4>& kindRows();
  void SyncModeButtons();
  void bindClass(const std::string& key, platform::DiagramNode& box);
  void bindRelationship(const std::string& key, platform::DiagramLink& line);
  platform::Ref<platform::Node> makeClass(const std::string& key);
  platform::Ref<platform::Node> makeRelationship(const std::string& key,
                                                 const platform::DiagramLink& line);
  void buttonClicked(const std::string& key);
  void dispatchButton(const std::string& key);
  void helpButton(const std::string& key);
  void openButton(const std::string& key);
  void saveButton(const std::string& key);
  void stereotypesButton(const std::string& key);
  void matrixButton(const std::string& key);
  void templateButton(const std::string& key);
  void compartmentButton(const std::string& key);
  void relationshipButton(const std::string& key);
  void alignButton(const std::string& key);
  void toggleCategory(const std::string& key);
  void demoButton(const std::string& key);
  void showAllCompartments();
  void layOutBeside(const DemoModel& demo, const platform::Rect& drawn);

  // Naming in place: the text box lies over the box whose key is in its `Tag`.
  void BeginClassName(platform::DiagramNode& box, Text text);
  void CommitClassName();
  void renameInPlace(const std::string& key);
  void placeClassName();
  void endNaming();
  void nameKeyPressed(const std::string& key);

  // The class pane.
  void ShowClassProperties(Text key);
  void showInPane(repository::Class& shown);
  void finishPane();
  void paneEdited();
  [[nodiscard]] AssociationRef editableAssociation(Text key);
  void refreshStereotypes();
  void closePane();
  void PlaceClassEditor();
  void bandShown(const std::string& band);
  void bandClosed(const std::string& band);

  // Tools of the suite that are open: followed where they tell what is done in them.
  struct OpenTool {
    ObjectRef tool;  ///< nothing for one that does not tell when it is closed
    std::vector<platform::Connection> connections;
  };
  void followTool(const ObjectRef& tool);
  void toolSelected(const std::vector<std::string>& identifiers);
  bool present(const std::vector<std::string>& identifiers);
  void selectIn(platform::Object& templates);
  void toolEdited(Text type, const std::string& identifier);
  void toolClosed(const platform::Object* tool);
  void showModelInTools();
  void endTools();

  // Commands of the popup menus; `key` is the element's.
  struct ToolRow;
  /// Nothing for a tool without a command.
  [[nodiscard]] static const ToolRow* toolRow(Text tool);
  void toolClicked(const std::string& tool);
  void editTool(Text key, const ToolRow& row);
  void editAssociationTool(Text key, const ToolRow& row);
  void propertiesTool(Text key, const ToolRow& row);
  void sizeToFitTool(Text key, const ToolRow& row);
  void compartmentTool(Text key, const ToolRow& row);
  void propertyNodeTool(Text key, const ToolRow& row);
  void morphTool(Text key, const ToolRow& row);
  void splitTool(Text key, const ToolRow& row);
  void extractTool(Text key, const ToolRow& row);
  void mergeTool(Text key, const ToolRow& row);
  [[nodiscard]] std::string morphObjection(Text key, const ToolRow& row);
  [[nodiscard]] std::string splitObjection(Text key, const ToolRow& row);
  [[nodiscard]] std::string extractObjection(Text key, const ToolRow& row);
  [[nodiscard]] std::string mergeObjection(Text key, const ToolRow& row);

  // Morphing one relationship.
  struct MorphRow;
  /// Nothing for another word.
  [[nodiscard]] static const MorphRow* morphRow(Text word);
  [[nodiscard]] std::string objectionToMorph(Text key, Text word);
  void toAssociation(repository::Association& morphed);
  void toSharedAggregation(repository::Association& morphed);
  void toCompositeAggregation(repository::Association& morphed);
  void toGeneralization(repository::Association& morphed);
  void toAttribute(repository::Association& morphed);
  using CopyProperties = std::function<void(platform::Node& from, platform::Node& to)>;
  void replace(repository::Association& morphed, Text kind, const CopyProperties& copy);
  platform::Ref<platform::Node> makeReplacement(const repository::Association& morphed, Text kind);

  // Splitting, merging, extracting.
  void split(repository::Class& old, editors::frmClass& answers, bool semantic);
  void MergeClasses();
  void merge(const std::vector<ClassRef>& merged, repository::Class& into);
  [[nodiscard]] std::vector<ClassRef> selectedClasses();
  void follow(const repository::MovedAssociation& moved);
  void restoreLines();
  [[nodiscard]] std::string inheritsFromItself(const platform::Node& classNode) const;
  [[nodiscard]] std::string stayedBehind(const std::vector<ClassRef>& merged) const;
  ClassRef ExtractAttributeToClass(repository::Class& owner, platform::Link& attribute,
                                   bool asComposite);

  // What the refactorings share.
  class Refill;
  /// Nothing when it could not be made, which was told then.
  ClassRef newClass(Text name, Text intention, const repository::Class* beside, double gap);
  /// An Error for one that is not drawn or has left the model.
  [[nodiscard]] ClassRef refactoredClass(Text key);
  static void requireInModel(const repository::Class& shown);
  void presentResult(repository::Class& made);
  [[nodiscard]] std::string freshKey();
  void refillAndFit(repository::Class& shown);
  void placeBeside(platform::DiagramNode& box, const platform::DiagramNode& other, double gap);
  void place(platform::DiagramNode& box, platform::Point corner, double gap);
  void noteExtracted(repository::Association& relationship);
  void leadAround(platform::DiagramLink& line);
  [[nodiscard]] std::optional<double> clearLevel(const platform::DiagramLink& line,
                                                 bool above) const;

  // Shared steps.
  AssociationRef createLink(RelationshipKind kind, Text id, Text name, Text srcId, Text tgtId);
  void showCompartments(repository::Class& shown) const;
  void toggleCompartment(Text compartment);
  void deleteRelationshipsOf(platform::Node& classNode);
  void deleteRelationship(platform::Node& relationship);
  /// The stored geometry stays. Nothing of the relationship does, even when that fails half way.
  void takeRelationshipFromModel(platform::Node& relationship);
  [[nodiscard]] ClassRef drawnClass(Text key);
  [[nodiscard]] AssociationRef drawnAssociation(Text key);
  void synchronizeDataTypes();
  [[nodiscard]] platform::Ref<platform::DiagramNode> drawnNode(Text key) const;
  ModelWatch& watch();
  void deleteGeometryOf(Text key);
  void storeArea(platform::Node& classNode, const platform::Rect& bounds);
  void storePositions();
  void storePoints();
  [[nodiscard]] platform::MetaRepository& model() const;

  platform::ComponentRegistry& m_registry;
  platform::Ref<platform::DiagramControl> m_diagram;
  platform::Ref<platform::ToolBarControl> m_activeBar;
  platform::Ref<controls::TextBox> m_className;
  platform::Ref<editors::CLSClassControl> m_classControl;
  platform::Ref<editors::frmAssociation> m_association;  ///< made when it is first needed
  platform::Ref<repository::CLSRepository> m_repository;
  ObjectRef m_generator;
  ViewSettings m_view;
  ModelWatch m_watch;
  std::vector<platform::Connection> m_connections;
  std::vector<OpenTool> m_openTools;

  std::string m_repositoryFileName;
  std::string m_lastError;
  std::string m_path;
  std::string m_componentName;
  ObjectRef m_packageObject;
  ObjectRef m_session;
  ObjectRef m_parentWindow;
  platform::Rect m_diagramBounds;

  RelationshipKind m_kind = RelationshipKind::association;
  /// The element that is being drawn. Set inside Populate's calls of the canvas, until the box or
  /// line is bound to it: what the host makes in answer is new.
  platform::Ref<platform::Node> m_drawn;
  std::int64_t m_relationshipsExtracted = 0;
  int m_operationClasses = 0;  ///< classes made for operations that were dropped on empty canvas
  bool m_programmatic = false;
  bool m_terminated = false;
};

}  // namespace brisel::editor
