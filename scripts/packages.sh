# shellcheck shell=bash
# Sourced by the other scripts: the Debian packages that the project needs, by what they are for.

declare -A packages=(
  [native]='g++ cmake ninja-build pkg-config libcairo2-dev libpango1.0-dev libpng-dev libgdk-pixbuf-2.0-dev
    libcli11-dev fonts-liberation'
  [windows]='g++-mingw-w64-x86-64-posix cmake ninja-build libcli11-dev googletest'
  [package]='git zip nsis'
  [debian]='git dpkg-dev file librsvg2-bin man-db libxml2-utils'
  [wine]='wine64 fonts-wine fonts-liberation'
  [window]='libxrender1 libxfixes3 libxcursor1 libxrandr2 libxinerama1 libxi6 libxcomposite1'
  [tests]='libgtest-dev clang-format clang-tidy python3
    ghostscript poppler-utils librsvg2-bin chromium python3-sphinx furo qpdf libxml2-utils'
  [manual]='python3-sphinx furo chromium fonts-liberation'
  [fuzz]='clang libclang-rt-dev python3'
  [screenshots]='xvfb xauth imagemagick pngquant'
  [benchmarks]='libbenchmark-dev texlive-metapost gnuplot-nox python3 python3-cairo lua5.4 gawk tcl'
)

# need_packages GROUP...: installs the packages of these groups that are missing, and asks nothing of the network when
# none is. Ends the script with status 3 when they cannot be installed.
need_packages() {
  local group installed wanted=() missing=() name log as_root=()
  # shellcheck disable=SC2206
  for group in "$@"; do wanted+=(${packages[$group]}); done
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This script installs Debian packages, and there is no apt-get here. It needs: ${wanted[*]}" >&2
    exit 3
  fi
  installed=" $(dpkg-query -W -f='${db:Status-Status}:${Package} ' "${wanted[@]}" 2>/dev/null || true)"
  for name in "${wanted[@]}"; do
    [[ $installed == *" installed:$name "* || " ${missing[*]} " == *" $name "* ]] || missing+=("$name")
  done
  ((${#missing[@]} > 0)) || return 0

  if ((EUID != 0)); then
    # Without a terminal, sudo must not stop to ask for a password.
    if command -v sudo >/dev/null && { [[ -t 0 ]] || sudo -n true 2>/dev/null; }; then
      as_root=(sudo)
    else
      echo "These packages are missing, and installing them needs root or sudo:" >&2
      echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
      exit 3
    fi
  fi

  echo "Installing ${missing[*]}" >&2
  log=$(mktemp)
  if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive bash -c '
      apt-get -o DPkg::Lock::Timeout=120 update &&
      apt-get -o DPkg::Lock::Timeout=120 install -y --no-install-recommends "$@"' \
      install "${missing[@]}" >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    rm -f "$log"
    echo "The packages could not be installed; apt-get's words are above." >&2
    exit 3
  fi
  rm -f "$log"
}
