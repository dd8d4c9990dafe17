#!/usr/bin/env python3
"""Checks that static analysis finds in joined files what it finds in single ones."""

import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools"))
import tidy  # noqa: E402
import tidy_groups  # noqa: E402

SETTINGS = "Checks: '-*,modernize-use-nullptr,readability-redundant-control-flow'\nWarningsAsErrors: '*'\n"
HEADER = "#pragma once\n#define TEST(suite, name) static void suite##_##name()\n"
CLEAN = '#include "macro.h"\nnamespace {\nconst int kRate = 1;\n} // namespace\n'
CLEAN_TEST = CLEAN + "TEST(Suite, Name) {\n    static_cast<void>(kRate);\n}\n"
NAMED_TEST = '#include "macro.h"\nnamespace Mine {\nint kRate() { return 2; }\nTEST(Suite, Name) {}\n}\n'
FAULTY_TEST = CLEAN + "TEST(Suite, Name) {\n    const int* none = 0;\n    static_cast<void>(none);\n}\n"


class TidyGroups(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name).resolve()
        self.write(".clang-tidy", SETTINGS)
        self.write("macro.h", HEADER)

    def write(self, name, text):
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        return file

    def verdicts(self, *files):
        """Names of the files with findings, looked at in the groups that they fall into; and the groups."""
        commands = {file: f"c++ -I{self.root} -Wno-unused -o {file}.o -c {file}" for file in files}
        looker = tidy.Tidy(self.root, self.root / "build", commands)
        groups = tidy_groups.grouped(list(files), lambda path: looker.options[path])
        self.write("build/compile_commands.json", "[" + ",".join(
            f'{{"file": "{file}", "directory": "{self.root}", "command": "{command}"}}'
            for file, command in commands.items()) + "]")
        return [path.name for group in groups for path, findings in looker.findings(group) if findings], groups

    def test_files_with_the_same_names_inside_are_clean_together(self):
        files = [self.write(f"tests/{name}.cpp", text)
                 for name, text in (("A", CLEAN_TEST), ("B", CLEAN_TEST), ("C", NAMED_TEST))]
        looker = tidy.Tidy(self.root, self.root / "build", {file: f"c++ -I{self.root} -c {file}" for file in files})
        with looker.groups.joined(files) as file:
            self.assertEqual(tidy.findings_of(file, "--", f"-I{self.root}"), "")

    def test_only_the_file_with_a_fault_is_named(self):
        files = [self.write(f"tests/{name}.cpp", text)
                 for name, text in (("A", CLEAN_TEST), ("B", FAULTY_TEST), ("C", CLEAN_TEST), ("D", NAMED_TEST))]
        found, groups = self.verdicts(*files)
        self.assertEqual(len(groups), 1)
        self.assertEqual(found, ["B.cpp"])

    def test_a_fault_before_the_tests_of_another_file_is_found(self):
        files = [self.write("tests/A.cpp", NAMED_TEST), self.write("tests/B.cpp", FAULTY_TEST)]
        self.assertEqual(self.verdicts(*files)[0], ["B.cpp"])

    def test_sources_that_hide_the_same_name_are_kept_apart(self):
        files = [self.write("voice/A.cpp", CLEAN), self.write("voice/B.cpp", CLEAN),
                 self.write("voice/C.cpp", CLEAN.replace("kRate", "kOther"))]
        found, groups = self.verdicts(*files)
        self.assertEqual(sorted(len(group) for group in groups), [1, 2])
        self.assertEqual(found, [])

    def test_files_that_cannot_be_joined_are_looked_at_alone(self):
        files = [self.write("tests/A.cpp", CLEAN_TEST + "int clash;\n"),
                 self.write("tests/B.cpp", CLEAN_TEST.replace("kRate", "kB") + "using namespace None;\n")]
        self.assertEqual(self.verdicts(*files)[0], ["B.cpp"])

    def test_settings_of_a_folder_hold_in_its_groups(self):
        self.write("tests/.clang-tidy", "InheritParentConfig: true\nChecks: '-modernize-use-nullptr'\n")
        files = [self.write("tests/A.cpp", FAULTY_TEST), self.write("tests/B.cpp", CLEAN_TEST)]
        self.assertEqual(self.verdicts(*files)[0], [])
        files = [self.write("voice/A.cpp", FAULTY_TEST), self.write("voice/B.cpp", CLEAN_TEST)]
        self.assertEqual(self.verdicts(*files)[0], ["A.cpp"])


if __name__ == "__main__":
    unittest.main()
