# shellcheck shell=bash
# What run, test, .ci/run and the scripts beside this file share. It is sourced, never run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
package_list=$root/packaging/debian-packages.txt

say() { # TEXT...
    printf '== %s\n' "$*" >&2
}

give_up() { # SENTENCE: what is wrong and what to do
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

is_debian_12() {
    # shellcheck source=/dev/null
    [[ $(. "${OS_RELEASE_FILE:-/etc/os-release}" 2>/dev/null && echo "${ID-} ${VERSION_ID-}") == "debian 12" ]]
}

# The packages of the named groups, sorted, each once.
listed_packages() { # GROUP...
    local group
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' "$package_list"
    done | LC_ALL=C sort -u
}

installed_packages() { # PACKAGE...
    # A name that dpkg has never heard of makes it fail; the others are listed all the same.
    { dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' "$@" 2>/dev/null || true; } |
        awk '$1 ~ /^.i$/ { print $2 }' | LC_ALL=C sort -u
}

missing_packages() { # GROUP...
    local -a wanted
    mapfile -t wanted < <(listed_packages "$@")
    LC_ALL=C comm -23 <(printf '%s\n' "${wanted[@]}") <(installed_packages "${wanted[@]}")
}

# Runs apt-get as root, without questions.
apt_get() { # ARGUMENT...
    local -a command=(env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300 "$@")
    if [[ $(id -u) != 0 ]]; then
        command=(sudo "${command[@]}")
    fi
    # What the package scripts say is shown only when it went wrong.
    local output
    if ! output=$("${command[@]}" 2>&1 </dev/null); then
        printf '%s\n' "$output" >&2
        return 1
    fi
}

# Makes sure that the packages of the groups are there, and installs only those that are not.
require_packages() { # GROUP...
    if ! is_debian_12; then
        require_tools
        return
    fi
    local -a missing
    mapfile -t missing < <(missing_packages "$@")
    if ((${#missing[@]} == 0)); then
        return
    fi
    if [[ $(id -u) != 0 ]] && ! command -v sudo >/dev/null; then
        give_up "Neither root nor sudo is at hand, so have an administrator run 'apt-get install ${missing[*]}' and start this again."
    fi
    say "Installing ${missing[*]}"
    apt_get update || give_up "The package lists cannot be fetched, so check the network and the sources of apt, then start this again."
    apt_get install -y --no-install-recommends "${missing[@]}" ||
        give_up "The packages ${missing[*]} cannot be installed, so mend what apt-get says above (most often the network), then start this again."
}

# On another system nothing is installed: what is needed must be there already.
require_tools() {
    say "This is not Debian 12, for which Kestoboard is made; going on with what is installed."
    local tool
    for tool in cmake ninja c++ pkg-config; do
        command -v "$tool" >/dev/null ||
            give_up "'$tool' is missing and packages are installed on Debian 12 only, so install what $package_list names and start this again."
    done
    pkg-config --exists 'Qt5Widgets >= 5.15' Qt5DBus Qt5Svg Qt5Test tomlplusplus ||
        give_up "Qt 5.15 (Widgets, DBus, Svg, Test) or toml++ is missing, so install what $package_list names and start this again."
}

# Configures the preset and builds it in build/<preset>: all of it, or what the options name.
build_preset() { # PRESET [CMAKE BUILD OPTION...]
    local preset=$1 log=$root/build/$1-configure.log
    shift
    local -a options=("-DKESTOBOARD_WERROR=${KESTOBOARD_WERROR:-OFF}")
    if command -v ccache >/dev/null; then
        # Copies of the tree in different places share what is compiled.
        export CCACHE_BASEDIR=$root CCACHE_NOHASHDIR=1
        options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    mkdir -p "$root/build" ||
        give_up "The directory $root/build cannot be made, so start this from a copy of the tree that you may write to."
    say "Configuring $preset"
    if ! cmake -S "$root" --preset "$preset" "${options[@]}" >"$log" 2>&1; then
        cat "$log" >&2
        give_up "Configuring failed, so mend what is said above, or remove $root/build/$preset if the tree was moved, and start this again."
    fi
    say "Building $preset"
    cmake --build "$root/build/$preset" "$@" >&2 ||
        give_up "Building failed, so mend the first error above and start this again."
}
