#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, and only those that are missing,
# so that running it on a machine that already has them costs a dpkg query and nothing else.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config clang-format
  libicu-dev
  libcurl4-openssl-dev
  nlohmann-json3-dev
  libcpp-httplib-dev
  uuid-dev
  libfmt-dev
  libgtest-dev libgmock-dev
  libbenchmark-dev
  libboost1.81-dev
  chromium
  clang-19 libclang-rt-19-dev
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "setup: installing ${missing[*]}"
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
