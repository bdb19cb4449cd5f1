#!/usr/bin/env python3
"""check-mutate.py SOURCE: tools/mutate ends all processes that a test has started: when the test fails, when it takes too
long, and when tools/mutate itself is ended by a signal. A test runs with its arguments. A few survivors of a choice are
allowed."""

import importlib.machinery
import importlib.util
import os
import select
import signal
import subprocess
import sys
import tempfile
import types

SECONDS = 20


def load_mutate(source):
    sys.path.insert(0, os.path.join(source, "tools"))
    loader = importlib.machinery.SourceFileLoader("mutate", os.path.join(source, "tools/mutate"))
    module = importlib.util.module_from_spec(importlib.util.spec_from_loader("mutate", loader))
    loader.exec_module(module)
    return module


class TestProgram:
    """A program that starts a process which runs for ever, and then does something. Both keep a pipe open."""

    def __init__(self, directory, then):
        self.path = os.path.join(directory, "test")
        pipe = os.path.join(directory, "pipe")
        os.mkfifo(pipe)
        self.pipe = os.open(pipe, os.O_RDONLY | os.O_NONBLOCK)
        with open(self.path, "w", encoding="utf-8") as file:
            file.write(f"#!/bin/sh\nexec 3>{pipe}\ntail -f /dev/null &\necho started >&3\n{then}\n")
        os.chmod(self.path, 0o755)

    def waits_for(self, event):
        poll = select.poll()
        poll.register(self.pipe, event)
        return any(occurred & event for _, occurred in poll.poll(SECONDS * 1000))

    def has_started(self):
        return self.waits_for(select.POLLIN)

    def has_ended(self):
        os.read(self.pipe, 100)
        return self.waits_for(select.POLLHUP)


def run(mutate, path, timeout, *arguments):
    test = importlib.import_module("componentbuild").Test(path, arguments, {})
    build = types.SimpleNamespace(tests={"test": test})
    worker = types.SimpleNamespace(build=build, seed=0, directory=os.path.dirname(path))
    return mutate.Worker.run(worker, "test", path, "", timeout)


def check(mutate, source, case):
    """Returns what is wrong."""
    with tempfile.TemporaryDirectory() as directory:
        program = TestProgram(directory, {"failure": "exit 1", "arguments": '[ "$1$2" = corpusfile ]'}.get(case, "wait"))
        if case == "signal":
            with subprocess.Popen([sys.executable, __file__, source, program.path]) as process:
                if not program.has_started():
                    return "the test isn't started"
                process.send_signal(signal.SIGTERM)
                if process.wait(SECONDS) != 128 + signal.SIGTERM:
                    return "tools/mutate doesn't end"
        elif case == "arguments":
            if not run(mutate, program.path, SECONDS, "corpus", "file"):
                return "the test hasn't got its arguments"
        elif run(mutate, program.path, SECONDS if case == "failure" else 1):
            return "the test passes"
        return "" if program.has_ended() else "a process keeps running"


def limits_of_survivors(mutate):
    """All faults: 2 %. A choice of a few: what can't be bad luck."""
    limits = [mutate.allowed_survivors(tried, is_choice) for tried, is_choice in ((1000, False), (20, False), (20, True), (0, True))]
    return [] if limits == [20, 0, 3, 0] else [f"{limits} faults may survive"]


def main():
    source = sys.argv[1]
    mutate = load_mutate(source)
    if len(sys.argv) > 2:
        mutate.handle_signals()
        run(mutate, sys.argv[2], SECONDS)
        return 1
    wrong = limits_of_survivors(mutate) + [f"{case}: {message}" for case in ("failure", "timeout", "signal", "arguments") for message in [check(mutate, source, case)] if message]
    print("\n".join(wrong) or "all processes have ended")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
