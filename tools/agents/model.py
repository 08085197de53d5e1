"""A model that says what a scenario has it say, in the protocols of three agents.

It listens on loopback. Words such as `run:NAME` in a prompt choose the script of that name; each
answered tool call goes on to the script's next turn. A turn is an object with any of

    text     what the model says
    tools    calls, each {"name": …, "input": {…}}; "shell" is the agent's own shell tool
    error    an HTTP status instead of an answer
    seconds  how long the answer keeps the agent waiting

The log gets one line for each request: the script, the turn, what the model was told back by tools, and
the whole body.
"""

import http.server
import json
import re
import threading
import time
import uuid

NAME = re.compile(r"run:(\w+)")


def call_id():
    return "call_" + uuid.uuid4().hex[:12]


class Protocol:
    """What one agent's messages look like: see the subclasses."""

    def messages(self, body):
        raise NotImplementedError

    def texts(self, message):
        """What the user said in a message, and what the agent added in the user's name."""
        content = message.get("content") or message.get("parts") or []
        parts = [{"text": content}] if isinstance(content, str) else content
        return [part["text"] for part in parts if message.get("role") == "user" and "text" in part]

    def results(self, message):
        """The tool results in a message."""
        raise NotImplementedError

    def events(self, turn):
        """The server-sent events of a turn: pairs of a name and data."""
        raise NotImplementedError

    def shell(self, call):
        """The agent's own call for a command of the shell."""
        raise NotImplementedError

    def position(self, body):
        """The script, the turn in it and what tools gave back last."""
        name, turn, told = None, 0, []
        for message in self.messages(body):
            results = self.results(message)
            if results:
                turn, told = turn + 1, results
            # A prompt after an interruption comes in one message with the result of the tool.
            found = [match for text in self.texts(message) for match in NAME.findall(text)]
            if found:
                name, turn, told = found[-1], 0, results
        return name, turn, told

    def calls(self, turn):
        for call in turn.get("tools", []):
            yield self.shell(call) if call["name"] == "shell" else call


class Messages(Protocol):
    """Claude Code."""

    def messages(self, body):
        return body.get("messages", [])

    def results(self, message):
        content = message.get("content")
        blocks = content if isinstance(content, list) else []
        return [block.get("content") for block in blocks if block.get("type") == "tool_result"]

    def shell(self, call):
        return {"name": "Bash", "input": call["input"]}

    def events(self, turn):
        blocks = []
        if turn.get("text"):
            blocks.append(({"type": "text", "text": ""}, {"type": "text_delta", "text": turn["text"]}))
        for call in self.calls(turn):
            block = {"type": "tool_use", "id": "toolu_" + call_id(), "name": call["name"], "input": {}}
            delta = {"type": "input_json_delta", "partial_json": json.dumps(call["input"])}
            blocks.append((block, delta))
        reason = "tool_use" if turn.get("tools") else "end_turn"
        message = {"id": "msg_" + call_id(), "type": "message", "role": "assistant", "content": [],
                   "model": "scripted", "stop_reason": None, "stop_sequence": None,
                   "usage": {"input_tokens": 10, "output_tokens": 1}}
        events = [{"type": "message_start", "message": message}]
        for index, (block, delta) in enumerate(blocks):
            events += [{"type": "content_block_start", "index": index, "content_block": block},
                       {"type": "content_block_delta", "index": index, "delta": delta},
                       {"type": "content_block_stop", "index": index}]
        events += [{"type": "message_delta", "delta": {"stop_reason": reason, "stop_sequence": None},
                    "usage": {"output_tokens": 5}}, {"type": "message_stop"}]
        return [(event["type"], event) for event in events]


class Responses(Protocol):
    """Codex."""

    def messages(self, body):
        return body.get("input", [])

    def results(self, message):
        return [message.get("output")] if str(message.get("type")).endswith("call_output") else []

    def shell(self, call):
        given = call["input"]
        return {"name": "exec_command",
                "input": {"cmd": given["command"], "sandbox_permissions": "require_escalated",
                          "justification": given.get("description", "")}}

    def events(self, turn):
        items = []
        if turn.get("text"):
            items.append({"type": "message", "role": "assistant", "id": "msg_" + call_id(),
                          "content": [{"type": "output_text", "text": turn["text"]}]})
        for call in self.calls(turn):
            items.append({"type": "function_call", "call_id": call_id(), "name": call["name"],
                          "arguments": json.dumps(call["input"])})
        usage = {"input_tokens": 10, "input_tokens_details": None, "output_tokens": 5,
                 "output_tokens_details": None, "total_tokens": 15}
        answer = {"id": "resp_" + call_id()}
        events = [{"type": "response.created", "response": answer}]
        for index, item in enumerate(items):
            events.append({"type": "response.output_item.done", "output_index": index, "item": item})
        events.append({"type": "response.completed", "response": {**answer, "usage": usage}})
        return [(event["type"], event) for event in events]


class Generate(Protocol):
    """Gemini CLI."""

    def messages(self, body):
        return body.get("contents", [])

    def results(self, message):
        parts = [part.get("functionResponse") for part in message.get("parts", [])]
        return [part.get("response") for part in parts if part]

    def shell(self, call):
        return {"name": "run_shell_command", "input": call["input"]}

    def events(self, turn):
        parts = [{"text": turn["text"]}] if turn.get("text") else []
        for call in self.calls(turn):
            parts.append({"functionCall": {"name": call["name"], "args": call["input"]}})
        usage = {"promptTokenCount": 10, "candidatesTokenCount": 5, "totalTokenCount": 15}
        content = {"content": {"role": "model", "parts": parts}, "finishReason": "STOP", "index": 0}
        return [(None, {"candidates": [content], "usageMetadata": usage})]


def protocol_of(path):
    if "/messages" in path:
        return Messages()
    if "/responses" in path:
        return Responses()
    if "enerateContent" in path:
        return Generate()
    return None


class Scripts:
    """The turns of a scenario, and the log."""

    def __init__(self, scenario, log):
        self.turns = scenario["scripts"]
        self.log = log
        self.lock = threading.Lock()

    def next_turn(self, protocol, body):
        name, index, told = protocol.position(body)
        # Agents also ask for titles and summaries, without tools.
        turns = self.turns.get(name, []) if body.get("tools") else []
        turn = turns[index] if index < len(turns) else {"text": "Done."}
        with self.lock:
            self.log.write(json.dumps({"script": name if turns else None, "turn": index,
                                       "told": told, "body": body}) + "\n")
            self.log.flush()
        return turn


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    scripts = None

    def log_message(self, *_):
        pass

    def do_HEAD(self):
        self.send(200, b"")

    def do_GET(self):
        self.send(200, b'{"data":[],"models":[]}')

    def do_POST(self):
        body = json.loads(self.rfile.read(int(self.headers.get("Content-Length", 0))) or b"{}")
        protocol = protocol_of(self.path)
        if "count" in self.path.lower() or protocol is None:
            return self.send(200, b'{"input_tokens":10,"totalTokens":10}')
        turn = self.scripts.next_turn(protocol, body)
        time.sleep(turn.get("seconds", 0))
        if "error" in turn:
            error = {"type": "scripted", "message": "scripted failure", "code": turn["error"]}
            return self.send(turn["error"], json.dumps({"type": "error", "error": error}).encode())
        events = protocol.events(turn)
        if self.path.split("?")[0].endswith(":generateContent"):
            return self.send(200, json.dumps(events[0][1]).encode())
        lines = [(f"event: {name}\n" if name else "") + f"data: {json.dumps(data)}\n\n"
                 for name, data in events]
        return self.send(200, "".join(lines).encode(), "text/event-stream")

    def send(self, status, body, kind="application/json"):
        try:
            self.send_response(status)
            self.send_header("Content-Type", kind)
            self.send_header("Content-Length", str(len(body)))
            self.send_header("x-should-retry", "false")  # ten tries take minutes
            self.end_headers()
            self.wfile.write(body)
        except (BrokenPipeError, ConnectionResetError):
            self.close_connection = True  # an interrupted agent hangs up


def serve(scenario, log):
    """Starts to answer on a free port of loopback; the server has its number."""
    handler = type("ScriptedHandler", (Handler,), {"scripts": Scripts(scenario, log)})
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
    server.daemon_threads = True
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server
