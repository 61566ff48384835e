#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing Fenrow need.
# Idempotent and quiet: it only talks to apt when something is missing.
#   scripts/setup.sh        what `make run` and `make test` need
#   scripts/setup.sh fuzz   that, and the clang toolchain `make fuzz` needs
set -euo pipefail

packages=(
  cmake ninja-build g++ make pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-l10n-tools qt6-tools-dev qt6-tools-dev-tools
  libqt6sql6-sqlite libsqlite3-dev libpoppler-qt6-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth dbus dbus-x11 xdotool fonts-dejavu-core shared-mime-info
  qt6-qpa-plugins libgl-dev
  # The global hot key on X11: a key grab over Qt's xcb connection, key
  # codes found from key symbols.
  libxcb1-dev libxcb-keysyms1-dev
  cmark-gfm
  # A real notification server for the notification tests, on their private
  # session bus.
  dunst
  # A real system tray (XEmbed) for the tray widget's tests under Xvfb.
  trayer
  # The desktop portal: Qt's platform theme that shows file dialogs through
  # it, and for the tests the real portal with its GTK backend, whose
  # colour scheme `gsettings` sets.
  qt6-xdgdesktopportal-platformtheme
  xdg-desktop-portal xdg-desktop-portal-gtk gsettings-desktop-schemas libglib2.0-bin
  # The accessibility bus screen readers listen on, for the tests that
  # read the window as one does.
  at-spi2-core
  # Installing like a desktop application: the icon's PNG sizes drawn from
  # its SVG at build time, the checks of the desktop files and the AppStream
  # metainfo, and the desktop database and URL scheme refreshed by
  # `make install`.
  librsvg2-bin desktop-file-utils appstream xdg-utils
  # GCC's AddressSanitizer and UndefinedBehaviorSanitizer runtimes, for the
  # sanitizer run of `make test`.
  libasan8 libubsan1
  # Shell completion: its test asks each shell for the candidates.
  bash-completion zsh fish
  # simdjson reads backups; expat and pugixml are only measured beside the
  # outline reader (bench/ParserComparisonBenchmark.cpp).
  libsimdjson-dev libpugixml-dev libexpat1-dev
)

if [ "${1:-}" = fuzz ]; then
  # clang with libFuzzer and its sanitizer runtimes (libclang-rt-14-dev), and
  # llvm-symbolizer (llvm-14) for readable stack traces.
  packages+=(clang clang-14 libclang-rt-14-dev llvm-14)
fi

# The language model's helper (helpers/model): its npm packages from the
# lock file, with llama.cpp's prebuilt CPU binary inside them; no install
# script runs, so nothing is downloaded or built besides. Without Node.js 20
# the engine is unavailable and everything else works.
model_helper="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/helpers/model"
if ! command -v node >/dev/null 2>&1 || [ "$(node -p 'process.versions.node.split(".")[0]')" -lt 20 ]; then
  echo "Node.js 20 or newer is not installed: the language model will be unavailable (helpers/model skipped)."
elif [ ! -f "$model_helper/node_modules/.package-lock.json" ] \
     || [ "$model_helper/package-lock.json" -nt "$model_helper/node_modules/.package-lock.json" ]; then
  (cd "$model_helper" && NODE_LLAMA_CPP_SKIP_DOWNLOAD=true npm ci --ignore-scripts --no-audit --no-fund --loglevel=error >/dev/null)
fi

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q '^install ok installed$'; then
    missing+=("$p")
  fi
done

[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing missing packages: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
