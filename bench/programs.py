# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""The benchmark programs as tasks, each benchmark in a process of its own.

A benchmark's name is CASE/ROLE/ARGUMENT. A counter NAME/ours is what a peer or the floor took over
ours, measured within the benchmark, and 0 where the peer is not installed; one that ends with a
unit in brackets is a figure of its own, in the place of the time. A label says what painted.
"""
import functools
import json
import os
import pathlib
import re
import subprocess
import sys

from turns import Missing, Sample, Task

# Programs whose windows are painted in more than one way, or that make calls of OpenGL themselves.
RENDERERS = {"bench_iq": ("gl",), "bench_stepline": ("gl",), "bench_panes": ("raster", "gl")}
# Counters that are what ours took over the floor.
OVER_FLOOR = ("whole",)
SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def programs(folder):
    return sorted(path for path in pathlib.Path(folder).glob("bench_*")
                  if path.name != "bench_truth" and os.access(path, os.X_OK))


def run(program, renderer, *arguments):
    """What a program prints; says why where it fails."""
    done = subprocess.run([program, *arguments], capture_output=True, text=True,
                          stdin=subprocess.DEVNULL,
                          env=dict(os.environ, ORVANE_RENDERER=renderer))
    if done.returncode != 0:
        print(f"\n{program.name} ended with {done.returncode}: {done.stderr[-400:]}",
              file=sys.stderr)
    return done.stdout


def case_and_role(name):
    parts = [part for part in name.split("/")
             if not re.match(r"(iterations|repeats|min_time):|(real|manual|process)_time$", part)]
    role = "ours"
    if len(parts) > 1 and not parts[1].isdigit():
        role = parts.pop(1)
    return " ".join([parts[0]] + [f"{int(part):,}" for part in parts[1:]]), role


def sample_of(result, measured):
    """Processor time, or wall time of benchmarks that others work for."""
    if "not installed" in result.get("error_message", ""):
        return Missing
    if result.get("error_occurred"):
        return None
    unit = SECONDS[result["time_unit"]]
    value = result[measured] * unit
    sample = Sample(value, wall=result["real_time"] * unit, renderer=result.get("label"),
                    allocations=result.get("allocations"))
    for key, number in result.items():
        if key in OVER_FLOOR and number:
            sample.beside["floor"] = value / number
        elif key.endswith("/ours"):
            sample.beside[key.split("/")[0]] = number * value if number else Missing
        elif key.endswith("]"):
            name, unit_name = key[:-1].split(" [")
            sample.figures[name] = (number, unit_name)
    if sample.figures:
        sample.value = None
    return sample


def quoted(text):
    """A pattern of a text, for Python as for the benchmarks."""
    return re.sub(r"([.^$*+?()\[\]{}|\\])", r"\\\1", text)


def measure(program, renderer, name):
    text = run(program, renderer, f"--benchmark_filter=^{quoted(name)}$", "--benchmark_min_time=0.1",
               "--benchmark_format=json")
    measured = "real_time" if re.search(r"(real|manual)_time", name) else "cpu_time"
    try:
        return sample_of(json.loads(text)["benchmarks"][0], measured)
    except (ValueError, KeyError, IndexError):
        return None


def tasks(folder, pattern, roles=None):
    """Benchmarks in a folder. @param roles: other names for roles; those without are left out."""
    found = {}
    for program in programs(folder):
        for renderer in RENDERERS.get(program.name, ("raster",)):
            for name in run(program, renderer, "--benchmark_list_tests").splitlines():
                case, role = case_and_role(name)
                if roles is not None:
                    role = roles.get(role)
                if role and re.search(pattern, case):
                    run_it = functools.partial(measure, program, renderer, name)
                    found.setdefault((case, role), Task(case, role, "s", run_it))
    return list(found.values())
