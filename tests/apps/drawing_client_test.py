"""A client of `brisel automate` draws a diagram as a person does: by pointer and keys, through the
text box for names and the popup menus. Results, and the events that arrive before each answer."""

import os
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "examples" / "automation"))

import brisel_client  # noqa: E402

DRAWING_TOOLS = ("Association", "CompositeAggregation", "SharedAggregation", "Generalization")


class Drawing(unittest.TestCase):
    def setUp(self):
        self.brisel = brisel_client.Brisel(os.environ["BRISEL"])
        self.addCleanup(self.brisel.close)
        self.model = self.brisel.create("BriselCLS.Meta")
        self.model.Init()
        self.editor = self.brisel.create("BriselCLS.CLSEditor")
        self.editor["Repository"] = self.model
        self.editor.Populate()
        self.editor.Resize(18000, 12000)
        self.canvas = self.editor["diagramControl1"]
        self.name = self.editor["ClassName"]
        self.menu = self.editor["ActiveBar21"]
        for key in DRAWING_TOOLS:
            self.canvas.AddButton(key, "", "draw", "", True)
        self.events()

    def tearDown(self):
        messages = [params for method, params in self.brisel.notifications if method == "message"]
        self.assertEqual(messages, [])

    def events(self):
        """What the editor told since the last call, without entering and leaving."""
        told = [(params["name"], *params["arguments"])
                for method, params in self.brisel.notifications
                if method == "event" and params["object"] == self.editor]
        del self.brisel.notifications[:]
        return [event for event in told if not event[0].endswith(("Enter", "Leave"))]

    def click(self, x, y, button="left"):
        self.canvas.PointerMove(x, y)
        self.canvas.PointerPress(x, y, button, "")
        self.canvas.PointerRelease(x, y, button, "")

    def drag(self, start, end, over=None):
        self.canvas.PointerMove(*start)
        self.canvas.PointerPress(*start, "left", "")
        self.canvas.PointerMove(*(over or ((start[0] + end[0]) / 2, (start[1] + end[1]) / 2)))
        self.canvas.PointerMove(*end)
        self.canvas.PointerRelease(*end, "left", "")

    def draw_class(self, x, y, name):
        """By a click in create mode; the new class's box."""
        self.editor.CreateMode()
        self.click(x, y)
        self.name.SetText(name)
        self.name.KeyPress("Return")
        return self.canvas.getAllNodes().ToArray()[-1]

    def draw_line(self, button, start, end, over=None):
        self.canvas.ClickButton(button)
        self.drag(start, end, over)
        return self.canvas.getAllLinks().ToArray()[-1]

    @staticmethod
    def border(node, side, along=0.25):
        """A point of the left or right side, clear of the handles."""
        x = node["left"] + (node["width"] if side == "right" else 0)
        return x, node["top"] + along * node["height"]

    @staticmethod
    def canvas_point(line):
        """In the middle of a straight line."""
        first, last = line["ExtraPoints"].ToArray()[0], line["ExtraPoints"].ToArray()[-1]
        return (first["x"] + last["x"]) / 2, (first["y"] + last["y"]) / 2

    def title(self, node):
        return node["left"] + node["width"] / 2, node["top"] + 150

    def owned(self, node, link):
        shown = self.editor.GetClassFromNode(node["key"])["clsObject"]
        return [each["Target"]["name"] for each in shown.outgoing(link).ToArray()]

    def count(self, kind):
        return self.model.MetaNodes(kind)["extension"]["Count"]

    def pressed(self):
        return [button["key"] for button in self.canvas["Buttons"].ToArray()
                if button["pressed"] and button["key"] in ("Select", *DRAWING_TOOLS)]

    def test_classes_are_placed_by_clicks_and_named_through_the_text_box(self):
        self.editor.CreateMode()
        self.assertEqual(self.canvas["Mode"], "clickCreate")
        self.click(3000, 3000)
        key = self.canvas.getAllNodes().Item(1)["key"]
        self.assertEqual(self.events(), [("ClassCreated", key)])
        self.assertEqual([self.name[member] for member in ("Visible", "Tag", "Text", "SelLength")],
                         [True, key, "newClass", 8])
        self.name.SetText("Order")
        self.name.KeyPress("Return")
        self.assertEqual(self.events(), [("ClassChanged", key)])
        self.assertFalse(self.name["Visible"])
        node = self.canvas.getNode(key)
        self.assertEqual((node["text"], node["left"], node["top"]), ("Order", 3000, 3000))
        self.assertEqual(self.editor.GetClassFromNode(key)["name"], "Order")

        self.click(9000, 3000)
        self.name.SetText("dropped")
        self.name.KeyPress("Escape", "")
        self.assertEqual(self.canvas.getAllNodes().Item(2)["text"], "newClass")
        self.canvas.KeyPress("Escape", "")
        self.assertEqual((self.canvas["Mode"], self.count("Class")), ("select", 2))

        self.click(*self.title(node))
        self.canvas.KeyPress("F2", "")
        self.assertEqual(self.name["Text"], "Order")
        self.events()
        self.name.SetText("Purchase")
        self.click(600, 600)  # leaves the text box
        self.assertEqual(self.events(), [("ClassChanged", key)])
        self.assertEqual(node["text"], "Purchase")

    def test_each_kind_of_relationship_is_drawn_from_border_to_border(self):
        left, right = self.draw_class(1500, 1500, "Left"), self.draw_class(9000, 1500, "Right")
        self.events()
        kinds = (("Association", "Association", 0, 0, None),
                 ("CompositeAggregation", "Aggregation", 13, 0, True),
                 ("SharedAggregation", "Aggregation", 14, 0, False),
                 ("Generalization", "Generalization", 0, 8, None))
        for button, kind, begin, end, composite in kinds:
            line = self.draw_line(button, self.border(left, "right"), self.border(right, "left"))
            self.assertEqual(self.pressed(), [button])
            # Its dialog opens at once, and is cancelled as nothing is queued for it.
            self.assertEqual(self.events(), [("ToolbarButton", button),
                                             ("AssocChanged", line["key"]),
                                             ("AssocCreated", line["key"])])
            self.assertEqual((line["source"], line["target"]), (left, right))
            self.assertEqual((line["beginArrow"], line["endArrow"]), (begin, end))
            made = self.editor.GetAssociationFromLink(line["key"])["clsObject"]
            self.assertEqual(made, self.model.MetaNodes(kind)["extension"].Item(
                self.count(kind)), button)
            if composite is not None:
                self.assertEqual(made.GetProperty("isComposite"), composite)
        hints = []
        self.brisel.on_notification = lambda method, params: hints.append(
            params["arguments"][0]) if params.get("name") == "Hint" else None
        self.drag(self.border(right, "left", 0.75), self.border(left, "right", 0.75))
        self.assertIn("Left is already below Right", hints)
        self.assertEqual(self.canvas.getAllLinks()["Count"], 4)
        self.assertEqual(self.events(), [])

        loop = self.draw_line("Association", self.border(left, "left"),
                              self.border(left, "left", 0.75), (600, 2250))
        self.assertEqual((loop["source"], loop["target"]), (left, left))
        self.assertGreater(loop["ExtraPoints"]["Count"], 2)

    def test_members_and_ends_of_lines_are_dragged_to_other_classes(self):
        left, right = self.draw_class(1500, 1500, "Left"), self.draw_class(9000, 1500, "Right")
        below = self.draw_class(4500, 7500, "Below")
        for button in ("ViewAttributes", "ViewOperations"):
            self.canvas.ClickButton(button)
        words = self.editor["CLSRepository"]
        integer = words.MakeDataType("int", "", "")["identifier"]
        words.AddAttributeS(left["key"], "number", integer)
        words.AddOperationS(left["key"], "total", integer)
        self.editor.GetClassFromNode(left["key"]).Populate()
        self.canvas.SelectMode()
        self.events()

        def grip(part):
            """Where a row of the left class is taken hold of."""
            y = left["top"]
            while y < left["top"] + left["height"]:
                hit = self.canvas.HitTest(left["left"] + 600, y)
                if hit["part"] == "row" and hit["tag"] == part:
                    return left["left"] + 600, y + 60
                y += 15
            return self.fail("no row of " + part)

        attribute = left.Section(0)["Rows"].Item(1)["tag"]
        operation = left.Section(1)["Rows"].Item(1)["tag"]
        self.drag(grip(attribute), self.title(right))
        self.assertEqual(self.events(), [("ClassChanged", right["key"])])
        self.assertEqual(self.owned(right, "Class.Has.Attrib"), ["number"])
        self.assertEqual(self.owned(left, "Class.Has.Attrib"), [])
        self.drag(grip(operation), (12000, 9000))
        made = self.canvas.getAllNodes().ToArray()[-1]
        self.assertEqual(self.events(), [("ClassCreated", made["key"])])
        self.assertEqual((made["text"], made["left"], made["top"]),
                         ("OperationClass 1", 12000, 9000))
        self.assertEqual(self.owned(made, "Class.Has.Operation"), ["total"])

        line = self.draw_line("Association", self.border(left, "right"), self.border(right, "left"))
        self.canvas.ClickButton("Select")
        self.canvas.unselectAll()
        self.canvas.selLink(line["key"])
        end = line["ExtraPoints"].Item(2)
        self.events()
        self.drag((end["x"], end["y"]), self.title(below))
        self.assertEqual((line["source"], line["target"]), (left, below))
        self.assertEqual(self.events(), [("AssocChanged", line["key"])])

    def test_a_right_click_opens_the_menu_and_del_deletes(self):
        left, right = self.draw_class(1500, 1500, "Left"), self.draw_class(9000, 1500, "Right")
        line = self.draw_line("SharedAggregation", self.border(left, "right"),
                              self.border(right, "left"))
        self.canvas.ClickButton("Select")
        self.events()
        self.click(*self.title(left), "right")
        self.assertEqual(self.events(), [("ClassRClicked", left["key"])])
        self.assertEqual((self.menu["PopupBand"], self.menu["Tag"]), ("tbPopupMenu", left["key"]))
        tool = "miCompartmentsAttributes"
        for shown in (True, False):
            self.menu.Click(tool)
            self.assertEqual(self.events(), [("PopupButton", tool)])
            self.assertEqual(left.Section(0)["visible"], shown)
            self.assertFalse(right.Section(0)["visible"])
        self.menu.Click("miPopupSizeToFit")
        self.assertLess(left["height"], right["height"])

        first, last = line["ExtraPoints"].ToArray()
        self.events()
        self.click((first["x"] + last["x"]) / 2, (first["y"] + last["y"]) / 2, "right")
        self.assertEqual(self.events(), [("AssocRClicked", line["key"])])
        self.assertEqual((self.menu["PopupBand"], self.menu["Tag"]), ("tbPopupAssoc", line["key"]))
        self.canvas.KeyPress("Delete", "")
        self.assertEqual((self.canvas.getAllLinks()["Count"], self.count("Aggregation")), (0, 0))
        self.assertEqual(self.events(), [])
        self.click(*self.title(left))
        self.events()
        self.canvas.KeyPress("Delete")
        self.assertEqual(self.events(), [("ClassDeleted", left["key"])])
        self.assertEqual((self.canvas.getAllNodes()["Count"], self.count("Class")), (1, 1))

    def test_classes_and_relationships_are_refactored_by_menu_and_answered_forms(self):
        shell = self.brisel.create("Brisel.Shell")
        order = self.draw_class(1000, 1000, "Order")
        customer = self.draw_class(9000, 1000, "Customer")
        data_type = self.editor["CLSRepository"].MakeDataType("Text", "", "")["identifier"]
        for name in ("street", "town"):
            self.editor["CLSRepository"].AddAttributeS(customer["key"], name, data_type)
        shell.AnswerForm([["Ok", "Click"]])
        line = self.draw_line("CompositeAggregation", self.border(order, "right"),
                              self.border(customer, "left"))
        self.click(*self.canvas_point(line), "right")
        self.assertEqual(self.menu["Tag"], line["key"])
        self.menu.Click("miMorphToAggShared")
        self.assertEqual(self.editor.GetAssociationFromLink(line["key"])["isAggregation"], True)
        self.assertEqual(self.editor.objection("miMorphToGen", line["key"]),
                         "Only a composite aggregation can become this")

        shell.AnswerForm([["ClassName", "SetText", "Address"], ["Attributes", "Tick", 1],
                          ["Ok", "Click"]])
        self.click(*self.title(customer), "right")
        self.menu.Click("miMorphClassSplit")
        self.assertEqual(self.owned(customer, "Class.Has.Attrib"), ["town"])
        address = self.canvas.getAllNodes().ToArray()[-1]
        self.assertEqual(self.owned(address, "Class.Has.Attrib"), ["street"])
        self.assertGreaterEqual(address["left"], customer["left"] + customer["width"] + 300)

        shell.AnswerForm([["Attributes", "Select", 1], ["asComposite", "SetValue", 0],
                          ["Ok", "Click"]])
        self.editor.ExtractAttribute(customer["key"])
        self.assertEqual(self.owned(customer, "Class.Has.Attrib"), [])
        self.assertEqual(self.count("Aggregation"), 2)

        self.canvas.unselectAll()  # the new class is selected
        for node in (customer, order):
            self.canvas.selNode(node)
        self.menu.Click("miMorphMerge")
        merged = self.canvas.getAllNodes().ToArray()[-1]
        self.assertEqual(merged["text"], "CustomerOrder")
        self.assertEqual((line["source"], line["target"]), (merged, merged))

    def test_escape_ends_a_gesture_without_a_trace(self):
        left, right = self.draw_class(1500, 1500, "Left"), self.draw_class(9000, 1500, "Right")
        self.canvas.ClickButton("Association")
        for start in (self.title(left), self.border(left, "right"), (9000, 6000)):
            self.events()
            self.canvas.PointerPress(*start, "left", "")
            self.canvas.PointerMove(*self.title(right))
            self.canvas.KeyPress("Escape", "")
            self.canvas.PointerRelease(*self.title(right), "left", "")
            self.assertEqual([event for event in self.events() if event[0] != "ClassClicked"], [])
            self.assertEqual((left["left"], left["top"]), (1500, 1500))
            self.assertEqual(self.canvas.getAllLinks()["Count"], 0)
            self.assertEqual(self.pressed(), ["Association"], "the tool stays in the hand")


if __name__ == "__main__":
    unittest.main()
