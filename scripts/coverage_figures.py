"""Line and branch coverage for each folder of Parts/, by gcov's JSON."""

import collections
import gzip
import json
import os
import subprocess
import sys
import tempfile

build = os.path.abspath(sys.argv[1])
root = os.getcwd()
lines = collections.defaultdict(dict)  # file -> line -> hit
branches = collections.defaultdict(dict)  # file -> (line, index) -> hit

counters = []
for folder, _, names in os.walk(build):
    counters += [os.path.join(folder, name) for name in names if name.endswith(".gcda")]

with tempfile.TemporaryDirectory() as scratch:
    for start in range(0, len(counters), 50):
        subprocess.run(
            ["gcov", "--json-format", "--branch-probabilities", *counters[start : start + 50]],
            cwd=scratch, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
        )
        for name in os.listdir(scratch):
            path = os.path.join(scratch, name)
            with gzip.open(path, "rt") as report:
                for entry in json.load(report)["files"]:
                    source = os.path.relpath(os.path.join(root, entry["file"]), root)
                    if not source.startswith("Parts/"):
                        continue
                    for line in entry["lines"]:
                        number = line["line_number"]
                        lines[source][number] = lines[source].get(number, False) or line["count"] > 0
                        for index, branch in enumerate(line["branches"]):
                            if branch["throw"]:
                                continue
                            key = (number, index)
                            seen = branches[source].get(key, False)
                            branches[source][key] = seen or branch["count"] > 0
            os.remove(path)

totals = collections.defaultdict(lambda: [0, 0, 0, 0])
for source in lines:
    folder = os.path.dirname(source)
    for total in (totals[folder], totals["all"]):
        total[0] += sum(lines[source].values())
        total[1] += len(lines[source])
        total[2] += sum(branches[source].values())
        total[3] += len(branches[source])

print(f"{'folder':45} {'lines':>16} {'branches':>16}")
for folder in sorted(totals):
    hit, count, taken, ways = totals[folder]
    print(f"{folder:45} {hit:6}/{count:<6}{100 * hit // max(count, 1):3}% "
          f"{taken:6}/{ways:<6}{100 * taken // max(ways, 1):3}%")

if len(sys.argv) > 2:
    print("\nuncovered lines:")
    for source in sorted(lines):
        missed = [number for number, hit in sorted(lines[source].items()) if not hit]
        if missed:
            print(f"{source}: {', '.join(map(str, missed))}")
