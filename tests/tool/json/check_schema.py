#!/usr/bin/env python3
"""Validates machine definitions against the schema.

check_schema.py SCHEMA --good WHERE... --bad WHERE...

WHERE is a folder, or the beginning of files' names. Ends with 0 when there are files of both sorts, every good
one follows the schema, and no bad one does.
"""
import glob
import json
import os
import sys

import jsonschema


def without_comments(text):
    """The text with // and /* */ outside of strings taken out."""
    out = []
    at = 0
    in_string = False
    while at < len(text):
        if in_string:
            if text[at] == "\\":
                out.append(text[at : at + 2])
                at += 2
                continue
            in_string = text[at] != '"'
        elif text[at] == '"':
            in_string = True
        elif text.startswith("//", at):
            end = text.find("\n", at)
            at = len(text) if end < 0 else end
            continue
        elif text.startswith("/*", at):
            at = text.index("*/", at) + 2
            continue
        out.append(text[at])
        at += 1
    return "".join(out)


def main():
    schema_path, *places = sys.argv[1:]
    with open(schema_path, encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft7Validator.check_schema(schema)
    validator = jsonschema.Draft7Validator(schema)

    wanted = True
    checked = {True: 0, False: 0}
    failures = 0
    for where in places:
        if where in ("--good", "--bad"):
            wanted = where == "--good"
            continue
        paths = glob.glob(os.path.join(where, "*.json") if os.path.isdir(where) else where + "*.json")
        failures += not paths
        for path in paths:
            with open(path, encoding="utf-8") as file:
                document = json.loads(without_comments(file.read()))
            error = jsonschema.exceptions.best_match(validator.iter_errors(document))
            checked[wanted] += 1
            if (error is None) != wanted:
                failures += 1
                print(path, error.message if error else "follows the schema and should not")
    print(f"{checked[True]} good, {checked[False]} bad, {failures} failures")
    return 0 if checked[True] and checked[False] and not failures else 1


sys.exit(main())
