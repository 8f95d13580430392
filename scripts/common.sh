# shellcheck shell=bash
# Shared by the scripts: the project's root as the working folder, and the packages that a step needs.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Packages that are needed to build the library and its programs.
build_packages=(
    g++ cmake ninja-build libboost-dev libcli11-dev libglm-dev libjs-three libstb-dev rapidjson-dev)
test_packages=("${build_packages[@]}" libgtest-dev)
# Debian's python3 has numpy; the one that a user has installed beside it doesn't.
python_packages=(pybind11-dev python3-dev python3-numpy)
package_packages=("${build_packages[@]}" "${python_packages[@]}" dpkg-dev file help2man lintian)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

# Records that something can't be tested here, and why. CI prints these notes at its end.
skip() {
    echo "Not tested: $*"
    mkdir -p build
    echo "Not tested: $*" >>build/not-tested
}

# Installs those of the named packages that are missing.
need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    as_root apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# Configures and builds a preset. Further arguments are passed to the configuration.
build_preset() {
    local preset=$1
    shift
    cmake --preset "$preset" "$@"
    cmake --build --preset "$preset"
}
