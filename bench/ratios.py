#!/usr/bin/env python3
"""Ratios of measured sides against their bare baselines, paired by round.

  ratios.py gbench FILE.json   Google Benchmark JSON of catalogue_benchmark
  ratios.py pairs FILE TITLE   lines "product MS" / "bare MS", one pair per round

Each row gives the median, min and max of the per-round ratios, and the median time of
each side. A ratio above 1 is time spent over the bare baseline.
"""
import json
import statistics
import sys


def row(title, product, bare, unit):
    ratios = [p / b for p, b in zip(product, bare)]
    print(f"{title:<34} ratio median {statistics.median(ratios):.2f}x  min {min(ratios):.2f}x  "
          f"max {max(ratios):.2f}x   median {statistics.median(product):.1f} {unit} "
          f"against {statistics.median(bare):.1f} {unit}  ({len(ratios)} rounds)")


def gbench(path):
    runs = [b for b in json.load(open(path))["benchmarks"] if b.get("run_type") == "iteration"]

    def side(name):
        chosen = sorted((b for b in runs if b["run_name"] == name), key=lambda b: b.get("repetition_index", 0))
        return chosen

    for bare_name, name, unit in (("BareScan/1000", "CatalogueScan/1000", "ms"),
                                  ("BareScan/10000", "CatalogueScan/10000", "ms"),
                                  ("BareNameBehind50MiB", "NameBehind50MiB", "us")):
        bare, product = side(bare_name), side(name)
        if not bare or not product:
            continue
        for clock in ("real_time", "cpu_time"):
            row(f"{name} ({clock.split('_')[0]})", [b[clock] for b in product], [b[clock] for b in bare], unit)
        if "grown_KiB" in product[0]:
            grown = statistics.median(b["grown_KiB"] for b in product)
            grown_bare = statistics.median(b["grown_KiB"] for b in bare)
            held = statistics.median(b.get("held_KiB", 0) for b in product)
            print(f"{'':<34} peak resident above start: {grown:.0f} KiB against {grown_bare:.0f} KiB "
                  f"(+{(grown - grown_bare) / 1024:.2f} MiB), of which the catalogue made holds {held:.0f} KiB")


def pairs(path, title):
    product, bare = [], []
    for line in open(path):
        parts = line.split()
        if len(parts) == 2 and parts[0] in ("product", "bare"):
            (product if parts[0] == "product" else bare).append(float(parts[1]))
    if min(product + bare, default=-1) < 0 or not product:
        sys.exit(f"{title}: a run failed ({path})")
    row(title, product, bare, "ms")


if __name__ == "__main__":
    if sys.argv[1] == "gbench":
        gbench(sys.argv[2])
    else:
        pairs(sys.argv[2], sys.argv[3])
