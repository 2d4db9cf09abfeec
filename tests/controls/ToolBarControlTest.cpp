#include <gtest/gtest.h>

#include "component/AutomaticShell.h"
#include "controls/ToolBarControl.h"
#include "editor/Design.h"
#include "platform/Error.h"

namespace brisel::controls {
namespace {

using platform::each;
using platform::make;

class ToolBar : public testing::Test {
 protected:
  platform::ComponentRegistry registry{make<component::AutomaticShell>()};
  platform::Ref<ToolBarControl> bar = make<ToolBarControl>(registry);
};

TEST_F(ToolBar, holdsTheStoredDesign) {
  editor::addPopupBands(*bar, [](std::string_view tool) { return tool == "miPopupEdit"; });
  std::string design;
  for (auto& band : each<Band>(bar->Bands())) {
    design += band.key() + "[" + band.caption() + "]";
    for (auto& tool : each<Tool>(band.Tools())) {
      design += " " + tool.key() + (tool.opens().empty() ? "" : ">" + tool.opens());
    }
    design += "\n";
  }
  EXPECT_EQ(design,
            "tbPopupMenu[Context menu] miPopupEdit miPopupProperties miPopupSizeToFit "
            "miPopupMorph>tbMorphingClass miCompartments>tbCompartments\n"
            "tbMorphing[Morphing] miMorpToAss miMorphToAggShared miMorphToAggComposite "
            "miMorphToGen miMorphToAttr\n"
            "tbPopupAssoc[Association] miPopupAssocEdit miPopupAssocMorph>tbMorphing\n"
            "tbMorphingClass[Morphing] miMorphClassSplit miMorphClassSplitSemantic "
            "miMorphExtractAttribute miMorphMerge\n"
            "tbCompartments[Compartments] miCompartmentsAttributes miCompartmentsOperations\n");
  EXPECT_TRUE(bar->tool("miPopupEdit")->enabled());
  EXPECT_TRUE(bar->tool("miPopupMorph")->enabled()) << "opens a band";
  EXPECT_FALSE(bar->tool("miMorphMerge")->enabled()) << "has no command";
  for (const char* loose : {"miMorphing", "tbProperties", "miTest"}) {
    EXPECT_TRUE(bar->tool(loose)) << loose;
  }
}

TEST_F(ToolBar, tellsOfClicksAndRefusesWhatIsNotThere) {
  bar->addBand("band", "Band");
  bar->addTool("band", "tool", "&Tool", "");
  std::string clicked;
  const auto listening = bar->ToolClick.connect([&](const std::string& key) { clicked += key; });
  bar->Click("tool");
  EXPECT_EQ(clicked, "tool");
  bar->enabled("tool", false);
  bar->Click("tool");
  bar->Click(" of a host");
  EXPECT_EQ(clicked, "tool of a host");
  EXPECT_THROW(bar->addTool("nowhere", "x", "", ""), platform::Error);
  EXPECT_THROW(bar->addTool("band", "tool", "", ""), platform::Error);
  EXPECT_EQ(bar->band("band")->tools().size(), 1U);
}

TEST_F(ToolBar, popsUpBandsAndDocksThem) {
  bar->addBand("band", "Band");
  bar->popUp("nothing");
  EXPECT_EQ(bar->PopupBand(), "");
  bar->popUp("band");
  EXPECT_EQ(bar->PopupBand(), "band");

  std::string told;
  const auto shown = bar->BandShown.connect([&](const std::string&) { told += "+"; });
  const auto closed = bar->BandClosed.connect([&](const std::string&) { told += "-"; });
  bar->showBand("band", true);
  bar->showBand("band", true);
  bar->showBand("band", false);
  EXPECT_EQ(told, "+-");
}

}  // namespace
}  // namespace brisel::controls
