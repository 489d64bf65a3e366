# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Results of benchmarks as a file and as a table."""
import datetime
import json
import os
import pathlib
import platform
import re


def write(rows, path):
    """Puts rows into a file, in the place of those of the same cases that it had."""
    path = pathlib.Path(path)
    try:
        old = json.loads(path.read_text())
    except (OSError, ValueError):
        old = []
    new = {row["case"] for row in rows}
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps([row for row in old if row["case"] not in new] + rows, indent=1))


def processor():
    text = pathlib.Path("/proc/cpuinfo").read_text()
    model = re.search(r"model name\s*:\s*(.*)", text)
    return f"{model.group(1) if model else platform.machine()}, {os.cpu_count()} cores"


def quantity(value, unit):
    if value is None:
        return ""
    if unit != "s":
        return f"{value:.3g} {unit}"
    for factor, prefix in ((1.0, ""), (1e-3, "m"), (1e-6, "µ"), (1e-9, "n")):
        if value >= factor or prefix == "n":
            return f"{value / factor:.3g} {prefix}s"
    return ""


def ratio(value):
    return "" if value is None else f"{value:.2f}"


def show(rows):
    """Prints a table of Markdown."""
    print(f"{processor()}, {datetime.date.today().isoformat()}, "
          f"load {os.getloadavg()[0]:.1f} at the end\n")
    print("| case | ours | spread | wall time | floor | peers | of floor | of best peer |")
    print("|---|---|---|---|---|---|---|---|")
    for row in rows:
        unit = row["unit"]
        peers = ", ".join(f"{name} {quantity(value, unit)}" if value is not None
                          else f"{name} missing" for name, value in row["peers"].items())
        case = row["case"]
        if row.get("allocations"):
            case += f" ({row['allocations']:.0f} allocations)"
        print(f"| {case} | {quantity(row['ours'], unit)} | {100 * row['spread']:.0f} % "
              f"| {quantity(row.get('wall'), unit)} | {quantity(row['floor'], unit)} "
              f"| {peers} | {ratio(row['ratio_to_floor'])} | {ratio(row['ratio_to_best_peer'])} |")
