"""The part of JSON Schema that the schemas of this tree use, so that no package is needed for it."""

import re

KNOWN = {"$ref", "$schema", "title", "description", "type", "enum", "const", "properties", "required", "additionalProperties",
         "$defs", "items", "minItems", "maxItems", "minLength", "minimum", "exclusiveMinimum", "oneOf", "anyOf", "allOf",
         "not", "pattern"}
TYPES = {"object": (dict,), "array": (list,), "string": (str,), "boolean": (bool,), "number": (int, float), "integer": (int,),
         "null": (type(None),)}


def check(value, schema, path):
    """Raises AssertionError, with the path of the first fault, unless the value follows the schema."""
    _check(value, schema, schema, path)


def _check(value, rule, root, path):
    assert set(rule) <= KNOWN, f"the schema has words that aren't checked: {set(rule) - KNOWN}"
    if "$ref" in rule:
        _check(value, root if rule["$ref"] == "#" else root["$defs"][rule["$ref"].removeprefix("#/$defs/")], root, path)
    if "type" in rule:
        names = rule["type"] if isinstance(rule["type"], list) else [rule["type"]]
        assert any(_is_of(value, name) for name in names), f"{path}: {value!r} is no {names}"
    assert value in rule.get("enum", [value]), f"{path}: {value!r} is none of {rule.get('enum')}"
    assert value == rule.get("const", value), f"{path}: {value!r} is not {rule.get('const')!r}"
    if isinstance(value, (int, float)):
        assert value > rule.get("exclusiveMinimum", value - 1), path
        assert value >= rule.get("minimum", value), path
    if isinstance(value, str):
        assert len(value) >= rule.get("minLength", 0), path
        assert re.search(rule.get("pattern", ""), value), f"{path}: {value!r}"
    if isinstance(value, list):
        assert rule.get("minItems", 0) <= len(value) <= rule.get("maxItems", len(value)), path
        for index, item in enumerate(value if "items" in rule else []):
            _check(item, rule["items"], root, f"{path}[{index}]")
    if isinstance(value, dict):
        _check_object(value, rule, root, path)
    for word, fits in (("oneOf", lambda n: n == 1), ("anyOf", lambda n: n >= 1), ("allOf", lambda n: n == len(rule["allOf"]))):
        if word in rule:
            assert fits(sum(_matches(value, part, root, path) for part in rule[word])), f"{path}: {word}"
    assert "not" not in rule or not _matches(value, rule["not"], root, path), f"{path}: not"


def _check_object(value, rule, root, path):
    for key in rule.get("required", []):
        assert key in value, f"{path}: no {key}"
    for key, item in value.items():
        if key in rule.get("properties", {}):
            _check(item, rule["properties"][key], root, f"{path}.{key}")
        elif isinstance(rule.get("additionalProperties"), dict):
            _check(item, rule["additionalProperties"], root, f"{path}.{key}")
        else:
            assert rule.get("additionalProperties") is not False, f"{path}.{key} is unknown"


def _is_of(value, name):
    return isinstance(value, TYPES[name]) and (name == "boolean" or not isinstance(value, bool))


def _matches(value, rule, root, path):
    try:
        _check(value, rule, root, path)
        return True
    except AssertionError:
        return False
