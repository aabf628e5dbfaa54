#!/usr/bin/env bash
# Builds the packages twice, in different folders, compares them byte for byte,
# and runs the program from a scratch root that the package was installed in.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh
source=$PWD

need_packages "${build_packages[@]}" binutils fakeroot lintian make pkg-config

# Builds a source tree in a folder and packs it into the folder's packages.
pack() {
    quietly cmake -S "$1" -B "$2" --preset install
    quietly cmake --build "$2"
    (cd "$2" && quietly cpack -B packages)
    rm -r "$2/packages/_CPack_Packages"
}

# What is packed is dated by this instead of the clock, and its folders are for all to read.
export SOURCE_DATE_EPOCH=1700000000
umask 022

say "Packing (in build/packages)"
first=build/packages
rm -rf $first/packages
pack . $first
ls $first/packages

say "Packing again, from another folder, at another time, in another locale and time zone"
mkdir -p "$scratch/elsewhere/a source tree"
second="$scratch/elsewhere/b"
git ls-files -z --cached --others --exclude-standard \
    | xargs -0 cp --parents -t "$scratch/elsewhere/a source tree"
find "$scratch/elsewhere" -exec touch -h -d 2020-02-20 {} +
(
    export LC_ALL=C TZ=Asia/Tokyo
    unset CMAKE_CXX_COMPILER_LAUNCHER # which might bring back the first build
    pack "$scratch/elsewhere/a source tree" "$second"
)
mapfile -t files < <(cd $first && find packages ZEKTexComp Source/*/ -type f \( -path 'packages/*' -o \
    -name ZEKTexComp -o -name 'lib*.a' \))
for file in "${files[@]}"; do
    cmp "$first/$file" "$second/$file" || fail "The two builds differ."
    if grep -lF -e "$source/" -e "$scratch/" "$first/$file"; then
        fail "The file above names a folder of this machine."
    fi
done
echo "${#files[@]} files (packages, program, libraries) are the same byte for byte"

say "Configuring with a compiler that leaves -static-pie out"
cat >"$scratch/compiler" <<'END'
#!/bin/bash
[[ " $* " != *" -static-pie "* ]] || echo "warning: argument unused: '-static-pie'" >&2
exec g++ "${@/#-static-pie/-pie}"
END
chmod +x "$scratch/compiler"
quietly cmake -S . -B "$scratch/not-static" -G Ninja -DCMAKE_CXX_COMPILER="$scratch/compiler"
! grep -q '^ZEK_STATIC:BOOL=ON$' "$scratch/not-static/CMakeCache.txt" || fail "ZEK_STATIC is on."
echo "leaves ZEK_STATIC off"

say "lintian"
# There is no licence yet, and so no file that tells it.
lintian --allow-root --fail-on error,warning --suppress-tags no-copyright-file $first/packages/*.deb
echo "has nothing to say but what is information, and that there is no licence (no-copyright-file)"

say "Installing zektexcomp in an empty root"
root=$scratch/root
mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$root/var/log"
touch "$root/var/lib/dpkg/status"
# No script of a package runs, so neither root's rights nor a real change of root are needed.
dpkg_there() { quietly fakeroot dpkg --root="$root" --force-not-root --force-script-chrootless "$@"; }
dpkg_there --install $first/packages/zektexcomp_*.deb
dpkg --root="$root" --listfiles zektexcomp | while read -r file; do
    [ -d "$root$file" ] || echo "$file"
done
depends=$(dpkg-deb -f $first/packages/zektexcomp_*.deb Depends)
[ -z "$depends" ] || fail "The package depends on $depends."
if readelf -l "$root"/usr/bin/* | grep INTERP; then
    fail "A program needs shared libraries."
fi
for file in man/man1/{ZEKTexComp,zek}.1.gz bash-completion/completions/zek \
    doc/zektexcomp/Documents/schemas/zek-{info,dump,check,mark,report}.json \
    doc/zektexcomp/Examples/pipeline/{README.md,gate/pre-commit}; do
    [ -s "$root/usr/share/$file" ] || fail "There is no $file."
done
$first/Examples/WriteSample "$scratch/sample"
"$root/usr/bin/ZEKTexComp" "$scratch/sample/model.zek"
"$root/usr/bin/zek" mark "$scratch/sample"

say "The program of the archive"
mkdir "$scratch/archive"
tar -xzf $first/packages/ZEKTexComp-*.tar.gz -C "$scratch/archive"
cmp "$scratch"/archive/ZEKTexComp-*/bin/ZEKTexComp "$root/usr/bin/ZEKTexComp"
echo "is the same as that of the package"

say "Building on zektexcomp-dev in the same root"
dpkg_there --install $first/packages/zektexcomp-dev_*.deb
cp -r Examples/consumer-pkg-config "$scratch/consumer"
libraries=$(dirname "$(find "$root/usr/lib" -name zektexcomp.pc)")
PKG_CONFIG_LIBDIR=$libraries quietly make -C "$scratch/consumer" -B
"$scratch/consumer/ListMeshes" "$scratch/sample/model.zek" | grep "^texture floor.png"
echo "works"
quietly cmake -S Examples/pipeline/cmake -B "$scratch/recipe" -G Ninja -DMODELS="$scratch/sample" \
    -DCMAKE_PREFIX_PATH="$root/usr"
quietly cmake --build "$scratch/recipe"
cmp "$scratch/sample/model.zek" "$scratch/recipe/marked/model.zek"
echo "so does the recipe for CMake, by what the packages have"

say "Removing both"
dpkg_there --purge zektexcomp zektexcomp-dev
if find "$root/usr" -type f 2>/dev/null | grep .; then
    fail "The files above are left."
fi
echo "leaves nothing behind"

printf '\nThe packages work.\n'
