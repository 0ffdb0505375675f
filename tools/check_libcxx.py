#!/usr/bin/env python3
"""Parse the library with clang and libc++, as phone toolchains do.

usage: check_libcxx.py BUILD_TREE   (configured with clang)
"""
import concurrent.futures
import json
import os
import shlex
import subprocess
import sys


def without_precompiled_headers(words):
    for option in ("-include-pch", "-include"):
        if option in words:
            at = words.index(option)
            words = words[:at - 1] + words[at + 3:]  # -Xclang OPTION -Xclang FILE
    return words


def command_of(entry):
    words = shlex.split(entry["command"])
    if os.path.basename(words[0]) == "ccache":
        words = words[1:]
    words = words[:words.index("-o")] + words[words.index("-o") + 2:]
    return without_precompiled_headers(words) + ["-stdlib=libc++", "-fsyntax-only", "-Wno-unused-command-line-argument"]


def parse(entry):
    result = subprocess.run(command_of(entry), cwd=entry["directory"], capture_output=True, text=True)
    return entry["file"], result.returncode, result.stderr


def main(tree):
    source = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "src", "")
    with open(os.path.join(tree, "compile_commands.json"), encoding="utf-8") as database:
        entries = [entry for entry in json.load(database) if entry["file"].startswith(source)]
    if not entries:
        sys.exit("no sources of the library in " + tree)
    failed = False
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, code, messages in pool.map(parse, entries):
            if code != 0:
                print(f"{path}:\n{messages}", file=sys.stderr)
                failed = True
    print(f"{len(entries)} sources")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
