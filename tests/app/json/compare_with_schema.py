#!/usr/bin/env python3
"""compare_with_schema: SCHEMA DOCUMENT...: whether the documents keep the schema.

Prints a line for each difference and exits with 1 if there is one; 77 if python3-jsonschema is not
installed.
"""
import json
import sys

try:
    import jsonschema
except ImportError:
    sys.exit(77)


def refuse_constant(name):
    raise ValueError(name + " is not JSON")


def main(schema_name, document_names):
    with open(schema_name, encoding="utf-8") as file:
        schema = json.load(file)
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)
    differs = False
    for name in document_names:
        with open(name, encoding="utf-8") as file:
            document = json.load(file, parse_constant=refuse_constant)
        for error in validator.iter_errors(document):
            print("%s: %s: %s" % (name, "/".join(map(str, error.path)), error.message[:300]))
            differs = True
    return 1 if differs else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
