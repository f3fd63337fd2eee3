#!/usr/bin/env bash
# install-dependencies.sh [build|test|bench|lint|fuzz|browser]...
#
# Installs the Debian packages that building and the job tool (build, the default), the tests (test), the benchmarks (bench), the
# source checks (lint), the fuzzers (fuzz) or the test of the preview's page (browser, 110 MB to load) need. A test whose
# package is missing is skipped. Does nothing when all of them are there. Packages are installed as root or through sudo.
set -euo pipefail

# Why each is needed stands in docs/architecture.md.
build_packages=(
    g++ make cmake ninja-build pkg-config
    qt6-base-dev qt6-5compat-dev
    libocct-data-exchange-dev
    libjsoncpp-dev
    libcsv-dev
    hershey-fonts-data
    libjs-three
    python3
)
test_packages=(occt-misc python3-ezdxf libxml2-utils groff-base librecad zsh fish)
bench_packages=(libbenchmark-dev libboost-dev libdxflib-dev python3-ezdxf)
lint_packages=(clang-format clang-tidy)
fuzz_packages=(clang libclang-rt-14-dev)
browser_packages=(chromium)

say() { echo "install-dependencies: $*"; }
fail() { say "$*" >&2; exit 1; }

wanted=()
for group in "${@:-build}"; do
    case $group in
        build) wanted+=("${build_packages[@]}") ;;
        test) wanted+=("${test_packages[@]}") ;;
        bench) wanted+=("${bench_packages[@]}") ;;
        fuzz) wanted+=("${fuzz_packages[@]}") ;;
        lint) wanted+=("${lint_packages[@]}") ;;
        browser) wanted+=("${browser_packages[@]}") ;;
        *) fail "unknown group \"$group\", expected build, test, bench, lint, fuzz or browser" ;;
    esac
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    say "no apt-get here, so nothing is installed. Needed are what Debian 12 calls: ${wanted[*]}"
    exit 0 # the configure step tells what it misses
fi

missing=()
for package in "${wanted[@]}"; do
    status=$(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

say "missing: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
    as_root=(env)
elif command -v sudo >/dev/null; then
    say "installing needs root, so sudo is used and may ask for your password"
    as_root=(sudo env)
else
    fail "installing needs root, and there is no sudo. As root, run: apt-get install --no-install-recommends ${missing[*]}"
fi

apt_get() {
    "${as_root[@]}" DEBIAN_FRONTEND=noninteractive apt-get --quiet --yes "$@" ||
        fail "apt-get $1 failed; still missing: ${missing[*]}"
}
say "installing them with apt-get"
apt_get update
apt_get install --no-install-recommends "${missing[@]}"
