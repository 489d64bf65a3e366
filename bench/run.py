#!/usr/bin/python3
# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Measures what Orvane costs beside floors and peers, or beside itself at another commit."""
import argparse
import sys

import live
import programs
import report
import turns

SLOWER = 1.1  # from where on a case is named
RECHECKS = 2  # times that the rounds are run again for cases that look slower


def measure_all(options, rounds):
    """Our programs beside floors and peers."""
    def keep(cases):  # so that a run that is broken off was not for nothing
        report.write(cases.rows(), options.results)

    if options.window:
        cases = live.run([("ours", options.bin)], rounds, options.filter, None)
    else:
        cases = turns.take(programs.tasks(options.bin, options.filter), rounds, after_round=keep)
    keep(cases)
    report.show(cases.rows())
    return 0 if cases else 1


def comparisons(cases):
    return {name: case.ratio("ours", "before") for name, case in sorted(cases.items())
            if case.ratio("ours", "before") is not None}


def is_slower(ratio):
    return ratio > SLOWER


def compare(options, rounds):
    """Names cases that are slower than before by a tenth, and still are when measured again."""
    before, commit = options.before

    def more(pattern, cases):
        if options.window:
            return live.run([("ours", options.bin), ("before", before)], rounds, pattern,
                            ("ours", "before"), cases)
        tasks = (programs.tasks(options.bin, pattern, {"ours": "ours"}) +
                 programs.tasks(before, pattern, {"ours": "before"}))
        both = {task.case for task in tasks if task.role == "ours"} & {
            task.case for task in tasks if task.role == "before"}
        for name in sorted({task.case for task in tasks} - both if cases is None else ()):
            print(f"{name}: only one of both has it")
        return turns.take([task for task in tasks if task.case in both], rounds, cases)

    cases = more(options.filter, None)
    for _ in range(RECHECKS):
        suspects = [name for name, ratio in comparisons(cases).items() if is_slower(ratio)]
        if not suspects:
            break
        # A figure is measured with the case that it belongs to.
        names = sorted({name.split(": ")[0] for name in suspects})
        more("^(" + "|".join(map(programs.quoted, names)) + ")$", cases)
    ratios = comparisons(cases)
    rows = []
    for row in cases.rows():
        if row["case"] in ratios:
            rows.append({**row, "before": cases[row["case"]].median("before"), "commit": commit,
                         "ratio_to_before": ratios[row["case"]]})
            print(f"{row['case']:56} {ratios[row['case']]:6.2f} times {commit}")
    report.write_before(rows, options.results)
    slower = {name: ratio for name, ratio in ratios.items() if is_slower(ratio)}
    for name, ratio in slower.items():
        print(f"{name}: {100.0 * (ratio - 1.0):.0f} % slower")
    if not ratios:
        print("scripts/bench: both have no case in common", file=sys.stderr)
        return 2
    return 1 if slower else 0


def fill(options):
    """Puts the tables into a document, and tells what its words have to explain."""
    rows = report.read(options.results)
    without = report.fill(options.fill, rows)
    for goal, case in report.missed(rows):
        print(f"{goal}: missed by {case}")
    if without:
        print("scripts/bench: no place for " + ", ".join(without), file=sys.stderr)
    return 1 if without else 0


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench")
    parser.add_argument("--bin", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--results", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--before", nargs=2, metavar=("FOLDER", "NAME"), help=argparse.SUPPRESS)
    parser.add_argument("--fill", metavar="DOCUMENT", help=argparse.SUPPRESS)
    parser.add_argument("--window", action="store_true", help="the live window beside GNU Radio")
    parser.add_argument("--rounds", type=int, default=0, metavar="N",
                        help="times that each case is run (3)")
    parser.add_argument("--quick", action="store_true", help="one round")
    parser.add_argument("--filter", default="", metavar="PATTERN",
                        help="cases whose names have this pattern")
    options = parser.parse_args()
    rounds = options.rounds or (1 if options.quick else 3)
    if options.fill:
        return fill(options)
    return compare(options, rounds) if options.before else measure_all(options, rounds)


if __name__ == "__main__":
    sys.exit(main())
