# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
"""What the costs shall be, as ratios of the same run."""
import dataclasses
import re

FLOOR = "ratio_to_floor"
PEER = "ratio_to_best_peer"
BEFORE = "ratio_to_before"


@dataclasses.dataclass
class Limit:
    """At most so much of something, for the cases with a pattern; all of a goal without."""
    key: str
    most: float
    pattern: str = ""


@dataclasses.dataclass
class Goal:
    name: str     # of its place in the document
    pattern: str  # of its cases
    limits: list


GOALS = (
    Goal("window", r"^window, ", [Limit(BEFORE, 1 / 6, "embedded demo, 1280"),
                                  Limit(PEER, 1.0, "received and measured"),
                                  Limit(PEER, 0.5, "without figures, 1280"),
                                  Limit(PEER, 1.0, "without figures, 3840")]),
    Goal("start", r"^start", [Limit(PEER, 2.0, "picture$"), Limit(PEER, 1.5, "memory")]),
    Goal("time", r"^time paint", [Limit(PEER, 1 / 3), Limit(FLOOR, 1.5),
                                  Limit("growth", 1.3, " 100,000$")]),
    Goal("iq", r"^IQ paint, ", [Limit(PEER, 1 / 3, " (1,000|10,000)$"), Limit(FLOOR, 1.5)]),
    Goal("eye", r"^eye a", [Limit(PEER, 1.0)]),
    Goal("panes", r"^pane of ((?!OpenGL).)*$", [Limit(PEER, 1.0)]),
    Goal("adding", r"^time AddData", [Limit(FLOOR, 1.2), Limit("allocations", 0.0)]),
    Goal("notifying", r"view notified", [Limit(FLOOR, 3.0), Limit("allocations", 0.0)]),
    Goal("symbols", r"^symbols of", [Limit(PEER, 1.0)]),
    Goal("pipe", r"^million samples", [Limit("ours", 0.0, " 2: left out")]),
    Goal("density", r"^density", [Limit("ours", 1e-5, "trace counted"),  # 100,000 a second
                                  Limit(FLOOR, 1.5), Limit(PEER, 0.1, "trace counted"),
                                  Limit(PEER, 1.0, "painted"), Limit("ours", 0.0, "left out")]),
    Goal("opengl", r"with OpenGL", []),
    Goal("other", r"", []),  # what is left
)

TITLES = {FLOOR: "of the floor", PEER: "of the best peer", BEFORE: "of before",
          "growth": "of that of 1,000", "allocations": "allocations", "ours": ""}


def with_growth(rows):
    """Rows, those of the last size with how much they are of that of the second."""
    ours = {row["case"]: row["ours"] for row in rows}
    result = []
    for row in rows:
        second = ours.get(re.sub(r" 100,000$", " 1,000", row["case"]))
        grown = row["case"].endswith(" 100,000") and second
        result.append(dict(row, growth=row["ours"] / second) if grown else row)
    return result


def judge(goal, row):
    """Of each limit that holds for a row: what it allows, and whether that is kept."""
    verdicts = []
    for limit in goal.limits:
        value = row.get(limit.key)
        if not re.search(limit.pattern, row["case"]) or value is None:
            continue
        is_ratio = limit.key in (FLOOR, PEER, BEFORE, "growth")
        is_kept = round(value, 2) <= round(limit.most, 2) if is_ratio else value <= limit.most
        verdicts.append((limit, value, is_kept))
    return verdicts


def split(rows):
    """Rows of each goal; each row belongs to the first that wants it."""
    left = with_growth(rows)
    for goal in GOALS:
        mine = [row for row in left if re.search(goal.pattern, row["case"])]
        left = [row for row in left if not re.search(goal.pattern, row["case"])]
        yield goal, mine
