# For the scripts in scripts/: sourced after common.sh. What a release is made of.

version=$(scripts/version)

# source_tarball FILE: what git knows, with changes that are not committed yet.
source_tarball() {
    local commit
    commit=$(git stash create)
    git archive --format=tar --prefix="libjkc-$version/" "${commit:-HEAD}" | gzip -9n >"$1"
}

# The version and the date of each release that CHANGELOG.md tells of, the newest first. One that is still to come has the
# date of the last commit.
releases() {
    sed -nE "s/^## \[Unreleased\] ([0-9.]+)$/\1 $(git log -1 --format=%cs)/p
        s/^## \[([0-9.]+)\] - ([0-9-]+)$/\1 \2/p" CHANGELOG.md
}
