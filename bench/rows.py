"""What the measurements say: one row for each figure, beside its target."""

import statistics


def size_of(name):
    return int(name.split("/")[2])


def shown_size(size):
    return f"{size:,}"


class Inside:
    """The benchmarks of one process, by name."""

    def __init__(self, runs):
        self.runs = runs

    def names(self, prefix):
        return sorted((name for name in self.runs if name.startswith(prefix + "/")), key=size_of)

    def seconds(self, name):
        """The median of the processor time for one round."""
        units = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
        return statistics.median(run["cpu_time"] * units[run["time_unit"]]
                                 for run in self.runs[name])

    def elapsed(self, name):
        """The same of the time on the clock, which knows of no threads."""
        units = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
        return statistics.median(run["real_time"] * units[run["time_unit"]]
                                 for run in self.runs[name])

    def counter(self, name, key):
        return statistics.median(run[key] for run in self.runs[name])

    def best(self, name, key):
        return max(run[key] for run in self.runs[name])


def row(what, value, unit, target=None, at_least=False):
    shown = {"times": f"{value:.2f} times", "us": f"{value * 1e6:.1f} µs",
             "ns": f"{value * 1e9:.1f} ns", "share": f"{value:.2f}", "rate": f"{value:,.0f}/s",
             "bytes": f"{value:,.0f} bytes", "s": f"{value:.2f} s",
             "ms": f"{value * 1e3:.1f} ms", "MB": f"{value / 1e6:.1f} MB"}[unit]
    met = None
    target_shown = ""
    if target is not None:
        met = value >= target if at_least else value <= target
        amount = {"us": f"{target * 1e6:g} µs", "ns": f"{target * 1e9:g} ns",
                  "ms": f"{target * 1e3:g} ms",
                  "MB": f"{target / 1e6:g} MB", "rate": f"{target:,}/s"}.get(unit, f"{target:g}")
        target_shown = ("at least " if at_least else "at most ") + amount
    return {"what": what, "value": value, "unit": unit, "shown": shown, "target": target,
            "at_least": at_least, "target_shown": target_shown, "met": met}


def load_rows(inside):
    for name in inside.names("load/vex"):
        size = size_of(name)
        ratio = inside.seconds(name) / inside.seconds(f"load/floor/{size}")
        yield row(f"load {shown_size(size)} objects, against a bare parse", ratio, "times", 1.5)
        if f"load/pugixml/{size}" in inside.runs:
            ratio = inside.elapsed(name) / inside.elapsed(f"load/pugixml/{size}")
            yield row(f"load {shown_size(size)} objects, against pugixml", ratio, "times", 1.2)
    for name in inside.names("memory/store"):
        size = int(name.split("/")[2])
        ratio = inside.counter(name, "resident") / inside.counter(name, "file")
        yield row(f"resident memory of {shown_size(size)} objects, against the file", ratio,
                  "share", 0.5)


def tree_rows(inside):
    for name in inside.names("tree/vex"):
        size = size_of(name)
        ratio = inside.seconds(name) / inside.seconds(f"tree/floor/{size}")
        yield row(f"whole tree of {shown_size(size)} objects, against bare building", ratio,
                  "times", 1.1)
    for name in inside.names("write/vex"):
        ratio = inside.seconds(name) / inside.seconds(f"write/floor/{size_of(name)}")
        yield row("writing the document, against Xerces-C's serialiser", ratio, "times", 0.3)
    for name in inside.names("memory/answer"):
        ratio = inside.counter(name, "element") / inside.counter(name, "element_bare")
        yield row("memory of an answer, against bare building", ratio, "times", 0.8)
        yield row("memory of an answer, each element", inside.counter(name, "element"), "bytes")


def process_rows(whole):
    peer_targets = {100_000: 4, 1_000_000: 8}
    for measured in whole:
        runs = measured["runs"]
        size = shown_size(measured["objects"])
        yield row(f"process on {size} objects, against parse, build and write",
                  runs["vexma"]["cpu"] / runs["floor"]["cpu"], "times", 1.5)
        yield row(f"process on {size} objects", runs["vexma"]["wall"], "s")
        for peer in sorted(runs.keys() - {"vexma", "floor"}):
            yield row(f"process on {size} objects, faster than {peer}",
                      runs[peer]["wall"] / runs["vexma"]["wall"], "times",
                      None if peer == "pugixml" else peer_targets.get(measured["objects"]),
                      at_least=True)


def image_rows(whole):
    for measured in whole:
        image = measured["image"]
        if image is None:
            continue
        runs = measured["runs"]
        objects = f"{shown_size(measured['objects'])} objects"
        tree = image["tree"]
        yield row(f"process on an image of {objects}", tree["wall"], "s")
        if "pugixml" in runs:
            peer = runs["pugixml"]
            yield row(f"process on an image of {objects}, against pugixml",
                      tree["wall"] / peer["wall"], "times", 0.5)
            yield row(f"memory of a process on an image of {objects}, against pugixml",
                      tree["resident"] / peer["resident"], "times", 0.8)
        for peer in sorted(runs.keys() - {"vexma", "floor", "pugixml"}):
            yield row(f"process on an image of {objects}, faster than {peer}",
                      runs[peer]["wall"] / tree["wall"], "times", 8, at_least=True)
        yield row(f"depth 1 from an image of {objects}, more than vexma --version",
                  image["depth1"]["wall"] - image["version"]["wall"], "ms", 40e-3)
        if image["cold"] and image["cat"]:
            yield row(f"depth 1 from a cold image of {objects}, against cat",
                      image["cold"]["wall"] / image["cat"]["wall"], "times", 1.2)
            yield row(f"depth 1 from a cold image of {objects}, read of it",
                      image["cold"]["read"] / image["image"], "share")
        yield row(f"compile {objects}, against load",
                  image["compile"]["wall"] / image["load"]["wall"], "times", 1.3)
        yield row(f"image of {objects}, against the document",
                  image["image"] / image["document"], "share")
        yield row(f"memory not shared of each of eight processes on an image of {objects}",
                  image["private"], "MB", 5e6)


def interactive_rows(inside):
    for what, prefix in (("path of five levels, depth 1", "interactive/depth1"),
                         ("path of five levels, depth 2", "interactive/depth2"),
                         ("reference, direct", "reference/direct")):
        small, large = inside.names(prefix)
        size = shown_size(size_of(large))
        yield row(f"{what}, {size} objects against {shown_size(size_of(small))}",
                  inside.seconds(large) / inside.seconds(small), "times", 1.5)
        yield row(f"{what}, {size} objects", inside.seconds(large), "us", 100e-6)
    wide = inside.names("reference/modelwide")[-1]
    yield row("reference, model-wide, each query subject looked at",
              inside.seconds(wide) / inside.counter(wide, "looked_at"), "ns", 20e-9)


def request_rows(inside):
    vex, floor = (inside.seconds(inside.names(f"request/{what}")[0]) for what in ("vex", "floor"))
    yield row("text of a request, against a new parser for it", vex / floor, "times")
    yield row("text of a request", vex, "us")


def view_rows(inside):
    for depth in (1, 2):
        name = inside.names(f"view/depth{depth}")[0]
        unrestricted = inside.seconds(f"view/all{depth}/{size_of(name)}")
        ids = inside.counter(name, "ids")
        what = f"path, depth {depth}, under a view of {shown_size(round(ids))} ids"
        yield row(f"{what}, against the same unrestricted", inside.seconds(name) / unrestricted,
                  "times", 1.5)
    name = inside.names("view/first")[0]
    first = inside.seconds(name)
    floor = inside.seconds(inside.names("view/floor")[0])
    yield row("the first such request on a model, against reading the ids", first / floor,
              "times", 2)
    yield row("the first such request on a model, each id", first / inside.counter(name, "ids"),
              "ns", 60e-9)
    in_sets = inside.seconds(inside.names("view/sets")[0])
    yield row("the same ids in a set for each, first request, against one set", in_sets / first,
              "times", 1.2)


def access_rows(inside):
    for what, prefix in (("access check", "access/vex"),
                         ("access check, role-based views", "access/roles"),
                         ("access check, with a default view", "access/default")):
        name = inside.names(prefix)[0]
        yield row(what, 1 / inside.seconds(name), "rate", 1_000_000, at_least=True)
    name = inside.names("access/floor")[0]
    yield row("one look-up in an ordered set", 1 / inside.seconds(name), "rate")


def shortcut_rows(inside):
    names = inside.names("shortcuts/vex")
    for name in names:
        count = inside.counter(name, "looked_at")
        yield row(f"reference of a shortcut among {shown_size(size_of(name))}",
                  inside.seconds(name), "us")
    few, many = names[0], names[-1]
    more = inside.counter(many, "looked_at") - inside.counter(few, "looked_at")
    yield row("reference of a shortcut, each shortcut looked at",
              (inside.seconds(many) - inside.seconds(few)) / more, "ns", 15e-9)


def thread_rows(inside):
    # The best rounds: a machine that does other work has no second core to give.
    one, two = (inside.best(f"threads/real_time/threads:{count}", "items_per_second")
                for count in (1, 2))
    yield row("two threads on one model, against one", two / one, "times", 1.8, at_least=True)


def import_rows(inside):
    yield row("import of a tabular model of 508 KB", inside.seconds("import/tabular"), "s", 0.5)
    yield row("import of an OData description of 3.4 MB", inside.seconds("import/odata"), "s", 1)


def evaluate(runs, whole):
    inside = Inside(runs)
    results = []
    for part in (load_rows, tree_rows, interactive_rows, request_rows, view_rows, access_rows, shortcut_rows,
                 thread_rows, import_rows):
        results += part(inside)
    return results + list(process_rows(whole)) + list(image_rows(whole))
