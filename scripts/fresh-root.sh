# A Debian that has nothing, for scripts that try the project there. Sourced; needs root and debootstrap.
# shellcheck shell=bash
#
# Its base and the packages that were fetched are kept in build/clean-root for the next time. It is entered by chroot with
# an environment, processes and mounts of its own: nothing is installed or started outside, and what was started there
# ends with it.

fresh_kept=$PWD/build/clean-root

# The release of this machine's own system.
this_release() { (. /etc/os-release && echo "$VERSION_CODENAME"); }

# The lists that this machine's apt reads of Debian; apt fills in what is in brackets.
fresh_indexes() { apt-get indextargets --format "$1" 'Created-By: Packages' 'Origin: Debian' 'Component: main' | sort -u; }

# make_fresh_root RELEASE: makes the Debian, of the archive that this machine's apt uses. $root says where it is; it goes
# when the script ends.
make_fresh_root() {
  if [ "$(id -u)" -ne 0 ]; then
    echo "$0: a new Debian can be made by root only" >&2
    exit 1
  fi
  local release=$1 own mirror kept=$fresh_kept
  own=$(this_release)
  mkdir -p "$kept/archives"
  root=$(mktemp -d)
  chmod 755 "$root"
  trap 'rm -rf --one-file-system "$root"' EXIT
  if [ ! -f "$kept/$release.tar" ]; then
    echo "== a new Debian: $release"
    # shellcheck disable=SC2016
    mirror=$(fresh_indexes '$(RELEASE) $(SITE)' | sed -n "s/^$own //p" | head -n 1)
    debootstrap --variant=minbase --cache-dir="$kept/archives" "$release" "$root" "$mirror" >"$kept/debootstrap.log"
    tar --create --file="$kept/$release.tar.new" --one-file-system --directory="$root" .
    mv "$kept/$release.tar.new" "$kept/$release.tar"
  else
    tar --extract --file="$kept/$release.tar" --directory="$root"
  fi
  # shellcheck disable=SC2016
  fresh_indexes 'deb $(SITE) $(RELEASE) main' | sed "s/ $own/ $release/" >"$root/etc/apt/sources.list"
  apt-config dump | grep '^Acquire::.*Proxy' >"$root/etc/apt/apt.conf.d/proxy" || true
  cp /etc/resolv.conf /etc/hosts "$root/etc/"
  # No service starts by itself.
  printf '#!/bin/sh\nexit 101\n' >"$root/usr/sbin/policy-rc.d"
  chmod +x "$root/usr/sbin/policy-rc.d"
}

# in_fresh_root COMMAND [ARGUMENT]...: runs it there as root. The shell stays, as the first process: it takes away the others
# that end without their parent, as an init does.
in_fresh_root() {
  # shellcheck disable=SC2016
  unshare --mount --pid --fork --kill-child bash -c '
    set -euo pipefail
    root=$1
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mount --bind "$2" "$root/var/cache/apt/archives"
    shift 2
    chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
      "$@" </dev/null || exit' fresh-root "$root" "$fresh_kept/archives" "$@"
}
