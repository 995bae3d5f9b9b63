# SPDX-License-Identifier: MIT
"""Types random passwords into other people's programs, by the real service on a real display, and compares what arrived.

Prints a line for each layout: the program, the layout, passwords, characters, errors, milliseconds a character."""

import argparse
import json
import os
import pathlib
import random
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent))

import receivers  # noqa: E402
from desktop import Display, wait_for  # noqa: E402
from passwords import errors_between, random_password  # noqa: E402

LAYOUTS = {
    "us": ["us"],
    "tr": ["tr"],
    "tr(f)": ["tr", "-variant", "f"],
    "de": ["de"],
    "fr": ["fr"],
    "tr as second": ["us,tr"],
    "ru as second": ["us,ru"],
}


class Typist:
    """The service."""

    def __init__(self, program):
        self._program = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def type(self, job):
        """Seconds."""
        answer = self._perform(job)
        assert answer["failure"] is None, answer
        return answer["seconds"]

    def select(self, layout):
        subprocess.run(["setxkbmap", *layout], check=True)
        group = layout[0].count(",")
        assert self._perform({"group": group}) == {"group": group}

    def _perform(self, job):
        print(json.dumps(job), file=self._program.stdin, flush=True)
        return json.loads(self._program.stdout.readline())

    def stop(self):
        self._program.stdin.close()
        assert self._program.wait(60) == 0


class CapsLock:
    """Caps Lock as the user left it on."""

    @staticmethod
    def is_on():
        state = subprocess.run(["xset", "q"], capture_output=True, text=True, check=True).stdout
        return "Caps Lock:   on" in state

    def __enter__(self):
        subprocess.run(["xdotool", "key", "Caps_Lock"], check=True)
        wait_for(self.is_on, "Caps Lock")

    def __exit__(self, *_):
        assert self.is_on(), "Caps Lock is off after the typing"
        subprocess.run(["xdotool", "key", "Caps_Lock"], check=True)
        wait_for(lambda: not self.is_on(), "no Caps Lock")


class Result:
    def __init__(self):
        self.passwords = self.characters = self.errors = 0
        self.seconds = 0.0

    def add(self, typist, receiver, characters):
        password = "".join(characters)
        job = receiver.job(password)
        self.seconds += typist.type(job)
        received = receiver.received(job)
        self.passwords += 1
        self.characters += len(characters) + len(job.get("username", ""))
        if received != password:
            self.errors += errors_between(password, received)
            print(f"typed    {password!r}\narrived  {received!r}", flush=True)


def start(options):
    return {"xterm": receivers.Terminal, "qt": lambda: receivers.QtField(options.qt_field),
            "gtk": receivers.GtkField, "chromium": receivers.LoginForm}[options.receiver]()


def type_all(options):
    """Whether all arrived."""
    receiver = start(options)
    typist = Typist(options.typing_program)
    is_right = True
    for layout in options.layouts:
        typist.select(LAYOUTS[layout])
        source = random.Random(f"{options.seed} {receiver.name} {layout}")
        result = Result()
        for _ in range(options.passwords - 1):
            result.add(typist, receiver, random_password(source))
        with CapsLock():
            result.add(typist, receiver, random_password(source))
        is_right = is_right and result.errors == 0
        print(f"| {receiver.name} | {layout} | {result.passwords} | {result.characters} | {result.errors} "
              f"| {result.seconds * 1000 / result.characters:.1f} |", flush=True)
    typist.stop()
    receiver.stop()
    return is_right


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--typing-program", required=True)
    parser.add_argument("--qt-field", required=True)
    parser.add_argument("--receiver", choices=["xterm", "qt", "gtk", "chromium"], required=True)
    parser.add_argument("--passwords", type=int, default=5, help="for each layout")
    # Of Russian no test makes sure each day: most letters have to share the few spare keys, which takes its time.
    parser.add_argument("--layouts", nargs="+", choices=LAYOUTS, default=list(LAYOUTS)[:-1])
    parser.add_argument("--seed", default=os.urandom(4).hex())
    options = parser.parse_args()
    print("seed", options.seed, flush=True)
    display = Display()
    subprocess.run(["xdotool", "key", "Num_Lock"], check=True)  # as most users have it
    try:
        return 0 if type_all(options) else 1
    finally:
        display.stop()


if __name__ == "__main__":
    sys.exit(main())
