"""Lays graphs out with ours and with Graphviz dot, one after the other, and prints a table for each.

    table.py LAYOUT_GRAPH FOLDER [GRAPH...]

FOLDER has graphs/*.json, gen_graph.py and measure_layout.py, which runs dot and scores both. Some
graphs more are generated. GRAPH names those to take. dot may use BRISEL_BENCH_LIMIT seconds (120).
"""
import json
import os
import subprocess
import sys
import tempfile

GENERATED = {"syn200-2": (200, 2), "syn200-3": (200, 3), "syn500-2": (500, 2), "syn1000-2": (1000, 2),
             "syn1000-3": (1000, 3), "syn10000": (10000, 1)}
DENSE = (5600, 13700)
FIGURES = ("seconds", "crossings", "edge_length", "bends", "edge_node_overlaps", "node_overlaps",
           "shared_segments", "area_mpx", "aspect", "generalizations_up", "orthogonal_segments", "fill",
           "width", "height", "missing_edges", "detached_edges", "resized_nodes")


def generate(folder, work):
    program = [sys.executable, os.path.join(folder, "gen_graph.py")]
    for name, (classes, seed) in GENERATED.items():
        out = os.path.join(work, name + ".json")
        subprocess.run(program + ["--classes", str(classes), "--seed", str(seed), "-o", out], check=True,
                       stdout=subprocess.DEVNULL)
        yield out
    yield dense(program, work)


def dense(program, work):
    """One generated graph with the associations of others between the same classes."""
    classes, wanted = DENSE
    graph, taken = None, set()
    for seed in (1, 2, 3, 4):
        out = os.path.join(work, "part.json")
        subprocess.run(program + ["--classes", str(classes), "--seed", str(seed), "-o", out], check=True,
                       stdout=subprocess.DEVNULL)
        with open(out) as f:
            part = json.load(f)
        graph = graph or {"nodes": part["nodes"], "edges": []}
        for edge in part["edges"]:
            pair = frozenset((edge["src"], edge["dst"]))
            inherits = edge["kind"] in ("generalization", "realization")
            if pair in taken or len(graph["edges"]) == wanted or (inherits and seed > 1):
                continue
            taken.add(pair)
            graph["edges"].append(dict(edge, id="e%d" % len(graph["edges"])))
    out = os.path.join(work, "dense%d.json" % classes)
    with open(out, "w") as f:
        json.dump(graph, f)
    return out


def measured(command, results, work):
    subprocess.run([sys.executable] + command + ["--results", results, "--work", os.path.join(work, "scored")],
                   check=True, stdout=subprocess.DEVNULL)


def compare(tool, folder, graph, work):
    """Rows of the scorer for both, ours first."""
    results = os.path.join(work, "results.json")
    drawing = os.path.join(work, "drawing.json")
    if os.path.exists(results):
        os.remove(results)
    scorer = os.path.join(folder, "measure_layout.py")
    subprocess.run([tool, graph, drawing, "3"], check=True)
    measured([scorer, "--score", drawing, "--graph", graph, "--label", "ours"], results, work)
    limit = os.environ.get("BRISEL_BENCH_LIMIT", "120")
    measured([scorer, "--peers", "dot-polyline", "--timeout", limit, graph], results, work)
    with open(results) as f:
        return json.load(f)


def show(graph, ours, dot):
    print("\n%s: %d classes, %d lines%s" % (os.path.basename(graph).removesuffix(".json"), ours["nodes"],
                                            ours["edges"], "" if dot["status"] == "ok" else "; dot: " + dot["status"]))
    print("  %-20s %14s %14s %8s" % ("", "ours", "dot", "ratio"))
    for figure in FIGURES:
        a, b = (row.get("metrics", {}).get(figure) for row in (ours, dot))
        if figure == "seconds":  # of the processor; others may keep the machine busy
            a, b = ours["layout_s"], dot["cpu_s"]
        ratio = "%8.2f" % (a / b) if a is not None and b else ""
        print("  %-20s %14s %14s %8s" % (figure, text(a), text(b), ratio), flush=True)


def text(value):
    return "-" if value is None else "%.3f" % value if isinstance(value, float) else "%d" % value


def main():
    tool, folder = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    wanted = sys.argv[3:]
    with tempfile.TemporaryDirectory() as work:
        given = os.path.join(folder, "graphs")
        graphs = [os.path.join(given, name) for name in sorted(os.listdir(given)) if name.endswith(".json")]
        for graph in graphs + list(generate(folder, work)):
            if not wanted or os.path.basename(graph).removesuffix(".json") in wanted:
                show(graph, *compare(tool, folder, graph, work))


if __name__ == "__main__":
    main()
