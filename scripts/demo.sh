#!/usr/bin/env bash
# Installs what is missing, builds the live demo and starts it on the embedded sandbox wallet and
# vault. It listens on 127.0.0.1 only and prints the address to open.
#   scripts/demo.sh [tovi_demo options]     e.g. --port 0 picks a free port
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release
cmake --build build/release -j "$(nproc)" --target tovi_demo
exec build/release/apps/demo/tovi_demo "$@"
