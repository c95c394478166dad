# Shared by run, test and bench: packages, a build folder, a virtual display.
# Sourced, not run. Needs `root`, the folder of the sources.

# Installs Debian packages that are missing, by name; says so only when there is work.
need() {
  local missing=()
  for package in "$@"; do
    dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  local sudo=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Please install as root: apt-get install ${missing[*]}" >&2
      exit 1
    fi
    sudo=(sudo)
  fi
  echo "Installing: ${missing[*]}"
  local log
  log=$(mktemp)
  if ! { "${sudo[@]}" apt-get update &&
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
      "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    echo "The packages above could not be installed." >&2
    exit 1
  fi
  rm -f "$log"
}

build_packages=(g++ cmake ninja-build ccache qt6-base-dev libgl-dev qt6-serialport-dev
  fonts-open-sans fonts-inconsolata)
test_packages=(libgtest-dev xvfb openbox strace binutils)
# What packs the workbench, and what looks at the package.
package_packages=(dpkg-dev file lintian desktop-file-utils appstream man-db xdotool)

# Configures and builds: folder, then cmake arguments, "--", then targets.
build() {
  local folder=$1
  shift
  local arguments=()
  while [ $# -gt 0 ] && [ "$1" != "--" ]; do
    arguments+=("$1")
    shift
  done
  [ $# -gt 0 ] && shift
  mkdir -p "$folder"
  cmake -S "$root" -B "$folder" -G Ninja "${arguments[@]}" >"$folder/configure.log" 2>&1 ||
    { tail -n 30 "$folder/configure.log" >&2; exit 1; }
  ninja -C "$folder" "$@"
}

# A virtual display with a small window manager; a window becomes active only under one. The
# server takes a free number by itself. Both end with the script.
virtual_display() {
  display_folder=$(mktemp -d)
  display_processes=
  trap 'kill $display_processes 2>/dev/null; rm -rf "$display_folder"' EXIT
  Xvfb -displayfd 3 -screen 0 1680x1050x24 -nolisten tcp \
    3>"$display_folder/number" >"$display_folder/log" 2>&1 &
  display_processes="$!"
  local tries=0
  until [ -s "$display_folder/number" ]; do
    tries=$((tries + 1))
    if [ $tries -gt 300 ]; then
      cat "$display_folder/log" >&2
      echo "No virtual display could be started." >&2
      exit 1
    fi
    sleep 0.1
  done
  export DISPLAY=":$(cat "$display_folder/number")"
  openbox --startup "touch '$display_folder/managed'" >"$display_folder/openbox.log" 2>&1 &
  display_processes="$display_processes $!"
  # A window that is shown before the manager runs never becomes active.
  tries=0
  until [ -e "$display_folder/managed" ]; do
    tries=$((tries + 1))
    if [ $tries -gt 300 ]; then
      cat "$display_folder/openbox.log" >&2
      echo "No window manager could be started." >&2
      exit 1
    fi
    sleep 0.1
  done
}
