#!/usr/bin/env python3
"""Builds a diagram of a small library, lays it out, and writes it as library.dim and library.svg.

    python3 build_diagram.py [FOLDER [BRISEL]]

The files go to FOLDER, or else here. BRISEL is the program; without it, the one that the environment
variable BRISEL names, the one built last in this source tree, or the one on the path.
"""

import pathlib
import subprocess
import sys

from brisel_client import Brisel

CLASSES = {
    "Item": [("title", "string"), ("shelf", "string")],
    "Book": [("isbn", "string"), ("pages", "long")],
    "Film": [("minutes", "long")],
    "Author": [("name", "string")],
    "Library": [("name", "string")],
    "Member": [("name", "string"), ("since", "date")],
    "Loan": [("due", "date")],
}
OPERATIONS = {"Item": [("isAvailable", "boolean")], "Loan": [("extend", "void")]}


class Builder:
    def __init__(self, brisel):
        self.ids = brisel.create("BriselUtility.UUIDGenerator")
        self.ids.Init("build_diagram")
        repository = brisel.create("BriselCLS.Meta")
        repository.Init()
        self.editor = brisel.create("BriselCLS.CLSEditor")
        self.editor["Repository"] = repository
        self.editor.Populate()
        self.model = self.editor["CLSRepository"]
        self.canvas = self.editor.diagram()
        self.types = {}

    def data_type(self, name):
        if name not in self.types:
            self.types[name] = self.model.MakeDataType(name, "", "")["identifier"]
        return self.types[name]

    def add_class(self, name):
        key = self.ids.GetUUID()
        drawn = self.editor.CreateClass(key, name, "", "", "", "public")
        for attribute, data_type in CLASSES[name]:
            self.model.AddAttributeS(key, attribute, self.data_type(data_type))
        for operation, data_type in OPERATIONS.get(name, []):
            self.model.AddOperationS(key, operation, self.data_type(data_type))
        drawn.Populate()
        return key

    def relate(self, key):
        new = self.ids.GetUUID
        editor = self.editor
        editor.CreateGeneralization(new(), "", "", key["Book"], key["Item"])
        editor.CreateGeneralization(new(), "", "", key["Film"], key["Item"])
        editor.CreateAggregation(new(), "holds", "", key["Library"], key["Item"], True)
        editor.CreateAggregation(new(), "", "", key["Library"], key["Member"], False)
        editor.CreateAssociation(new(), "wrote", "", key["Author"], key["Book"])
        editor.CreateAssociation(new(), "borrows", "", key["Member"], key["Loan"])
        editor.CreateAssociation(new(), "of", "", key["Loan"], key["Item"])

    def save(self, path):
        """Writes geometry and view settings into the model, and the model to the file."""
        self.editor["RepositoryFileName"] = str(path)
        self.editor.SaveDiagram()


def main(folder, program):
    with Brisel(program) as brisel:
        builder = Builder(brisel)
        keys = {name: builder.add_class(name) for name in CLASSES}
        builder.relate(keys)
        for compartment in ("ViewAttributes", "ViewOperations"):
            builder.editor.Compartments(compartment)
        builder.editor.Layout("%HIERARCHY%")
        builder.save(folder / "library.dim")
        for node in builder.canvas.getAllNodes().ToArray():
            print("%-8s at %6.0f, %6.0f" % (node["text"].split("\n")[-1].strip(), node["left"],
                                            node["top"]))
        for method, params in brisel.notifications:
            if method == "message":
                print(params["text"], file=sys.stderr)
    subprocess.run([brisel.program, "convert", folder / "library.dim", folder / "library.svg"],
                   check=True)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "."),
         sys.argv[2] if len(sys.argv) > 2 else None)
