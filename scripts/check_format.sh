#!/usr/bin/env bash
# Fails, listing the files, when a tracked C++ file differs from what clang-format makes of it
# with the repository's .clang-format. Fix with: git ls-files '*.cpp' '*.hpp' | xargs clang-format -i
set -euo pipefail
cd "$(dirname "$0")/.."
formatter=${CLANG_FORMAT:-clang-format}
bad=$(git ls-files -z '*.cpp' '*.hpp' '*.h' | xargs -0 -n 50 -P "$(nproc)" "$formatter" --dry-run 2>&1 |
      sed -n -E 's/^([^:]+):[0-9]+:[0-9]+: (warning|error):.*/\1/p' | sort -u)
if [[ -n $bad ]]; then
    echo "format: these files differ from .clang-format:"
    echo "$bad"
    exit 1
fi
echo "format: every C++ file matches .clang-format"
