#!/usr/bin/env bash
# Makes the gallery's sample pictures (apps/gallery/samples/) and the tests' animated fixtures
# (tests/support/fixtures/) from nothing but drawing commands: ImageMagick's `convert` draws the
# raster pictures and the frames of the animations, `img2webp` (from the webp package) muxes the
# animated WebP, the SVG is written here. Every file stays at a few KB. The generated files are
# committed; run this again only to change them.
#
#   scripts/make-sample-images.sh [gallery-folder [test-fixture-folder]]
set -euo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
out="${1:-$root/apps/gallery/samples}"
fixtures="${2:-$root/tests/support/fixtures}"
mkdir -p "$out" "$fixtures"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

for tool in convert img2webp gzip; do
    command -v "$tool" >/dev/null || { echo "error: $tool is missing (apt-get install imagemagick webp gzip)" >&2; exit 1; }
done
# Same bytes on every run: no dates or tool versions inside the files.
strip=(-strip -define png:exclude-chunks=date,time)

# A landscape "photo": sky gradient, sun, hills (JPEG).
convert -size 320x200 gradient:'#7ab8f5'-'#dff1ff' \
    -fill '#ffd34d' -draw 'circle 250,55 250,80' \
    -fill '#4f9d4a' -draw 'ellipse 80,210 160,70 180,360' \
    -fill '#2f7a3a' -draw 'ellipse 260,220 170,80 180,360' \
    "${strip[@]}" -quality 82 "$out/landscape.jpg"

# An avatar (PNG with transparency): initials on a disc.
convert -size 128x128 xc:none -fill '#5b6cff' -draw 'circle 64,64 64,4' \
    -fill white -font DejaVu-Sans-Bold -pointsize 52 -gravity center -annotate +0+2 'LX' \
    "${strip[@]}" "$out/avatar.png"

# A chart card (PNG, opaque) with bars.
convert -size 240x160 xc:'#ffffff' \
    -fill '#e9ebef' -draw 'rectangle 0,150 240,160' \
    -fill '#14a05c' -draw 'rectangle 20,90 50,150' -draw 'rectangle 70,60 100,150' \
    -fill '#e0383e' -draw 'rectangle 120,100 150,150' \
    -fill '#14a05c' -draw 'rectangle 170,30 200,150' \
    "${strip[@]}" "$out/bars.png"

# A still WebP (lossy).
convert -size 160x160 radial-gradient:'#ffb347'-'#ff6f61' "${strip[@]}" -quality 80 "$out/sunset.webp"

# Animated GIF: an arc turning in 8 steps.
frames=()
for i in $(seq 0 7); do
    a=$((i * 45))
    convert -size 64x64 xc:'#f4f5f7' -stroke '#1f6feb' -strokewidth 7 -fill none \
        -draw "arc 10,10 54,54 $a,$((a + 270))" "$tmp/spin_$i.png"
    frames+=("$tmp/spin_$i.png")
done
convert -delay 8 -loop 0 "${frames[@]}" -layers Optimize "$out/spinner.gif"

# Animated WebP: a ball bouncing in 6 frames.
webp_args=()
for i in $(seq 0 5); do
    y=$((14 + (i < 3 ? i : 5 - i) * 14))
    convert -size 72x72 xc:'#fdf6e3' -fill '#e0383e' -draw "circle 36,$y 36,$((y + 10))" \
        -fill '#c9c2ae' -draw 'rectangle 0,66 72,72' "$tmp/ball_$i.png"
    webp_args+=(-d 90 -lossless "$tmp/ball_$i.png")
done
img2webp -loop 0 "${webp_args[@]}" -o "$out/bounce.webp" >/dev/null 2>&1

# SVG and its gzip-compressed form.
cat >"$out/logo.svg" <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg" width="120" height="120" viewBox="0 0 120 120">
  <defs>
    <linearGradient id="g" x1="0" y1="0" x2="1" y2="1">
      <stop offset="0" stop-color="#1f6feb"/><stop offset="1" stop-color="#14a05c"/>
    </linearGradient>
  </defs>
  <rect width="120" height="120" rx="24" fill="url(#g)"/>
  <path d="M30 78 L52 54 L66 66 L90 38" fill="none" stroke="#fff" stroke-width="8" stroke-linecap="round" stroke-linejoin="round"/>
  <circle cx="90" cy="38" r="7" fill="#ffd34d"/>
</svg>
SVG
cat >"$tmp/pie.svg" <<'SVG'
<svg xmlns="http://www.w3.org/2000/svg" width="100" height="100" viewBox="-50 -50 100 100">
  <circle r="46" fill="#e9ebef"/>
  <path d="M0 0 L0 -46 A46 46 0 0 1 43.7 -14.2 Z" fill="#f5a623"/>
  <path d="M0 0 L43.7 -14.2 A46 46 0 0 1 -27 37.2 Z" fill="#1f6feb"/>
  <path d="M0 0 L-27 37.2 A46 46 0 0 1 0 -46 Z" fill="#14a05c"/>
  <circle r="20" fill="#fff"/>
</svg>
SVG
gzip -9 -n -c "$tmp/pie.svg" >"$out/pie.svgz"

# Damaged and misleading files, for the failure cases.
head -c 1800 "$out/landscape.jpg" >"$out/truncated.jpg"   # the second half is missing
cp "$out/spinner.gif" "$out/named-png.png"                # a GIF whose name says PNG
printf '<html><body>502 Bad Gateway</body></html>\n' >"$out/not-an-image.svg"

ls -l "$out"

# Test fixtures: animations whose frames are solid colours in a fixed order (red, green, blue,
# yellow, cyan, magenta), named frames<count>_<w>x<h>_<delay>ms.<gif|webp>.
colours=('#ff0000' '#00ff00' '#0000ff' '#ffff00' '#00ffff' '#ff00ff')
animation() {  # count w h delay-ms extension
    local files=() i
    for ((i = 0; i < $1; i++)); do
        convert -size "$2x$3" "xc:${colours[i % 6]}" "${strip[@]}" "$tmp/frame_$i.png"
        files+=("$tmp/frame_$i.png")
    done
    local name="$fixtures/frames$1_$2x$3_$4ms.$5"
    if [ "$5" = gif ]; then
        convert -delay "$(($4 / 10))" -loop 0 "${files[@]}" "$name"
    else
        local args=() f
        for f in "${files[@]}"; do args+=(-d "$4" -lossless "$f"); done
        img2webp -loop 0 "${args[@]}" -o "$name" >/dev/null 2>&1
    fi
}
for shape in "1 12 12 100" "2 4 4 100" "2 8 8 100" "3 16 8 100" "3 12 12 30" "4 16 16 30" \
             "2 4 4 30" "2 5 4 30" "2 6 4 30" "2 7 4 30" "2 8 4 30"; do
    animation $shape gif
done
for shape in "3 12 12 100" "3 16 16 30"; do
    animation $shape webp
done
ls -l "$fixtures"
