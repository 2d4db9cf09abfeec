#!/usr/bin/env python3
"""Makes the pictures of docs/refactoring.md: the sample model, refactored step by step.

    python3 make_refactoring_pictures.py [BRISEL]

Drives Brisel from outside, as examples/automation does; BRISEL is the program. Each picture is what
the canvas puts on the clipboard: refactoring-<name>-<step>.svg beside this script.
"""

import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
sys.path.insert(0, str(ROOT / "examples" / "automation"))

from brisel_client import Brisel  # noqa: E402  (the path is set above)

GAP = 2400


class Story:
    """Some classes of the sample, in rows, and a picture of them after each step."""

    def __init__(self, brisel, name, rows, attributes=True):
        self.name = name
        self.step = 0
        self.shell = brisel.create("Brisel.Shell")
        files = brisel.create("BriselImporter.FileList")
        files.Add(str(ROOT / "examples" / "city-building.dim"))
        self.editor = brisel.create("BriselCLS.CLSEditor")
        self.editor["Repository"] = brisel.create("BriselImporter.DIMImport").Import(files)
        self.editor.Populate()
        self.canvas = self.editor.diagram()
        self.key = {}
        for node in self.canvas.getAllNodes().ToArray():
            key = node["key"]
            name = self.editor.GetClassFromNode(key)["name"]
            if any(name in row for row in rows):
                self.key[name] = key
            else:
                self.editor.DeleteClass(key)
        if not attributes:
            self.editor.Compartments("ViewAttributes")
        self.place(rows)

    def place(self, rows):
        top = 0
        for row in rows:
            left = bottom = 0
            for name in row:
                node = self.canvas.getNode(self.key[name])
                node["left"], node["top"] = left, top
                left += node["width"] + GAP
                bottom = max(bottom, top + node["height"])
            top = bottom + GAP
        for link in self.canvas.getAllLinks().ToArray():
            link["ExtraPoints"].Clear()

    def bend(self, link):
        """Brings the target down, and its line round one corner."""
        source, target = link["source"], link["target"]
        target["top"] = source["top"] + source["height"] + GAP
        link["ExtraPoints"].Add(target["left"] + target["width"] / 2,
                                source["top"] + source["height"] / 2)

    def link(self, source, target):
        for link in self.canvas.getAllLinks().ToArray():
            if (link["source"]["key"], link["target"]["key"]) == (self.key[source], self.key[target]):
                return link
        raise LookupError(source + " to " + target)

    def attribute_row(self, owner, name):
        """The position from 1 of an attribute in the lists of the dialogs."""
        node = self.editor.GetClassFromNode(self.key[owner])["clsObject"]
        names = [link["Target"]["name"] for link in node.outgoing("Class.Has.Attrib").ToArray()]
        return names.index(name) + 1

    def split(self, owner, name, attributes, semantic):
        steps = [["ClassName", "SetText", name]]
        steps += [["Attributes", "Tick", self.attribute_row(owner, one)] for one in attributes]
        self.shell.AnswerForm(steps + [["Ok", "Click"]])
        self.editor.SplitClass(self.key[owner], semantic)
        self.picture()

    def extract(self, owner, attribute):
        self.shell.AnswerForm([["Attributes", "Select", self.attribute_row(owner, attribute)],
                               ["Ok", "Click"]])
        self.editor.ExtractAttribute(self.key[owner])
        self.picture()

    def morph(self, link, word):
        self.editor.MorphingAssoc(link["key"], word)
        self.picture()

    def merge(self, names):
        for name in names:
            self.canvas.selNode(self.key[name])
        self.editor["ActiveBar21"].Click("miMorphMerge")
        self.canvas.unselectAll()
        self.picture()
        for name in names:
            self.editor.DeleteClass(self.key[name])
        self.picture()

    def picture(self):
        self.step += 1
        self.canvas.CopyToClipboard()
        svg = self.shell.Clipboard()["image/svg+xml"]
        (HERE / ("refactoring-%s-%d.svg" % (self.name, self.step))).write_text(svg)


def main(program=None):
    with Brisel(program) as brisel:
        messages = []
        brisel.on_notification = lambda method, params: (
            messages.append(params["text"]) if method == "message" else None)

        morph = Story(brisel, "morph", [["Building", "BuildingPart"]], attributes=False)
        part = morph.link("Building", "BuildingPart")
        morph.bend(part)
        morph.picture()
        for word in ("ToSharedAggregation", "ToAssociation", "ToCompositeAggregation",
                     "ToGeneralization"):
            morph.morph(part, word)

        attribute = Story(brisel, "attribute", [["Building", "BuildingPart"]])
        attribute.picture()
        attribute.morph(attribute.link("Building", "BuildingPart"), "ToAttribute")

        split = Story(brisel, "split", [["AbstractBuilding"]])
        split.picture()
        split.split("AbstractBuilding", "StoreyCounts",
                    ["storeysAboveGround", "storeysBelowGround", "storeyHeightsAboveGround",
                     "storeyHeightsBelowGround"], semantic=False)

        super_class = Story(brisel, "superclass", [["BuildingFurniture"]])
        super_class.picture()
        super_class.split("BuildingFurniture", "ClassifiedObject", ["class", "function", "usage"],
                          semantic=True)

        extract = Story(brisel, "extract", [["BuildingRoom"]])
        extract.picture()
        extract.extract("BuildingRoom", "roomHeight")

        merge = Story(brisel, "merge", [["AbstractBuildingSubdivision"], ["BuildingUnit", "Storey"]])
        merge.picture()
        merge.merge(["BuildingUnit", "Storey"])
        if messages:
            sys.exit("\n".join(messages))


if __name__ == "__main__":
    main(*sys.argv[1:2])
