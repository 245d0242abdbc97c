#!/usr/bin/env bash
# Brings the gallery's Linguist files up to date with its sources (new texts arrive unfinished,
# texts no longer used are dropped). Fill in the new translations afterwards, e.g. with linguist.
set -euo pipefail
gallery="$(cd "$(dirname "${BASH_SOURCE[0]}")/../apps/gallery" && pwd)"
cd "$gallery"
for lang in zh_CN en_US; do
  lupdate -silent -locations none -no-obsolete -source-language en -target-language "$lang" \
    ./*.cpp ./*.h pages -ts "translations/gallery_$lang.ts"
done
