"""Joins source files into one for clang-tidy, so that the headers that they share are looked at once."""

import contextlib
import itertools
import re
import shutil

# A group is large enough when it has so many lines: more saves little, and few large groups keep not all cores busy.
LINES = 2500
CONDITION = re.compile(r"\s*#\s*(if|endif)")
INCLUDE = re.compile(r"\s*#\s*include\b")
NAMED = re.compile(r"namespace ([\w:]+) \{")
# A name that a line declares: in front of what follows a declared name, or behind the word for a kind of type.
DECLARED = re.compile(r"\b([A-Za-z_]\w*)\s*(?=[({\[=;])|\b(?:class|struct|enum|union|using)\s+(\w+)")
USED_NAMESPACES = re.compile(r"^using namespace [^;]*;", re.MULTILINE)
NO_NAMES = {"namespace", "noexcept", "sizeof", "alignas", "static_assert"}


def is_test(text):
    """True for tests and benchmarks: files of whose names no other file knows."""
    return re.search(r"^ *(TEST(_F|_P)?|BENCHMARK)\(", text, re.MULTILINE) is not None


def after_includes(lines):
    """Number of the lines up to the last of the #include lines, and the end of a condition around it."""
    last, depth, inside = 0, 0, False
    for number, line in enumerate(lines, 1):
        condition = CONDITION.match(line)
        if INCLUDE.match(line):
            last, inside = number, depth > 0
        elif condition:
            depth += 1 if condition[1] == "if" else -1
            if depth == 0 and inside:
                last, inside = number, False
    return last


def test_in_its_namespace(text, number):
    """A test file with everything in a namespace of its own, so that its names do not meet those of others."""
    lines = text.splitlines()
    start = after_includes(lines)
    head, body = lines[:start], lines[start:]
    own = f"grouped_{number}"
    if any(NAMED.match(line) for line in body):
        body = [NAMED.sub(rf"namespace \1::{own} {{", line) for line in body]
    else:
        body = [f"namespace {own} {{", *body, "}"]
    return "\n".join([*head, *body]) + "\n"


def hidden_names(text):
    """Names that a file declares for itself alone. Too many do no harm."""
    names, hidden = set(), False
    for line in text.splitlines():
        if line.startswith("namespace {"):
            hidden = True
        elif line.startswith("} // namespace"):
            hidden = False
        elif hidden and line[:1].isalpha() or line.startswith(("static ", "int main(")):
            names.update(name for pair in DECLARED.findall(line) for name in pair if name)
    return names - NO_NAMES


def grouped(paths, options_of):
    """Groups of files with the same settings and options that can be joined."""
    groups = []
    texts = {path: path.read_text(encoding="utf-8") for path in paths}

    def kind(path):
        test = is_test(texts[path])
        used = () if test else tuple(sorted(USED_NAMESPACES.findall(texts[path])))
        settings = next(str(folder) for folder in path.parents if (folder / ".clang-tidy").exists())
        return test, used, settings, options_of(path)

    for (test, *_), same in itertools.groupby(sorted(paths, key=lambda path: (kind(path), path)), kind):
        open_groups = []
        for path in same:
            names = set() if test else hidden_names(texts[path])
            alone = "#define" in texts[path]
            size = texts[path].count("\n")
            fitting = next((group for group in open_groups
                            if not alone and group["size"] + size <= LINES and not names & group["names"]), None)
            if fitting is None:
                fitting = {"size": LINES if alone else 0, "names": set(), "paths": []}
                open_groups.append(fitting)
            fitting["size"] += size
            fitting["names"] |= names
            fitting["paths"].append(path)
        groups += [group["paths"] for group in open_groups]
    # The largest first, so that no core is left with a large one at the end.
    return sorted(groups, key=lambda group: -sum(len(texts[path]) for path in group))


class GroupFolder:
    """Where joined files lie, with the settings that hold where their parts are."""

    def __init__(self, root, folder):
        self.root = root
        self.folder = folder
        self.numbers = itertools.count(1)
        shutil.rmtree(folder, ignore_errors=True)
        for settings in [*root.glob(".clang-tidy"), *root.glob("*/.clang-tidy")]:
            target = folder / settings.relative_to(root)
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(settings, target)

    @contextlib.contextmanager
    def joined(self, group):
        """The file into which a group is joined, for as long as it is needed."""
        top = group[0].relative_to(self.root).parts[0]
        file = self.folder / top / f"group{next(self.numbers)}.cpp"
        file.parent.mkdir(parents=True, exist_ok=True)
        texts = [path.read_text(encoding="utf-8") for path in group]
        if is_test(texts[0]):
            texts = [test_in_its_namespace(text, number) for number, text in enumerate(texts)]
        file.write_text("\n".join(texts), encoding="utf-8")
        try:
            yield file
        finally:
            file.unlink()
