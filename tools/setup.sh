#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the Debian packages named as arguments that are missing. Sourced by quickstart and check.
need() {
  local missing=()
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  if [ ${#missing[@]} -eq 0 ]; then return; fi
  local root=()
  if [ "$(id -u)" -ne 0 ]; then root=(sudo); fi
  echo "installing: ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  "${root[@]}" apt-get update -qq
  "${root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}
