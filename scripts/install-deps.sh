#!/usr/bin/env bash
# Makes sure the tools and libraries the build needs are present.
#   scripts/install-deps.sh          what `make demo` and `make test` need
#   scripts/install-deps.sh bench    also the peers the benchmarks compare against
#   scripts/install-deps.sh fuzz     also clang and its libFuzzer runtime (also for the clang build)
# Missing Debian packages are installed with apt-get when running as root (or with sudo when it
# is available without a password); otherwise the script says what to install and fails.
set -euo pipefail

want=(cmake g++ make libgtest-dev)
case "${1:-}" in
  bench) want+=(libbenchmark-dev libeigen3-dev libglm-dev libfftw3-dev libkissfft-dev) ;;
  fuzz) want+=(clang libclang-rt-14-dev) ;;
esac

missing=()
for pkg in "${want[@]}"; do
  dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q 'install ok installed' || missing+=("$pkg")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if ! command -v apt-get >/dev/null 2>&1; then
  echo "install-deps: missing ${missing[*]}; this script knows only Debian's apt-get." >&2
  echo "install-deps: install CMake >= 3.25, a C++17 compiler and GoogleTest, then retry." >&2
  exit 1
fi
if [ "$(id -u)" -eq 0 ]; then
  run=()
elif command -v sudo >/dev/null 2>&1 && sudo -n true 2>/dev/null; then
  run=(sudo -n)
else
  echo "install-deps: missing packages: ${missing[*]}" >&2
  echo "install-deps: run as root:  apt-get install -y ${missing[*]}" >&2
  exit 1
fi
echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${run[@]}" apt-get update -qq
"${run[@]}" apt-get install -y -qq "${missing[@]}"
