# shellcheck shell=sh
# What building, running and testing needs on Debian 12, and a function that installs what is missing of it.
# Sourced by ./run and ./test.

SIXTRACE_BUILD_PACKAGES="g++ cmake ninja-build ccache pkg-config qt6-base-dev qt6-serialport-dev qt6-svg-dev libgl-dev
libusb-1.0-0-dev libxlsxwriter-dev"
SIXTRACE_RUN_PACKAGES="qt6-qpa-plugins libqt6svg6 qt6-translations-l10n fonts-wqy-microhei fonts-dejavu-core"
SIXTRACE_TEST_PACKAGES="libgtest-dev libgmock-dev"

# Installs those of the named packages that are not there. Ends the script with a clear sentence when it cannot.
install_missing() {
    missing=""
    for package in "$@"; do
        if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
            missing="$missing $package"
        fi
    done
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -eq 0 ]; then
        as_root=""
    elif command -v sudo >/dev/null 2>&1 && { [ -t 0 ] || sudo -n true 2>/dev/null; }; then
        as_root="sudo"
    else
        echo "Some Debian packages are missing and only root may install them. Please run, as root:" >&2
        echo "    apt-get install --no-install-recommends$missing" >&2
        exit 1
    fi
    echo "Installing:$missing"
    # shellcheck disable=SC2086
    { $as_root apt-get update -q && $as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends $missing; } >build-packages.log 2>&1 || {
        cat build-packages.log >&2
        echo "The packages could not be installed; the lines above say why." >&2
        exit 1
    }
    rm -f build-packages.log
}
