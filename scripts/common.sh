# Shared by the README commands: install what is missing, configure, build.
# Sourced, not run. Honours LX_BUILD_DIR, LX_BUILD_TYPE and LX_JOBS.

LX_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

# Debian 12 packages the project needs to build, test (zip, unzip and python3 cross-check the
# archives; xvfb, xdotool and imagemagick drive and photograph the gallery end to end) and show the
# gallery.
LX_PACKAGES=(
  build-essential cmake ninja-build pkg-config clang-format
  qtbase5-dev qtbase5-private-dev qttools5-dev qttools5-dev-tools libqt5svg5-dev libqt5charts5-dev
  qt5-image-formats-plugins libjsoncpp-dev libfmt-dev libxxhash-dev
  fonts-dejavu-core fonts-noto-cjk
  zlib1g-dev libjpeg-dev libzip-dev xvfb xauth xdotool imagemagick webp
  zip unzip python3
)

lx_log() { printf '\033[1;34m==>\033[0m %s\n' "$*"; }

lx_install_missing() {
  local missing=()
  for p in "${LX_PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return 0
  fi
  lx_log "Installing missing Debian packages: ${missing[*]}"
  local sudo=""
  if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null 2>&1; then
      sudo="sudo"
    else
      echo "error: packages are missing (${missing[*]}) and this user is not root and has no sudo." >&2
      return 1
    fi
  fi
  local start=$(date +%s)
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get update -qq
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
  lx_log "Installed ${#missing[@]} packages in $(($(date +%s) - start)) s"
}

# lx_build <build-dir> [extra cmake args...] ; builds every target unless LX_TARGETS is set.
lx_build() {
  local dir="$1"; shift
  local jobs="${LX_JOBS:-$(nproc)}"
  if [ ! -f "$dir/build.ninja" ]; then
    lx_log "Configuring $dir"
    local launcher=()
    # A compiler cache, when the machine has one, makes rebuilds of other checkouts cheap.
    command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    cmake -S "$LX_ROOT" -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE="${LX_BUILD_TYPE:-Debug}" "${launcher[@]}" "$@"
  elif [ $# -gt 0 ]; then
    cmake "$dir" "$@" >/dev/null
  fi
  lx_log "Building in $dir (${jobs} jobs)"
  # shellcheck disable=SC2086
  cmake --build "$dir" -j "$jobs" ${LX_TARGETS:+--target $LX_TARGETS}
}
