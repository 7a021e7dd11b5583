# SPDX-License-Identifier: MIT
# shellcheck shell=sh disable=SC2034
# The Debian packages that ./run, ./test, the benches and fuzz/hunt.sh need, and how the missing ones get installed. Sourced by the
# scripts; run as "sh packaging/packages.sh bench" it installs what the benches need.

# To build and to run the programs. The fonts are the dialogs' Latin and Chinese ones.
build_packages="g++ cmake ninja-build ccache pkg-config git
    qt6-base-dev qt6-serialport-dev qt6-svg-dev libgl-dev
    qt6-qpa-plugins libqt6svg6 qt6-translations-l10n fonts-wqy-microhei fonts-dejavu-core
    libusb-1.0-0-dev libxlsxwriter-dev libzip-dev"

# What the tests need on top. Workbooks are read back by programs that are not ours.
test_packages="libgtest-dev libgmock-dev libumockdev-dev umockdev
    xvfb openbox xdotool imagemagick x11-utils
    dbus-daemon desktop-file-utils appstream mandoc libxml2-utils libglib2.0-bin shared-mime-info dpkg-dev file
    catdoc gnumeric python3 python3-numpy python3-openpyxl python3-xlrd sigrok-cli
    cups cups-client cups-filters poppler-utils"

# What the programs of bench/ need on top: the measuring library, and the pair that the serial line is compared to.
bench_packages="libbenchmark-dev lrzsz"

# What the fuzzers need on top.
fuzz_packages="clang-14 libclang-rt-14-dev"

# As root, or through sudo. Where nobody can type a password, sudo has to do without one.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif [ -t 0 ]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

# The packages among the arguments that are not installed, on one line.
missing_packages() {
    missing=
    for package in "$@"; do
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) || status=
        case $status in
        installed*) ;;
        *) missing="$missing${missing:+ }$package" ;;
        esac
    done
    printf '%s' "$missing"
}

# require_packages PACKAGE...: installs those that are missing, and ends the script where that cannot be done.
require_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This script installs Debian packages; on another system install the like of these yourself and use cmake: $*" >&2
        exit 1
    fi
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "These packages are missing, and installing them needs root or sudo: $missing" >&2
        exit 1
    fi
    echo "Installing: $missing"
    # shellcheck disable=SC2086 # a list of names
    if ! as_root apt-get update -q ||
        ! as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing; then
        echo "These packages could not be installed; install them as root and try again: $missing" >&2
        exit 1
    fi
}

case ${0##*/}:${1:-} in
packages.sh:bench)
    # shellcheck disable=SC2086 # lists of names
    require_packages $build_packages $bench_packages
    ;;
esac
