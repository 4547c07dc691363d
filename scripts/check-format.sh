#!/usr/bin/env bash
# Fails when a source file is not as clang-format 14 writes it.
set -euo pipefail
cd "$(dirname "$0")/.."

format=clang-format-14
command -v "$format" >/dev/null || format=clang-format
git ls-files -z -- '*.h' '*.cpp' | xargs -0 -r "$format" --dry-run --Werror
