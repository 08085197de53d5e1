"""Compares the relay's own codec with the json module: codec_check.py RELAY; 0 when they agree."""

import json
import runpy
import sys

relay = runpy.run_path(sys.argv[1])

TEXTS = [
    "", " ", "{", "}", "[", "nul", "null", " \t\r\nnull\n ", "\u00a0null", "\x0bnull", "\ufeff{}",
    "true false", "{} x", "{}{}", "[1,]", "[,1]", "{\"a\":1,}", "{\"a\"}", "{a:1}", "{1:2}",
    "0", "-0", "01", "1.", ".5", "+1", "1e5", "1E-7", "1e400", "-1e400", "0.1", "123456789012345678901",
    "1" * 4300, "1" * 4301, "NaN", "[Infinity,-Infinity]", "-NaN", "nan",
    "\"\"", "\"a", "\"\\", "\"\\x\"", "\"\\u12\"", "\"\\ud83d\\ude00\"", "\"\\ud83d\"", "\"\\ude00\\ud83d\"",
    "\"\t\"", "\"\n\"", "\"\x00\"", "\"\\u0000\x7f\"", "\"caf\u00e9 \u2028 \U0001f600\"", "'a'",
    "{\"a\":1,\"a\":2}", "{\"b\":1,\"a\":{\"c\":[]}}", "{ \"a\" : [ 1 , 2.50 , \"x\" ] }",
    "[" * 500 + "]" * 500, "{\"a\":" * 400 + "1" + "}" * 400, "[" * 100000, "[" * 100000 + "]" * 100000,
    "/* */{}", "{}//", "[1 2]", "{\"a\" 1}", "\"\\/\\b\\f\\n\\r\\t\"",
]


def outcome(loads, dumps, text):
    try:
        return dumps(loads(text))
    except Exception:
        return None


public = json.loads, lambda value: json.dumps(value, separators=(",", ":"))
failures = [
    ascii(text[:60])
    for codec in (relay["c_codec"](), relay["public_codec"]())
    for text in TEXTS
    if outcome(*codec, text) != outcome(*public, text)
]

# The C parts may be missing.
sys.modules["_json"] = None
if relay["codec"]()[0] is not json.loads:
    failures.append("no fall-back")
print(*failures)
sys.exit(failures != [])
