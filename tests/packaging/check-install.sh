#!/usr/bin/env bash
# Installs the build into a temporary prefix and checks it as a desktop
# would: valid launcher entries and metainfo, every icon size, the shell
# completions, and the fenrow:// scheme answered by Fenrow once registered.
#   check-install.sh BUILD_DIR SOURCE_DIR PROGRAM...
set -euo pipefail

build=${1:?build folder}
source=${2:?source folder}
shift 2
programs=("$@")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix
app=studio.tarnwick.Fenrow
failures=0

fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}

cmake --install "$build" --prefix "$prefix" > "$work/install.log" || { cat "$work/install.log"; exit 1; }

# The installed program finds all it needs (translations are compiled in).
"$prefix/bin/fenrow" --version > "$work/version" 2>&1 && grep -q . "$work/version" ||
  fail "the installed fenrow does not run: $(cat "$work/version")"

# The window and the commands that draw previews run in fenrow-desktop,
# which fenrow finds beside itself: a usage error here comes from it.
status=0
"$prefix/bin/fenrow" attach > "$work/attach" 2>&1 || status=$?
[ "$status" -eq 2 ] || fail "the installed fenrow does not reach fenrow-desktop: $(cat "$work/attach")"

# The widget's entry is installed only with the widget; it is checked anyway.
desktop_files=("$prefix/share/applications/$app.desktop" "$source/packaging/$app.Widget.desktop")
for program in "${programs[@]}"; do
  [ -x "$prefix/bin/$program" ] || fail "bin/$program is not installed"
  if [ "$program" = fenrow-widget ]; then
    desktop_files[1]=$prefix/share/applications/$app.Widget.desktop
  fi
done
for entry in "${desktop_files[@]}"; do
  [ -f "$entry" ] || { fail "$entry is not installed"; continue; }
  desktop-file-validate "$entry" || fail "$entry is not a valid desktop entry"
done

metainfo=$prefix/share/metainfo/$app.metainfo.xml
if [ -f "$metainfo" ]; then
  appstreamcli validate --no-net "$metainfo" > "$work/appstream.log" 2>&1 ||
    { cat "$work/appstream.log"; fail "$metainfo does not validate"; }
else
  fail "$metainfo is not installed"
fi

icons=$prefix/share/icons/hicolor
cmp -s "$icons/scalable/apps/$app.svg" "$source/packaging/$app.svg" || fail "the scalable icon is not installed"
for size in 16 24 32 48 64 128 256 512; do
  png=$icons/${size}x${size}/apps/$app.png
  # A PNG's width and height are the big-endian words at bytes 16 and 20.
  if [ "$(head -c 8 "$png" 2>/dev/null | od -An -tx1 | tr -d ' \n')" != 89504e470d0a1a0a ]; then
    fail "$png is not a PNG"
  elif [ "$(od -An -tu1 -j16 -N8 "$png" | awk '{ print $3 * 256 + $4, $7 * 256 + $8 }')" != "$size $size" ]; then
    fail "$png is not $size × $size"
  fi
done

for completion in bash-completion/completions/fenrow:fenrow.bash zsh/vendor-completions/_fenrow:_fenrow \
                  fish/vendor_completions.d/fenrow.fish:fenrow.fish; do
  cmp -s "$prefix/share/${completion%%:*}" "$source/packaging/completion/${completion#*:}" ||
    fail "share/${completion%%:*} is not installed"
done

# Registration as `make install` does it, against private folders and with
# no desktop named, so xdg-mime takes its generic path.
mkdir -p "$work/config"
env -u XDG_CURRENT_DESKTOP -u DESKTOP_SESSION -u KDE_FULL_SESSION -u GNOME_DESKTOP_SESSION_ID \
    XDG_DATA_HOME="$prefix/share" XDG_CONFIG_HOME="$work/config" XDG_DATA_DIRS=/usr/share HOME="$work" \
    bash "$source/scripts/register-desktop.sh" "$prefix"
handler=$(env -u XDG_CURRENT_DESKTOP -u DESKTOP_SESSION -u KDE_FULL_SESSION -u GNOME_DESKTOP_SESSION_ID \
    XDG_DATA_HOME="$prefix/share" XDG_CONFIG_HOME="$work/config" XDG_DATA_DIRS=/usr/share HOME="$work" \
    xdg-mime query default x-scheme-handler/fenrow)
[ "$handler" = "$app.desktop" ] || fail "fenrow:// is handled by \"$handler\", not $app.desktop"
grep -q "x-scheme-handler/fenrow=.*$app.desktop" "$prefix/share/applications/mimeinfo.cache" ||
  fail "the desktop database does not list Fenrow for fenrow://"

[ "$failures" -eq 0 ] || exit 1
echo "installed and registered: $(find "$prefix" -type f | wc -l) files"
