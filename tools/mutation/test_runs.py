"""Runs the tests against a mutant."""

import json
import os
import resource
import signal
import subprocess
import sys
import time

MEMORY_LIMIT = 4 << 30
# The seconds from which on a suite of tests comes last.
SLOW = 0.2


class TestRuns:
    """The tests that need no screen, the quickest first."""

    def __init__(self, build, work):
        self.work = work
        unit = build / "tests" / "corvane_unit_tests"
        slow = ":".join(f"{name}.*" for name in self.slow_suites(unit))
        quick = ["--gtest_brief=1", "--gtest_fail_fast"]
        self.commands = [
            [unit, *quick, f"--gtest_filter=-{slow}"],
            [build / "tests" / "corvane_contract_tests", *quick],
            ["ctest", "--test-dir", build, "-R", "^(Examples|Demo|Tools)\\.", "-E", "_shows_", "--stop-on-failure"],
            [unit, *quick, f"--gtest_filter={slow}"],
        ]
        self.limits = [600] * len(self.commands)  # seconds

    def slow_suites(self, program):
        """Most mutants are caught without the few suites that play through many random cases."""
        times = self.work / "times.json"
        times.unlink(missing_ok=True)
        subprocess.run([program, f"--gtest_output=json:{times}"], stdout=subprocess.DEVNULL, cwd=self.work)
        suites = json.loads(times.read_text())["testsuites"]
        return [suite["name"] for suite in suites if float(suite["time"].rstrip("s")) > SLOW]

    def measure(self):
        """The tests must pass without a mutant; how long they take bounds how long they may. Gives that bound."""
        for index, command in enumerate(self.commands):
            began = time.monotonic()
            if not self.passes(index, 0):
                sys.exit(f"mutate: without any mutant this fails: {' '.join(map(str, command))}")
            self.limits[index] = 5 + round(5 * (time.monotonic() - began))
        return sum(self.limits)

    def passes(self, index, number):
        # Memory that is used after its end holds nothing that makes sense.
        environment = {**os.environ, "CORVANE_MUTANT": str(number), "MALLOC_PERTURB_": "165"}
        for name in ("DISPLAY", "WAYLAND_DISPLAY"):
            environment.pop(name, None)
        process = subprocess.Popen(self.commands[index], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                   env=environment, start_new_session=True, cwd=self.work,
                                   preexec_fn=lambda: limit_resources(self.limits[index]))
        try:
            # An endless loop uses up its seconds of work; on a busy machine they pass more slowly than the clock's.
            return process.wait(timeout=20 * self.limits[index]) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
            return False

    def catch(self, number):
        return not all(self.passes(index, number) for index in range(len(self.commands)))


def limit_resources(seconds):
    resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds))
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
