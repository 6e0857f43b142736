"""Measures every row of all programs again and again, and prints one table of medians and ratios.

    compare.py DIRECTORY [--rounds N] [--works-only] [--picture FILE]

DIRECTORY holds zet_bench and zet_fresh. In each round the works come in a random order, and the rows of
one work, whoever has them, follow each other at once in a random order: what the processor's clock does
meanwhile meets all of them. A ratio is the median of the ratios of the rounds. What we want to reach stands
beside each ratio; the exit code tells nothing about that.
"""

import argparse
import os
import random
import shutil
import statistics
import subprocess
import sys
import time

import chart
import works

HERE = os.path.dirname(os.path.abspath(__file__))
OURS = ("zet", "call", "hand")           # all other names are those of libraries
COLUMNS = ("zet", "hand", "numpy", "numexpr", "muParser")


def pinned(command):
    """The command on one processor, the last of those that we may use."""
    cpu = max(os.sched_getaffinity(0))
    return (["taskset", "-c", str(cpu)] if shutil.which("taskset") else []) + command


class Program:
    """A program that measures the rows that it is asked for; it has no rows where it cannot run."""

    def __init__(self, command, listing):
        environment = os.environ | {"OMP_NUM_THREADS": "1", "LC_ALL": "C"}
        listed = subprocess.run(command + [listing], capture_output=True, text=True, env=environment)
        self.problem = listed.stderr.strip().splitlines()[-1:] if listed.returncode else []
        names = [] if listed.returncode else listed.stdout.splitlines()
        self.rows = {name.split("/iterations:")[0] for name in names}
        if self.rows:
            self._process = subprocess.Popen(pinned(command + ["--serve"]), env=environment, text=True,
                                             stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def measure(self, row):
        self._process.stdin.write(row + "\n")
        self._process.stdin.flush()
        answer = self._process.stdout.readline()
        try:
            time_taken, check = map(float, answer.split())
        except ValueError:
            sys.exit(f"compare.py: row '{row}': {answer.strip() or 'the program ended'}")
        return time_taken, check

    def close(self):
        if self.rows:
            self._process.stdin.close()
            self._process.wait()


class Results:
    """Times of all rows, one of each round, in nanoseconds."""

    def __init__(self):
        self.times = {}      # row of a work -> who -> times
        self.checks = {}     # row of a work -> who -> what its answer is checked by

    def add(self, name, who, time_taken, check):
        self.times.setdefault(name, {}).setdefault(who, []).append(time_taken)
        self.checks.setdefault(name, {})[who] = check

    def median(self, name, who):
        return statistics.median(self.times[name][who]) if who in self.times.get(name, {}) else None

    def ratio(self, name, who):
        """Our time as a multiple of another's."""
        ours = self.times.get(name, {}).get("zet")
        theirs = self.times.get(name, {}).get(who)
        return statistics.median(a / b for a, b in zip(ours, theirs)) if ours and theirs else None

    def peers(self, name):
        return [who for who in self.times.get(name, {}) if who not in OURS]

    def best_peer(self, name):
        return min(self.peers(name), key=lambda who: self.median(name, who), default=None)

    def differing(self):
        """Rows whose answer is not ours within a part in a thousand million."""
        for name, checks in self.checks.items():
            ours = checks.get("zet", 0.0)
            for who, check in checks.items():
                if check and abs(check - ours) > 1e-9 * abs(ours):
                    yield f"{name}/{who}"


def progress(text):
    if sys.stderr.isatty():
        sys.stderr.write(f"\r\033[K{text}")
        sys.stderr.flush()


def measure_all(programs, names, rounds, fresh):
    """Results of all rows with one of the names, and the lines of zet_fresh for each work, of each round."""
    results = Results()
    fresh_lines = {work: [] for work in works.FRESH}
    start = time.monotonic()
    for number in range(1, rounds + 1):
        random.shuffle(names)
        for done, name in enumerate(names, 1):
            progress(f"round {number} of {rounds}, {done} of {len(names)}, {time.monotonic() - start:.0f} s: {name}")
            having = [(program, row) for program in programs for row in program.rows if row.rpartition("/")[0] == name]
            random.shuffle(having)
            for program, row in having:
                results.add(name, row.rpartition("/")[2], *program.measure(row))
        for work, lines in fresh_lines.items():
            command = pinned([fresh, work, str(works.FRESH_SIZE)])
            answer = subprocess.run(command, capture_output=True, text=True, check=True)
            lines.append([float(word) for word in answer.stdout.split()])
        if not sys.stderr.isatty():
            print(f"round {number} of {rounds}, {time.monotonic() - start:.0f} s", file=sys.stderr, flush=True)
    progress("")
    return results, fresh_lines


def verdict(ratio, goal):
    """A ratio, what it is to be at most, and whether it is."""
    if ratio is None:
        return ""
    return multiple(ratio) + (f" <= {goal:g} {'yes' if ratio <= goal else 'NO'}" if goal is not None else "")


def multiple(ratio):
    return f"{ratio:.3f}" if ratio < 0.1 else f"{ratio:.2f}"


def figure(value):
    return "" if value is None else f"{value:.3f}" if value < 1 else f"{value:.2f}" if value < 100 else f"{value:.0f}"


def work_line(results, work, name, size):
    """The cells of one row of the table; times for one element, or for one evaluation."""
    per = size if work.per_element and size else 1
    times = {who: results.median(name, who) for who in results.times.get(name, {})}
    others = [f"{who} {figure(times[who] / per)} ({multiple(results.ratio(name, who))})"
              for who in sorted(times) if who not in COLUMNS]
    best = work.goals.peer_name if work.goals.peer_name in times else results.best_peer(name)
    peer_goal = work.goals.peer if size in (None, 65536) or 65536 not in work.sizes else None
    return [name, "element" if per > 1 else "call",
            *(figure(times[who] / per if who in times else None) for who in COLUMNS),
            verdict(results.ratio(name, "hand"), work.goals.hand.get(size or 65536)),
            verdict(results.ratio(name, best), peer_goal) + (f" {best}" if best else ""),
            ", ".join(others)]


def other_line(results, name):
    """The cells of a row that has no goal; times in microseconds for one call."""
    times = {who: results.median(name, who) for who in sorted(results.times[name])}
    return [name, figure(times["zet"] / 1000),
            ", ".join(f"{who} {figure(times[who] / 1000)} ({multiple(results.ratio(name, who))})"
                      for who in times if who != "zet")]


def fresh_line(work, lines):
    first, fresh, warm, faults, more = (statistics.median(column) for column in zip(*lines))
    ratio = statistics.median(line[1] / line[2] for line in lines)
    return [f"{work}, {works.FRESH_SIZE}", f"{first / 1000:.1f}", f"{fresh / 1000:.1f}", f"{warm / 1000:.1f}",
            verdict(ratio, works.FRESH_GOAL), f"{faults:.0f}",
            f"{more:.2f} < {works.FAULTS_GOAL} {'yes' if more < works.FAULTS_GOAL else 'NO'}"]


def fixed_line(results):
    """What an evaluation costs however small the tile is."""
    name, _ = works.WORKS[0].rows()[0]
    fixed = results.median(name, "zet")
    return [name, f"{fixed:.0f} < {works.FIXED_GOAL} {'yes' if fixed < works.FIXED_GOAL else 'NO'}"]


def print_table(title, heads, lines):
    widths = [max(len(line[i]) for line in [heads, *lines]) for i in range(len(heads))]
    print(f"\n{title}\n")
    for line in [heads, ["-" * width for width in widths], *lines]:
        print("  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip())


def machine():
    """The processor, as the system calls it."""
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        return next((line.partition(":")[2].strip() for line in file if line.startswith("model name")), "unknown")


def print_all(results, fresh_lines):
    print(f"\nOne thread on: {machine()}")
    print_table(
        "Nanoseconds for one element or one call; our time as a multiple of another's, and what it is to be at most.\n"
        "The library is the fastest one, unless our goal names another.",
        ["work", "for one", *COLUMNS, "of hand", "of the library", "others (our multiple)"],
        [work_line(results, work, name, size) for work in works.WORKS for name, size in work.rows()])
    print_table(
        "In a process just started: microseconds of the first evaluation, of the first 20 in the middle, and warm",
        ["work", "first", "of 20", "warm", "of 20 to warm", "page faults, first", "each of the others"],
        [fresh_line(work, lines) for work, lines in fresh_lines.items()])
    print_table("Fixed cost: nanoseconds of an evaluation over one element", ["work", "zet"], [fixed_line(results)])
    known = {name for work in works.WORKS for name, _ in work.rows()}
    others = [other_line(results, name) for name in results.times if name not in known and "zet" in results.times[name]]
    if others:
        print_table("Single operations: microseconds for one call (and our multiple)", ["work", "zet", "others"],
                    sorted(others))
    for row in sorted(results.differing()):
        print(f"differs from our answer: {row}")


def print_missing(programs):
    """Tells who has no row in any program."""
    present = {row.rpartition("/")[2] for program in programs for row in program.rows}
    for who in ("numpy", "numexpr", "muParserX", "UDUNITS-2", "dgesvd"):
        if who not in present:
            print(f"not measured, since it is not installed: {who}")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("directory")
    parser.add_argument("--rounds", type=int, default=11)
    parser.add_argument("--works-only", action="store_true", help="leave out the rows of single operations")
    parser.add_argument("--picture", help="draw the table into this file (SVG)")
    arguments = parser.parse_args()

    programs = [
        Program([os.path.join(arguments.directory, "zet_bench")], "--benchmark_list_tests"),
        Program([sys.executable, "-B", os.path.join(HERE, "peers.py")], "--list"),
    ]
    if not programs[0].rows:
        sys.exit(f"compare.py: zet_bench cannot run: {' '.join(programs[0].problem)}")
    wanted = [name for work in works.WORKS for name, _ in work.rows()]
    if not arguments.works_only:
        wanted = sorted(set(wanted) | {row.rpartition("/")[0] for row in programs[0].rows})
    try:
        results, fresh_lines = measure_all(programs, wanted, arguments.rounds,
                                           os.path.join(arguments.directory, "zet_fresh"))
    finally:
        for program in programs:
            program.close()
    print_all(results, fresh_lines)
    print_missing(programs)
    if arguments.picture:
        chart.draw(arguments.picture, results, machine())
        print(f"\nThe picture: {os.path.abspath(arguments.picture)}")


if __name__ == "__main__":
    main()
