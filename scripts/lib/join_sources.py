"""Joins the sources of each folder into one, for tools to which the libraries' headers are most of the work.

    join_sources.py BUILD_FOLDER OUTPUT_FOLDER ROOT FOLDER...

Takes the compile commands of a build, and leaves a source for each folder below ROOT/FOLDER that includes all that the
build compiles there for one target, with the compile commands for these. What defines something before it includes
others' headers stays by itself.
"""

import collections
import json
import pathlib
import re
import shlex
import sys


def collect(build, root, folders):
    """The compile commands by the folder and the target of their source, each source once."""
    groups, seen = collections.defaultdict(dict), set()

    for command in json.loads((build / "compile_commands.json").read_text()):
        source = pathlib.Path(command["directory"], command["file"]).resolve()
        target = re.search(r"CMakeFiles/([^/]+)\.dir/", command["command"]).group(1)

        if source not in seen and any(source.is_relative_to(root / folder) for folder in folders):
            seen.add(source)
            groups[source.parent, target][source] = command

    return groups


def stays_alone(source):
    return re.search(r"#\s*define", source.read_text().partition("#include")[0]) is not None


def join(groups, root, output):
    joined = []

    def add(name, sources, command):
        source = output / f"{name}.cpp"
        source.write_text("".join(f'#include "{included}"\n' for included in sources))
        arguments = [str(source) if word == command["file"] else word for word in shlex.split(command["command"])]
        joined.append({"directory": command["directory"], "file": str(source), "command": shlex.join(arguments)})

    for (folder, target), commands in sorted(groups.items()):
        alone = [source for source in commands if stays_alone(source)]
        together = sorted(set(commands) - set(alone))
        name = "-".join([*folder.relative_to(root).parts, target])

        for source in alone:
            add(f"{name}-{source.stem}", [source], commands[source])

        if together:
            add(name, together, commands[together[0]])

    (output / "compile_commands.json").write_text(json.dumps(joined, indent=1))


def main():
    build, output, root = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    output.mkdir(parents=True, exist_ok=True)

    for earlier in output.glob("*.cpp"):
        earlier.unlink()

    join(collect(build, root, sys.argv[4:]), root, output)


if __name__ == "__main__":
    main()
