#!/usr/bin/env bash
# Passes the pages through a real browser, against the program that CONTROLLER_FILE names. Ends with 77, and a reason,
# where the machine lacks what that takes.
set -euo pipefail
cd "$(dirname "$0")"

skip() {
    echo "web: skipped: $1" >&2
    exit 77
}

for tool in node npm "${CHROMIUM:=/usr/bin/chromium}"; do
    command -v "$tool" >/dev/null || skip "$tool is missing; script/bootstrap installs it"
done
export CHROMIUM

# The lock file is newer than what was installed by it, or nothing was.
if ! [ node_modules/.package-lock.json -nt package-lock.json ]; then
    npm ci --no-audit --no-fund --loglevel=error >&2 || skip "npm could not fetch the packages of package-lock.json"
    touch node_modules/.package-lock.json
fi

# One file after the other: each starts programs and a browser of its own.
exec node --test --test-concurrency=1 "$@"
