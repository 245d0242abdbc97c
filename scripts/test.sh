#!/usr/bin/env bash
# Builds the project and runs the whole test suite (QtTest through CTest, offscreen platform).
#   scripts/test.sh              debug build in build/
#   scripts/test.sh --sanitize   AddressSanitizer + UndefinedBehaviorSanitizer build in build-asan/
#   scripts/test.sh --clang      the same suite built with clang in build-clang/
#   scripts/test.sh --tsan       ThreadSanitizer build (clang) in build-tsan/ of the suites whose
#                                code runs on several threads, and runs those
#   scripts/test.sh --no-devtools the release gate: developer tools off, in build-nodevtools/; builds
#                                only the library and the suites that check the gate, and runs those
# Extra arguments after "--" go to ctest (for example: scripts/test.sh -- -R zip).
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

dir="${LX_BUILD_DIR:-$LX_ROOT/build}"
cmake_args=()
if [ "${1:-}" = "--sanitize" ]; then
  shift
  dir="${LX_BUILD_DIR:-$LX_ROOT/build-asan}"
  cmake_args=(-DLX_SANITIZE=ON -DLX_BUILD_GALLERY=OFF -DLX_BUILD_BENCH=OFF)
  export ASAN_OPTIONS="detect_leaks=0:abort_on_error=1"
  export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
elif [ "${1:-}" = "--clang" ]; then
  shift
  dir="${LX_BUILD_DIR:-$LX_ROOT/build-clang}"
  LX_PACKAGES+=(clang)
  export CC=clang CXX=clang++
elif [ "${1:-}" = "--tsan" ]; then
  shift
  dir="${LX_BUILD_DIR:-$LX_ROOT/build-tsan}"
  # clang's sanitizer runtimes are only recommended by its packages, which the install skips.
  LX_PACKAGES+=(clang libclang-rt-14-dev)
  export CC=clang CXX=clang++
  cmake_args=(-DLX_TSAN=ON -DLX_BUILD_GALLERY=OFF -DLX_BUILD_BENCH=OFF)
  # Logging from many threads (the core, the viewer's queue, the developer tools' hook), posting to
  # the main thread, the HTTP layer and the download delegate, image decoding and translation
  # off the GUI thread, and the object-count hooks.
  tsan_suites=(Dispatch FrameWork Http DevTools LogViewer HttpDownloadDelegate WebImageLoading
    WebImageDecoder SvgDocumentGuard ImagePreviewTranslateTask AppListener TsanCanary)
  export LX_TARGETS="${tsan_suites[*]/#/tst_}"
  set -- -R "^tst_($(IFS='|'; echo "${tsan_suites[*]}"))\$" "$@"
elif [ "${1:-}" = "--no-devtools" ]; then
  shift
  dir="${LX_BUILD_DIR:-$LX_ROOT/build-nodevtools}"
  cmake_args=(-DLX_DEVTOOLS=OFF -DLX_BUILD_GALLERY=OFF -DLX_BUILD_BENCH=OFF)
  export LX_TARGETS="LxUIKit tst_DevTools tst_Lifecycle"
  set -- -R '^tst_(DevTools|Lifecycle)$' "$@"
fi
[ "${1:-}" = "--" ] && shift

lx_install_missing
start=$(date +%s)
lx_build "$dir" "${cmake_args[@]}"
built=$(date +%s)
lx_log "Running tests in $dir"
cd "$dir"
ctest --output-on-failure -j "${LX_JOBS:-$(nproc)}" "$@"
done_at=$(date +%s)
lx_log "Build took $((built - start)) s, tests took $((done_at - built)) s"
