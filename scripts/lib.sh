# Shared by the scripts beside this file; to be sourced by bash.

project_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$project_root"

build_packages=(g++ cmake ninja-build qt6-base-dev zlib1g-dev libarchive-dev libcli11-dev
    rapidjson-dev)
test_packages=(libgtest-dev libgmock-dev mandoc python3 python3-jsonschema make pkg-config expect zsh)
lint_packages=(clang-format clang-tidy clang-tidy-19 cppcheck)
windows_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev cmake ninja-build dpkg-dev
    qt6-base-dev libarchive-dev libcli11-dev rapidjson-dev googletest wine wine64 zip unzip)
sanitizer_packages=(clang libclang-rt-dev)
memcheck_packages=(valgrind)
bench_packages=(libbenchmark-dev python3)
python_build_packages=(python3-dev pybind11-dev)
python_packages=("${python_build_packages[@]}" python3-pip python3-setuptools python3-venv python3-wheel
    python3-pytest python3-hypothesis python3-numpy python3-pandas python3-matplotlib mypy flake8)
package_packages=(dpkg-dev file)
package_check_packages=(lintian binutils)
all_packages=("${build_packages[@]}" "${test_packages[@]}" "${lint_packages[@]}"
    "${windows_packages[@]}" "${sanitizer_packages[@]}" "${memcheck_packages[@]}" "${bench_packages[@]}"
    "${python_packages[@]}"
    "${package_packages[@]}" "${package_check_packages[@]}")

# need_packages NAME...: makes sure that these Debian packages are there. Installs what is missing
# if this user may, else says what to install and ends the script.
need_packages() {
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system; needed are the equivalents of: $*" >&2
        return
    fi
    local missing=() package
    for package in "$@"; do
        if [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
            missing+=("$package")
        fi
    done
    if ((${#missing[@]} == 0)); then
        return
    fi
    local as_root=()
    if ((EUID != 0)); then
        as_root=(sudo -n)
        if ! sudo -n true 2>/dev/null; then
            echo "Please install the missing packages first:" >&2
            echo "    sudo apt-get install ${missing[*]}" >&2
            exit 1
        fi
    fi
    echo "Installing ${missing[*]}"
    local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
        apt-get install --yes --quiet --no-install-recommends "${missing[@]}")
    # Package lists may be absent (fresh container) or out of date: fetch them only then.
    if ! "${install[@]}" >/dev/null 2>&1; then
        "${as_root[@]}" apt-get update --quiet >/dev/null
        "${install[@]}" >/dev/null
    fi
}

# source_version PACKAGE: the version of the source package that an installed package was made of.
source_version() {
    # shellcheck disable=SC2016 # dpkg-query fills this in
    dpkg-query -W -f '${source:Version}\n' "$1"
}

# build PRESET [TARGET...]: configures and builds. QUILLMARK_WARNINGS_AS_ERRORS=ON in the environment
# makes every warning an error, as the gate does; another compiler need not share our view of them.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" \
        ${QUILLMARK_WARNINGS_AS_ERRORS:+-D "QUILLMARK_WARNINGS_AS_ERRORS=$QUILLMARK_WARNINGS_AS_ERRORS"}
    if (($# > 0)); then
        cmake --build --preset "$preset" --target "$@"
    else
        cmake --build --preset "$preset"
    fi
}

# own_sources: prints the C++ files of the project, each ended by a NUL.
own_sources() {
    find include src tests bench fuzz packaging python examples \( -name '*.cpp' -o -name '*.h' \) -print0 2>/dev/null || true
}

# start_wine: makes the prefix of Wine that scripts/wine uses, if it is not there, and keeps a program
# alive in it until this script ends, without which every start would take seconds.
start_wine() {
    export WINEPREFIX=${WINEPREFIX:-$project_root/build/wine}
    if [[ ! -e $WINEPREFIX/ready ]]; then
        mkdir -p "$WINEPREFIX"
        scripts/wine wineboot --init >"$WINEPREFIX/log" 2>&1
        # What these say would be stronger than the TMP that scripts/wine hands on.
        local key name
        for key in 'HKCU\Environment' \
            'HKLM\System\CurrentControlSet\Control\Session Manager\Environment'; do
            for name in TMP TEMP; do
                scripts/wine reg delete "$key" /v "$name" /f >>"$WINEPREFIX/log" 2>&1
            done
        done
        env -u TMPDIR wineserver --wait
        touch "$WINEPREFIX/ready"
    fi
    # It waits for a key until this script has ended.
    exec {wine_keeper}> >(exec scripts/wine cmd /c pause >/dev/null 2>&1)
    # The first program starts the services of the system, which keep its output open as long as they
    # live. It must not be one whose output somebody reads to its end.
    scripts/wine cmd /c exit >/dev/null 2>&1 {wine_keeper}>&-
}
