"""DiagramWindow as another process drives it: every member, each called, and no member that is not
written down here."""

import os
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "examples" / "automation"))

import brisel_client  # noqa: E402

# Methods and how many arguments they take.
LIFECYCLE = {"Create": 2, "Init": 0, "PopUp": 1, "Conceal": 0, "Deinit": 0, "Destroy": 0,
             "Populate": 0}
OF_THE_EDITOR = {
    "CreateAggregation": 6, "CreateAssociation": 5, "CreateClass": 6, "CreateGeneralization": 5,
    "CreateMode": 0, "DeleteClass": 1, "EditAssociation": 1, "EditClass": 1, "ShowCompartments": 3,
    "SizeToFit": 1, "SynchronizeDataTypes": 0, "ExtractAttribute": 1, "GetAssociationFromLink": 1,
    "GetClassFromNode": 1, "PropertyNode": 1, "MakeDemo": 0, "MatrixBrowser": 0, "OpenDiagram": 0,
    "SaveDiagram": 0, "ShowTemplateEditor": 0, "MorphingAssoc": 2, "MorphingClass": 2,
    "SplitClass": 2, "ShowPopupMenu": 1}
OF_THE_CANVAS = {
    "ShowToolbar": 1, "AddImage": 2, "AddButton": 5, "AddStandardButtons": 0, "createLink": 4,
    "createNode": 7, "deleteSelectedItems": 0, "deleteMarkedItems": 0, "deleteLink": 1,
    "deleteNode": 1, "markNode": 1, "markLink": 1, "selNode": 1, "selLink": 1, "unmarkAll": 0,
    "unselectAll": 0, "TransformExtent": 1, "getNode": 1, "getLink": 1, "getAllLinks": 0,
    "getAllNodes": 0, "getSelectedNodes": 0, "getSelectedLinks": 0, "getIncomingLinks": 1,
    "getOutgoingLinks": 1, "getZoom": 0, "zoom": 1, "noZoom": 0, "SelectMode": 0,
    "DrawCreateMode": 0, "ClickCreateMode": 0, "CopyToClipboard": 0, "Clear": 0, "GetDiagram": 0,
    "GetDiagramHandle": 0, "refresh": 0, "Layout": 1, "SetNewNodeSize": 2, "LabelFont": 2,
    "SectionFont": 2, "PrintDiagram": 1, "GetCenter": 1, "GetHitNode": 1}
PROPERTIES = {"PackageObject", "RepositoryFileName", "Path", "Repository", "UUIDGenerator",
              "CLSRepository", "nodePicture", "linkPicture", "linkBeginPicture", "linkEndPicture",
              "nodeNumberOfSections", "linkBeginArrow", "linkEndArrow", "linkNodeCX", "linkNodeCY",
              "BackColor"}
# The form, through which what is not forwarded is reached.
BESIDES = {"frmCLSDiagram"}


class DiagramWindow(unittest.TestCase):
    def setUp(self):
        self.brisel = brisel_client.Brisel(os.environ["BRISEL"])
        self.addCleanup(self.brisel.close)
        self.window = self.brisel.create("BriselCLS.DiagramWindow")
        self.rows = {row["name"]: row for row in self.brisel.members(self.window)}
        self.called = set()

    def call(self, name, *arguments):
        self.assertEqual(len(arguments), self.rows[name]["arguments"], name)
        self.called.add(name)
        return self.brisel.request("invoke", object=self.window, member=name,
                                   arguments=list(arguments))

    def told(self, method, key):
        """What was told since the last question."""
        values = [params[key] for sent, params in self.brisel.notifications if sent == method]
        self.brisel.notifications.clear()
        return values

    def keys(self, items):
        return [item["key"] for item in items.ToArray()]

    def start(self):
        self.host = self.brisel.create("Brisel.HostObject")
        self.host["Application"] = self.host
        self.call("Init")
        self.call("Create", "Classes", self.host)
        model = self.brisel.create("BriselCLS.Meta")
        model.Init()
        self.window["Repository"] = model
        self.call("Populate")
        self.form = self.window["frmCLSDiagram"]
        self.canvas = self.form["Editor"]["diagramControl1"]

    def classes(self):
        for key in ("a", "b", "c"):
            made = self.call("CreateClass", key, key.upper(), "told", "", "", "public")
            self.assertEqual(made["name"], key.upper())
        self.call("CreateAssociation", "ab", "knows", "", "a", "b")
        self.call("CreateAggregation", "ac", "has", "", "a", "c", True)
        self.call("CreateGeneralization", "bc", "", "", "b", "c")

    def test_the_table_is_the_one_that_is_written_down(self):
        methods = {**LIFECYCLE, **OF_THE_EDITOR, **OF_THE_CANVAS}
        self.assertEqual({name: row["arguments"] for name, row in self.rows.items()
                          if row["kind"] == "method" and name not in BESIDES}, methods)
        self.assertEqual({name for name, row in self.rows.items()
                          if row["kind"] == "property"} - BESIDES, PROPERTIES)

    def test_lifecycle(self):
        self.start()
        self.assertEqual((self.form["Visible"], self.form["Caption"]), (False, "UML Class Diagram"))
        self.assertEqual(self.form["CLSEditor"]["ComponentName"], "Classes")
        self.call("PopUp", True)
        self.assertTrue(self.form["Visible"])
        self.call("Conceal")
        self.assertFalse(self.form["Visible"])
        self.form.HourglassOn()
        self.assertEqual(self.form["MousePointer"], 11)
        self.form.HourglassOff()
        self.assertEqual(self.form["MousePointer"], 0)
        self.form.KeyPress("F1", "")
        self.assertEqual([(call["member"], call["arguments"]) for call in
                          self.host["Calls"].ToArray()],
                         [("ShowHelp", ["UML class diagram.html"])])
        for _ in range(2):
            self.call("Deinit")
            self.call("Destroy")
        self.assertIsNone(self.window["frmCLSDiagram"])
        with self.assertRaises(brisel_client.BriselError) as raised:
            self.call("Populate")
        self.assertEqual(raised.exception.code, -32000)
        self.assertEqual(self.called, set(LIFECYCLE))

    def test_what_goes_to_the_editor(self):
        self.start()
        self.called.clear()
        shell = self.brisel.create("Brisel.Shell")
        self.classes()
        with tempfile.TemporaryDirectory() as folder:
            path = folder + "/saved.dim"
            shell.AnswerFile(path)
            self.call("SaveDiagram")
            self.assertTrue(os.path.getsize(path) > 0)
            self.assertEqual(self.window["RepositoryFileName"], path)
            self.call("DeleteClass", "c")
            self.assertEqual(self.keys(self.window.getAllNodes()), ["a", "b"])
            shell.AnswerFile(path)
            self.call("OpenDiagram")
        self.assertEqual(self.keys(self.window.getAllNodes()), ["a", "b", "c"])
        self.assertEqual(self.keys(self.window.getAllLinks()), ["ab", "ac", "bc"])

        self.assertEqual(self.call("GetClassFromNode", "a")["name"], "A")
        self.assertIsNone(self.call("GetClassFromNode", "ab"))
        self.assertEqual(self.call("GetAssociationFromLink", "ab")["name"], "knows")
        self.call("CreateMode")
        self.assertEqual(self.canvas.Mode(), "clickCreate")
        self.call("SynchronizeDataTypes")
        model = self.window["CLSRepository"]
        types = self.window["Repository"].MetaNodes("DataType")["extension"].ToArray()
        self.assertEqual({kind["name"] for kind in types}, {"A", "B", "C"})
        model.AddAttributeS("a", "number", types[0]["identifier"])

        node = self.window.getNode("a")
        self.call("ShowCompartments", "a", "Attributes", True)
        self.assertTrue(node.Section(0)["visible"])
        node["height"] = 9000
        self.call("SizeToFit", "a")
        self.assertLess(node["height"], 9000)
        bar = self.form["Editor"]["ActiveBar21"]
        bar["Tag"] = "a"
        self.call("ShowPopupMenu", "Class")
        self.assertEqual(bar["PopupBand"], "tbPopupMenu")
        self.call("PropertyNode", 2)
        self.assertFalse(node.Section(0)["visible"])
        self.call("EditClass", "a")
        self.assertTrue(self.form["Editor"]["CLSClassControl1"]["Visible"])

        self.told("dialog", "name")
        self.call("EditAssociation", "ab")
        self.call("ExtractAttribute", "a")
        self.call("MorphingClass", "a", "Split")
        self.call("SplitClass", "a", True)
        self.assertEqual(self.told("dialog", "name"),
                         ["frmAssociation", "frmExtractAttribute", "frmClass", "frmClass"])
        self.call("MorphingAssoc", "ab", "ToSharedAggregation")
        self.assertEqual([self.window["Repository"].MetaNodes(kind)["extension"]["Count"]
                          for kind in ("Association", "Aggregation")], [0, 2])
        drawn = self.window.getAllNodes()["Count"]
        self.call("MakeDemo")
        self.assertGreater(self.window.getAllNodes()["Count"], drawn)
        self.call("MatrixBrowser")
        self.call("ShowTemplateEditor")
        self.assertEqual(self.told("message", "text"), [])
        self.assertEqual(self.called, set(OF_THE_EDITOR))

    def test_what_goes_to_the_canvas(self):
        self.start()
        self.classes()
        self.called.clear()
        for switch in (False, True):
            self.call("ShowToolbar", switch)
        buttons = self.canvas["Buttons"]["Count"]
        self.call("AddStandardButtons")
        self.call("AddImage", "logo", "logo.bmp")
        self.call("AddButton", "Mine", "mine", "my own", "mine.bmp", True)
        self.assertIn("Mine", self.keys(self.canvas["Buttons"])[buttons:])

        self.assertTrue(self.call("createNode", "d", "D", 0, 12000, 3000, 1500, 2))
        self.assertFalse(self.call("createNode", "d", "D", 0, 12000, 3000, 1500, 2))
        self.assertTrue(self.call("createLink", "ad", "", "a", "d"))
        self.assertEqual(self.call("getNode", "d")["key"], "d")
        self.assertIsNone(self.call("getNode", "ad"))
        self.assertEqual(self.call("getLink", "ad")["target"], self.call("getNode", "d"))
        self.assertEqual(self.keys(self.call("getAllNodes")), ["a", "b", "c", "d"])
        self.assertEqual(self.keys(self.call("getAllLinks")), ["ab", "ac", "bc", "ad"])
        self.assertEqual(self.keys(self.call("getIncomingLinks", "c")), ["ac", "bc"])
        self.assertEqual(self.keys(self.call("getOutgoingLinks", self.call("getNode", "a"))),
                         ["ab", "ac", "ad"])
        center = self.call("GetCenter", "d")
        self.assertEqual(self.call("GetHitNode", center)["key"], "d")

        self.call("unselectAll")
        self.assertTrue(self.call("selNode", "a"))
        self.assertTrue(self.call("selLink", "ab"))
        self.assertEqual(self.keys(self.call("getSelectedNodes")), ["a"])
        self.assertEqual(self.keys(self.call("getSelectedLinks")), ["ab"])
        self.assertTrue(self.call("unselectAll"))
        self.assertFalse(self.call("deleteSelectedItems"))
        self.assertTrue(self.call("markNode", "b"))
        self.assertTrue(self.call("unmarkAll"))
        self.assertFalse(self.call("deleteMarkedItems"))
        self.assertTrue(self.call("markLink", "ad"))
        self.assertTrue(self.call("deleteMarkedItems"))
        self.assertTrue(self.call("deleteLink", "ab"))
        self.assertTrue(self.call("deleteNode", "d"))
        self.assertEqual(self.keys(self.call("getAllLinks")), ["ac", "bc"])

        self.call("zoom", 50)
        self.assertEqual((self.call("getZoom"), self.call("TransformExtent", 10)), (50, 300))
        self.call("noZoom")
        self.assertEqual((self.call("getZoom"), self.call("TransformExtent", 10)), (100, 150))
        for member, mode in (("DrawCreateMode", "drawCreate"), ("ClickCreateMode", "clickCreate"),
                             ("SelectMode", "select")):
            self.call(member)
            self.assertEqual(self.canvas.Mode(), mode)
        self.assertIs(self.call("GetDiagram")["CanDrawLink"], False)
        self.assertEqual(self.call("GetDiagramHandle"), 0)
        self.call("SetNewNodeSize", 4000, 2000)
        self.call("LabelFont", "Courier New", 12)
        self.call("SectionFont", "Courier New", 9)
        self.call("CopyToClipboard")
        self.assertIn("image/svg+xml", self.brisel.create("Brisel.Shell").Clipboard())
        self.told("event", "name")
        self.call("PrintDiagram", True)
        self.assertIn("PrintRequested", self.told("event", "name"))
        self.call("refresh")
        self.call("Layout", "%HIERARCHY%")
        tops = [self.call("getNode", key)["top"] for key in "abc"]
        self.assertGreater(len(set(tops)), 1)
        self.assertIsNone(self.call("Layout", "MATRIX"))
        self.call("Clear")
        self.assertEqual(self.call("getAllNodes")["Count"], 0)
        self.assertEqual(self.called, set(OF_THE_CANVAS))

    def test_properties(self):
        self.start()
        editor = self.form["Editor"]
        generator = self.brisel.create("BriselUtility.UUIDGenerator")
        package = self.brisel.create("Brisel.HostObject")
        model = self.brisel.create("BriselCLS.Meta")
        values = {"PackageObject": package, "RepositoryFileName": "x.dim", "Path": "/suite",
                  "Repository": model, "UUIDGenerator": generator, "nodePicture": "TEXT",
                  "linkPicture": "p", "linkBeginPicture": "b", "linkEndPicture": "e",
                  "nodeNumberOfSections": "4", "linkBeginArrow": 3, "linkEndArrow": 8,
                  "linkNodeCX": 100, "linkNodeCY": 200, "BackColor": 255}
        self.assertEqual(set(values), PROPERTIES - {"CLSRepository"})
        for name, value in values.items():
            self.window[name] = value
            self.assertEqual(self.window[name], value, name)
            owner = editor if name[0].isupper() and name != "BackColor" else self.canvas
            self.assertEqual(owner[name], value, name)
        self.window["nodeNumberOfSections"] = 5
        self.assertEqual(self.canvas["nodeNumberOfSections"], "5")
        self.assertEqual(self.window["CLSRepository"], editor["CLSRepository"])
        with self.assertRaises(brisel_client.BriselError) as raised:
            self.window["CLSRepository"] = None
        self.assertEqual(raised.exception.code, -32602)
        with self.assertRaisesRegex(brisel_client.BriselError, "createNode"):
            self.window.createNode("only a key")
        with self.assertRaisesRegex(brisel_client.BriselError, "noSuchMember"):
            self.window.noSuchMember()


if __name__ == "__main__":
    unittest.main()
