# shellcheck shell=bash
# Sourced by the other scripts.

# need_packages NAME...: installs the Debian packages that are missing, and asks nothing of the network when
# none is. Ends the script with status 3 when they cannot be installed.
need_packages() {
  local installed missing=() name log as_root=()
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This script installs Debian packages, and there is no apt-get here. It needs: $*" >&2
    exit 3
  fi
  installed=" $(dpkg-query -W -f='${db:Status-Status}:${Package} ' "$@" 2>/dev/null || true)"
  for name in "$@"; do
    [[ $installed == *" installed:$name "* ]] || missing+=("$name")
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
