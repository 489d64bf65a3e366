#!/usr/bin/python3
# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Runs benchmarks in turns, and tells what they cost beside floors and peers.

A benchmark's name is CASE/ROLE/ARGUMENT: its role is "ours", "floor" or the name of a peer. A
counter NAME/ours is what a peer or the floor took over ours, measured within the benchmark; one
that ends with a unit in brackets is a figure of its own. All benchmarks of a round come in random
order, each in a process of its own.
"""
import argparse
import json
import os
import pathlib
import random
import re
import statistics
import subprocess
import sys

import live
import report

# Of benchmarks whose names have no role.
TITLES = {("iq", "paint"): "IQ paint with OpenGL",
          ("iq", "paintPixels"): "IQ paint into a picture",
          ("stepline", "drawWithGl"): "step line with OpenGL",
          ("stepline", "drawIntoPicture"): "step line into a picture",
          ("stepline", "setData"): "step line taken"}
# Counters that are what ours took over the floor.
OVER_FLOOR = ("whole", "pass")
# Programs that compare with calls of OpenGL, whatever draws elsewhere.
WITH_OPENGL = ("bench_iq", "bench_stepline")
SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def programs(folder):
    return sorted(path for path in pathlib.Path(folder).glob("bench_*")
                  if path.name != "bench_truth" and os.access(path, os.X_OK))


def names_of(program):
    text = subprocess.run([program, "--benchmark_list_tests"], capture_output=True, text=True,
                          check=True, stdin=subprocess.DEVNULL).stdout
    return [line for line in text.splitlines() if line]


def split(program, name):
    """Case and role of a benchmark's name."""
    parts = [part for part in name.split("/")
             if not re.match(r"(iterations|repeats|min_time):|(real|manual|process)_time$", part)]
    role = "ours"
    if len(parts) > 1 and not parts[1].isdigit():
        role = parts.pop(1)
    title = TITLES.get((program.name.replace("bench_", ""), parts[0]), parts[0])
    return " ".join([title] + [f"{int(part):,}" for part in parts[1:]]), role


def measure(program, name):
    """Time of an iteration, s, and what the counters tell.

    Processor time, or wall time of benchmarks that others work for; and wall time.
    """
    environment = dict(os.environ)
    if program.name in WITH_OPENGL:
        environment["ORVANE_RENDERER"] = "gl"
    pattern = re.sub(r"([.^$*+?()\[\]{}|\\])", r"\\\1", name)
    run = subprocess.run([program, f"--benchmark_filter=^{pattern}$",
                          "--benchmark_min_time=0.1", "--benchmark_format=json"],
                         capture_output=True, text=True, stdin=subprocess.DEVNULL,
                         env=environment)
    try:
        result = json.loads(run.stdout)["benchmarks"][0]
    except (ValueError, KeyError, IndexError):
        return None
    if result.get("error_occurred"):
        return None
    unit = SECONDS[result["time_unit"]]
    measured = "real_time" if re.search(r"(real|manual)_time", name) else "cpu_time"
    counters = {"floor/ours": 1.0 / result[key] for key in OVER_FLOOR if result.get(key)}
    counters.update({key: value for key, value in result.items()
                if isinstance(value, (int, float)) and
                (key.endswith("/ours") or key.endswith("]") or key == "allocations")})
    return result[measured] * unit, result["real_time"] * unit, counters


def renderer_of(case):
    """What draws the pictures of a case; none of those that have no picture."""
    if "OpenGL" in case:
        return "OpenGL by software" if os.environ.get("LIBGL_ALWAYS_SOFTWARE") else "OpenGL"
    return "into a picture" if re.search(r"paint|picture|eye a", case) else None


def run(folders, rounds, pattern, done_round=lambda cases: None):
    """Samples of each case and role, a list a folder; done_round is told them after each round."""
    todo = [(index, program, name) for index, folder in enumerate(folders)
            for program in programs(folder) for name in names_of(program)
            if re.search(pattern, name)]
    cases = [{} for _ in folders]
    order = random.Random(1)
    for turn in range(rounds):
        order.shuffle(todo)
        for done, (index, program, name) in enumerate(todo):
            print(f"\rround {turn + 1} of {rounds}: {done + 1} of {len(todo)} ", end="",
                  file=sys.stderr, flush=True)
            result = measure(program, name)
            if result is None:
                print(f"\n{program.name}: {name} gave nothing", file=sys.stderr)
                continue
            time, wall, counters = result
            case, role = split(program, name)
            roles = cases[index].setdefault(case, {})
            roles.setdefault(role, []).append(time)
            if role == "ours":
                roles.setdefault("wall", []).append(wall)
            for key, value in counters.items():
                if key.endswith("]"):  # a figure of its own, with its unit
                    figure = cases[index].setdefault(f"{case}: {key}", {})
                    figure.setdefault("ours", []).append(value)
                    continue
                peer = key.split("/")[0]
                roles.setdefault(peer, []).append(value * (1 if key == "allocations" else time))
        done_round(cases)
    print(file=sys.stderr)
    return cases


def summary(case, roles, unit="s", renderer=None):
    """A row of the results. Ratios are medians of those of the rounds."""
    ours = roles["ours"]
    median = statistics.median(ours)
    peers = {name: statistics.median(values) if values else None for name, values in roles.items()
             if name not in ("ours", "wall", "floor", "allocations")}

    def ratio(values):
        return statistics.median(a / b for a, b in zip(ours, values)) if values else None

    present = {name: value for name, value in peers.items() if value is not None}
    best = min(present, key=present.get) if present else None
    row = {"case": case, "unit": unit, "ours": median,
           "floor": statistics.median(roles["floor"]) if "floor" in roles else None,
           "peers": peers, "ratio_to_floor": ratio(roles.get("floor")),
           "ratio_to_best_peer": ratio(roles[best]) if best else None, "renderer": renderer,
           "spread": (max(ours) - min(ours)) / median if median else 0.0}
    if "wall" in roles:
        row["wall"] = statistics.median(roles["wall"])
    if "allocations" in roles:
        row["allocations"] = max(roles["allocations"])
    return row


def rows_of(cases):
    return [summary(case.split(" [")[0], roles,
                    case[:-1].split(" [")[1] if case.endswith("]") else "s", renderer_of(case))
            for case, roles in sorted(cases.items()) if "ours" in roles]


def compare(folders, names, rounds, pattern):
    """Names the cases of the second folder that are slower than the first's by a tenth."""
    before, after = run(folders, rounds, pattern)
    slower = []
    for case in sorted(set(before) & set(after)):
        if "ours" not in before[case] or "ours" not in after[case]:
            continue
        ratio = statistics.median(
            b / a for a, b in zip(before[case]["ours"], after[case]["ours"]))
        print(f"{case:48} {ratio:6.2f} times {names[0]}")
        if ratio > 1.1:
            slower.append(f"{case}: {100.0 * (ratio - 1.0):.0f} % slower")
    for line in slower:
        print(line)
    return 1 if slower else 0


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench")
    parser.add_argument("--bin", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--results", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--before", nargs=2, metavar=("FOLDER", "NAME"), help=argparse.SUPPRESS)
    parser.add_argument("--window", action="store_true", help="the live window beside GNU Radio")
    parser.add_argument("--rounds", type=int, default=5, help="times that each case is run (5)")
    parser.add_argument("--filter", default="", help="cases whose names have this pattern")
    options = parser.parse_args()
    if options.before:
        return compare([options.before[0], options.bin], [options.before[1]], options.rounds,
                       options.filter)
    if options.window:
        rows = [summary(case, roles, unit, renderer) for case, roles, unit, renderer in
                live.run(options.bin, options.rounds, options.filter)]
    else:
        rows = []

        def keep(cases):  # so that a run that is broken off was not for nothing
            rows[:] = rows_of(cases[0])
            report.write(rows, options.results)

        run([options.bin], options.rounds, options.filter, keep)
    report.write(rows, options.results)
    report.show(rows)
    return 0


if __name__ == "__main__":
    sys.exit(main())
