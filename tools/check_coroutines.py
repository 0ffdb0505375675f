#!/usr/bin/env python3
"""Reject the co_await forms that g++ 12 miscompiles or crashes on (use after free, double destruction).

usage: check_coroutines.py FILE...
       check_coroutines.py --self-test

Allowed: `co_await f(args);`, `[const] T name = co_await f(args);`, `lhs = co_await f(args);`,
`co_return co_await f(args);` and the same as an if/switch init statement, where args holds
no braces, no lambda and no `?:`.
"""
import re
import sys

ALLOWED = re.compile(r"^(co_return|(if|switch)\s*\((const\s+)?auto\s+\w+\s*=|"
                     r"[\w:<>,.*&\s\[\]>-]*[\w\])>]\s*=)?$")


def blank(match):
    return re.sub(r"[^\n]", " ", match.group(0))


def clean(text):
    pattern = r'//[^\n]*|/\*.*?\*/|R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\''
    return re.sub(pattern, blank, text, flags=re.S)


def is_init_brace(text, at):
    before = text[:at]
    stripped = before.rstrip()
    if re.search(r"(=|,|\(|\breturn|\bco_return)$", stripped):
        return True
    return before == stripped and re.search(r"[\w>]$", stripped) is not None


def statement_start(text, at):
    depth = 0
    for i in range(at - 1, -1, -1):
        c = text[i]
        if c in ")]":
            depth += 1
        elif c in "([":
            depth -= 1
        elif c in ";{}" and depth <= 0:
            if c == "{" and is_init_brace(text, i):
                return i + 1, True
            if c == ";" and depth < 0:
                continue  # for (;;) header: keep walking to the keyword
            return i + 1, False
    return 0, False


def operand(text, at):
    depth = 0
    for i in range(at, len(text)):
        c = text[i]
        if c in "({[":
            depth += 1
        elif c in ")}]":
            depth -= 1
            if depth < 0:
                return text[at:i]
        elif c == ";" and depth == 0:
            return text[at:i]
    return text[at:]


def problems(text):
    text = clean(text)
    for match in re.finditer(r"\bco_await\b", text):
        start, in_braces = statement_start(text, match.start())
        prefix = re.sub(r"\s+", " ", text[start:match.start()]).strip()
        rest = operand(text, match.end())
        line = text.count("\n", 0, match.start()) + 1
        if in_braces:
            yield line, "inside an initialiser list"
        elif not ALLOWED.match(prefix):
            yield line, f"not alone on its side of the statement (after '{prefix[-40:]}')"
        elif "?" in rest:
            yield line, "conditional operator in the operand"
        elif re.search(r"\[[^\]]+\]\s*(\(|\{|mutable|->)", rest):
            yield line, "capturing lambda in the operand"
        elif "{" in re.sub(r"^\s*\[\][^{]*\{(?:[^{}]|\{[^{}]*\})*\}", "", rest):
            yield line, "braced temporary in the operand"


GOOD = (
    "co_await f(x);",
    "const auto r = co_await f(std::move(x), 3);",
    "m_r = co_await a->f(x);",
    "co_return co_await f(g(x));",
    "if (auto r = co_await f(x); r) g();",
    "for (int i = 0; i < 3; ++i) { co_await f(i); }",
    "// g(co_await f())",
)
BAD = (
    "if (co_await f(x)) g();",
    "switch (co_await f(x)) { }",
    "r = b ? co_await f(x) : y;",
    "co_await f(Record{x});",
    "co_await f({.a = x});",
    "Record r{co_await f(x), y};",
    "g(co_await f(x));",
    "co_await f([x] { return x; });",
    "co_await f(b ? x : y);",
    "r = co_await f(x) + co_await f(y);",
)


def self_test():
    wrong = [text for text in GOOD if list(problems(text))] + [text for text in BAD if not list(problems(text))]
    for text in wrong:
        print(f"judged wrongly: {text}")
    return 1 if wrong else 0


def main(paths):
    if paths == ["--self-test"]:
        return self_test()
    failed = False
    for path in paths:
        with open(path, encoding="utf-8") as source:
            for line, why in problems(source.read()):
                print(f"{path}:{line}: co_await {why}")
                failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
