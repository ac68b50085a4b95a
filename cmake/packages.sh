# shellcheck shell=bash disable=SC2034
# The Debian packages that building and testing need, and how they get onto the machine. Sourced.

# Of llvm the sanitizers take what gives their reports names and lines.
readonly zel_packages=(
    cmake ninja-build g++ g++-mingw-w64-x86-64-posix clang libclang-rt-14-dev llvm
    doctest-dev libstb-dev libbenchmark-dev
    wine wine64 xvfb xauth xdotool x11-utils openbox imagemagick fonts-open-sans python3 python3-yaml git
)
readonly zel_bench_packages=(libosmesa6-dev)           # for ./bench only, which can do without
readonly zel_lint_packages=(clang-tidy)                # for ./lint only
readonly zel_drawing_packages=(librsvg2-bin icoutils)  # for assets/source/render.sh only

# Installs those of the named packages that are missing, and asks the network for nothing when none is.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query --show --showformat '${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    if ((${#missing[@]} == 0)); then return 0; fi

    local as_root=()
    if ((EUID != 0)); then as_root=(sudo); fi
    echo "Installing: ${missing[*]}" >&2
    "${as_root[@]}" apt-get -qq update >&2 &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -qq -y --no-install-recommends -o Dpkg::Use-Pty=0 install "${missing[@]}" >/dev/null
}
