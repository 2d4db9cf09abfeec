# Sourced by ./run and ./test: finds out which Debian packages are missing, and installs them.

run_packages="g++ cmake ninja-build qt6-base-dev qt6-svg-dev libsimdjson-dev libpugixml-dev libkainjow-mustache-dev libcli11-dev fonts-liberation2"
test_packages="libgtest-dev qt6-tools-dev libqt6opengl6-dev pkg-config xvfb xauth openbox python3"

is_installed() {
  # One word an architecture: "installed", or "not-installed" and others.
  case " $(dpkg-query -W -f='${db:Status-Status} ' "$1" 2>/dev/null)" in
    *" installed "*) return 0 ;;
    *) return 1 ;;
  esac
}

# Ends the script with exit code 2 and the line that a person with the rights can run.
give_up() {
  echo "$1 Please install them with:" >&2
  echo "  apt-get install --no-install-recommends$missing" >&2
  exit 2
}

# install_missing PACKAGE...: nothing is called but dpkg-query when all of them are there.
install_missing() {
  missing=""
  for package in "$@"; do
    is_installed "$package" || missing="$missing $package"
  done
  if [ -z "$missing" ]; then return 0; fi

  command -v apt-get >/dev/null || give_up "These packages are needed, and there is no apt here."
  install="apt-get update && DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends$missing"
  if [ "$(id -u)" = 0 ]; then
    as_root=""
  elif command -v sudo >/dev/null; then
    as_root="sudo"
  else
    give_up "These packages are needed, and there is neither root nor sudo to install them."
  fi
  echo "Installing with apt:$missing" >&2
  $as_root sh -c "$install" >&2 || give_up "apt could not install the packages that are missing."
}

# configure PRESET: only the first time; the build configures again by itself when it has to.
configure() {
  [ -f "$root/build/$1/build.ninja" ] || cmake --preset "$1" -S "$root" >&2
}

# A compiler cache of the machine's owner is left alone.
export CCACHE_DIR="${CCACHE_DIR:-$root/build/ccache}"
