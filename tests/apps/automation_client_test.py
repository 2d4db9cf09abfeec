"""The example client against the real program: it builds a diagram, and Brisel keeps its promises
to any client of `brisel automate`."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "examples" / "automation"
sys.path.insert(0, str(EXAMPLES))

import brisel_client  # noqa: E402

PROGRAM = os.environ["BRISEL"]


class Example(unittest.TestCase):
    def test_builds_lays_out_and_exports_a_diagram(self):
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run([sys.executable, EXAMPLES / "build_diagram.py", folder],
                                 capture_output=True, check=False)
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
                             [7, 11, 2, 3, 2, 2, 7])


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

    def test_every_component_can_be_made_and_listed(self):
        for prog_id in ("BriselCLS.Meta", "BriselCLS.CLSRepository", "BriselCLS.CLSEditor",
                        "BriselCLS.DiagramWindow", "BriselDiagram.diagramControl",
                        "BriselUtility.UUIDGenerator", "BriselDataStructures.MHashTable",
                        "BriselImporter.FileList", "BriselImporter.DIMImport",
                        "BriselExporter.DIMExport", "Brisel.Shell", "Brisel.HostObject"):
            made = self.brisel.create(prog_id)
            members = self.brisel.members(made)
            self.assertTrue(members, prog_id)
            for member in members:
                self.assertIn(member["kind"], ("method", "property", "event"))
            self.brisel.release(made)

    def test_ends_quietly_with_its_input(self):
        process = subprocess.run([PROGRAM, "automate"], capture_output=True, check=False,
                                 input=b'{"jsonrpc":"2.0","id":1,"method":"create",'
                                       b'"params":{"progId":"BriselCLS.CLSEditor"}}\nrubbish')
        self.assertEqual((process.returncode, process.stderr), (0, b""))
        answers = [json.loads(line) for line in process.stdout.splitlines()]
        self.assertEqual(answers[0]["result"], {"ref": 1})
        self.assertEqual(answers[1]["error"]["code"], -32700)


if __name__ == "__main__":
    unittest.main()
