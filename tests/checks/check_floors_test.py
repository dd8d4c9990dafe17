"""Tests of tools/check-floors.py: it finds the faults that it is there for, in small trees made for the purpose."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parent.parent.parent / "tools" / "check-floors.py"


def check(files):
    """Runs the tool over a tree of the given files; gives its exit status and what it printed."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder) / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        result = subprocess.run([sys.executable, TOOL, folder], capture_output=True, text=True, check=False)
        return result.returncode, result.stdout


class CheckFloors(unittest.TestCase):
    def expect_fault(self, files, words):
        status, said = check(files)
        self.assertEqual(status, 1, said)
        self.assertIn(words, said)

    def expect_order(self, files):
        status, said = check(files)
        self.assertEqual(status, 0, said)

    def test_including_from_above_is_in_order(self):
        self.expect_order({"core/A.h": "#include <cmath>\n", "voice/B.cpp": '#include "core/A.h"\n'})

    def test_including_from_below_is_a_fault(self):
        self.expect_fault({"core/A.h": '#include "voice/B.h"\n', "voice/B.h": ""}, "core/A.h:1: the floor core may not")

    def test_filters_know_nothing_of_the_core(self):
        self.expect_fault({"dsp/A.h": '#include "core/B.h"\n', "core/B.h": ""}, "dsp")

    def test_effects_share_the_generator_but_not_the_note(self):
        self.expect_order({"effects/A.h": '#include "voice/PolyBLEP.h"\n', "voice/PolyBLEP.h": ""})
        self.expect_fault({"effects/A.h": '#include "voice/Note.h"\n', "voice/Note.h": ""}, "effects")

    def test_the_framework_knows_no_instrument(self):
        self.expect_fault({"plugin/IPlugBase.h": '#include "plugin/ThudForge.h"\n', "plugin/ThudForge.h": ""},
                          "framework")
        self.expect_order({"plugin/ThudForge.h": '#include "plugin/IPlugVST.h"\n', "plugin/IPlugVST.h": ""})

    def test_the_host_knows_the_interface_only(self):
        self.expect_order({"host/A.cpp": '#include "plugin/vst2.h"\n', "plugin/vst2.h": ""})
        self.expect_fault({"host/A.cpp": '#include "core/B.h"\n', "core/B.h": ""}, "host")
        self.expect_fault({"host/A.cpp": '#include "plugin/IParam.h"\n', "plugin/IParam.h": ""}, "host")

    def test_controls_know_no_engine_but_the_panels_do(self):
        self.expect_fault({"editor/A.h": '#include "voice/B.h"\n', "voice/B.h": ""}, "editor")
        self.expect_fault({"editor/x11/A.h": '#include "voice/B.h"\n', "voice/B.h": ""}, "editor")
        self.expect_order({"editor/thudforge/A.cpp": '#include "plugin/ThudForge.h"\n', "plugin/ThudForge.h": ""})

    def test_includes_are_named_from_the_root(self):
        self.expect_fault({"core/A.h": '#include "B.h"\n', "core/B.h": ""}, "named from its root")
        self.expect_fault({"core/A.h": "#include <core/B.h>\n", "core/B.h": ""}, "quotes")

    def test_long_files_are_a_fault(self):
        self.expect_order({"core/A.cpp": "\n" * 600})
        self.expect_fault({"core/A.cpp": "\n" * 601}, "601 lines")

    def test_tests_include_everything(self):
        self.expect_order({"tests/core/A.cpp": '#include "host/B.h"\n', "host/B.h": ""})

    def test_an_empty_tree_is_a_fault(self):
        self.expect_fault({}, "no source files")


if __name__ == "__main__":
    unittest.main()
