"""What peers_bench wrote, by workload and peer, and what follows from it."""
import json


class Row:
    """One peer in one workload: metrics with value and unit, in the order in which it recorded them."""

    def __init__(self, peer, kind):
        self.peer, self.kind = peer, kind
        self.values, self.units, self.notes, self.failures = {}, {}, [], []

    def ratio_to(self, floor, metric):
        """How many times the floor's time or size; for rates, how many times slower. None if unknown."""
        mine, base = self.values.get(metric), floor.values.get(metric) if floor else None
        if not mine or not base or self.units[metric] == "hash":
            return None
        return base / mine if is_rate(self.units[metric]) else mine / base

    def is_better(self, other, metric):
        mine, theirs = self.values.get(metric), other.values.get(metric)
        if mine is None or theirs is None:
            return False
        return mine > theirs if is_rate(self.units[metric]) else mine < theirs


def is_rate(unit):
    return unit.endswith("/s")


def read(files):
    """Workload -> list of rows, in the order of the lines."""
    workloads = {}
    for name in files:
        with open(name, encoding="utf-8") as lines:
            for line in lines:
                take(workloads, json.loads(line))
    return workloads


def take(workloads, line):
    rows = workloads.setdefault(line["workload"], [])
    row = next((r for r in rows if r.peer == line["peer"]), None)
    if row is None:
        row = Row(line["peer"], line["kind"])
        rows.append(row)
    metric, value = line["metric"], line["value"]
    if metric == "note":
        row.notes.append(value)
    elif metric.startswith("verified: "):
        if not value:
            row.failures.append(metric.removeprefix("verified: "))
    else:
        row.values[metric], row.units[metric] = value, line["unit"]


def floor_of(rows):
    return next((row for row in rows if row.kind == "floor"), None)


def named(rows, peer):
    return next((row for row in rows if row.peer == peer), None)


def number(value):
    return f"{value:.3g}" if abs(value) < 1000 else f"{value:,.0f}"


def times(ratio):
    return f"{ratio:.2g}x" if ratio < 100 else f"{ratio:.0f}x"
