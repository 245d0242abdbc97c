#!/usr/bin/env bash
# Proves the README's two commands on a brand-new machine: builds a minimal Debian 12 root with
# mmdebstrap (minbase, from this machine's own apt sources), clones the committed HEAD into it and
# runs, inside it, the test command and then the gallery command with --screenshot. A package this
# machine happens to have can hide a missing install step; a fresh root cannot.
#
#   scripts/check-fresh-machine.sh
#
# The bare root is cached as a tarball under /var/tmp/lxuikit-fresh (delete it to rebuild); every run
# unpacks a clean copy. Needs root, mounts and the package registry: when one of them is missing it
# says so in one line and steps aside (exit 0), since that is not the project's failure.
# Exit status: 0 when both commands pass, 1 when one fails. Logs stay in /var/tmp/lxuikit-fresh/.
set -uo pipefail
repo="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
cache=/var/tmp/lxuikit-fresh
root="$cache/root"
say() { printf '\033[1;35m[fresh-machine]\033[0m %s\n' "$*"; }
step_aside() { say "skipped: $*"; exit 0; }

[ "$(id -u)" -eq 0 ] || step_aside "needs root to build and enter a Debian root (run as root or in CI)."
mkdir -p "$cache" || step_aside "cannot create $cache."
probe="$cache/mount-probe"
mkdir -p "$probe"
if mount -t tmpfs lxprobe "$probe" 2>/dev/null; then umount "$probe"; else step_aside "this machine does not allow mounts."; fi
rmdir "$probe"

# This machine's active apt sources (.list and .sources files, nothing disabled).
sources=()
[ -s /etc/apt/sources.list ] && sources+=(/etc/apt/sources.list)
for f in /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; do
  [ -s "$f" ] && sources+=("$f")
done
[ ${#sources[@]} -gt 0 ] || step_aside "this machine has no apt sources."
timeout 120 env DEBIAN_FRONTEND=noninteractive apt-get update -qq >/dev/null 2>&1 ||
  step_aside "the package registry cannot be reached (apt-get update failed)."
if ! command -v mmdebstrap >/dev/null; then
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends mmdebstrap >/dev/null 2>&1 ||
    step_aside "mmdebstrap cannot be installed."
fi

cleanup() {
  for m in dev/pts dev sys proc; do
    mountpoint -q "$root/$m" 2>/dev/null && umount -l "$root/$m"
  done
}
trap cleanup EXIT

t0=$(date +%s)
if [ ! -s "$cache/base.tar" ]; then
  say "building a minimal Debian 12 root (once, then cached)"
  rm -rf "$cache/base.new.tar"
  if ! mmdebstrap --variant=minbase --format=tar --include=git,ca-certificates bookworm "$cache/base.new.tar" \
    "${sources[@]}" </dev/null >"$cache/bootstrap.log" 2>&1; then
    tail -5 "$cache/bootstrap.log"
    step_aside "mmdebstrap could not build the root (see $cache/bootstrap.log)."
  fi
  mv "$cache/base.new.tar" "$cache/base.tar"
fi
cleanup
rm -rf "$root" && mkdir -p "$root"
tar -xf "$cache/base.tar" -C "$root" || { rm -f "$cache/base.tar"; step_aside "the cached root could not be unpacked (removed; the next run builds it again)."; }
cp /etc/resolv.conf "$root/etc/resolv.conf" 2>/dev/null || true
mount -t proc proc "$root/proc" && mount --rbind /sys "$root/sys" && mount --rbind /dev "$root/dev" ||
  step_aside "cannot mount /proc, /sys and /dev into the root."
git clone -q "$repo" "$root/src/project" || { say "FAILED: cannot clone $repo"; exit 1; }
say "root ready in $(($(date +%s) - t0)) s; HEAD $(git -C "$repo" log -1 --format='%h %s')"

# Runs one README command inside the root with a clean environment; logs to $cache/<name>.log.
failed=()
inside() {
  local name="$1"; shift
  local start=$(date +%s) rc
  say "running: $* (log: $cache/$name.log)"
  chroot "$root" /usr/bin/env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
    LANG=C.UTF-8 TERM=dumb LX_JOBS="${LX_JOBS:-$(nproc)}" bash -c 'cd /src/project && "$@"' _ "$@" \
    >"$cache/$name.log" 2>&1
  rc=$?
  sed 's/\x1b\[[0-9;]*m//g' "$cache/$name.log" | grep -E '==> (Installed|Build took)|tests passed' | sed 's/^/    /'
  if [ $rc -ne 0 ]; then
    tail -30 "$cache/$name.log"
    say "FAILED: '$*' exited with $rc after $(($(date +%s) - start)) s"
    failed+=("$*")
  else
    say "passed: '$*' in $(($(date +%s) - start)) s"
  fi
}
inside test scripts/test.sh
inside gallery scripts/gallery.sh --page richtext --screenshot /tmp/fresh-gallery.png
if [ ! -s "$root/tmp/fresh-gallery.png" ] && [[ ! " ${failed[*]} " == *gallery* ]]; then
  say "FAILED: the gallery wrote no screenshot"
  failed+=(gallery-screenshot)
fi
cp "$root/tmp/fresh-gallery.png" "$cache/gallery.png" 2>/dev/null
say "total $(($(date +%s) - t0)) s"
[ ${#failed[@]} -eq 0 ] || { say "failed: ${failed[*]}"; exit 1; }
say "a brand-new Debian 12 machine goes green with the README's two commands"
