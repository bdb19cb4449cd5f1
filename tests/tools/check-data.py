#!/usr/bin/python3
"""check-data.py SOURCE: both JSON schemas are valid, each shipped scenario and board profile is valid according to its
schema, and a wrong one isn't. Status 77: a package is missing."""

import glob
import json
import os
import sys

try:
    import jsonschema
    import yaml
except ImportError as missing:
    print(f"skipped, {missing.name} is missing (tools/setup installs it)")
    sys.exit(77)

# The schema, the files that it describes, and a file that it doesn't allow.
DATA = [
    ("share/scenario.schema.json", ["scenarios/**/*.yaml"], {"steps": [{"soft": "middle"}]}),
    ("share/board.schema.json", ["share/board/*.yaml"], {"tbar": {"wheels": 4}}),
]


def main():
    os.chdir(sys.argv[1])
    wrong, count = [], 0
    for schema, patterns, refused in DATA:
        with open(schema, encoding="utf-8") as file:
            content = json.load(file)
        kind = jsonschema.validators.validator_for(content)
        kind.check_schema(content)
        validator = kind(content)
        files = sorted(path for pattern in patterns for path in glob.glob(pattern, recursive=True))
        if not files:
            wrong.append(f"{schema}: no file to check")
        for path in files:
            with open(path, encoding="utf-8") as file:
                document = yaml.safe_load(file)
            wrong += [f"{path}: {list(error.path)}: {error.message}" for error in validator.iter_errors(document)]
            count += 1
        if validator.is_valid(refused):
            wrong.append(f"{schema} allows {refused}")
    print("\n".join(wrong) or f"{count} files are valid")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
