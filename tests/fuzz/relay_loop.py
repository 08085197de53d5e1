"""Runs the relay over and over in one process: relay_loop.py RELAY.

Each round reads an agent, a hook's payload and the program's reply from standard input, and writes
the line that the relay sent and what it printed: each a length of four bytes and its bytes.
"""

import importlib.machinery
import io
import socket
import sys
import types

relay = importlib.machinery.SourceFileLoader("relay", sys.argv[1]).load_module()
requests, results = sys.stdin.buffer, sys.stdout.buffer


def take():
    size = requests.read(4)
    if len(size) < 4:
        sys.exit()
    return requests.read(int.from_bytes(size, "little"))


def give(data):
    results.write(len(data).to_bytes(4, "little") + data)


while True:
    agent, payload, reply = take(), take(), take()
    ours, theirs = socket.socketpair()
    theirs.sendall(reply)
    theirs.shutdown(socket.SHUT_WR)
    relay.connect = lambda seconds: ours
    sys.argv = ["qv-hook.py", "--agent", agent.decode(), "PermissionRequest"]
    sys.stdin = types.SimpleNamespace(buffer=io.BytesIO(payload))
    sys.stdout = io.StringIO()
    relay.main()
    ours.close()
    line = b""
    while True:
        try:
            chunk = theirs.recv(65536)
        except ConnectionResetError:
            continue  # told once when the relay left the reply unread
        if not chunk:
            break
        line += chunk
    theirs.close()
    give(line)
    give(sys.stdout.getvalue().encode())
    results.flush()
