#!/usr/bin/env bash
# Tells the desktop about a Fenrow installed under PREFIX: the launcher's
# database (and with it the "fenrow" URL scheme), the icon theme, and
# Fenrow as the program that opens fenrow:// links, so that
# `xdg-open fenrow://ready` reaches it.
#   scripts/register-desktop.sh PREFIX
set -euo pipefail

prefix=${1:?usage: register-desktop.sh PREFIX}
applications=$prefix/share/applications
icons=$prefix/share/icons/hicolor

if command -v update-desktop-database >/dev/null; then
  update-desktop-database -q "$applications"
fi

# A theme folder with a cache is read from the cache alone, so a cache
# there must be brought up to date; where there is none, a newer folder
# time is what makes running desktops look again.
if [ -d "$icons" ]; then
  if command -v gtk-update-icon-cache >/dev/null &&
     { [ -f "$icons/icon-theme.cache" ] || [ -f "$icons/index.theme" ]; }; then
    gtk-update-icon-cache -q -t -f "$icons"
  else
    touch "$icons"
  fi
fi

if command -v xdg-mime >/dev/null; then
  xdg-mime default studio.tarnwick.Fenrow.desktop x-scheme-handler/fenrow
else
  echo "xdg-mime is missing (Debian package xdg-utils): fenrow:// links will not open Fenrow." >&2
fi

# The launcher entries start `fenrow` by name, as installed programs do.
case ":$PATH:" in
  *":$prefix/bin:"*) ;;
  *) echo "Note: $prefix/bin is not on your PATH; the launcher finds Fenrow once it is (for ~/.local/bin, log in again)." >&2 ;;
esac
