#!/usr/bin/env bash
# Makes the Debian package of a release build and has independent programs judge it: verify_package.sh BUILD PACKAGING
set -euo pipefail
packaging=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# What the programs have no complaint about they pass in silence.
silent() {
  local words
  if words=$("$@" 2>&1) && [[ -z $words ]]; then return; fi
  printf '%s\n' "$*" "$words"
  exit 1
}

(cd "$1" && cpack -G DEB -B "$work" >"$work/log") || { cat "$work/log"; exit 1; }
packages=("$work"/*.deb)
dpkg-deb --info "${packages[0]}"
dpkg-deb --extract "${packages[0]}" "$work/root"
cd "$work/root/usr"

echo "Desktop entry, manual page and metainfo"
silent desktop-file-validate share/applications/corvane.desktop
silent groff -man -Tutf8 -ww -z <(zcat share/man/man1/corvane.1.gz)
# The screenshots are judged too, although only a publisher knows where they are.
sed 's|@CORVANE_PICTURES@|https://corvane.invalid|' "$packaging/org.corvane.corvane.metainfo.xml" >"$work/with.metainfo.xml"
for file in share/metainfo/*.xml "$work/with.metainfo.xml"; do
  appstreamcli validate --no-net "$file"
done

echo "Icons"
for file in share/icons/hicolor/*x*/apps/corvane.png; do
  folder=${file%/apps/*}
  [[ $(identify -format '%wx%h' "$file") == "${folder##*/}" ]]
done
[[ $(rsvg-convert share/icons/hicolor/scalable/apps/corvane.svg | identify -format '%wx%h' png:-) == 128x128 ]]

echo "Hardening"
readelf --file-header bin/corvane | grep 'DYN (Position-Independent Executable'
readelf --wide --dynamic bin/corvane | grep BIND_NOW
readelf --wide --segments bin/corvane | grep GNU_RELRO
readelf --wide --dyn-syms bin/corvane | grep __stack_chk_fail

if command -v lintian >/dev/null; then
  echo "The whole package"
  silent lintian --allow-root --display-info --pedantic "${packages[0]}"
fi
