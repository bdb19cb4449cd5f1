"""What tools/mutate and tools/coverage have in common: the commands of a build directory, and a copy of the component that
is built with them and preloaded into the tests."""

import collections
import concurrent.futures
import contextlib
import glob
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import tempfile

SOURCE = os.path.realpath(os.path.join(os.path.dirname(__file__), ".."))
COMPONENT = os.path.join(SOURCE, "framework/src/libs/lcdfactorymodeimpl")
LIBRARY = "liblcdfactorymodeimpl.so"


def fail(message):
    print(f"{os.path.basename(sys.argv[0])}: {message}", file=sys.stderr)
    sys.exit(2)


Test = collections.namedtuple("Test", "program arguments environment")


class Build:
    """The commands of a build directory."""

    def __init__(self, directory):
        self.directory = os.path.realpath(directory)
        try:
            with open(os.path.join(self.directory, "compile_commands.json"), encoding="utf-8") as file:
                entries = json.load(file)
            commands = self.run_ninja("commands", f"lib/{LIBRARY}")
            listed = subprocess.run(["ctest", "--show-only=json-v1"], cwd=self.directory, check=True,
                                    capture_output=True, text=True).stdout
        except (OSError, subprocess.CalledProcessError) as error:
            fail(f"{directory} is no build directory with {LIBRARY}: {error}")
        self.compile = {entry["file"]: entry["command"] for entry in entries}
        self.generated = [file for file in self.compile if f"/{LIBRARY[3:-3]}_autogen/" in file]
        self.link = commands[-1]
        self.tests = {}
        for test in json.loads(listed)["tests"]:
            program, *arguments = test.get("command") or [""]
            if program.startswith(self.directory + "/tests/") and self.uses_component(test["name"], program):
                self.tests[test["name"]] = Test(program, arguments, self.environment(test))

    def run_ninja(self, tool, *arguments):
        return subprocess.run(["ninja", "-t", tool, *arguments], cwd=self.directory, check=True, capture_output=True,
                              text=True).stdout.splitlines()

    @staticmethod
    def environment(test):
        variables = next((p["value"] for p in test.get("properties", []) if p["name"] == "ENVIRONMENT"), [])
        return dict(variable.split("=", 1) for variable in variables)

    def uses_component(self, test, program):
        """Returns whether a built test is linked to the component or includes one of its headers."""
        if not os.path.exists(program):
            return False
        dynamic = subprocess.run(["readelf", "-d", program], capture_output=True, text=True, check=False).stdout
        return f"[{LIBRARY}]" in dynamic or self.includes(test, component_files())

    def includes(self, test, names):
        source = self.source_of(test)
        text = open(source, encoding="utf-8").read() if source else ""
        return any(f'#include "{name}"' in text for name in names if name.endswith(".h"))

    @staticmethod
    def source_of(test):
        return next(glob.iglob(os.path.join(SOURCE, "tests", "**", f"{test}.cpp"), recursive=True), None)

    def unit_of(self, test):
        """Returns the source that is compiled for a test: its own, or one that includes those of several tests."""
        source = self.source_of(test)
        if source in self.compile:
            return source
        for unit in self.compile:
            if unit.startswith(self.directory) and unit.endswith("_tests.cpp"):
                with open(unit, encoding="utf-8") as file:
                    if f'#include "{source}"' in file.read():
                        return unit
        return fail(f"no program is built for {test}")

    def users_of(self, header):
        """Returns the sources of the component and the test programs that include a header of the component."""
        names, grown = {header}, True
        texts = {name: open(os.path.join(COMPONENT, name), encoding="utf-8").read() for name in component_files()}
        while grown:
            including = {name for name, text in texts.items() for used in names if f'#include "{used}"' in text}
            grown = not including <= names
            names |= including
        sources = [name for name in names if name.endswith(".cpp")]
        return sources, [test for test in self.tests if self.includes(test, names)]


def component_files():
    return sorted(name for name in os.listdir(COMPONENT) if name.endswith((".cpp", ".h")))


class ProcessGroup:
    """A process that ends with all processes that it has started. Some tests start themselves again, and with a fault
    such a process may run for ever."""

    def __init__(self, command, **options):
        self.process = subprocess.Popen(command, start_new_session=True, **options)

    def __enter__(self):
        return self.process

    def __exit__(self, *_):
        self.kill(self.process.pid)
        self.process.wait()

    @staticmethod
    def kill(group):
        with contextlib.suppress(ProcessLookupError):
            os.killpg(group, signal.SIGKILL)

    @classmethod
    def kill_all(cls):
        """Ends the groups of all child processes, also of those whose start isn't finished."""
        for thread in os.listdir("/proc/self/task"):
            with open(f"/proc/self/task/{thread}/children", encoding="ascii") as children:
                for child in children.read().split():
                    os.kill(int(child), signal.SIGKILL)
                    cls.kill(int(child))


class Worker:
    """Builds copies of the component in a directory of its own, and runs tests with them."""

    directories = set()

    def __init__(self, build, seed=0, sources=None, options=""):
        """Uses a copy of the component's sources unless there are others. The options are added to all commands of the
        compiler."""
        self.build, self.seed, self.options = build, seed, options
        self.directory = tempfile.mkdtemp(prefix="component.")
        Worker.directories.add(self.directory)
        self.sources = sources or shutil.copytree(COMPONENT, os.path.join(self.directory, "sources"))

    def close(self):
        shutil.rmtree(self.directory, ignore_errors=True)
        Worker.directories.discard(self.directory)

    @classmethod
    def remove_directories(cls):
        for directory in list(cls.directories):
            shutil.rmtree(directory, ignore_errors=True)

    def shell(self, command):
        quiet = subprocess.run(command, shell=True, cwd=self.build.directory, check=False, stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE, text=True, env={**os.environ, "CCACHE_DISABLE": "1"})
        return quiet.returncode == 0

    def compile(self, original, source, output):
        command = self.build.compile[original].replace(" -Werror", " -w")
        command = re.sub(r" -o \S+ -c \S+$", f" {self.options} -I{self.sources} -o {output} -c {source}", command)
        return self.shell(command.replace(f"-I{COMPONENT} ", f"-I{self.sources} "))

    def library(self, names, with_generated=False):
        """Builds the library with the files of this worker in the place of names, and on request with generated files
        compiled anew as well. Returns its path."""
        files = {name: (os.path.join(COMPONENT, name), os.path.join(self.sources, name)) for name in names}
        if with_generated:
            files.update({os.path.basename(file): (file, file) for file in self.build.generated})
        outputs = {name: os.path.join(self.directory, name + ".o") for name in files}

        def compile_file(name):
            return self.compile(*files[name], outputs[name])

        with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
            if not all(pool.map(compile_file, files)):
                return None
        link = self.build.link
        for name, output in outputs.items():
            link = re.sub(rf"\S+/{re.escape(name)}\.o\b", output, link)
        path = os.path.join(self.directory, LIBRARY)
        return path if self.shell(link.replace(f"-o lib/{LIBRARY}", f"{self.options} -o {path}")) else None

    def program(self, test):
        """Builds a test program with the headers of this worker. Returns its path, or None if it doesn't compile."""
        source, program = self.build.unit_of(test), self.build.tests[test].program
        name = os.path.basename(source).removesuffix(".cpp")
        if name != test:  # the test is a link to a program with several tests
            program = os.path.join(self.build.directory, "tests", name)
        output = os.path.join(self.directory, name + ".o")
        path = os.path.join(self.directory, test)
        command = self.build.compile[source].replace(" -Werror", " -w").replace(f"-I{COMPONENT} ", f"-I{self.sources} ")
        command = re.sub(r" -o \S+ -c \S+$", f" -o {output} -c {source}", command)
        link = self.build.run_ninja("commands", os.path.relpath(program, self.build.directory))[-1]
        link = re.sub(rf"\S+/{name}\.cpp\.o\b", output, link)
        link = re.sub(r" -o \S+", f" -o {path}", link, count=1)
        return path if self.shell(command) and self.shell(link) else None

    def run(self, test, program, library, timeout):
        """Returns whether a test passes with a library."""
        environment = {**os.environ, **self.build.tests[test].environment, "LD_PRELOAD": library,
                       "LCD_PROOF_SEED": str(self.seed)}
        with ProcessGroup([program, *self.build.tests[test].arguments], env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          cwd=self.directory) as process:
            try:
                return process.wait(timeout) == 0
            except subprocess.TimeoutExpired:
                return False


def interrupted(number, _):
    """Handles a signal. Nothing that was started keeps running, and no scratch file is left."""
    ProcessGroup.kill_all()
    Worker.remove_directories()
    os._exit(128 + number)


def handle_signals():
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, interrupted)
