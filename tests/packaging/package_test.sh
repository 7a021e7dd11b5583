#!/bin/sh
# SPDX-License-Identifier: MIT
# Builds the Debian package and checks its content. Arguments: cpack, the build folder, an empty working folder.
set -eu
cpack=$1
build=$2
work=$3
rm -rf "$work"
mkdir -p "$work"
"$cpack" --config "$build/CPackConfig.cmake" -B "$work" -G DEB >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; exit 1; }
package=$(find "$work" -maxdepth 1 -name 'sixtrace_*.deb')
dpkg-deb --info "$package"
dpkg-deb --extract "$package" "$work/root"
version=$(dpkg-deb --field "$package" Version)
[ "$("$work/root/usr/bin/kqx" --version)" = "kqx $version" ]
dpkg-deb --field "$package" Depends | grep -q libqt6widgets6
dpkg-deb --field "$package" Depends | grep -q libusb-1.0-0
grep -qx 'Exec=/usr/bin/sixtrace' "$work/root/usr/share/dbus-1/services/org.sixtrace.Sixtrace.service"
test -s "$work/root/usr/lib/udev/rules.d/70-sixtrace.rules"
# No file belongs to the user who built the package. Only the programs, the library and kqx-desktop, which is in the folder of
# the library, are executable.
dpkg-deb --contents "$package" | grep -v ' root/root ' && exit 1
dpkg-deb --contents "$package" | awk '/^-rwx/ && $6 !~ /^\.\/usr\/bin\// && $6 !~ /\.so$/ {
    if ($6 ~ /^\.\/usr\/lib\/([^\/]+\/)?sixtrace\/kqx-desktop$/) helpers++
    else { print; bad = 1 }
} END { exit bad || helpers != 1 }'
