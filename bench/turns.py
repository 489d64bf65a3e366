# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""Cases, and taking turns with them.

A case is measured in roles: "ours", "before" (ours at another commit), "floor", or the name of a
peer. In each round the cases come in random order, and the roles of a case one after the other, in
random order too, so that what else the machine does meets all of them alike.
"""
import dataclasses
import random
import statistics
import sys
import typing

OWN_ROLES = ("ours", "before", "floor")


@dataclasses.dataclass
class Sample:
    """What one run of a role tells."""
    value: float | None
    wall: float | None = None  # s, beside processor time
    renderer: str | None = None
    allocations: float | None = None
    beside: dict = dataclasses.field(default_factory=dict)  # role: value, measured with it
    figures: dict = dataclasses.field(default_factory=dict)  # name: (value, unit) of other cases


class Missing:
    """A peer that is not installed."""


@dataclasses.dataclass
class Task:
    case: str
    role: str
    unit: str
    run: typing.Callable  # gives a Sample, Missing, or None where it fails


class Case:
    """What the rounds gave."""

    def __init__(self, name, unit):
        self.name = name
        self.unit = unit
        self.renderer = None
        self.allocations = None
        self.walls = []
        self.roles = {}  # role: {round: value}; without values where it is missing

    def put(self, role, turn, value):
        self.roles.setdefault(role, {})[turn] = value

    def median(self, role):
        values = self.roles.get(role)
        return statistics.median(values.values()) if values else None

    def ratio(self, role, to):
        """Median of the ratios of the rounds; none where the rounds give none."""
        ours, others = self.roles.get(role, {}), self.roles.get(to, {})
        ratios = [ours[turn] / others[turn] for turn in ours if others.get(turn)]
        return statistics.median(ratios) if ratios else None

    def spread(self):
        values = self.roles["ours"].values()
        middle = statistics.median(values)
        return (max(values) - min(values)) / middle if middle else 0.0

    def peers(self):
        return {role: self.median(role) for role in sorted(self.roles) if role not in OWN_ROLES}

    def row(self):
        """A row of the results."""
        peers = self.peers()
        present = {name: value for name, value in peers.items() if value is not None}
        best = min(present, key=present.get) if present else None
        row = {"case": self.name, "unit": self.unit, "ours": self.median("ours"),
               "floor": self.median("floor"), "peers": peers,
               "ratio_to_floor": self.ratio("ours", "floor"),
               "ratio_to_best_peer": self.ratio("ours", best) if best else None,
               "renderer": self.renderer, "spread": self.spread(),
               "rounds": len(self.roles["ours"])}
        if self.walls:
            row["wall"] = statistics.median(self.walls)
        if self.allocations is not None:
            row["allocations"] = self.allocations
        return row


class Cases(dict):
    """Cases by name."""

    def take(self, task, turn, sample):
        case = self.setdefault(task.case, Case(task.case, task.unit))
        if sample is Missing:
            case.roles.setdefault(task.role, {})
            return
        if sample.value is not None:
            case.put(task.role, turn, sample.value)
        for role, value in sample.beside.items():
            if value is Missing:
                case.roles.setdefault(role, {})
            else:
                case.put(role, turn, value)
        for name, (value, unit) in sample.figures.items():
            figure = self.setdefault(f"{task.case}: {name}", Case(f"{task.case}: {name}", unit))
            figure.put(task.role, turn, value)
            if task.role == "ours":
                figure.renderer = sample.renderer
        if task.role == "ours":
            case.renderer = sample.renderer
            if sample.wall is not None:
                case.walls.append(sample.wall)
            if sample.allocations is not None:
                case.allocations = max(case.allocations or 0.0, sample.allocations)

    def rows(self):
        return [case.row() for name, case in sorted(self.items()) if case.roles.get("ours")]


def take(tasks, rounds, cases=None, after_round=lambda cases: None):
    """Runs all tasks in each of the rounds. @return what they gave, and cases had before."""
    cases = Cases() if cases is None else cases
    first = 1 + max((turn for case in cases.values() for values in case.roles.values()
                     for turn in values), default=-1)
    groups = {}
    for task in tasks:
        groups.setdefault(task.case, []).append(task)
    order = random.Random(1 + first)
    for turn in range(first, first + rounds):
        names = sorted(groups)
        order.shuffle(names)
        for done, name in enumerate(names):
            print(f"\rround {turn + 1} of {first + rounds}: {done + 1} of {len(names)} ", end="",
                  file=sys.stderr, flush=True)
            roles = list(groups[name])
            order.shuffle(roles)
            for task in roles:
                sample = task.run()
                if sample is None:
                    print(f"\n{name}: {task.role} gave nothing", file=sys.stderr)
                    continue
                cases.take(task, turn, sample)
        after_round(cases)
    print(file=sys.stderr)
    return cases
