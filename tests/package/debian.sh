#!/bin/bash
# Installs the Debian packages into a Debian that has nothing else, uses them, removes them and looks for what is left.
# Where such a root cannot be made they are unpacked into a folder and used from there.
# Usage, in the source tree: debian.sh PACKAGES ROOT, where ROOT is kept for the next time.
set -euo pipefail
packages=$1
root=$(realpath -m "$2")
debs=$(cd "$packages" && ls -- *.deb | grep -v dbgsym)

in_root() {
    unshare --mount --pid --fork --mount-proc="$root/proc" chroot "$root" \
        env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

# What the packages are used with is there from the beginning.
make_root() {
    [ ! -e "$root.made" ] || return 0
    [ "$(id -u)" = 0 ] || return 1
    local tools
    tools=$(sed -n 's/^Depends: @, //p' packaging/debian/tests/control | tr -d ,)
    rm -rf "$root"
    debootstrap --variant=minbase "$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)" "$root" &&
        in_root apt-get install -y --no-install-recommends $tools &&
        touch "$root.made"
}

files_in_root() { (cd "$root" && find . -path ./proc -prune -o -path ./tmp -prune -o -path ./var/cache -prune -o -print | sort); }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
if ! make_root >"$work/log" 2>&1; then
    tail -n 5 "$work/log"
    echo "No Debian of its own can be made here: the packages are only unpacked"
    for deb in $debs; do
        dpkg-deb -x "$packages/$deb" "$work/unpacked"
    done
    packaging/debian/tests/installed "$work/unpacked"
    exit
fi

files_in_root >"$work/before"
rm -rf "$root/tmp/packages" "$root/tmp/source"
mkdir -p "$root/tmp/packages" "$root/tmp/source"
(cd "$packages" && cp $debs "$root/tmp/packages")
git ls-files -z | xargs -0 cp --parents -t "$root/tmp/source"
mv "$root.made" "$root.in-use" # until it is as it was
in_root sh -c 'apt-get install -y --no-install-recommends /tmp/packages/*.deb'
in_root sh -c 'cd /tmp/source && packaging/debian/tests/installed'
in_root apt-get purge -y $(sed 's/_[^ ]*$//' <<<"$debs")
files_in_root >"$work/after"
diff "$work/before" "$work/after" || { echo "> left behind by the packages" && exit 1; }
mv "$root.in-use" "$root.made"
echo "The packages came, worked and left nothing behind"
