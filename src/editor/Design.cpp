#include "editor/Design.h"

#include <array>
#include <string_view>

#include "platform/Diagram.h"
#include "platform/ToolBar.h"

namespace brisel::editor {

namespace {

using Text = std::string_view;

struct Button {
  Text key;  ///< empty for a separator
  Text icon;
  Text tooltip;
};

constexpr Button kSeparator{};

// "coclassed" is spelled so on purpose, and dispatch interfaces share the icon of interfaces.
constexpr std::array kButtons = {
    Button{"Select", "Select.bmp", "select tool"},
    kSeparator,
    Button{"Save", "FileSave.bmp", "Save diagram"},
    kSeparator,
    Button{"ViewAttributes", "Attrib.ico", "toggle view attributes on/off"},
    Button{"ViewOperations", "Operation.ico", "toggle view operations on/off"},
    Button{"ViewParameters", "Parameter.ico", "toggle view parameters on/off"},
    kSeparator,
    Button{"COM::Builtin", "COM-VORTABuiltinType.ico", "toggle view builtin types on/off"},
    Button{"COM::Enum", "COM-VORTAEnum.ico", "toggle view enums on/off"},
    Button{"COM::TypeDef", "COM-VORTADataType.ico", "toggle view typedefs on/off"},
    Button{"COM::Module", "COM-VORTAModule.ico", "toggle view modules on/off"},
    Button{"COM::Interface", "COM-VORTAInterface.ico", "toggle view interfaces on/off"},
    Button{"COM::CoClass", "COM-VORTACoClass.ico", "toggle view coclassed on/off"},
    Button{"COM::DispInterface", "COM-VORTAInterface.ico",
           "toggle view dispatch interfaces on/off"},
    kSeparator,
    Button{"ZoomIn", "ZoomIn.bmp", "bigger view"},
    Button{"ZoomOut", "ZoomOut.bmp", "smaller view"},
    Button{"ZoomNo", "ZoomNo.bmp", "100% view"},
    Button{"ZoomFull", "ZoomFull.bmp", "full view"},
    kSeparator,
    Button{"Print", "Print.bmp", "print the diagram"},
    Button{"PrintPreview", "PrintPreview.bmp", "show preview of the printed diagram"},
    kSeparator,
    Button{"Copy", "Copy.bmp", "Copy diagram into clipboard"},
    kSeparator,
    Button{"LayoutRandom", "LayoutRandom.bmp", "random layout"},
    Button{"LayoutMatrix", "LayoutMatrix.bmp", "matrix layout"},
    Button{"LayoutSpring", "LayoutSpring.bmp", "spring layout"},
    Button{"LayoutHierarchy", "LayoutHierarchy.bmp", "hierarchical layout"},
    kSeparator,
    Button{"AlignLeft", "AlignLeft.bmp", "align left sides of objects"},
    Button{"AlignRight", "AlignRight.bmp", "align right sides of objects"},
    Button{"AlignTop", "AlignTop.bmp", "align top sides of objects"},
    Button{"AlignBottom", "AlignBottom.bmp", "align bottom sides of objects"},
    kSeparator,
    Button{"Help", "Help.ico", "View help"},
};

struct BandRow {
  Text key;
  Text caption;
};

constexpr std::array kBands = {
    BandRow{"tbPopupMenu", "Context menu"},    BandRow{"tbMorphing", "Morphing"},
    BandRow{"tbPopupAssoc", "Association"},    BandRow{"tbMorphingClass", "Morphing"},
    BandRow{"tbCompartments", "Compartments"},
};

struct ToolRow {
  Text band;
  Text key;
  Text caption;
  Text opens = {};
};

// "miMorpToAss" is spelled without its "h" on purpose.
constexpr std::array kTools = {
    ToolRow{"tbPopupMenu", "miPopupEdit", "&Edit..."},
    ToolRow{"tbPopupMenu", "miPopupProperties", "&Properties..."},
    ToolRow{"tbPopupMenu", "miPopupSizeToFit", "&Size to fit"},
    ToolRow{"tbPopupMenu", "miPopupMorph", "Morphing", "tbMorphingClass"},
    ToolRow{"tbPopupMenu", "miCompartments", "Compartments", "tbCompartments"},
    ToolRow{"tbMorphing", "miMorpToAss", "to association"},
    ToolRow{"tbMorphing", "miMorphToAggShared", "to shared aggregation"},
    ToolRow{"tbMorphing", "miMorphToAggComposite", "to composite aggregation"},
    ToolRow{"tbMorphing", "miMorphToGen", "to generalization"},
    ToolRow{"tbMorphing", "miMorphToAttr", "to class attribute"},
    ToolRow{"tbPopupAssoc", "miPopupAssocEdit", "Edit ..."},
    ToolRow{"tbPopupAssoc", "miPopupAssocMorph", "Morphing", "tbMorphing"},
    ToolRow{"tbMorphingClass", "miMorphClassSplit", "Split"},
    ToolRow{"tbMorphingClass", "miMorphClassSplitSemantic", "Semantic Split"},
    ToolRow{"tbMorphingClass", "miMorphExtractAttribute", "Extract attribute"},
    ToolRow{"tbMorphingClass", "miMorphMerge", "&Merge"},
    ToolRow{"tbCompartments", "miCompartmentsAttributes", "Attributes"},
    ToolRow{"tbCompartments", "miCompartmentsOperations", "Operations"},
};

}  // namespace

void addCanvasButtons(platform::DiagramControl& diagram, const std::string& installationFolder) {
  for (const Button& button : kButtons) {
    const bool separator = button.key.empty();
    const std::string icon =
        separator ? std::string() : installationFolder + "\\" + std::string(button.icon);
    diagram.AddButton(button.key, "", button.tooltip, icon, !separator);
  }
}

void addPopupBands(platform::ToolBarControl& toolBar,
                   const std::function<bool(std::string_view tool)>& hasCommand) {
  for (const BandRow& band : kBands) toolBar.addBand(band.key, band.caption);
  for (const ToolRow& tool : kTools) {
    toolBar.addTool(tool.band, tool.key, tool.caption, tool.opens);
    toolBar.enabled(tool.key, !tool.opens.empty() || hasCommand(tool.key));
  }
  toolBar.addLooseTool("miMorphing", "Morphing");
  toolBar.addLooseTool("tbProperties", "Properties");
  toolBar.addLooseTool("miTest", "&Test");
}

}  // namespace brisel::editor
