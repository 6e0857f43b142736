"""Measures the rows that numpy and numexpr have, as zet_bench --serve measures ours.

    peers.py --list      the rows that can be measured
    peers.py --serve     reads the names of rows, and answers each with a line: nanoseconds for one
                         evaluation, and what the row's answer is checked by
"""

import functools
import gc
import os
import sys
import time

for variable in ("OMP", "MKL", "OPENBLAS", "NUMEXPR"):
    os.environ[variable + "_NUM_THREADS"] = "1"

import numpy as np  # noqa: E402: the count of threads comes first

try:
    import numexpr
except ImportError:
    numexpr = None

import works  # noqa: E402

SWAPPED = 65536      # elements whose bytes are swapped
SECONDS = 0.02       # that one measurement takes at least


def mixed(count, seed):
    """The same well mixed whole numbers of 32 bits that bench/support/ZetWorks.cpp makes."""
    k = np.arange(count, dtype=np.uint32) * np.uint32(0x9E3779B9) + np.uint32(seed * 0x85EBCA6B & 0xFFFFFFFF)
    k = (k ^ (k >> np.uint32(16))) * np.uint32(0x21F0AAAD)
    k = (k ^ (k >> np.uint32(15))) * np.uint32(0x735A2D97)
    return k ^ (k >> np.uint32(15))


def operand(kind, least, greatest, size, seed):
    parts = 2 * size if kind == "complex128" else size
    values = least + mixed(parts, seed) * 2.0**-32 * (greatest - least)
    return values.view(kind) if kind == "complex128" else values.astype(kind)


@functools.lru_cache(maxsize=None)
def operands(work_name, size):
    work = next(work for work in works.WORKS if work.name == work_name)
    return {name: operand(*kind, size, seed) for seed, (name, kind) in enumerate(work.operands.items(), 1)}


def rows():
    """Row name -> (work, who, count of elements)."""
    result = {}
    for work in works.WORKS:
        for name, size in work.rows():
            for who in work.peers:
                if who != "numexpr" or numexpr is not None:
                    result[f"{name}/{who}"] = (work, who, size or SWAPPED)
    return result


def magnitude(answer):
    """The sum of the magnitudes of all parts, by which answers are compared."""
    answer = np.atleast_1d(np.asarray(answer))
    return float(np.abs(answer.view(np.float64) if answer.dtype.kind == "c" else answer.astype(np.float64)).sum())


def measure(work, who, size):
    names = {"np": np, "f8": np.float64, "evaluate": getattr(numexpr, "evaluate", None)}
    variables = operands(work.name, size)
    call = eval(f"lambda {', '.join(variables)}: {work.peers[who]}", names)
    bound = functools.partial(call, **variables)
    answer = bound()
    loops = 1
    while True:
        start = time.perf_counter_ns()
        for _ in range(loops):
            answer = bound()
        spent = time.perf_counter_ns() - start
        if spent >= SECONDS * 1e9:
            break
        loops = max(loops + 1, min(10 * loops, int(loops * 1.4 * SECONDS * 1e9 / max(spent, 1))))
    return spent / loops, magnitude(answer) if work.sizes else 0.0


def serve():
    gc.disable()
    known = rows()
    for line in sys.stdin:
        print("%.17g %.17g" % measure(*known[line.rstrip("\n")]), flush=True)


if __name__ == "__main__":
    if sys.argv[1:] == ["--list"]:
        print("\n".join(rows()))
    elif sys.argv[1:] == ["--serve"]:
        serve()
    else:
        sys.exit(__doc__)
