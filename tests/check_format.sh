#!/usr/bin/env bash
# Fails when clang-format would change a source file: check_format.sh SOURCE_DIR
cd "$1" || exit 1
find src sandbox tests bench -name '*.cpp' -o -name '*.h' | xargs clang-format --dry-run --Werror
