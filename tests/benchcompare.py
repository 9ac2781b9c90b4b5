#!/usr/bin/env python3
"""What bench/compare makes of figures, by a program in the benchmarks' place that tells those that it is given."""
import json
import os
import subprocess
import sys
import tempfile

COMPARE = os.path.join(sys.argv[1], "bench", "compare")
# Figures of the runs, one after the other, the last one for all further runs; exit code, and what is told.
CASES = [
    ("as before", [{"ratio": 1.05, "goal": 2}], 0, ""),
    ("better", [{"ratio": 0.5, "goal": 2}], 0, ""),
    ("worse", [{"ratio": 1.2, "goal": 2}], 1, "A-Case<int>: worse"),
    ("worse once", [{"ratio": 1.2, "goal": 2}, {"ratio": 1, "goal": 2}], 0, ""),
    ("a goal missed", [{"ratio": 1.05, "goal": 1}], 1, "A-Case<int>: misses its goal"),
    ("seconds", [{"ours_s": 0.04, "goal": 0.05}], 0, ""),
    ("too many seconds", [{"ours_s": 0.06, "goal": 0.05}], 1, "A-Case<int>: misses its goal"),
    ("one of several waits", [{"sort": 0.06, "paste": 0.01, "goal": 0.05}], 1, "A-Case<int> sort: misses its goal"),
    ("bytes", [{"ratio": 1, "goal": 2, "bytes_per_entry": 410, "bytes_goal": 400}], 1, "A-Case<int> bytes: misses its goal"),
    ("an error", [{"error_message": "the bytes differ"}], 1, "A-Case<int>: the bytes differ"),
]
# Like the library's, its patterns take no escapes of plain characters.
PROGRAM = r"""#!/usr/bin/env python3
import json, os, re, sys
NAME = "A-Case<int>/iterations:1/manual_time"
pattern = sys.argv[-1].split("=", 1)[1]
if re.search(r"\\[^][.+*?(){}|^$\\]", pattern) or not (pattern[0] == "-" or re.search(pattern, NAME)):
    sys.exit(pattern)
here = os.path.dirname(os.path.abspath(__file__))
runs = json.load(open(here + "/runs"))
print(json.dumps({"context": {}, "benchmarks": [dict(runs[0], name=NAME, label="baseline")]}))
json.dump(runs[1:] or runs, open(here + "/runs", "w"))
"""


def run(folder, runs, *options):
    with open(os.path.join(folder, "runs"), "w", encoding="utf-8") as file:
        json.dump(runs, file)
    return subprocess.run([sys.executable, COMPARE, "--bench", os.path.join(folder, "program"),
                           "--table", os.path.join(folder, "table"), *options],
                          capture_output=True, text=True, check=False)


def main():
    failures = []
    with tempfile.TemporaryDirectory() as folder:
        program = os.path.join(folder, "program")
        with open(program, "w", encoding="utf-8") as file:
            file.write(PROGRAM)
        os.chmod(program, 0o755)
        run(folder, [{"ratio": 1, "goal": 2}], "--update")
        for name, runs, code, told in CASES:
            done = run(folder, runs)
            if done.returncode != code or done.stderr.strip() != told:
                failures.append(f"{name}: {done.returncode}, not {code} with \"{told}\":\n{done.stderr}")
    print("\n".join(failures), file=sys.stderr)
    return 1 if failures else 0


sys.exit(main())
