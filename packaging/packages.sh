# SPDX-License-Identifier: MIT
# shellcheck shell=sh disable=SC2034
# Lists the Debian packages that ./run, ./test, the benchmarks and fuzz/hunt.sh need, and installs those that are missing.
# The scripts source this file. "sh packaging/packages.sh bench" installs the packages for the benchmarks.

# For building and running the programs. The fonts are for Latin and Chinese text in dialogs and on pages.
build_packages="g++ cmake ninja-build ccache pkg-config git
    qt6-base-dev qt6-serialport-dev qt6-svg-dev libgl-dev
    qt6-qpa-plugins libqt6svg6 qt6-translations-l10n fonts-wqy-microhei fonts-dejavu-core
    libusb-1.0-0-dev libxlsxwriter-dev libzip-dev libhwy-dev"

# Additional packages for the tests. Workbooks are read by programs of other projects.
test_packages="libgtest-dev libgmock-dev libumockdev-dev umockdev
    xvfb openbox xdotool imagemagick x11-utils
    dbus-daemon desktop-file-utils appstream mandoc libxml2-utils libglib2.0-bin shared-mime-info dpkg-dev file
    catdoc gnumeric python3 python3-numpy python3-openpyxl python3-xlrd sigrok-cli
    cups cups-client cups-filters poppler-utils"

# Additional packages for bench/: the benchmark library, and the YMODEM programs that serial transfers are compared to.
bench_packages="libbenchmark-dev lrzsz"

# Additional packages for the fuzzers.
fuzz_packages="clang-14 libclang-rt-14-dev"

# Runs a command as root, directly or with sudo. Without a terminal nobody can type a password, so sudo must not ask.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif [ -t 0 ]; then
        sudo "$@"
    else
        sudo -n "$@"
    fi
}

# Prints the arguments that are not installed packages, on one line.
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

# require_packages PACKAGE...: installs the missing packages; ends the script if that fails.
require_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        echo "This script installs Debian packages. On another system, install equivalents of these packages and use cmake: $*" >&2
        exit 1
    fi
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "These packages are missing, and installing them requires root or sudo: $missing" >&2
        exit 1
    fi
    echo "Installing: $missing"
    # shellcheck disable=SC2086 # a list of names
    if ! as_root apt-get update -q ||
        ! as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends $missing; then
        echo "These packages could not be installed. Install them as root and try again: $missing" >&2
        exit 1
    fi
}

case ${0##*/}:${1:-} in
packages.sh:bench)
    # shellcheck disable=SC2086 # lists of names
    require_packages $build_packages $bench_packages
    ;;
esac
