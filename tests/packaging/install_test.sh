#!/bin/sh
# SPDX-License-Identifier: MIT
# Installs the build to a test folder, checks every file that the desktop reads with its validator, and starts the installed
# programs. Arguments: cmake, the build folder, an empty working folder.
set -eu
cmake=$1
build=$2
work=$3
rm -rf "$work"
mkdir -p "$work/run"
DESTDIR='' "$cmake" --install "$build" --prefix "$work/usr" >"$work/install.log"
id=org.sixtrace.Sixtrace
share=$work/usr/share
failed=0

# expect WHAT COMMAND...: runs a check and reports a failure.
expect() {
    what=$1
    shift
    if ! "$@" >"$work/check.log" 2>&1; then
        echo "$what:"
        cat "$work/check.log"
        failed=1
    fi
}
# quiet COMMAND...: fails if the validator prints anything.
quiet() {
    "$@" >"$work/said.log" 2>&1 || { cat "$work/said.log"; return 1; }
    cat "$work/said.log"
    [ ! -s "$work/said.log" ]
}

for file in bin/sixtrace bin/kqx bin/sixtrace-instrument "share/icons/hicolor/scalable/apps/$id.svg" \
    share/sixtrace/ChineseS.Lan share/sixtrace/English.Lan share/sixtrace/vrt_c.html share/sixtrace/vrt_e.html \
    share/sixtrace/ttdll.ini "share/thumbnailers/$id.thumbnailer" \
    share/bash-completion/completions/kqx share/zsh/vendor-completions/_kqx share/fish/vendor_completions.d/kqx.fish; do
    expect "$file is missing" test -s "$work/usr/$file"
done
# Every picture of the help pages is installed.
for page in vrt_c vrt_e; do
    for picture in $(sed -n 's/.*<img src="\([^"]*\)".*/\1/p' "$share/sixtrace/$page.html"); do
        expect "$picture of $page is missing" test -s "$share/sixtrace/$picture"
    done
    expect "help $page" xmllint --html --noout "$share/sixtrace/$page.html"
done
library=$(find "$work/usr" -name libttdll.so)
expect "the transfer library is missing" test -s "$library"
expect "the program for kqx's desktop commands is missing" test -x "$(dirname "$library")/kqx-desktop"

expect "desktop entry" quiet desktop-file-validate "$share/applications/$id.desktop"
expect "metainfo" appstreamcli validate --no-net "$share/metainfo/$id.metainfo.xml"
for page in sixtrace kqx sixtrace-instrument; do
    gunzip -c "$share/man/man1/$page.1.gz" >"$work/$page.1"
    expect "man page $page" quiet mandoc -T lint -W warning "$work/$page.1"
done
expect "bus service" grep -qx "Exec=$work/usr/bin/sixtrace" "$share/dbus-1/services/$id.service"
expect "icon" xmllint --noout "$share/icons/hicolor/scalable/apps/$id.svg"

# The udev rules: checked by udev itself if it can (version 254 and later), else by their grammar.
rules=$(find "$work/usr" -name 70-sixtrace.rules)
if udevadm verify --help >/dev/null 2>&1; then
    expect "device rules" udevadm verify --no-style "$rules"
else
    term='[A-Z]+(\{[A-Za-z_]+\})?(==|!=|\+=|=)"[^"]*"'
    expect "device rules" sh -c "! grep -Ev '^(#.*|$term(, ?$term)*)?\$' '$rules'"
fi

# The MIME database distinguishes captures from other binary files, whatever their names are.
expect "file type" xmllint --noout "$share/mime/packages/$id.xml"
mkdir -p "$work/data/mime/packages"
cp /usr/share/mime/packages/freedesktop.org.xml "$share/mime/packages/$id.xml" "$work/data/mime/packages"
expect "file type" quiet env XDG_DATA_DIRS="$work/data" update-mime-database "$work/data/mime"
for form in bin V01 W01 V11 W11 V10; do
    "$work/usr/bin/sixtrace-instrument" --write "$work/$form.bin" --form "$form" --scene sine
    cp "$work/$form.bin" "$work/$form"
done
head -c 4096 /dev/zero >"$work/zero.bin"
printf zz >"$work/D2611211200.bin"
type_of() { XDG_DATA_DIRS=$work/data XDG_DATA_HOME=$work/nowhere gio info -a standard::content-type "$1" | sed -n 's/.*content-type: //p'; }
for file in bin.bin V01.bin W01.bin V11.bin W11.bin V10.bin V11 D2611211200.bin; do
    expect "type of $file: $(type_of "$work/$file")" test "$(type_of "$work/$file")" = application/x-kqx-capture
done
expect "type of other binary data: $(type_of "$work/zero.bin")" test "$(type_of "$work/zero.bin")" != application/x-kqx-capture

# The installed programs work for a user whose home folder is empty and who cannot write to the installation.
chmod -R a-w "$work/usr"
export XDG_DATA_HOME="$work/home" HOME="$work/home" XDG_RUNTIME_DIR="$work/run" QT_QPA_PLATFORM=offscreen
chmod 700 "$work/run"
mkdir -p "$work/home"
cd "$work"
"$work/usr/bin/sixtrace" &
program=$!
tries=0
while [ ! -s "$work/home/sixtrace/vkq.ini" ] && [ "$tries" -lt 300 ]; do
    sleep 0.1
    tries=$((tries + 1))
done
sleep 0.5
expect "the installed program is gone" kill -0 "$program"
kill "$program" 2>/dev/null || true
wait "$program" 2>/dev/null || true
expect "settings of a first start" grep -qx Language=0 "$work/home/sixtrace/vkq.ini"
expect "the install was written to" test -z "$(find "$work/usr" -newer "$work/zero.bin" -type f)"

"$work/usr/bin/sixtrace-instrument" --usb "$work/home/sixtrace/instrument.socket" --scene six >"$work/instrument.log" &
instrument=$!
tries=0
while [ ! -S "$work/home/sixtrace/instrument.socket" ] && [ "$tries" -lt 100 ]; do
    sleep 0.1
    tries=$((tries + 1))
done
expect "a table by the installed programs" "$work/usr/bin/kqx" table --language 1 "$work/V11.bin" "$work/t.txt"
expect "its unit line" grep -q "Unit: mV" "$work/t.txt"
# The command of the thumbnailer entry, with a file name that looks like an option.
cp "$work/V11.bin" "$work/-odd.bin"
thumbnail=$(sed -n 's/^Exec=//p' "$share/thumbnailers/$id.thumbnailer" | sed "s|%s|128|; s|%i|-odd.bin|; s|%o|thumb.tmp|")
# shellcheck disable=SC2086 # a command line
expect "a thumbnail by its entry" env -C "$work" PATH="$work/usr/bin:$PATH" $thumbnail
expect "the thumbnail" grep -q PNG "$work/thumb.tmp"
expect "fetch with the installed programs" "$work/usr/bin/kqx" fetch --usb -o "$work/fetched.bin"
expect "the fetched capture" "$work/usr/bin/kqx" info "$work/fetched.bin"
kill "$instrument" 2>/dev/null || true
wait "$instrument" 2>/dev/null || true
chmod -R u+w "$work/usr"
exit "$failed"
