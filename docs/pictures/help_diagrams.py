#!/usr/bin/env python3
"""Writes the diagrams that the pictures of the help show: FOLDER BRISEL."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "examples" / "automation"))
from brisel_client import Brisel  # noqa: E402


class Diagram:
    def __init__(self, brisel):
        repository = brisel.create("BriselCLS.Meta")
        repository.Init()
        self.editor = brisel.create("BriselCLS.CLSEditor")
        self.editor["Repository"] = repository
        self.editor.Populate()
        self.editor.Compartments("ViewAttributes")
        self.model = self.editor["CLSRepository"]

    def add_class(self, name, left, top, *attributes):
        drawn = self.editor.CreateClass(name, name, "", "", "", "public")
        for attribute in attributes:
            label, data_type = attribute.split(":")
            made = self.model.AddAttributeS(name, label, self.data_type(data_type)).result
            made.SetProperty("scope", "private")
        drawn.Populate()
        self.place(name, left, top)

    def data_type(self, name):
        found = self.model.SearchObject("DataType", "Name", name)
        return (found or self.model.MakeDataType(name, "", ""))["identifier"]

    def place(self, key, left, top):
        """Puts a class, in pixels; it takes the size of its text."""
        self.editor.SizeToFit(key)
        box = self.editor.diagram().getNode(key)
        box["left"] = left * 15
        box["top"] = top * 15

    def save(self, path):
        self.editor["RepositoryFileName"] = str(path)
        self.editor.SaveDiagram()


def demo(brisel):
    diagram = Diagram(brisel)
    diagram.editor.MakeDemo()
    return diagram


def relationships(brisel):
    diagram = Diagram(brisel)
    diagram.editor.Compartments("ViewAttributes")
    rows = [("Customer", "Order", "places"), ("Order", "OrderLine", "lines"),
            ("Cart", "Product", "contents"), ("Payment", "CardPayment", "")]
    for column, (upper, lower, label) in enumerate(rows):
        keys = [f"{upper}{column}", f"{lower}{column}"]
        for key, name, top in zip(keys, (upper, lower), (20, 150)):
            diagram.add_class(key, 0, top)
            drawn = diagram.editor.GetClassFromNode(key)
            drawn["name"] = name
            drawn.Populate()
            diagram.place(key, 0, top)
            box = diagram.editor.diagram().getNode(key)
            box["left"] = (90 + 165 * column) * 15 - box["width"] / 2
        if column == 0:
            diagram.editor.CreateAssociation(label, label, "", *keys)
        elif column < 3:
            diagram.editor.CreateAggregation(label, label, "", *keys, column == 1)
        else:
            diagram.editor.CreateGeneralization("is", "", "", keys[1], keys[0])
    return diagram


def order(brisel):
    diagram = Diagram(brisel)
    diagram.add_class("Order", 40, 60, "number:Integer", "placed:Date", "street:String",
                      "town:String")
    return diagram


def editing(brisel):
    diagram = order(brisel)
    diagram.add_class("OrderLine", 430, 380, "quantity:Integer")
    return diagram


def split(brisel):
    diagram = order(brisel)
    brisel.create("Brisel.Shell").AnswerForm([
        ["ClassName", "SetText", "Document"], ["Attributes", "Tick", 1], ["Attributes", "Tick", 2],
        ["Ok", "Click"]])
    diagram.editor.SplitClass("Order", True)
    diagram.editor.Layout("%HIERARCHY%")
    return diagram


def main():
    folder, program = pathlib.Path(sys.argv[1]), sys.argv[2]
    with Brisel(program) as brisel:
        for make in (demo, relationships, order, editing, split):
            make(brisel).save(folder / f"{make.__name__}.dim")


if __name__ == "__main__":
    main()
