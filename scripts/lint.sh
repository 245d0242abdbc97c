#!/usr/bin/env bash
# Static checks of the libraries: clazy (levels 0 and 1, the Qt-aware checks) and clang-tidy (the
# checks listed in .clang-tidy) over the sources under LxPlatform/. Any finding fails the run.
#   scripts/lint.sh                         every library source
#   scripts/lint.sh LxPlatform/LxCore ...   only these folders or files (and the headers under them)
#   LX_LINT_SKIP="LxPlatform/LxUIKit/Zip"   leaves folders out (space-separated, relative to the root)
# Tests, the gallery, benchmarks and fuzz targets are not checked. A finding that is wrong for one
# line is excused on that line, with the reason beside it:
#   // NOLINT(check-name): reason            clang-tidy
#   // clazy:exclude=check-name reason       clazy
# Honours LX_JOBS (parallel tool runs), LX_LINT_BUILD_DIR (default build-lint/) and LX_LINT_TOOLS
# ("clazy clang-tidy" by default; name one to run only that one).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

read -r -a tools <<<"${LX_LINT_TOOLS:-clazy clang-tidy}"
for tool in "${tools[@]}"; do
  case "$tool" in
    clazy | clang-tidy) ;;
    *) echo "error: unknown tool in LX_LINT_TOOLS: $tool" >&2; exit 2 ;;
  esac
done

# clazy 1.11 and clang-tidy 14 are built on the same LLVM as Debian 12's clang, which configures
# the compile database so both tools see the flags they were built for.
LX_PACKAGES+=(clang clazy clang-tidy)
lx_install_missing

dir="${LX_LINT_BUILD_DIR:-$LX_ROOT/build-lint}"
jobs="${LX_JOBS:-$(nproc)}"
cd "$LX_ROOT"

# Only a configured tree is needed: compile_commands.json and the headers CMake writes at configure
# time. No library source includes moc output, so nothing is compiled.
if [ ! -f "$dir/compile_commands.json" ]; then
  lx_log "Configuring $dir"
  CC=clang CXX=clang++ cmake -S "$LX_ROOT" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DLX_BUILD_TESTS=OFF -DLX_BUILD_GALLERY=OFF -DLX_BUILD_BENCH=OFF >/dev/null
else
  cmake "$dir" >/dev/null  # picks up added or removed sources
fi

roots=("$@")
[ ${#roots[@]} -eq 0 ] && roots=(LxPlatform)
for r in "${roots[@]}"; do
  case "$r" in
    LxPlatform | LxPlatform/*) [ -e "$r" ] || { echo "error: no such path: $r" >&2; exit 2; } ;;
    *) echo "error: $r is not under LxPlatform/" >&2; exit 2 ;;
  esac
done
read -r -a skips <<<"${LX_LINT_SKIP:-}"

# in_scope <path relative to the root>: under one of the roots and under no skipped folder.
in_scope() {
  local p="$1" r s hit=1
  for r in "${roots[@]}"; do
    r="${r%/}"
    if [ "$p" = "$r" ] || [[ "$p" == "$r/"* ]]; then hit=0; break; fi
  done
  [ $hit -eq 0 ] || return 1
  for s in "${skips[@]}"; do
    s="${s%/}"
    [[ "$p" == "$s/"* ]] && return 1
  done
  return 0
}

sources=()
while IFS= read -r f; do
  if in_scope "$f"; then sources+=("$f"); fi
done < <(find "${roots[@]}" -name '*.cpp' | sort -u)
if [ ${#sources[@]} -eq 0 ]; then
  echo "error: no sources to check" >&2
  exit 2
fi

out="$dir/lint-out"
rm -rf "$out"
mkdir -p "$out/clazy" "$out/clang-tidy"
export LX_LINT_DIR="$dir" LX_LINT_OUT="$out"

# One tool run per source, its output in its own file so parallel runs do not interleave; a run
# that fails without a diagnostic (a crash) leaves a marker that fails the script.
run_tool() {
  local tool="$1" src="$2" log
  log="$LX_LINT_OUT/$tool/$(printf '%s' "$src" | tr '/' '_').log"
  local rc=0
  case "$tool" in
    clazy) clazy-standalone -p "$LX_LINT_DIR" -checks=level0,level1 "$src" >"$log" 2>&1 || rc=$? ;;
    clang-tidy) clang-tidy -p "$LX_LINT_DIR" --quiet "$src" >"$log" 2>&1 || rc=$? ;;
  esac
  if [ $rc -ne 0 ] && ! grep -q ': \(warning\|error\): ' "$log"; then
    echo "$src:1:1: error: $tool exited with status $rc without a diagnostic [lint-tool-failure]" >>"$log"
  fi
}
export -f run_tool

start=$(date +%s)
for tool in "${tools[@]}"; do
  t0=$(date +%s)
  lx_log "Running $tool over ${#sources[@]} sources ($jobs jobs)"
  printf '%s\0' "${sources[@]}" | xargs -0 -P "$jobs" -I{} bash -c 'run_tool "$1" "$2"' _ "$tool" {}
  lx_log "$tool took $(($(date +%s) - t0)) s"
done

# Diagnostics as "path:line:col: kind: text [check]", paths made relative to the root. A header is
# reported once however many sources include it, and only when it is in scope; errors always count.
findings="$out/findings.txt"
: >"$findings"
find "$out" -name '*.log' -exec cat {} + |
  { grep -E '^[^ :]+:[0-9]+:[0-9]+: (warning|error): ' || true; } |
  sed "s|^$LX_ROOT/||" | sort -u |
  while IFS= read -r line; do
    path="${line%%:*}"
    if [[ "$line" == *": error: "* ]] || in_scope "$path"; then
      printf '%s\n' "$line" >>"$findings"
    fi
  done

count=$(wc -l <"$findings")
lx_log "Lint took $(($(date +%s) - start)) s over ${#sources[@]} sources"
if [ "$count" -gt 0 ]; then
  cat "$findings"
  echo
  lx_log "$count findings by check:"
  grep -oE '\[[^] ]+\]$' "$findings" | sort | uniq -c | sort -rn
  echo "Full tool output: $out" >&2
  exit 1
fi
lx_log "No findings"
