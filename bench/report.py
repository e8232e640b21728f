#!/usr/bin/env python3
"""Makes docs/performance.md of what kvdesign_bench has measured: bench/report.py RESULTS.json --load L --seconds S."""

import argparse
import collections
import json
import platform
import re
import subprocess

PACKAGES = ["libinih-dev", "libsimpleini-dev", "libiniparser-dev", "libglib2.0-dev", "libboost-dev", "qt6-base-dev",
            "libsqlite3-dev", "libbenchmark-dev"]

# What each work is called in the document. Keys are the first two parts of a benchmark's name.
WORK = {
    ("Read", "30"): "read one section, 31 keywords",
    ("Read", "1000"): "read 1,000 such sections",
    ("Read", "100000"): "read 100,000 keys in one section",
    ("Render", "30"): "render one section, 31 keywords",
    ("Render", "1000"): "render 1,000 such sections",
    ("Render", "100000"): "render 100,000 keys in one section",
    ("Load", "1000 objects"): "load 1,000 objects",
    ("Export", "1000 objects"): "export 1,000 objects",
}

# Why a peer is quicker, where one is: (pattern of the work, pattern of the peer, sentence).
WHY = [
    (r"^(load|export)", "SQLite", "SQLite hands out the bytes of the stored object. We make values of them, a record "
     "of the values, and a tree or a text of the record."),
    (r"^read", "inih", "inih hands each line to a function and keeps joined strings; nothing is looked up or checked."),
    (r"^tree", "^QStandardItemModel$", "It is asked by the item at hand, which knows its parent and near what place it "
     "stood. Our operations take a key: a node is looked up first, and its place is counted upwards through the order "
     "of its siblings, each step another piece of memory. By the key, with a hash beside the model, see the next row; "
     "where the siblings are many, its walk along them costs more than our steps."),
    (r"^tree", "hash of keys", "Among a hundred siblings its walk along them is short, and its memory lies together."),
    (r"^save", "SQLite", "The save makes the content of the record and looks at the revision and the name first, in "
     "the same transaction."),
]


class Results:
    """All runs of a benchmark, under `<work>/<size>/<who>`."""

    def __init__(self, path):
        with open(path, encoding="utf-8") as file:
            data = json.load(file)
        self.context = data["context"]
        self.runs = collections.defaultdict(list)
        for run in data["benchmarks"]:
            if run.get("run_type") == "iteration":
                self.runs[self.plain(run["run_name"])].append(run)

    @staticmethod
    def plain(name):
        return re.sub(r"(/iterations:\d+|/repeats:\d+|/manual_time|/real_time|/min_time:[\d.]+)", "", name)

    def errors(self):
        return [(name, run["error_message"]) for name, runs in self.runs.items() for run in runs
                if run.get("error_occurred")]

    def whose(self, *prefix):
        """The names of those who did a work: we, the peers, the floors."""
        start = "/".join(prefix) + "/"
        found = [name[len(start):] for name in self.runs if name.startswith(start)]
        return sorted(found, key=lambda who: (who.startswith("floor"), not who.startswith("ours"), who.lower()))

    def values(self, name, field):
        return [run[field] for run in self.runs.get(name, []) if field in run and not run.get("error_occurred")]

    def least(self, name, field="cpu_time"):
        """The least of all runs, a time in seconds, a counter as it is; None when there is none. What else
        the machine does only ever adds."""
        values = self.values(name, field)
        if not values:
            return None
        if field in ("cpu_time", "real_time"):
            unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[self.runs[name][0]["time_unit"]]
            return min(values) * unit
        return min(values)


def told(seconds):
    for unit, size in (("s", 1), ("ms", 1e-3), ("µs", 1e-6)):
        if seconds >= size:
            return f"{seconds / size:.3g} {unit}" if seconds / size < 1000 else f"{seconds / size:,.0f} {unit}"
    return f"{seconds * 1e9:.3g} ns"


def ratio(value):
    return f"{value:.2f}" if value >= 0.1 else f"{value:.3f}"


def table(head, rows):
    lines = ["| " + " | ".join(head) + " |", "|" + "---|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows]) + "\n"


class Ratio:
    def __init__(self, work, who, ours, theirs):
        self.work, self.who, self.ours, self.theirs = work, who, ours, theirs
        self.floor = who.startswith("floor")

    @property
    def value(self):
        return self.ours / self.theirs


def ratios_of(results):
    """Every pair of the table of ratios."""
    pairs = []
    for (done, size), called in WORK.items():
        ours = results.least(f"{done}/{size}/ours")
        if ours is None:
            continue
        for who in results.whose(done, size):
            theirs = results.least(f"{done}/{size}/{who}")
            if who != "ours" and theirs:
                pairs.append(Ratio(called, who, ours, theirs))
    trees = [n for n in results.runs if n.startswith("Tree/") and n.endswith("/ours")]
    for name in sorted(trees, key=lambda n: (int(n.split("/")[1].split(" ")[0]), n)):
        shape = name.split("/")[1]
        count, form = shape.split(" ", 1)
        for counter, called in (("build", "nodes built"), ("insert", "a node inserted before another"),
                                ("place", "the place of a node among its siblings"),
                                ("remove", "a node taken out of the middle")):
            ours = results.least(name, counter)
            for who in results.whose("Tree", shape):
                theirs = results.least(f"Tree/{shape}/{who}", counter)
                if who != "ours" and theirs:
                    pairs.append(Ratio(f"tree, {int(count):,} {form}: {called}", who, ours * 1e-9, theirs * 1e-9))
    for where in ("on disk", "in memory"):
        name = f"Save/1000 objects {where}/by turns"
        ours = results.least(name, "ours")
        for who in ("SQLite alone", "floor: write and fsync"):
            theirs = results.least(name, who)
            if ours and theirs:
                pairs.append(Ratio(f"save one object, {where}", who, ours * 1e-3, theirs * 1e-3))
    return pairs


def goals_of(results, pairs):
    """(goal, bound, measured, met), all that could be measured."""
    found = {(p.work, p.who): p for p in pairs}
    rows = []

    def add(goal, bound, value, limit, shown=ratio, below=False):
        if value is not None:
            rows.append((goal, bound, shown(value), value < limit if below else value <= limit))

    def beside(work, who):
        pair = found.get((WORK.get(work, work), who))
        return pair.value if pair else None

    add("reading 30 keywords beside SimpleIni", "≤ 0.55", beside(("Read", "30"), "SimpleIni"), 0.55)
    add("reading 1,000 sections beside SimpleIni", "≤ 0.35", beside(("Read", "1000"), "SimpleIni"), 0.35)
    add("reading 100,000 keys beside GKeyFile", "≤ 0.65", beside(("Read", "100000"), "GKeyFile"), 0.65)
    for size, called in (("30", "30 keywords"), ("1000", "1,000 sections"), ("100000", "100,000 keys")):
        peers = [p for p in pairs if p.work == WORK["Render", size] and not p.floor]
        if peers:
            fastest = max(peers, key=lambda p: p.value)
            add(f"rendering {called} beside the fastest writer ({fastest.who})", "≤ 1", fastest.value, 1.0)
    tree = [p for p in pairs if p.work.startswith("tree") and p.who == "QStandardItemModel"]
    if tree:
        for called in ("nodes built", "a node inserted before another", "the place of a node among its siblings",
                       "a node taken out of the middle"):
            worst = max((p for p in tree if p.work.endswith(called)), key=lambda p: p.value)
            shape = worst.work.split(":")[0]
            add(f"tree beside QStandardItemModel: {called} (worst: {shape})", "< 1", worst.value, 1.0, below=True)
    bytes_a_node = [results.least(n, "bytes") for n in results.runs if n.startswith("Tree/") and n.endswith("/ours")]
    if bytes_a_node:
        add("bytes a node beside its strings", "≤ 200", max(bytes_a_node), 200, lambda v: f"{v:.0f}")
    add("a durable save beside SQLite alone", "≤ 1.3", beside("save one object, on disk", "SQLite alone"), 1.3)
    add("`kvdesign --version`", "< 5 ms", results.least("Program/--version/ours", "real_time"), 5e-3, told, True)
    add("open, edit, save, close through `kvdesign rpc`, without the disk's wait", "< 10 ms",
        results.least("Program/session in memory/ours", "real_time"), 10e-3, told, True)
    return rows


# Curves: name, benchmark, sizes, seconds and counter for a size, elements a run.
def curves_of(results):
    rows = []

    def curve(called, points):
        points = [(n, t) for n, t in points if t is not None]
        if len(points) > 1:
            rows.append((called, {n: t / n for n, t in points}))

    sizes = (1000, 10000, 100000, 1000000)
    for name, called in (("FindLineEnds", "floor: line ends found"), ("TakeLines", "lines taken"),
                         ("ReadAndCheck", "keywords read and checked for repeats"), ("WriteParms", "lines written"),
                         ("CopyWords", "floor: text of words copied"), ("SaveWords", "stop words saved"),
                         ("ShowWords", "stop words rendered")):
        curve(called, [(n, results.least(f"{name}/{n}")) for n in sizes])
    for form in ("in three levels", "wide"):
        for counter, called in (("build", "nodes built"), ("insert", "nodes inserted"), ("place", "places asked"),
                                ("remove", "nodes taken out")):
            points = {n: results.least(f"Tree/{n} {form}/ours", counter) for n in (1000, 100000, 1000000)}
            points = {n: v * 1e-9 for n, v in points.items() if v is not None}
            if len(points) > 1:
                rows.append((f"tree {form}: {called}", points))
    return rows


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        text = file.read()
    model = re.search(r"model name\s*: (.*)", text)
    with open("/proc/meminfo", encoding="utf-8") as file:
        memory = int(re.search(r"MemTotal:\s*(\d+)", file.read())[1]) / 2**20
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    return (f"{model[1] if model else platform.machine()}, {text.count('processor' + chr(9))} processors, "
            f"{memory:.0f} GiB, {system}, kernel {platform.release()}")


def version_of(*command):
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout.splitlines()[0]
    except (OSError, subprocess.CalledProcessError, IndexError):
        return ""


def versions():
    found = []
    for package in PACKAGES:
        version = version_of("dpkg-query", "-W", "-f=${Version}", package)
        if version:
            found.append(f"{package} {version}")
    return [version_of("c++", "--version")] + found


def yes(met):
    return "yes" if met else "**no**"


def document(results, load, seconds):
    pairs = ratios_of(results)
    goals = goals_of(results, pairs)
    out = ["# Performance", ""]
    out.append("Written by `bench/run`; every figure is of one run, in which all that is compared went by turns. "
               "Times are the least of five repetitions, processor time unless it says otherwise. A ratio is our "
               "time over the other's: under 1 we are quicker.")
    out.append("")
    out.append(f"- Machine: {machine()}")
    out.append("- Versions: " + ", ".join(versions()))
    out.append("- Commands: `bench/run`, which is `cmake --preset release -DKVDESIGN_BENCH=ON`, "
               "`cmake --build --target kvdesign_bench`, `kvdesign_bench --benchmark_repetitions=5 "
               "--benchmark_enable_random_interleaving=true`, `bench/report.py`")
    busy = "an idle machine" if load < 0.5 else "a machine that other work kept busy"
    out.append(f"- Load before the run: {load:.2f}, {busy}; the run took {seconds / 60:.0f} minutes")
    out.append("")
    out.append("A peer reads into a map of its own. We look each keyword up, check it and its value, fold it, refuse "
               "what must be refused and store the value in its record. Our texts are wide: a character takes four "
               "bytes. \"From bytes\" is with the widening of the peer's bytes in front.")
    out += ["", "## Goals", ""]
    out.append(table(["goal", "bound", "measured", "met"], [(g, b, m, yes(met)) for g, b, m, met in goals]))

    out += ["## Ratios", ""]
    out.append(table(["work", "beside", "ours", "theirs", "ours ÷ theirs"],
                     [(p.work, p.who, told(p.ours), told(p.theirs), ratio(p.value)) for p in pairs]))

    out += ["## Slower than a peer, and why", ""]
    slower = [p for p in pairs if p.value > 1 and not p.floor and not p.who.startswith("ours")]
    for p in slower:
        why = next((text for work, who, text in WHY if re.search(work, p.work) and re.search(who, p.who)), "")
        out.append(f"- {p.work}, {p.who} ({ratio(p.value)}). {why}".rstrip())
    if not slower:
        out.append("Nothing.")
    out.append("")

    out += ["## Memory", ""]
    rows = []
    for name in results.runs:
        value = results.least(name, "bytes")
        if name.startswith("Tree/") and value is not None and "floor" not in name:
            rows.append((*name.split("/")[1:], f"{value:.0f}"))
    out.append(table(["tree", "who", "bytes a node beside its strings"], rows))

    out += ["## Edits", ""]
    out.append("What an operator does, from the window core to the record, on a table of 1,000 fields and on a browse; "
               "nothing is stored.")
    out.append("")
    out.append(table(["edit", "time", "allocations"],
                     [(name.split("/")[1], told(results.least(name)), f"{results.least(name, 'allocations'):.0f}")
                      for name in results.runs if name.startswith("Edit/")]))

    out += ["## The program", ""]
    out.append(table(["work", "time that passes", "processor time"],
                     [(name.split("/", 1)[1].replace("/ours", ""), told(results.least(name, "real_time")),
                       told(1e-3 * results.least(name, "cpu")))
                      for name in results.runs if name.startswith("Program/") and results.values(name, "cpu")]))

    out += ["## Growth", ""]
    out.append("Time for one element at each size, and that at the largest over that at the smallest. Work that grows "
               "with the square would show 1,000 for three decades. What no longer fits into a cache lifts a straight "
               "curve, as the floors show; a tree's operations take the logarithm besides.")
    out.append("")
    curves = curves_of(results)
    sizes = sorted({n for _, points in curves for n in points})
    rows = []
    for called, points in curves:
        first, last = points[min(points)], points[max(points)]
        rows.append([called] + [told(points[n]) if n in points else "" for n in sizes] + [ratio(last / first)])
    out.append(table(["work"] + [f"{n:,}" for n in sizes] + ["last ÷ first"], rows))
    out.append("Time for one element at 10 n over that at n (n is 10,000 fields); 10 would be the square. Work on one "
               "element is reckoned over its whole list: 1 where the list is walked for it, 0.1 where it is not.")
    out.append("")
    rows = []
    for name in results.runs:
        value = results.least(name, "ratio")
        if value is not None:
            rows.append((name.split("/")[0], told(1e-3 * results.least(name, "ms_n")),
                         told(1e-3 * results.least(name, "ms_10n")), ratio(value)))
    out.append(table(["work", "n", "10 n", "ratio"], rows))
    for name, message in results.errors():
        out.append(f"Not measured: {name}: {message}")
    return "\n".join(out).rstrip() + "\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("results")
    parser.add_argument("--load", type=float, default=0)
    parser.add_argument("--seconds", type=int, default=0)
    arguments = parser.parse_args()
    print(document(Results(arguments.results), arguments.load, arguments.seconds), end="")


if __name__ == "__main__":
    main()
