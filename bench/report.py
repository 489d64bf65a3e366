# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Results of benchmarks as a file, as a table, and in the document about performance."""
import datetime
import json
import os
import pathlib
import platform
import re

import goals

HEAD = ("| case | ours | spread | wall time | floor | peers | of floor | of best peer | painted by |"
        " goal |\n|---|---|---|---|---|---|---|---|---|---|")


def read(path):
    try:
        return json.loads(pathlib.Path(path).read_text())
    except (OSError, ValueError):
        return []


def write_before(rows, path):
    """Adds how rows compare with before to those of the same cases in a file; new ones, too."""
    old = {row["case"]: row for row in read(path)}
    keys = ("before", "commit", "ratio_to_before")
    write([{**old.get(row["case"], row), **{key: row[key] for key in keys}} for row in rows], path)


def write(rows, path):
    """Puts rows into a file, in the place of those of the same cases that it had."""
    path = pathlib.Path(path)
    machine = {"processor": processor(), "date": datetime.date.today().isoformat(),
               "load": round(os.getloadavg()[0], 1)}
    new = {row["case"] for row in rows}
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(json.dumps([row for row in read(path) if row["case"] not in new] +
                               [{**machine, **row} for row in rows], indent=1))


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


def verdict(goal, row):
    """How a row stands to its goal, in words."""
    parts = []
    for limit, value, is_kept in goals.judge(goal, row):
        title = goals.TITLES[limit.key]
        amount = quantity if limit.key == "ours" else lambda value, _: f"{value:.2g}"
        found = quantity(value, row["unit"]) if limit.key == "ours" else f"{value:.2f}"
        parts.append(f"at most {amount(limit.most, row['unit'])} {title}".strip() +
                     (": kept" if is_kept else f": **missed** ({found})"))
    return "; ".join(parts)


def order(row):
    """Cases by name, and by number where they have the same."""
    return [(0, int(part.replace(",", "")), "") if part[0].isdigit() else (1, 0, part)
            for part in re.findall(r"\d[\d,]*|\D+", row["case"])]


def table(rows, goal):
    lines = [HEAD]
    for row in sorted(rows, key=order):
        unit = row["unit"]
        peers = [f"{name} {quantity(value, unit)}" if value is not None else f"{name} missing"
                 for name, value in row["peers"].items()]
        if "before" in row:
            peers.append(f"before ({row['commit']}) {quantity(row['before'], unit)}")
        lines.append(f"| {row['case']} | {quantity(row['ours'], unit)} | {100 * row['spread']:.0f} % "
                     f"| {quantity(row.get('wall'), 's')} | {quantity(row['floor'], unit)} "
                     f"| {', '.join(peers)} | {ratio(row['ratio_to_floor'])} "
                     f"| {ratio(row['ratio_to_best_peer'])} | {row['renderer'] or ''} "
                     f"| {verdict(goal, row)} |")
    return "\n".join(lines)


def span(rows, key):
    values = sorted({row[key] for row in rows})
    return f"{values[0]}" + (f" to {values[-1]}" if len(values) > 1 else "")


def machine_of(rows):
    """Where and when rows were measured, and beside what."""
    places = sorted({f"{row['processor']}, {row['date']}" for row in rows})
    return "; ".join([*places, f"load {span(rows, 'load')}", f"rounds: {span(rows, 'rounds')}"])


def show(rows):
    for goal, mine in goals.split(rows):
        if mine:
            print(f"\n{goal.name}\n\n{table(mine, goal)}")


def missed(rows):
    """Goals and cases that miss them."""
    return [(goal.name, row["case"]) for goal, mine in goals.split(rows)
            for row in sorted(mine, key=order)
            if not all(is_kept for _, _, is_kept in goals.judge(goal, row))]


def fill(document, rows):
    """Puts the tables of all goals into their places in a document. @return goals without one."""
    path = pathlib.Path(document)
    text = path.read_text()
    without = []
    for goal, mine in goals.split(rows):
        place = re.compile(rf"(<!-- table: {goal.name} -->\n).*?(<!-- end -->)", re.S)
        if not place.search(text):
            without.append(goal.name)
            continue
        content = f"{machine_of(mine)}:\n\n{table(mine, goal)}\n" if mine else "Not measured.\n"
        text = place.sub(lambda found, new=content: found.group(1) + "\n" + new + "\n" +
                         found.group(2), text)
    path.write_text(text)
    return without
