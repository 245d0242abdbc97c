#!/usr/bin/env bash
# Builds the project and opens the gallery. Arguments go to the gallery, e.g.
#   scripts/gallery.sh --page archive --theme dark
#   scripts/gallery.sh --page toasts --screenshot /tmp/toasts.png
# Without a display the gallery runs under a virtual X server (Xvfb); a --screenshot run uses the
# offscreen platform and needs no display at all.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

dir="${LX_BUILD_DIR:-$LX_ROOT/build}"
lx_install_missing
LX_TARGETS=LxUIKitGallery lx_build "$dir"
app="$dir/apps/gallery/LxUIKitGallery"

for a in "$@"; do
  if [ "$a" = "--screenshot" ] || [[ "$a" == --screenshot=* ]]; then
    exec env QT_QPA_PLATFORM=offscreen "$app" "$@"
  fi
done
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  lx_log "No display found (DISPLAY and WAYLAND_DISPLAY are unset): running the gallery under a virtual X server (Xvfb)."
  lx_log "Nothing will appear on a screen; use --screenshot FILE to see a page as a PNG."
  exec xvfb-run -a -s "-screen 0 1400x900x24" "$app" "$@"
fi
exec "$app" "$@"
