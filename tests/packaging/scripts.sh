#!/usr/bin/env bash
# What run and test do on systems of every kind, in a tree and on a search path made up for it.
#
# Usage: scripts.sh TREE
set -euo pipefail

tree=$1
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
calls=$place/calls
fakes=$place/fakes

# A program on the made-up search path, with the given lines of shell as its body.
fake() { # NAME LINE...
    local name=$1
    shift
    rm -f "$fakes/$name"
    printf '%s\n' "#!$(command -v bash)" "$@" >"$fakes/$name"
    chmod +x "$fakes/$name"
}

# A tree with the scripts, a build that succeeds and a panel that tells its options; Debian 12, all
# packages installed, a root user, a display, and no tool.
set_up() {
    rm -rf "$place/tree" "$fakes" "$calls"
    mkdir -p "$place/tree/build/release/bin" "$place/tree/examples/commands" "$fakes"
    cp -r "$tree/run" "$tree/test" "$tree/scripts" "$tree/packaging" "$place/tree"
    echo "board list" >"$place/tree/examples/commands/list.cmd"
    printf 'ID=debian\nVERSION_ID="12"\n' >"$place/os-release"
    : >"$calls"

    local tool
    for tool in awk bash cat comm cp dirname env mkdir sort; do
        ln -s "$(command -v "$tool")" "$fakes/$tool"
    done
    fake id 'echo 0'
    fake dpkg-query "awk '/^[a-z]/ { print \"ii \", \$2 }' '$place/tree/packaging/debian-packages.txt'"
    fake apt-get "echo apt-get \"\$@\" >>'$calls'"
    fake cmake 'exit 0'
    fake ctest "echo ctest \"\$@\" >>'$calls'"
    cp "$fakes/cmake" "$place/tree/build/release/bin/kestoboard"
    printf '%s\n' "#!$(command -v bash)" \
        "echo kestoboard \"\$@\" >>'$calls'; echo \"platform \${QT_QPA_PLATFORM-}\" >>'$calls'" \
        >"$place/tree/build/release/bin/kestoboard"
}

# Runs a script of the made-up tree; what it says is in $said, its status in $status.
start() { # [NAME=VALUE...] SCRIPT ARGUMENT...
    local -a environment=()
    while [[ $1 == *=* ]]; do
        environment+=("$1")
        shift
    done
    local script=$1
    shift
    status=0
    said=$(cd / && env -i PATH="$fakes" DISPLAY=:7 OS_RELEASE_FILE="$place/os-release" \
        "${environment[@]}" "$place/tree/$script" "$@" 2>&1) || status=$?
}

failures=0
check() { # WHAT COMMAND...
    local what=$1
    shift
    if ! "$@"; then
        failures=$((failures + 1))
        printf 'FAILED: %s\nstatus %s, said:\n%s\ncalls:\n%s\n\n' \
            "$what" "$status" "$said" "$(cat "$calls")"
    fi
}

called() { # LINE
    [[ $'\n'$(cat "$calls")$'\n' == *$'\n'"$1"$'\n'* ]]
}

says() { # TEXT
    [[ $said == *"$1"* ]]
}

# One sentence, the last line, with this in it, and status 1.
gives_up_with() { # TEXT
    local last=${said##*$'\n'}
    [[ $status == 1 && $last == *"$1"* && $last == *. && $last != *". "* ]]
}

set_up
start run
check "run starts the panel on simulated boards where there is no tool" \
    called "kestoboard --simulate"
check "nothing is installed when nothing is missing" test "$(grep -c apt-get "$calls")" = 0
check "a display is used" called "platform "

set_up
fake ksbase2_cli 'exit 0'
start run --directory /somewhere
check "run passes its options on, and the tool is used" called "kestoboard --directory /somewhere"

set_up
start run --simulate bench.toml --tour=shots
check "what was asked for is not added again" called "kestoboard --simulate bench.toml --tour=shots"

set_up
start DISPLAY= run
check "without a display run makes the tour" \
    called "kestoboard --simulate --tour $place/tree/pictures"
check "without a display the platform is offscreen" called "platform offscreen"

set_up
start DISPLAY= run --version
check "the version needs neither boards nor a tour" called "kestoboard --version"

set_up
start run --debug
check "run --debug works where the example command files are" \
    called "kestoboard --debug --simulate --directory $place/tree/build/commands"
check "the example command files are there" test -e "$place/tree/build/commands/list.cmd"

set_up
fake cmake "echo cmake >>'$calls'"
start run --help
for option in --debug --simulate --directory --tour --version; do
    check "run --help names $option" says "  $option "
done
check "run --help builds nothing" test ! -s "$calls"

set_up
start test -R engine
check "test passes its options on" called "ctest --preset dev -j2 -R engine"

set_up
start test --asan
check "test --asan takes the other preset" called "ctest --preset asan -j2"

set_up
start test --tsan
check "test --tsan takes the other preset" called "ctest --preset tsan -j2"

set_up
start test --long
check "test --long runs what has a thorough form" called "ctest --preset dev -j2 -L long"

set_up
fake ctest 'exit 8'
start test
check "failing tests fail" gives_up_with "Tests failed"

set_up
fake dpkg-query "awk '/^[a-z]/ && \$2 != \"cmake\" { print \"ii \", \$2 }' \
    '$place/tree/packaging/debian-packages.txt'" 'exit 1'
start run
check "only what is missing is installed" called \
    "apt-get -qq -o DPkg::Lock::Timeout=300 install -y --no-install-recommends cmake"
check "and the panel is started" called "kestoboard --simulate"

set_up
fake dpkg-query "echo 'rc  cmake'; awk '/^[a-z]/ && \$2 != \"cmake\" { print \"ii \", \$2 }' \
    '$place/tree/packaging/debian-packages.txt'"
start run
check "a package that was removed is missing" called \
    "apt-get -qq -o DPkg::Lock::Timeout=300 install -y --no-install-recommends cmake"

set_up
fake id 'echo 1000'
fake dpkg-query 'exit 1'
start run
check "neither root nor sudo" gives_up_with "have an administrator run 'apt-get install cmake"
check "nothing was tried" test ! -s "$calls"

set_up
fake id 'echo 1000'
fake sudo "echo sudo >>'$calls'; \"\$@\""
fake dpkg-query 'exit 1'
start run
check "sudo is used" called sudo

set_up
fake dpkg-query 'exit 1'
fake apt-get "[[ \$* != *update* ]]"
start run
check "no network for the lists" gives_up_with "check the network"

set_up
fake dpkg-query 'exit 1'
fake apt-get "echo 'E: no such package'; [[ \$* != *install* ]]"
start run
check "no network for the packages" gives_up_with "cannot be installed"
check "what apt-get said is shown" says "no such package"

set_up
printf 'ID=plan9\nVERSION_ID="4"\n' >"$place/os-release"
start run
check "another system is named, and what it lacks" gives_up_with "'ninja' is missing"
check "the system is named first" says "not Debian 12"

set_up
printf 'ID=plan9\nVERSION_ID="4"\n' >"$place/os-release"
fake ninja 'exit 0'
fake c++ 'exit 0'
fake pkg-config 'exit 0'
start run
check "another system with all tools goes on" called "kestoboard --simulate"

set_up
fake cmake 'echo "CMake Error: no compiler"; exit 1'
start run
check "a configuration that fails" gives_up_with "Configuring failed"
check "what cmake said is shown" says "no compiler"

set_up
fake cmake "[[ \$1 != --build ]]"
start run
check "a build that fails" gives_up_with "Building failed"

((failures == 0)) || exit 1
echo "The scripts behave."
