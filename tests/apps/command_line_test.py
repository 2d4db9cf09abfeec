"""The program as a person or a script calls it: results, exit codes, one line for each failure."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree

PROGRAM = os.environ["BRISEL"]
WITH_QT = os.environ.get("BRISEL_WITH_QT", "ON") == "ON"

SHOP = """<?xml version="1.0" encoding="UTF-8"?>
<uml:Model xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1"
    xmlns:uml="http://www.eclipse.org/uml2/5.0.0/UML" xmi:id="m" name="shop">
  <packagedElement xmi:type="uml:Class" xmi:id="c1" name="Order">
    <ownedAttribute xmi:id="a1" name="number"/>
    <ownedOperation xmi:id="o1" name="pay"/>
  </packagedElement>
  <packagedElement xmi:type="uml:Class" xmi:id="c2" name="Rush &lt;Order&gt;">
    <generalization xmi:id="g1" general="c1"/>
  </packagedElement>
  <packagedElement xmi:type="uml:Interface" xmi:id="c3" name="Priced"/>
  <packagedElement xmi:type="uml:Association" xmi:id="s1" memberEnd="e1 e2">
    <ownedEnd xmi:id="e1" name="order" type="c1" association="s1"/>
    <ownedEnd xmi:id="e2" name="price" type="c3" association="s1"/>
  </packagedElement>
</uml:Model>
"""

GRAPH = {
    "nodes": [{"id": "sup", "w": 100, "h": 40}, {"id": "sub", "w": 80, "h": 60},
              {"id": "\u00e4 \"x\"", "w": 30.5, "h": 20}],
    "edges": [{"id": "g", "src": "sub", "dst": "sup", "kind": "generalization"},
              {"id": "a", "src": "sub", "dst": "\u00e4 \"x\"", "kind": "composition"},
              {"id": "loop", "src": "sup", "dst": "sup", "kind": "association"}],
}


class Case(unittest.TestCase):
    display = None

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.path = pathlib.Path(self.folder.name)
        self.write("shop.uml", SHOP)

    def write(self, name, content):
        content = content if isinstance(content, bytes) else content.encode()
        (self.path / name).write_bytes(content)

    def run_program(self, *arguments, stdin=b""):
        environment = {"PATH": os.environ.get("PATH", ""), "HOME": self.folder.name}
        if self.display:
            environment["DISPLAY"] = self.display
        environment.update((name, value) for name, value in os.environ.items() if "SAN" in name)
        return subprocess.run([PROGRAM, *map(str, arguments)], cwd=self.folder.name,
                              input=stdin, capture_output=True, env=environment, check=False)

    def done(self, *arguments, stdin=b""):
        """What a call that must succeed writes to standard output."""
        run = self.run_program(*arguments, stdin=stdin)
        self.assertEqual((run.returncode, run.stderr.decode()), (0, ""), arguments)
        return run.stdout

    def refused(self, code, *arguments, stdin=b""):
        """The one line that a call that must fail says."""
        before = sorted(self.path.rglob("*"))
        run = self.run_program(*arguments, stdin=stdin)
        said = run.stderr.decode()
        self.assertEqual(run.returncode, code, (arguments, said))
        self.assertEqual(run.stdout, b"", arguments)
        self.assertRegex(said, r"\Abrisel: [^\n]+\n\Z", arguments)
        self.assertEqual(sorted(self.path.rglob("*")), before, "a failed call leaves nothing")
        return said


class Usage(Case):
    def test_help_and_version_say_what_there_is(self):
        self.assertRegex(self.done("--version").decode(), r"\Abrisel \d+\.\d+\.\d+\n\Z")
        text = self.done("--help").decode()
        for command in ("convert", "info", "layout", "generate", "automate"):
            self.assertIn(command, text)
            self.assertIn("Usage: brisel " + command, self.done(command, "--help").decode())

    def test_wrong_usage_is_told_in_one_line(self):
        for arguments in (["--no-such"], ["convert"], ["convert", "shop.uml"],
                          ["convert", "shop.uml", "out.doc"], ["convert", "shop.uml", "-"],
                          ["convert", "shop.uml", "out.svg", "--to", "doc"],
                          ["convert", "shop.uml", "out.svg", "--scale", "0"], ["info"],
                          ["layout", "shop.uml"],
                          ["layout", "shop.uml", "-o", "x.json", "--style", "NICE"],
                          ["generate", "shop.uml"], ["generate", "shop.uml", "--template", "C++"],
                          ["generate", "shop.uml", "--template", "Cobol", "-o", "out"],
                          ["generate", "shop.uml", "--template", "C++", "-o", "out",
                           "--class", "Nobody"],
                          ["automate", "shop.uml"], ["automate", "--loud"]):
            self.refused(2, *arguments)


class Failures(Case):
    def test_files_that_cannot_be_read_are_named_with_the_cause(self):
        self.done("convert", "shop.uml", "shop.dim")
        whole = (self.path / "shop.dim").read_bytes()
        self.write("cut.dim", whole[:len(whole) // 2])
        self.write("latin.dim", whole.replace(b"number", b"n\xfcmber"))
        self.write("deep.dim", b"[" * 100000)
        self.write("empty.dim", b"")
        self.write("cut.uml", SHOP[:400])
        self.write("picture.uml", b"\x89PNG\r\n\x1a\n\0\0")
        self.write("deep.xmi", b"<a>" * 100000)
        self.write("page.ecore", "<html/>")
        (self.path / "folder.dim").mkdir()
        (self.path / "folder.uml").mkdir()
        for name in ("cut.dim", "latin.dim", "deep.dim", "empty.dim", "folder.dim", "none.dim",
                     "folder.uml", "cut.uml", "picture.uml", "deep.xmi", "page.ecore", "none.uml"):
            for arguments in (["info", name], ["convert", name, "out.svg"],
                              ["layout", name, "-o", "out.json"]):
                self.assertIn(name, self.refused(1, *arguments))

    def test_a_file_that_cannot_be_written_is_left_whole(self):
        self.write("kept.svg", "old")
        for output in ("no/such/folder/out.svg", "."):
            said = self.refused(1, "convert", "shop.uml", output, "--to", "svg")
            self.assertIn(output, said)
        self.refused(1, "convert", "none.uml", "kept.svg")
        self.done("convert", "shop.uml", "shop.dim")
        self.refused(1, "info", "shop.uml", "shop.dim")
        self.assertEqual((self.path / "kept.svg").read_text(), "old")
        if os.path.exists("/dev/full"):
            self.refused(1, "convert", "shop.uml", "/dev/full", "--to", "svg")

    @unittest.skipUnless(WITH_QT, "this build has no Qt")
    def test_a_window_without_a_display(self):
        for arguments in ([], ["shop.uml"], ["automate", "--window"]):
            self.assertIn("display", self.refused(1, *arguments))
        self.display = ":987654"
        self.assertRegex(self.refused(1), "platform plugin|display")

    def test_graphs_with_something_missing(self):
        edge = '{"id":"e","src":"n","dst":"%s","kind":"association"}'
        for graph in ("", "[]", "{}", '{"nodes":[]}', '{"nodes":7,"edges":[]}',
                      '{"nodes":[{"id":"n","w":1}],"edges":[]}',
                      '{"nodes":[{"id":"n","w":-1,"h":1}],"edges":[]}',
                      '{"nodes":[{"id":"n","w":1,"h":1},{"id":"n","w":1,"h":1}],"edges":[]}',
                      '{"nodes":[{"id":"n","w":1,"h":1}],"edges":[%s]}' % (edge % "gone")):
            self.write("graph.json", graph)
            self.assertIn("graph.json", self.refused(1, "layout", "graph.json", "-o", "out.json"))


class Convert(Case):
    def test_a_diagram_file_keeps_every_byte(self):
        self.done("convert", "shop.uml", "one.dim")
        self.done("convert", "one.dim", "two.dim")
        piped = self.done("convert", "-", "-", "--to", "dim", stdin=(self.path / "one.dim").read_bytes())
        self.assertEqual((self.path / "one.dim").read_bytes(), (self.path / "two.dim").read_bytes())
        self.assertEqual((self.path / "one.dim").read_bytes(), piped)

    def test_svg_shows_the_classes(self):
        for source in ("shop.uml", "shop.dim"):
            self.done("convert", "shop.uml", "shop.dim")
            svg = self.done("convert", source, "-", "--to", "svg")
            text = "".join(xml.etree.ElementTree.fromstring(svg).itertext())
            for word in ("Order", "Rush <Order>", "Priced", "number", "pay"):
                self.assertIn(word, text)

    @unittest.skipUnless(WITH_QT, "this build has no Qt")
    def test_pictures_need_no_display(self):
        for name, start in (("shop.png", b"\x89PNG"), ("shop.pdf", b"%PDF")):
            self.done("convert", "shop.uml", name)
            self.assertTrue((self.path / name).read_bytes().startswith(start), name)
        self.done("convert", "shop.uml", "large.png", "--scale", "2")
        width = [int.from_bytes((self.path / name).read_bytes()[16:20], "big")
                 for name in ("shop.png", "large.png")]
        self.assertAlmostEqual(width[1] / width[0], 2, delta=0.05)

    @unittest.skipIf(WITH_QT, "this build has Qt")
    def test_pictures_need_qt(self):
        self.assertIn("Qt", self.refused(1, "convert", "shop.uml", "shop.png"))


    def test_endings_in_any_case_and_the_same_file_twice(self):
        self.write("SHOP.UML", SHOP)
        self.done("convert", "SHOP.UML", "SHOP.DIM")
        before = (self.path / "SHOP.DIM").read_bytes()
        self.done("convert", "SHOP.DIM", "SHOP.DIM")
        self.assertEqual((self.path / "SHOP.DIM").read_bytes(), before)
        self.done("convert", "SHOP.DIM", "SHOP.Svg")
        self.assertTrue((self.path / "SHOP.Svg").read_bytes().startswith(b"<"))

    def test_what_is_left_out_is_counted_in_one_line(self):
        self.write("part.uml", SHOP.replace('general="c1"', 'general="gone"'))
        run = self.run_program("convert", "part.uml", "-", "--to", "dim")
        self.assertEqual(run.returncode, 0)
        self.assertRegex(run.stderr.decode(), r"\Abrisel: 1 [^\n]+; brisel info lists them\n\Z")
        listed = json.loads(self.done("info", "part.uml", "--json"))
        self.assertEqual(len(listed["skipped"]) + len(listed["stubs"]), 1)


class Generate(Case):
    def test_writes_what_a_template_makes(self):
        self.assertEqual(self.done("generate", "--list"), b"C++.tml\nSQL.tml\n")
        arguments = ("generate", "shop.uml", "--template", "C++", "-o", "out")
        self.assertEqual(self.done(*arguments), b"6 written, 0 unchanged\n")
        header = self.path / "out" / "Rush_Order.hpp"
        self.assertIn("class Rush_Order : public Order {", header.read_text())
        os.utime(header, (1, 1))
        self.assertEqual(self.done(*arguments), b"0 written, 6 unchanged\n")
        self.assertEqual(header.stat().st_mtime, 1)
        header.write_text("mine")
        (self.path / "out" / "Order.cpp").unlink()
        (self.path / "out" / "Priced.hpp").write_text("")
        said = self.refused(1, *arguments)
        self.assertIn("Rush_Order.hpp", said)
        self.assertIn("Priced.hpp", said)
        self.assertEqual(header.read_text(), "mine")
        self.assertEqual(self.done(*arguments, "--force"), b"3 written, 3 unchanged\n")
        self.assertEqual(self.done("generate", "shop.uml", "--template", "SQL.tml", "-o", "sql",
                                   "--class", "Order", "--class", "Priced"),
                         b"1 written, 0 unchanged\n")
        self.assertEqual((self.path / "sql" / "schema.sql").read_text().count("CREATE TABLE"), 1)

    def test_own_templates_and_their_faults(self):
        own = self.path / ".local" / "share" / "brisel" / "Template"
        own.mkdir(parents=True)
        (own / "Names.tml").write_text("{{#classes}}{{name}}\n{{/classes}}")
        self.assertEqual(self.done("generate", "--list"), b"C++.tml\nNames.tml\nSQL.tml\n")
        self.done("generate", "shop.uml", "--template", "Names", "-o", "out")
        self.assertEqual((self.path / "out" / "Names.txt").read_text(),
                         "Order\nRush <Order>\nPriced\n")
        self.write("bad.tml", "{{#classes}}\n{{nmae}}\n{{/classes}}")
        said = self.refused(1, "generate", "shop.uml", "--template", "./bad.tml", "-o", "new")
        self.assertIn('bad.tml:2: there is no "nmae" here', said)
        for model, template, output in (("none.uml", "C++", "new"), ("shop.uml", "C++", "bad.tml"),
                                        ("shop.uml", "./none.tml", "new"),
                                        ("shop.uml", "./", "new")):
            self.refused(1, "generate", model, "--template", template, "-o", output)


class Info(Case):
    def test_counts_what_was_read(self):
        for stdin, name in ((b"", "shop.uml"), (SHOP.encode(), "-")):
            counts = json.loads(self.done("info", name, "--json", stdin=stdin))
            nodes, links = counts["nodes"], counts["links"]
            self.assertEqual([nodes[kind] for kind in ("Class", "Attrib", "Operation",
                                                       "Association", "Generalization")],
                             [3, 1, 1, 1, 1])
            self.assertEqual(links["Class.Has.Attrib"], 1)
            self.assertEqual(links["Generalization.Sub.Class"], 1)
            self.assertEqual((counts["skipped"], counts["stubs"]), ([], []))
        self.assertIn("3  Class", self.done("info", "shop.uml").decode())


class Layout(Case):
    def drawing(self, *arguments, stdin=b""):
        drawing = json.loads(self.done("layout", *arguments, "-o", "-", stdin=stdin))
        boxes = {node["id"]: node for node in drawing["nodes"]}
        for one in drawing["nodes"]:
            for other in drawing["nodes"]:
                apart = (one is other or one["x"] + one["w"] <= other["x"]
                         or other["x"] + other["w"] <= one["x"]
                         or one["y"] + one["h"] <= other["y"]
                         or other["y"] + other["h"] <= one["y"])
                self.assertTrue(apart, (arguments, one, other))
        for edge in drawing["edges"]:
            for end, point in ((edge["src"], edge["points"][0]), (edge["dst"], edge["points"][-1])):
                box = boxes[end]
                self.assertTrue(box["x"] - 1 <= point[0] <= box["x"] + box["w"] + 1, (edge, box))
                self.assertTrue(box["y"] - 1 <= point[1] <= box["y"] + box["h"] + 1, (edge, box))
        return boxes, {edge["id"]: edge for edge in drawing["edges"]}

    def test_a_plain_graph_in_every_style(self):
        self.write("graph.json", json.dumps(GRAPH))
        for style in ("%HIERARCHY%", "MATRIX", "RANDOM", "SPRING"):
            boxes, edges = self.drawing("graph.json", "--style", style)
            self.assertEqual({name: (box["w"], box["h"]) for name, box in boxes.items()},
                             {node["id"]: (node["w"], node["h"]) for node in GRAPH["nodes"]})
            self.assertEqual({name: (edge["src"], edge["dst"], edge["kind"])
                              for name, edge in edges.items()},
                             {edge["id"]: (edge["src"], edge["dst"], edge["kind"])
                              for edge in GRAPH["edges"]})
        boxes, _ = self.drawing("graph.json")
        self.assertLess(boxes["sup"]["y"] + boxes["sup"]["h"], boxes["sub"]["y"])

    def test_a_model_is_drawn_by_its_boxes(self):
        for style in ("%HIERARCHY%", "MATRIX"):
            boxes, edges = self.drawing("shop.uml", "--style", style)
            self.assertEqual((len(boxes), len(edges)), (3, 2))
        self.assertEqual(sorted(edge["kind"] for edge in edges.values()),
                         ["association", "generalization"])


if __name__ == "__main__":
    unittest.main()
