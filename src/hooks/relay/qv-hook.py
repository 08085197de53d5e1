#!/usr/bin/env python3
"""Relays one hook of an agent to Tirlo: its JSON comes on standard input and leaves as one line.

An agent must never stall or fail on a hook, so whatever goes wrong ends in exit status 0 without
output. This runs at every hook of every agent, and the json and socket modules take as long to
import as the interpreter takes to start: so the C modules beneath them are used.
"""

import os
import sys

SOCKET = "~/Library/Application Support/Skerry/qv.sock"
ANSWER_SECONDS = 118
EVENT_SECONDS = 0.3
# How long a request waits for a place in a full queue: agents end a hook that takes 120 seconds.
QUEUE_SECONDS = 1
RETRY_SECONDS = 0.01
CHUNK = 4096
BYTE_ORDER_MARK = b"\xef\xbb\xbf"

# Agents that take anything but JSON on standard output for a failed hook.
AGENTS_EXPECTING_JSON = ("gemini", "antigravity")

EVENTS = {
    "BeforeTool": "PreToolUse",
    "BeforeToolSelection": "PreToolUse",
    "AfterTool": "PostToolUse",
    "AfterModel": "PostToolUse",
    "BeforeAgent": "UserPromptSubmit",
    "AfterAgent": "Stop",
    "startup": "SessionStart",
    "exit": "SessionEnd",
    "PreInvocation": "UserPromptSubmit",
    "PostInvocation": "PostToolUse",
}

TOOL_ARGUMENTS = {
    "CommandLine": "command",
    "FilePath": "file_path",
    "Path": "path",
    "Url": "url",
    "Query": "query",
    "Pattern": "pattern",
}

SESSION_KEYS = ("conversationId", "conversation_id", "sessionId", "GEMINI_SESSION_ID")

TERMINAL_KEYS = {
    "term_program": "TERM_PROGRAM",
    "iterm_session_id": "ITERM_SESSION_ID",
    "term_session_id": "TERM_SESSION_ID",
    "bundle_id": "__CFBundleIdentifier",
}

# What an editor hands down to all that runs in it. Tirlo tells by these where a session runs when
# the processes above it do not: those above a tmux or a screen are of no use, since its server is a
# child of init. What it has in its environment is of the place where that server was started. Where
# somebody attached to it later is not known: neither the environment nor the process chain tells,
# and a search through all processes would take longer than everything else here.
HOST_VARIABLES = (
    "CHROME_DESKTOP CLAUDE_CODE_ENTRYPOINT CURSOR_TRACE_ID"
    " VSCODE_GIT_ASKPASS_NODE VSCODE_IPC_HOOK VSCODE_PID"
).split()
LONGEST_VALUE = 512

# What stands between an agent and its hook: shells, and programs that run another one.
SHELLS = (
    "sh ash bash busybox dash fish ksh mksh tcsh zsh"
    " env ionice nice nohup setsid stdbuf sudo timeout xargs"
).split()
MOST_PARENTS = 12


def c_codec():
    """json.loads for text and json.dumps in compact form, made of the C parts of json."""
    import _json

    class Context:
        strict = True
        object_hook = None
        object_pairs_hook = None
        parse_float = float
        parse_int = int
        parse_constant = {
            "NaN": float("nan"),
            "Infinity": float("inf"),
            "-Infinity": float("-inf"),
        }.__getitem__

    scan = _json.make_scanner(Context)
    encode = _json.make_encoder(
        None, None, _json.encode_basestring_ascii, None, ":", ",", False, False, True
    )

    def loads(text):
        text = text.strip(" \t\n\r")
        value, end = scan(text, 0)
        if end != len(text):
            raise ValueError("data after the value")
        return value

    def dumps(value):
        return "".join(encode(value, 0))

    sample = '{"a":[1,-2.5,true,null,"\\u00e9\\n"],"b":{}}'
    if dumps(loads(sample)) != sample:
        raise ImportError("the C parts of json are not as expected")
    return loads, dumps


def public_codec():
    """The same by the json module itself."""
    import json

    return json.loads, lambda value: json.dumps(value, separators=(",", ":"))


def codec():
    try:
        return c_codec()
    except Exception:
        return public_codec()


def read_arguments(arguments):
    """The agent's tag and the event named by the first other argument, each "" when missing."""
    agent = event = ""
    i = 0
    while i < len(arguments):
        if arguments[i] == "--agent" and i + 1 < len(arguments):
            i += 1
            agent = arguments[i]
        else:
            event = event or arguments[i]
        i += 1
    return agent, event


def parent_and_start(pid):
    """The parent of a process and when it started, in clock ticks."""
    with open(f"/proc/{pid}/stat", "rb", 0) as file:
        stat = file.read(CHUNK)
    # The name in brackets may hold anything, brackets among it.
    fields = stat[stat.rindex(b")") + 2 :].split()
    return int(fields[1]), int(fields[19])


def executable(pid):
    """The path of the program that runs; its bare name where that is not to be known."""
    try:
        # An update under a running program leaves a mark at its path.
        return os.readlink(f"/proc/{pid}/exe").partition(" (deleted)")[0]
    except OSError:
        with open(f"/proc/{pid}/comm", errors="replace") as name:
            return name.read().strip()


def processes_above(pid):
    """The agent's process among the ancestors from this one on, and the programs above it."""
    agent = None
    programs = []
    try:
        for _ in range(MOST_PARENTS):
            if pid <= 1:
                break
            parent, start = parent_and_start(pid)
            program = executable(pid)
            if agent is None and program.rpartition("/")[2] not in SHELLS:
                # A number means something within its own space of process numbers alone.
                space = os.readlink("/proc/self/ns/pid")
                agent = {"pid": pid, "start": start, "space": space}
            if agent is not None:
                programs.append(program[-LONGEST_VALUE:])
            pid = parent
    except (OSError, ValueError, IndexError):
        pass  # another user's, or gone: what is known so far counts
    return agent, programs


def add_context(payload, agent):
    """Says which agent, terminal, process and folder the hook ran in, where the payload does not."""
    if agent:
        payload.setdefault("tirlo_agent", agent)
    for key, variable in TERMINAL_KEYS.items():
        payload.setdefault(key, os.environ.get(variable, ""))
    process, programs = processes_above(os.getppid())
    if process:
        payload.setdefault("tirlo_process", process)
    payload.setdefault("tirlo_programs", programs)
    handed = {name: os.environ[name][:LONGEST_VALUE] for name in HOST_VARIABLES if name in os.environ}
    payload.setdefault("tirlo_host", handed)
    if not payload.get("cwd"):
        paths = payload.get("workspacePaths") or payload.get("workspace_roots")
        if isinstance(paths, list) and paths:
            payload["cwd"] = paths[0]
            return
        try:
            payload["cwd"] = os.getcwd()
        except OSError:
            pass  # the folder is gone; the event still counts


def normalise(payload, argument_event):
    """Brings the event's name and the tool fields to their canonical form; odd ones stay."""
    try:
        event = payload.get("hook_event_name") or argument_event
        if event:
            payload["hook_event_name"] = EVENTS.get(event, event)
        normalise_tool(payload)
    except Exception:
        pass


def normalise_tool(payload):
    """Puts the tool fields of Gemini CLI and Antigravity where the other agents have them."""
    if "tool_name" in payload:
        return
    call = payload.get("toolCall")
    if not isinstance(call, dict):
        call = {}
    name = call.get("name") or payload.get("tool")
    if name:
        payload["tool_name"] = name
    arguments = call.get("args")
    if "tool_input" not in payload and isinstance(arguments, dict):
        renamed = {TOOL_ARGUMENTS[key]: arguments[key] for key in TOOL_ARGUMENTS if key in arguments}
        payload["tool_input"] = {**arguments, **renamed}
    if "session_id" not in payload:
        found = (payload[key] for key in SESSION_KEYS if payload.get(key))
        session = next(found, None) or os.environ.get("GEMINI_SESSION_ID")
        if session:
            payload["session_id"] = session


def connect(seconds):
    """A connection each of whose operations takes at most that long, that of connecting at most
    QUEUE_SECONDS: when many hooks run at once, the queue of the socket may be full for a moment."""
    # The socket module adds nothing that is needed here.
    import _socket

    address = os.path.expanduser(SOCKET)
    connection = _socket.socket(_socket.AF_UNIX, _socket.SOCK_STREAM)
    connection.settimeout(seconds)
    try:
        connection.connect(address)
    except BlockingIOError:
        wait_in_queue(connection, address, min(seconds, QUEUE_SECONDS))
    return connection


def wait_in_queue(connection, address, seconds):
    import time

    end = time.monotonic() + seconds
    while True:
        time.sleep(RETRY_SECONDS)
        try:
            return connection.connect(address)
        except BlockingIOError:
            if time.monotonic() >= end:
                raise


def tell(line):
    """Passes the line on; the reply is not waited for."""
    connection = connect(EVENT_SECONDS)
    connection.sendall(line)
    connection.close()


def ask(line):
    """Passes the line on and waits for the reply; "" when nobody is left to read the answer.

    An agent that ends the hook may kill the wrapper alone. Standard output then has no reader any
    more, and hanging up at once tells Tirlo that the request was settled elsewhere.
    """
    import select

    connection = connect(ANSWER_SECONDS)
    connection.sendall(line)
    waiting = select.poll()
    waiting.register(connection.fileno(), select.POLLIN)
    waiting.register(1, 0)
    chunks = []
    while True:
        ready = [fd for fd, _ in waiting.poll(ANSWER_SECONDS * 1000)]
        if connection.fileno() not in ready:
            return ""
        chunk = connection.recv(CHUNK)
        chunks.append(chunk)
        if not chunk or b"\n" in chunk:
            break
    connection.close()
    return b"".join(chunks).decode().strip()


def answer_object(reply, agent, payload):
    """The agent's dialect of a reply; None leaves the question to the agent."""
    decision = reply.get("permissionDecision")
    if decision == "deny":
        message = reply.get("message")
        told = message if isinstance(message, str) and message else "Denied from Tirlo"
        answer = {"behavior": "deny", "message": told}
    elif decision in ("allow", "always"):
        answer = {"behavior": "allow"}
        # Codex refuses an answer with either.
        if agent != "codex":
            if isinstance(reply.get("updatedInput"), dict):
                answer["updatedInput"] = reply["updatedInput"]
            if decision == "always":
                kept = reply.get("updatedPermissions", payload.get("permission_suggestions"))
                answer["updatedPermissions"] = kept if isinstance(kept, list) else []
    else:
        return None
    return {"hookSpecificOutput": {"hookEventName": "PermissionRequest", "decision": answer}}


def read_payload(loads):
    data = sys.stdin.buffer.read()
    if data.startswith(BYTE_ORDER_MARK):
        data = data[len(BYTE_ORDER_MARK) :]
    return loads(data.decode())


def main():
    loads, dumps = codec()
    try:
        payload = read_payload(loads)
    except Exception:
        return

    agent, argument_event = read_arguments(sys.argv[1:])
    output = "{}" if agent in AGENTS_EXPECTING_JSON else ""
    try:
        add_context(payload, agent)
        normalise(payload, argument_event)
        if payload.get("hook_event_name") == "PermissionRequest":
            output = ""
            reply = loads(ask(dumps(payload).encode() + b"\n"))
            answer = answer_object(reply, agent, payload)
            output = dumps(answer) if answer else ""
        else:
            tell(dumps(payload).encode() + b"\n")
    except Exception:
        pass
    if output:
        print(output, flush=True)


if __name__ == "__main__":
    try:
        main()
    finally:
        # Leaves at once, and with 0 whatever was raised, rather than take the interpreter down.
        os._exit(0)
