"""Tests the relay within one process: relay_test.py RELAY; prints what fails and exits with 1."""

import io
import json
import os
import runpy
import socket
import sys
import tempfile
import threading
import time
import types

relay = runpy.run_path(sys.argv[1])
connect = relay["connect"]
failures = []


def expect(holds, *what):
    if not holds:
        failures.append(ascii(what)[:400])


def run(arguments, payload, reply=b""):
    """The line that the relay sends and what it prints, beside a program that replies."""
    ours, theirs = socket.socketpair()
    theirs.sendall(reply)
    theirs.shutdown(socket.SHUT_WR)
    relay["main"].__globals__["connect"] = lambda seconds: ours
    sys.argv = ["qv-hook.py", *arguments]
    sys.stdin = types.SimpleNamespace(buffer=io.BytesIO(payload))
    sys.stdout = io.StringIO()
    relay["main"]()
    output, sys.stdout = sys.stdout.getvalue(), sys.__stdout__
    ours.close()
    line = b""
    while True:
        try:
            chunk = theirs.recv(65536)
        except ConnectionResetError:
            continue  # told once when the relay left the reply unread
        if not chunk:
            return line, output
        line += chunk


os.environ.update(TERM_PROGRAM="vscode", __CFBundleIdentifier="org.host", GEMINI_SESSION_ID="env")
for variable in ("ITERM_SESSION_ID", "TERM_SESSION_ID", *relay["HOST_VARIABLES"]):
    os.environ.pop(variable, None)
CODEX, GEMINI = ["--agent", "codex"], ["--agent", "gemini"]

# Arguments, a hook's payload, what the line holds at least, and what is printed.
for arguments, payload, members, output in [
    (CODEX, {"hook_event_name": "PreToolUse", "tool_name": "x"},
     {"tirlo_agent": "codex", "hook_event_name": "PreToolUse", "tool_name": "x",
      "term_program": "vscode", "bundle_id": "org.host", "iterm_session_id": "",
      "term_session_id": "", "cwd": os.getcwd()}, ""),
    (["--agent", "antigravity", "PreInvocation", "exit"], {},
     {"tirlo_agent": "antigravity", "hook_event_name": "UserPromptSubmit"}, "{}\n"),
    (GEMINI, {"hook_event_name": "AfterAgent", "tirlo_agent": "mine", "term_program": None},
     {"tirlo_agent": "mine", "hook_event_name": "Stop", "term_program": None}, "{}\n"),
    (["--agent"], {"hook_event_name": ""}, {"hook_event_name": "--agent"}, ""),
    ([], {"toolCall": {"name": "run", "args": {"CommandLine": "ls", "Path": 2, "path": 3}}},
     {"tool_name": "run",
      "tool_input": {"CommandLine": "ls", "command": "ls", "Path": 2, "path": 2}}, ""),
    ([], {"tool": "t", "conversationId": "", "sessionId": "s", "GEMINI_SESSION_ID": "g"},
     {"tool_name": "t", "session_id": "s"}, ""),
    ([], {"tool_name": "t", "sessionId": "s", "workspacePaths": [], "workspace_roots": ["/r"]},
     {"cwd": "/r"}, ""),
    ([], {"hook_event_name": "Stop"}, {"session_id": "env"}, ""),
    ([], {"a": "\u00e9\ud800\0", "n": 123456789012345678901234567890},
     {"a": "\u00e9\ud800\0", "n": 123456789012345678901234567890}, ""),
]:
    line, printed = run(arguments, json.dumps(payload).encode())
    expect(members == {key: json.loads(line).get(key) for key in members}, payload, line)
    expect(printed == output, payload, printed)
# A payload with a tool's name is in the common dialect: its session is not looked for.
expect("session_id" not in json.loads(run(GEMINI, b'{"tool_name":"t","sessionId":"s"}')[0]))

# Where the hook runs: the agent above the shells, and what stands above that.
def above(chain):
    """What processes_above() makes of programs from the hook's parent up, or of a broken chain."""
    scope = relay["processes_above"].__globals__
    real = scope["parent_and_start"], scope["executable"]
    numbers = range(100, 100 + len(chain))
    scope["parent_and_start"] = lambda pid: (pid + 1 if pid < numbers[-1] else 1, pid * 10)
    scope["executable"] = lambda pid: chain[pid - 100]
    agent, programs = relay["processes_above"](100)
    scope["parent_and_start"], scope["executable"] = real
    return (agent["pid"], agent["start"]) if agent else None, programs


CODE = "/usr/share/code/code"
for chain, agent, programs in [
    (["/usr/bin/dash", "/bin/sh", "/opt/claude", "/usr/bin/bash", CODE], (102, 1020),
     ["/opt/claude", "/usr/bin/bash", CODE]),
    (["dash", "/usr/bin/env", "/usr/bin/timeout", "node"], (103, 1030), ["node"]),
    (["/usr/bin/dash", "/usr/bin/bash"], None, []),
    (["/opt/a"] * 40, (100, 1000), ["/opt/a"] * 12),
    (["/" + "x" * 5000], (100, 1000), ["x" * 512]),
]:
    expect(above(chain) == (agent, programs), chain, above(chain))
expect(relay["processes_above"](0) == (None, []) == relay["processes_above"](1 << 40))
own = json.loads(run([], b"{}")[0])
real = open(f"/proc/{os.getppid()}/stat").read().rpartition(")")[2].split()
expect(relay["parent_and_start"](os.getppid()) == (int(real[1]), int(real[19])), real)
expect(isinstance(own["tirlo_programs"], list) and own["tirlo_host"] == {}, own)
os.environ.update(CURSOR_TRACE_ID="t" * 5000, VSCODE_PID="7", VSCODE_SECRET="no")
expect(json.loads(run([], b"{}")[0])["tirlo_host"]
       == {"CURSOR_TRACE_ID": "t" * 512, "VSCODE_PID": "7"})

# The decision in the agent's dialect.
for arguments, suggestions, reply, decision in [
    (CODEX, [1], b'{"permissionDecision":"always"}', {"behavior": "allow"}),
    ([], "x", b'{"permissionDecision":"always"}', {"behavior": "allow", "updatedPermissions": []}),
    ([], [1, 2], b'{"permissionDecision":"always"}',
     {"behavior": "allow", "updatedPermissions": [1, 2]}),
    ([], [1, 2], b'{"permissionDecision":"always","updatedPermissions":[2]}',
     {"behavior": "allow", "updatedPermissions": [2]}),
    ([], [1, 2], b'{"permissionDecision":"always","updatedPermissions":7}',
     {"behavior": "allow", "updatedPermissions": []}),
    ([], [1], b'{"permissionDecision":"allow","updatedPermissions":[1],"message":"x"}',
     {"behavior": "allow"}),
    ([], [1], b'{"permissionDecision":"allow","updatedInput":{"a":{}}}',
     {"behavior": "allow", "updatedInput": {"a": {}}}),
    ([], [1], b'{"permissionDecision":"allow","updatedInput":[1]}', {"behavior": "allow"}),
    (CODEX, [1], b'{"permissionDecision":"always","updatedInput":{},"updatedPermissions":[1]}',
     {"behavior": "allow"}),
    (CODEX, [1], b'{"permissionDecision":"deny","message":"Not \xc3\xa9"}',
     {"behavior": "deny", "message": "Not \u00e9"}),
    ([], [1], b'{"permissionDecision":"deny","message":""}',
     {"behavior": "deny", "message": "Denied from Tirlo"}),
    ([], [1], b'{"permissionDecision":"deny","message":[],"updatedInput":{}}',
     {"behavior": "deny", "message": "Denied from Tirlo"}),
    (GEMINI, [1], b'{"permissionDecision":"ask"}', None),
    (GEMINI, [1], b'{"permissionDecision":["allow"]}', None),
    (GEMINI, [1], b"\xff", None),
    (GEMINI, [1], b"", None),
]:
    request = {"hook_event_name": "PermissionRequest", "permission_suggestions": suggestions}
    printed = run(arguments, json.dumps(request).encode(), reply)[1]
    answer = {"hookEventName": "PermissionRequest", "decision": decision}
    expect((json.loads(printed) == {"hookSpecificOutput": answer}) if decision else printed == "",
           reply, printed)

# Nothing fails the agent: neither what is no hook, nor values of any type, nor any mixture.
expect(json.loads(run([], b'\xef\xbb\xbf{"a":1}')[0])["a"] == 1)
for payload in (b"", b"{} {}", b"\xef\xbb\xbf", b"\xef\xbb\xbf\xef\xbb\xbf{}", b'{"a":"\xff"}', b"[" * 100000, b"[]", b"null"):
    expect(run([], payload) == (b"", ""), payload[:40])
KEYS = ["tirlo_agent", "term_program", "cwd", "workspacePaths", "toolCall", "hook_event_name",
        "tool", "session_id", "conversationId"]
VALUES = [None, True, 7, [], [[1]], {"a": {}}]
for value in VALUES:
    line, printed = run(GEMINI, json.dumps(dict.fromkeys(KEYS, value)).encode())
    expect(line and printed == "{}\n", value)
    request = {"hook_event_name": "PermissionRequest", "permission_suggestions": value}
    for reply in ({"permissionDecision": value}, value, {}):
        expect(run([], json.dumps(request).encode(), json.dumps(reply).encode())[1] == "", reply)

# A full queue is waited for, but not for long.
with tempfile.TemporaryDirectory() as folder, socket.socket(socket.AF_UNIX) as server:
    connect.__globals__["SOCKET"] = folder + "/s"
    server.bind(folder + "/s")
    server.listen(0)
    queued = [connect(0.05)]
    begun = time.monotonic()
    try:
        queued.append(connect(0.05))
        failures.append("the queue is not full")
    except BlockingIOError:
        expect(0.05 <= time.monotonic() - begun < 1)
    threading.Timer(0.1, lambda: queued.append(server.accept()[0])).start()
    queued.append(connect(118))
    for connection in queued:
        connection.close()

# The codec made of C parts, which may be missing, does as the public one.
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


def outcome(codec, text):
    loads, dumps = codec
    try:
        return dumps(loads(text))
    except Exception:
        return None


public = json.loads, lambda value: json.dumps(value, separators=(",", ":"))
for codec in (relay["c_codec"](), relay["public_codec"]()):
    for text in TEXTS:
        expect(outcome(codec, text) == outcome(public, text), text)
sys.modules["_json"] = None
expect(relay["codec"]()[0] is json.loads, "no fall-back")
print(*failures, sep="\n")
sys.exit(failures != [])
