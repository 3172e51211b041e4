# SPDX-License-Identifier: Apache-2.0
# Small Debian systems of other releases, kept for later runs. Sourced by bash, after common.sh, in the repository's root.
# The caller sets $release.
trees=${ORVANE_TREES:-/var/tmp/orvane-trees}
tree=$trees/$release
read -ra apt_arguments <<<"${ORVANE_APT_ARGS:-}"

tree_environment='Environment:
  ORVANE_TREES      where the systems are kept
  ORVANE_MIRROR     where their packages come from (default: the one that debootstrap takes)
  ORVANE_APT_ARGS   further options for apt-get, for example: -o Acquire::Check-Valid-Until=false'

inside() { chroot "$tree" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }

require_tree_tools() {
    [ "$(id -u)" = 0 ] || fail "making a Debian system takes root."
    command -v debootstrap >/dev/null || fail "making a Debian system takes debootstrap; please install it."
}

make_tree() {
    # debootstrap has a script per release; releases newer than debootstrap work like unstable.
    local script=/usr/share/debootstrap/scripts/$release
    [ -e "$script" ] || script=/usr/share/debootstrap/scripts/sid
    say "Making a Debian system of the release $release..."
    rm -rf "$tree.new"
    mkdir -p "$trees"
    debootstrap --variant=minbase "$release" "$tree.new" "${ORVANE_MIRROR:-}" "$script" >"$trees/debootstrap.log" 2>&1 ||
        { tail -n 5 "$trees/debootstrap.log" >&2; fail "the Debian system could not be made."; }
    mv "$tree.new" "$tree"
}

# To be called in a mount namespace of its own.
mount_system() {
    mount -t proc proc "$tree/proc"
    mount --rbind /sys "$tree/sys"
    mount --rbind /dev "$tree/dev"
}

# install_in_tree LOG PACKAGE...
install_in_tree() {
    local log=$1
    shift
    { inside apt-get "${apt_arguments[@]}" -q update &&
        inside apt-get "${apt_arguments[@]}" -q -y --no-install-recommends install "$@"; } >"$log" 2>&1 ||
        { tail -n 5 "$log" >&2; fail "the packages could not be installed."; }
}
