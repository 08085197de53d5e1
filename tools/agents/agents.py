"""What each real agent needs for its first start in a fresh home, with Tirlo's hooks and our model."""

import json
import pathlib
import re
from typing import NamedTuple

TABLES = pathlib.Path(__file__).resolve().parents[2] / "src/hooks/installers/HookTables.cpp"
TABLE = re.compile(r"constexpr HookRow (\w+)Rows\[\]\{(.*?)\n\};", re.DOTALL)
ROW = re.compile(r'\{"(\w+)", (\w+)(?:, "(\w*)")?(?:, "([^"]*)")?(?:, "([^"]*)")?\}')
CONSTANT = re.compile(r"constexpr int (\w+) = (\d+);")


class Place(NamedTuple):
    """Where a run takes place: its home, the agent's folder, the model's address, and the file that
    keeps what the hooks were given."""

    home: pathlib.Path
    project: pathlib.Path
    model: str
    hooks: pathlib.Path

    def write(self, path, content):
        file = self.home / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(content if isinstance(content, str) else json.dumps(content, indent=2))


def hooks(place, table, tag):
    """The hooks that the program's own table has for the agent, calling the script that it wrote."""
    source = TABLES.read_text(encoding="utf-8")
    numbers = dict(CONSTANT.findall(source))
    rows = ROW.findall(dict(TABLE.findall(source))[table])
    if not rows:
        raise ValueError(f"no rows of {table} in {TABLES.name}")
    script = f'"{place.home}/Library/Application Support/Skerry/qv-hook"'
    # Beside it, what each hook was given is kept.
    record = {"type": "command", "command": f"cat >>'{place.hooks}' && echo >>'{place.hooks}' && echo {{}}"}
    groups = {}
    for event, timeout, argument, matcher, status in rows:
        command = f"/bin/sh {script} --agent {tag} {argument}".rstrip() if tag else script
        hook = {"type": "command", "command": command, "timeout": int(numbers.get(timeout, timeout))}
        if status:
            hook["statusMessage"] = status
        group = {"hooks": [hook, {**record, "timeout": hook["timeout"]}]}
        if matcher:
            group["matcher"] = matcher
        groups[event] = [group]
    return groups


def claude(place):
    folder = {"hasTrustDialogAccepted": True, "hasCompletedProjectOnboarding": True}
    place.write(".claude.json", {"hasCompletedOnboarding": True, "theme": "dark",
                                 "projects": {str(place.project): folder}})
    place.write(".claude/settings.json", {"hooks": hooks(place, "claude", "")})
    return ["claude"], {"ANTHROPIC_BASE_URL": place.model, "ANTHROPIC_AUTH_TOKEN": "scripted",
                        "CLAUDE_CODE_DISABLE_NONESSENTIAL_TRAFFIC": "1", "DISABLE_AUTOUPDATER": "1"}


def codex(place):
    place.write(".codex/config.toml", f"""\
model = "gpt-5"
model_provider = "scripted"
approval_policy = "on-request"
sandbox_mode = "workspace-write"
check_for_update_on_startup = false

[model_providers.scripted]
name = "scripted"
base_url = "{place.model}/v1"
wire_api = "responses"
env_key = "SCRIPTED_KEY"

[projects."{place.project}"]
trust_level = "trusted"
""")
    place.write(".codex/hooks.json", {"hooks": hooks(place, "codex", "codex")})
    return ["codex", "--dangerously-bypass-hook-trust"], {"SCRIPTED_KEY": "scripted"}


def gemini(place):
    place.write(".gemini/state.json", {"terminalSetupPromptShown": True})
    place.write(".gemini/settings.json", {
        "security": {"auth": {"selectedType": "gemini-api-key"}, "folderTrust": {"enabled": False}},
        "general": {"enableAutoUpdate": False},
        "ide": {"hasSeenNudge": True},
        "privacy": {"usageStatisticsEnabled": False},
        "hooks": hooks(place, "gemini", "gemini"),
    })
    # A model by name, since one that routes asks another model first.
    return ["gemini", "--model", "gemini-2.5-pro"], {"GOOGLE_GEMINI_BASE_URL": place.model,
                                                     "GEMINI_API_KEY": "scripted"}


AGENTS = {"claude": claude, "codex": codex, "gemini": gemini}
# What its prompt shows once the agent takes input.
READY = {"claude": "? for shortcuts", "codex": "›", "gemini": "Type your message"}
