#!/usr/bin/env python3
"""Tests of the pages that `qormodel html` makes, in a headless Chromium:
    page_test.py QORMODEL [--pictures FOLDER] [arguments of unittest...]
Without a Chromium all of them fail. --pictures keeps what the pages look like."""

import os
import sys
import unittest

import page_case
from looks_tests import LooksTest  # noqa: F401  unittest finds them here
from plan_tests import PlanTest  # noqa: F401
from sight_tests import SightTest  # noqa: F401
from tree_tests import TreeTest  # noqa: F401

if __name__ == "__main__":
    page_case.program = os.path.abspath(sys.argv.pop(1))
    if len(sys.argv) > 2 and sys.argv[1] == "--pictures":
        page_case.pictures = sys.argv[2]
        del sys.argv[1:3]
    unittest.main(verbosity=2)
