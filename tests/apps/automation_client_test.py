"""The example client against the real program: it builds a diagram, and Brisel keeps its promises
to any client of `brisel automate`."""

import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples" / "automation"
sys.path.insert(0, str(EXAMPLES))

import brisel_client  # noqa: E402

PROGRAM = os.environ["BRISEL"]


class Example(unittest.TestCase):
    def test_builds_lays_out_and_exports_a_diagram(self):
        with tempfile.TemporaryDirectory() as folder:
            environment = {name: value for name, value in os.environ.items() if name != "BRISEL"}
            run = subprocess.run([sys.executable, EXAMPLES / "build_diagram.py", folder, PROGRAM],
                                 capture_output=True, check=False, env=environment)
            self.assertEqual((run.returncode, run.stderr.decode()), (0, ""))
            self.assertEqual(len(run.stdout.splitlines()), 7)
            svg = (pathlib.Path(folder) / "library.svg").read_bytes()
            text = "".join(xml.etree.ElementTree.fromstring(svg).itertext())
            for word in ("Library", "borrows", "isbn", "extend"):
                self.assertIn(word, text)
            info = subprocess.run([PROGRAM, "info", "--json", folder + "/library.dim"],
                                  capture_output=True, check=True)
            nodes = json.loads(info.stdout)["nodes"]
            self.assertEqual([nodes[kind] for kind in ("Class", "Attrib", "Operation",
                                                       "Association", "Aggregation",
                                                       "Generalization", "GeomArea")],
                             [7, 10, 2, 3, 2, 2, 7])


class Session(unittest.TestCase):
    def setUp(self):
        self.brisel = brisel_client.Brisel(PROGRAM)
        self.addCleanup(self.brisel.close)

    def editor(self, prog_id="BriselCLS.CLSEditor"):
        repository = self.brisel.create("BriselCLS.Meta")
        repository.Init()
        editor = self.brisel.create(prog_id)
        if prog_id == "BriselCLS.DiagramWindow":
            editor.Create("Diagram", None)
        editor["Repository"] = repository
        editor.Populate()
        return editor

    def test_events_arrive_before_the_answer(self):
        editor = self.editor()
        canvas = editor["diagramControl1"]
        self.brisel.notifications.clear()
        editor.CreateClass("c1", "Order", "", "", "", "public")
        told = [(params["name"], params["object"], params["arguments"])
                for method, params in self.brisel.notifications if method == "event"]
        self.assertIn(("NodeCreated", canvas, ["c1"]), told)
        self.assertEqual(canvas, editor.diagram())
        self.assertEqual(canvas.getNode("c1")["text"].strip(), "Order")

    def test_out_arguments_follow_the_result(self):
        editor = self.editor()
        model = editor["CLSRepository"]
        editor.CreateClass("c1", "Order", "", "", "", "public")
        made = model.AddAttributeS("c1", "number", model.MakeDataType("long", "", "")["identifier"])
        self.assertEqual(made.result["name"], "number")
        self.assertEqual(made.out[0]["Target"], made.result)

    def test_trapped_errors_are_shown_and_answered(self):
        editor = self.editor()
        editor.SizeToFit("no such class")
        method, params = self.brisel.notifications[-1]
        self.assertEqual((method, params["title"], params["answer"]), ("message", "Brisel", "OK"))
        self.assertTrue(params["text"].startswith("Error No: "), params)

    def test_dialogs_are_answered_from_the_queue(self):
        editor = self.editor()
        shell = self.brisel.create("Brisel.Shell")
        editor.CreateClass("c1", "Order", "", "", "", "public")
        with tempfile.TemporaryDirectory() as folder:
            shell.AnswerFile(folder + "/diagram")
            editor.SaveDiagram()
            self.assertEqual(os.listdir(folder), ["diagram.DIM"])
            self.assertEqual(self.brisel.notifications[-1][1]["kind"], "save")
            other = self.editor("BriselCLS.DiagramWindow")
            shell.AnswerFile(folder + "/diagram.DIM")
            other.OpenDiagram()
            self.assertEqual(other.getAllNodes()["Count"], 1)

    def test_releasing_the_editor_tells_its_host(self):
        editor = self.editor()
        canvas = editor["diagramControl1"]
        session, manager = (self.brisel.create("Brisel.HostObject") for _ in range(2))
        session["ComponentManager"] = manager
        editor["Session"] = session
        editor["ComponentName"] = "Diagram 1"
        self.brisel.release(editor)
        calls = [(call["member"], call["arguments"]) for call in manager["Calls"].ToArray()]
        self.assertEqual(calls[-1], ("RemoveComponent", ["Diagram 1"]))
        self.assertEqual(canvas.getAllNodes()["Count"], 0)
        with self.assertRaises(brisel_client.BriselError) as raised:
            editor.Populate()
        self.assertEqual(raised.exception.code, -32602)

    def test_a_diagram_is_built_by_hand_saved_and_read_again(self):
        editor = self.editor()
        canvas = editor["diagramControl1"]
        for key, left in (("c1", 0), ("c2", 9000)):
            editor.CreateClass(key, key.upper(), "", "", "", "public")
            canvas.getNode(key)["left"] = left
        editor.CreateAssociation("a1", "", "", "c1", "c2")
        canvas.getLink("a1")["ExtraPoints"].Add(4500, 6000)
        node = canvas.getNode("c2")
        self.assertEqual(canvas.HitTest(node["left"] + 200, node["top"] + 100)["item"], node)
        canvas.PointerPress(node["left"] + 200, node["top"] + 100, "left", "")
        canvas.PointerMove(12200, 3100)
        canvas.PointerRelease(12200, 3100, "left", "")
        events = [params["name"] for method, params in self.brisel.notifications
                  if method == "event" and params["object"] == editor]
        self.assertIn("ClassMoved", events)
        self.assertAlmostEqual(node["left"], 12000, delta=400)
        editor.AddPositions()
        files = self.brisel.create("BriselImporter.FileList")
        with tempfile.TemporaryDirectory() as folder:
            path = folder + "/built.dim"
            self.brisel.create("BriselExporter.DIMExport").Export(path, "BriselCLS",
                                                                  editor["Repository"])
            files.Add(path)
            read = self.brisel.create("BriselImporter.DIMImport").Import(files)
        again = self.brisel.create("BriselCLS.CLSEditor")
        again["Repository"] = read
        again.Populate()
        drawn = again["diagramControl1"]
        self.assertAlmostEqual(drawn.getNode("c2")["left"], node["left"], delta=1)
        points = drawn.getLink("a1")["ExtraPoints"].ToArray()
        self.assertEqual([(point["x"], point["y"]) for point in points[1:-1]], [(4500, 6000)])

    def test_keys_of_a_table_are_a_list_of_texts(self):
        table = self.brisel.create("BriselDataStructures.MHashTable")
        for key in ("b", "a"):
            table.Add(key, 1)
        keys = table["Keys"]
        self.assertEqual((keys["Count"], keys.Item(1), keys.ToArray()), (2, "b", ["b", "a"]))

    def test_the_shell_is_one(self):
        self.assertEqual(*(self.brisel.create("Brisel.Shell") for _ in range(2)))

    def test_ends_quietly_with_its_input(self):
        process = subprocess.run([PROGRAM, "automate"], capture_output=True, check=False,
                                 input=b'{"jsonrpc":"2.0","id":1,"method":"create",'
                                       b'"params":{"progId":"BriselCLS.CLSEditor"}}\nrubbish')
        self.assertEqual((process.returncode, process.stderr), (0, b""))
        answers = [json.loads(line) for line in process.stdout.splitlines()]
        self.assertEqual(answers[0]["result"], {"ref": 1})
        self.assertEqual(answers[1]["error"]["code"], -32700)


PROG_IDS = ("BriselCLS.Meta", "BriselCLS.CLSRepository", "BriselCLS.CLSEditor",
            "BriselCLS.DiagramWindow", "BriselCLS.CLSClassControl", "BriselDiagram.diagramControl",
            "BriselUtility.UUIDGenerator", "BriselDataStructures.MHashTable",
            "BriselImporter.FileList", "BriselImporter.DIMImport", "BriselExporter.DIMExport",
            "Brisel.Shell", "Brisel.HostObject")
WORDS = ("c1", "a1", "", "MATRIX", "Class", "Name", "ViewAttributes", "ctrl", "Delete", "Save",
         "/no/such/folder/x.dim")
NUMBERS = (0, 1, 2, -1, 2 ** 31, 2 ** 62, -2 ** 63, 0.5, 1e300, -1e-300)


class Hostile(unittest.TestCase):
    """Every member of every component, and of what they give, with whatever arguments."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        before = os.getcwd()
        os.chdir(self.folder.name)
        self.addCleanup(os.chdir, before)
        self.brisel = brisel_client.Brisel(PROGRAM)
        self.random = random.Random(20261121)
        self.objects = []

    def populate(self):
        store = self.brisel.create("BriselCLS.Meta")
        store.Init()
        window = self.brisel.create("BriselCLS.DiagramWindow")
        window.Create("", None)
        window["Repository"] = store
        window.Populate()
        editor = window["frmCLSDiagram"]["Editor"]
        for key in ("c1", "c2"):
            editor.CreateClass(key, key, "", "", "", "public")
        editor.CreateAssociation("a1", "", "", "c1", "c2")
        self.objects += [store, window, editor, editor["diagramControl1"], editor["ActiveBar21"],
                         editor["CLSRepository"], editor["ClassName"]]

    def value(self, depth=1):
        pick = self.random.choice
        kind = self.random.randrange(6)
        if kind == 5 and depth:
            return [self.value(0), self.value(0)]
        return (None, pick((True, False)), pick(WORDS), pick(NUMBERS), pick(self.objects),
                self.random.randrange(20000))[kind]

    def keep(self, value):
        if isinstance(value, brisel_client.Object) and len(self.objects) < 300:
            self.objects.append(value)
        for item in value if isinstance(value, list) else ():
            self.keep(item)

    def call(self, target, member):
        request = self.brisel.request
        if member["kind"] == "method":
            count = member["arguments"] + self.random.choice((0, 0, 0, 0, 0, -1, 1))
            return request("invoke", object=target, member=member["name"],
                           arguments=[self.value() for _ in range(count)])
        if self.random.random() < 0.6:
            return request("get", object=target, member=member["name"])
        return request("set", object=target, member=member["name"], value=self.value())

    def test_no_call_ends_the_process(self):
        self.populate()
        self.objects += [self.brisel.create(prog_id) for prog_id in PROG_IDS]
        codes = set()
        tables = {}
        for _ in range(4000):
            target = self.random.choice(self.objects)
            if target not in tables:
                tables[target] = self.brisel.members(target)
                self.assertLessEqual({row["kind"] for row in tables[target]},
                                     {"method", "property", "event"})
            member = self.random.choice(tables[target] or [{"name": "Gone", "kind": "method",
                                                            "arguments": 0}])
            try:
                self.keep(self.call(target, member))
                codes.add(0)
            except brisel_client.BriselError as error:
                codes.add(error.code)
            self.brisel.notifications.clear()
        self.assertEqual(codes, {0, -32000, -32602})
        self.assertEqual(self.brisel.close(), 0)

    def test_a_component_without_a_model_says_so(self):
        """Commands that need what was never set."""
        for prog_id in ("BriselCLS.CLSEditor", "BriselCLS.DiagramWindow", "BriselCLS.CLSRepository"):
            made = self.brisel.create(prog_id)
            for member in self.brisel.members(made):
                if member["kind"] == "method":
                    try:
                        self.brisel.request("invoke", object=made, member=member["name"],
                                            arguments=[None] * member["arguments"])
                    except brisel_client.BriselError as error:
                        self.assertIn(error.code, (-32000, -32602))
        editor = self.brisel.create("BriselCLS.CLSEditor")
        for button in editor["diagramControl1"]["Buttons"].ToArray():
            editor["diagramControl1"].ClickButton(button["key"])
        self.assertEqual(self.brisel.close(), 0)


class Documentation(unittest.TestCase):
    def test_the_session_in_the_documentation_is_what_happens(self):
        text = (ROOT / "docs" / "automation.md").read_text(encoding="utf-8")
        session = text.split("```session\n")[1].split("```")[0].splitlines()
        sent = [line[2:] for line in session if line.startswith("> ")]
        expected = [line[2:] for line in session if line.startswith("< ")]
        run = subprocess.run([PROGRAM, "automate"], input="\n".join(sent).encode(),
                             capture_output=True, check=True)
        self.assertEqual(run.stdout.decode().splitlines(), expected)


if __name__ == "__main__":
    unittest.main()
