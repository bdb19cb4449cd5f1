#!/usr/bin/env python3
"""check-prove.py SOURCE: tools/prove runs all proofs, says which failed and why, and docs/testing.md describes each."""

import contextlib
import importlib.machinery
import importlib.util
import io
import os
import re
import sys
import tempfile

TABLE = "before\n<!-- written by tools/prove -->\n| Proof |\n|---|\n| good | short | old |\n<!-- end -->\nafter\n"


def load_prove(source):
    loader = importlib.machinery.SourceFileLoader("prove", os.path.join(source, "tools/prove"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("prove", loader))
    loader.exec_module(module)
    return module


class Check:
    """tools/prove with proofs of its own, in a directory of its own."""

    def __init__(self, source, directory):
        self.prove = load_prove(source)
        self.directory = directory
        self.prove.SOURCE = directory
        self.prove.LOGS = os.path.join(directory, "out")
        self.prove.DOCUMENT = os.path.join(directory, "testing.md")
        with open(self.prove.DOCUMENT, "w", encoding="utf-8") as file:
            file.write(TABLE)

    def proof(self, script, minutes=0, **options):
        return self.prove.Proof(lambda length: [["sh", "-c", script]], minutes, **options)

    def run(self, proofs, *arguments):
        """Returns the status and what was printed."""
        self.prove.PROOFS, self.prove.ONLY_LONG = proofs, ["slow"]
        sys.argv = ["prove", *arguments]
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            status = self.prove.main()
        return status, printed.getvalue()

    def content(self, path):
        with open(os.path.join(self.directory, path), encoding="utf-8") as file:
            return file.read()


def expect(condition, *what):
    if not condition:
        print(*what)
        sys.exit(1)


def check_failure(check):
    """A proof that fails makes the status 1, and shows the end of its log. The others run nevertheless."""
    status, printed = check.run({"bad": check.proof("seq 1000; echo broken >&2; exit 3"),
                                 "good": check.proof("echo 'Totals: 7 passed'")}, "short")
    expect(status == 1, "status", status)
    expect(re.search(r"^\| bad \| short \| 0:00 \| \S+ \| FAILED \|$", printed, re.MULTILINE), printed)
    expect("\n1000\nbroken\n" in printed and "\n10\n" not in printed, printed)
    expect("prove: bad failed, see out/proof-bad.log" in printed, printed)
    expect(re.search(r"^\| good \|.*\| 7 passed \|$", printed, re.MULTILINE), printed)
    expect(check.content("out/proof-bad.log").startswith("1\n2\n"), "the log isn't whole")
    expect("FAILED" in check.content("out/proofs.md"), "the table doesn't show the failure")


def check_first_failure(check):
    """The commands after one that fails don't run."""
    proof = check.prove.Proof(lambda length: [["false"], ["touch", "reached"]], 0)
    status, _ = check.run({"bad": proof}, "short")
    expect(status == 1 and not os.path.exists(os.path.join(check.directory, "reached")), "went on after a failure")


def check_skip(check):
    status, printed = check.run({"x": check.proof("echo 'no emulator here'; exit 77")}, "short", "--record")
    expect(status == 0 and "| SKIPPED: no emulator here |" in printed, status, printed)
    expect(check.content("testing.md") == TABLE, "a skipped proof was recorded")


def check_time_limit(check):
    """A proof that would end too late is skipped. What comes after it runs if there is time for it."""
    proofs = {"first": check.proof("true", minutes=30), "huge": check.proof("touch reached", minutes=41),
              "last": check.proof("echo 'Totals: 7 passed'; echo left=$LCD_PROOF_SECONDS_LEFT", minutes=39)}
    status, printed = check.run(proofs, "short", "--minutes", "40")
    expect(status == 0 and "| huge | short | 0:00 |" in printed and "| SKIPPED: no time left of 40 minutes |" in printed, status, printed)
    left = int(re.search(r"^left=(\d+)$", check.content("out/proof-last.log"), re.MULTILINE)[1])
    expect(2300 <= left <= 2400, "seconds left", left)
    expect("| 7 passed |" in printed and not os.path.exists(os.path.join(check.directory, "reached")), printed)
    status, printed = check.run(proofs, "short")
    expect(status == 0 and "SKIPPED" not in printed, status, printed)


def check_slow_machine(check):
    """A machine that has been four times too slow is expected to stay so."""
    clock = [0]
    check.prove.time = type("Time", (), {"monotonic": staticmethod(lambda: clock[0])})
    limit, proof = check.prove.TimeLimit(60), check.proof("true", minutes=5)
    answers = []
    for clock[0] in (0, 20 * 60, 40 * 60, 60 * 60):
        answers.append(limit.has_time_for(proof))
    expect(answers == [True, True, True, False], answers)
    clock[0] = 50 * 60  # with 16 minutes of this machine to go
    expect(not limit.has_time_for(proof), "a proof was started that ends too late")


def check_lengths(check):
    """Each length has its proofs. Proofs that build everything again run their tests at the quick length."""
    script = "echo length=$LCD_PROOF_LENGTH"
    proofs = {"walk": check.proof(script), "suite": check.proof(script, isQuick=True), "slow": check.proof(script)}
    status, printed = check.run(proofs, "short")
    expect(status == 0 and "slow" not in printed, printed)
    expect(check.content("out/proof-walk.log") == "length=short\n", "not short")
    expect(check.content("out/proof-suite.log") == "length=quick\n", "not quick")
    status, printed = check.run(proofs, "long")
    expect(status == 0 and "| slow | long |" in printed, printed)


def check_side_by_side(check):
    """Proofs that use one core run side by side: each of these waits for the other one."""
    os.mkfifo(os.path.join(check.directory, "pipe"))
    check.prove.CORES = 2
    status, printed = check.run({"reads": check.proof("timeout 60 cat pipe", isAlone=False),
                                 "writes": check.proof("echo | timeout 60 tee pipe", isAlone=False)}, "short")
    expect(status == 0, printed)


def check_record(check):
    status, _ = check.run({"good": check.proof("echo 'Totals: 7 passed'"), "bad": check.proof("false")}, "short", "--record")
    expect(status == 1, "status", status)
    expect(re.fullmatch(r"before\n<!-- .* -->\n\| Proof \|\n\|---\|\n\| good \| short \| 0:00 \| \S+ \| 7 passed \|\n<!-- end -->\nafter\n",
                        check.content("testing.md")), check.content("testing.md"))


def check_unknown(check):
    errors = io.StringIO()
    try:
        with contextlib.redirect_stderr(errors):
            check.run({"good": check.proof("true")}, "short", "godo")
    except SystemExit as end:
        expect(end.code == 2 and "no proof godo; there are good" in errors.getvalue(), end.code, errors.getvalue())
        return
    expect(False, "an unknown proof is no error")


def check_document(source):
    """docs/testing.md has a row for each proof, and no other."""
    with open(os.path.join(source, "docs/testing.md"), encoding="utf-8") as file:
        table = file.read().split("| Proof | What it guarantees", 1)[1].split("\n\n", 1)[0]
    documented = [name for row in re.findall(r"^\| (`.*?) \|", table, re.MULTILINE) for name in re.findall(r"`(\w+)`", row)]
    expect(documented == list(load_prove(source).PROOFS), "docs/testing.md describes", documented)


def main():
    source = os.path.realpath(sys.argv[1])
    for check in (check_failure, check_first_failure, check_skip, check_time_limit, check_slow_machine,
                  check_lengths, check_side_by_side, check_record, check_unknown):
        with tempfile.TemporaryDirectory() as directory:
            check(Check(source, directory))
    check_document(source)


main()
