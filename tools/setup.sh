# Sourced by run and check: the packages the project needs, and how a preset is built.

packages=(build-essential cmake ninja-build pkg-config python3-minimal
  qt6-base-dev libgtest-dev libgmock-dev fonts-dejavu-core
  fitsverify imagemagick desktop-file-utils appstream groff-base librsvg2-bin file)
if [[ -n ${WAYLAND_DISPLAY:-} && -z ${DISPLAY:-} ]]; then packages+=(qt6-wayland); fi

# Installs what is missing; asks apt nothing when all is there.
install_packages() {
  command -v dpkg-query >/dev/null || return 0  # another system: trust that the tools are there
  local missing=() name
  for name in "${packages[@]}"; do
    dpkg-query -W -f='${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  echo "Installing ${missing[*]}"
  local as_root=(env DEBIAN_FRONTEND=noninteractive)
  if ((EUID != 0)); then as_root=(sudo -n "${as_root[@]}"); fi
  if ! { "${as_root[@]}" apt-get update -qq &&
         "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null; }; then
    echo "Could not install them. As root: apt-get install ${missing[*]}" >&2
    return 1
  fi
}

# build PRESET FOLDER [TARGET...]
build() {
  local preset=$1 folder=$2
  shift 2
  if command -v ccache >/dev/null; then export CMAKE_CXX_COMPILER_LAUNCHER=ccache; fi
  cmake --preset "$preset" --log-level=NOTICE
  cmake --build "$folder" --parallel "$(nproc)" ${1:+--target "$@"}
}
