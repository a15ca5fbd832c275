# SPDX-License-Identifier: Apache-2.0
"""The slot table, read from core/slots.def."""
import functools
import pathlib
import re

ROW = re.compile(r'^VEK_SLOT_ROW\((\w+), (\w+), "([^"]*)",[^"]*"[^"]*", "([^"]*)"', re.M)


class Slot:
    def __init__(self, name, below, flags, models):
        self.name, self.below = name, None if below == name else below
        self.flags, self.models = flags.split(), models.split()


ROWS = [Slot(*row) for row in ROW.findall((pathlib.Path(__file__).parent.parent / "core/slots.def").read_text())]
BY_NAME = {slot.name: slot for slot in ROWS}
NAMES = list(BY_NAME)


def serving(name):
    """The slot and those that may serve it, the nearest first."""
    while name:
        yield name
        name = BY_NAME[name].below


@functools.lru_cache
def flags(name):
    """Everything that code of the slot is compiled with."""
    return {flag for each in serving(name) for flag in BY_NAME[each].flags}
