# Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
# What the scripts beside this file share; they source it.

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)

# fail <sentence>: says why the script stops, and stops it.
fail() {
    printf '%s: %s\n' "${0##*/}" "$1" >&2
    exit 1
}

# configure_and_build <preset> [arguments of cmake --build]
configure_and_build() {
    local preset=$1
    shift
    # In a subshell: cmake looks for presets in the current folder, but file names among the
    # arguments of the caller are meant from where the caller is.
    (cd -- "$root" && cmake --preset "$preset" && cmake --build --preset "$preset" "$@")
}

has_display() { [[ -n ${DISPLAY:-}${WAYLAND_DISPLAY:-} ]]; }

# on_virtual_display <command>: runs it on a display of its own, drawn by the software driver, so
# that the pictures do not depend on the machine.
on_virtual_display() {
    # Older versions of xvfb-run send the command's standard error to its standard output, hence the
    # detour; newer ones use descriptor 3 themselves.
    # shellcheck disable=SC2016
    env -u WAYLAND_DISPLAY LIBGL_ALWAYS_SOFTWARE=1 QT_QPA_PLATFORM=xcb \
        xvfb-run -a -s '-screen 0 1920x1200x24' bash -c 'exec "$@" 2>&9 9>&-' bash "$@" 9>&2
}
