#!/usr/bin/env bash
# Gathers the program's texts from src/ into the translation files, keeping what is already
# translated; new texts arrive unfinished until they are translated (Qt Linguist, or by hand).
# Run it after adding or changing a user-visible text. No line numbers are kept, so moving code
# leaves the files alone.
set -euo pipefail
cd "$(dirname "$0")/.."
lupdate=/usr/lib/qt6/bin/lupdate
[ -x "$lupdate" ] || lupdate=lupdate
languages=(de fr es pt_BR)
ts_files=()
for language in "${languages[@]}"; do
    ts_files+=("src/translations/veldtone_${language}.ts")
done
"$lupdate" -silent -no-obsolete -locations none -source-language en src -ts "${ts_files[@]}"
# The count of entries still to translate, per file.
for ts in "${ts_files[@]}"; do
    echo "$ts: $(grep -c 'type="unfinished"' "$ts" || true) unfinished"
done
