#!/usr/bin/env bash
# Installs into a scratch folder and uses from there what was installed: the program, its manual
# page, the links of the documents, and the libraries in each of the ways that Examples/consumer-*
# show.
set -euo pipefail
cd "$(dirname "$0")/.."
. Scripts/packages.sh
. Scripts/checking.sh
source=$PWD

need_packages "${test_packages[@]}" make man-db mandoc pkg-config

# Runs a program and checks what it prints.
expect() {
    local expected=$1 printed
    shift
    printed=$("$@") || fail "failed: $*"
    [ "$printed" = "$expected" ] || fail "$* printed '$printed', not '$expected'"
    echo "$expected"
}

say "Building and installing (from build/install)"
quietly cmake --preset install
quietly cmake --build --preset install
quietly cmake --install build/install --prefix "$scratch/first"
# Nothing in what is installed may know where that was.
prefix=$scratch/moved
mv "$scratch/first" "$prefix"
if grep -rlF -e "$scratch/" -e "$source/" "$prefix"; then
    fail "The files above name a folder of this machine."
fi
(cd "$prefix" && find . -type f | sed 's,^\./\([^/]*\)/.*,\1,' | sort | uniq -c)
libdir=$(dirname "$(find "$prefix" -name pkgconfig)")
export PKG_CONFIG_PATH=$libdir/pkgconfig
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' CMakeLists.txt)
expect "$version" pkg-config --modversion zektexcomp
for document in README.md CHANGELOG.md SECURITY.md Documents/*.md Documents/schemas/*.json; do
    quietly cmp "$document" "$prefix/share/doc/ZEKTexComp/$document"
done
cp -r Examples "$scratch/examples"
rm -rf "$scratch"/examples/consumer-*/build

say "The links of the documents, here and as installed"
mapfile -t documents < <(git ls-files '*.md' && find "$prefix/share/doc" -name '*.md')
for document in "${documents[@]}"; do
    { grep -oP '\]\(\K[^):#]+(?=[)#])' "$document" || true; } | while read -r link; do
        [ -e "$(dirname "$document")/$link" ] || echo "$document: $link"
    done
done >"$scratch/dead-links"
[ ! -s "$scratch/dead-links" ] || fail "These lead nowhere:" "$(cat "$scratch/dead-links")"
echo "all lead to a file, in ${#documents[@]} documents"

say "The program"
build/install/Examples/WriteSample "$scratch/sample"
model=$scratch/sample/model.zek
expect "ExistTextureCompression 1 1 2 1
ExistCubemapCompression 1 0 0 0
ExistLightmapCompression 0 0 0 1
Succeeded" "$prefix/bin/ZEKTexComp" "$model"
expect "$model: as it was" "$prefix/bin/zek" mark "$model"
quietly cmp Source/ZekTool/zek.bash "$prefix/share/bash-completion/completions/zek"

say "A build whose packages for zek come later"
quietly cmake -S . -B "$scratch/later" -DCMAKE_DISABLE_FIND_PACKAGE_fmt=ON
expect "-- zek is left out: missing fmt" grep "zek is left out" "$scratch/output"
quietly cmake -S . -B "$scratch/later" -DCMAKE_DISABLE_FIND_PACKAGE_fmt=OFF
cmake --build "$scratch/later" --target help | grep -w zek >/dev/null || fail "has no zek after all"
echo "and then not any more"

say "The manual pages"
for page in "$prefix"/share/man/man1/{ZEKTexComp,zek}.1; do
    # Whether the pages that it refers to are installed here is no fault of it.
    faults=$({ mandoc -Tlint "$page" || true; } 2>&1 \
        | sed '/outdated mandoc.db/d; /referenced manual not found/d')
    faults+=$(man --warnings -l "$page" 2>&1 >/dev/null) || fail "man cannot show it"
    [ -z "$faults" ] || fail "$faults"
done
echo "neither mandoc nor man has anything to say against them"

say "A model with a mesh (by build/test)"
quietly cmake --preset test
quietly cmake --build build/test --target WriteModels
build/test/Tests/Packaging/WriteModels "$scratch/models"
mesh_model=$scratch/models/own/018/model.zek
vertices=$("$prefix/bin/zek" dump --elements --section meshes "$mesh_model" \
    | sed -n 's/.*meshes\[0\].vertices.*position = //p')
turned=$(awk '{ c = cos(atan2(0, -1) / 6); s = 0.5
    printf "%.2f %.2f %.2f\n", $1 * c + $3 * s, $2, $3 * c - $1 * s }' <<<"$vertices")
[ "$(wc -l <<<"$vertices")" -eq 3 ] || fail "The first mesh has not three vertices: $vertices"

say "A program that finds the libraries by find_package"
cd "$scratch/examples/consumer-find-package"
quietly cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix"
quietly cmake --build build
expect "version 26" build/PrintMesh "$model"
expect "version 25
$vertices" build/PrintMesh "$mesh_model"
sed -i 's/ZEKTexComp 1\.0/ZEKTexComp 2.0/' CMakeLists.txt
if cmake -S . -B build-2.0 -DCMAKE_PREFIX_PATH="$prefix" >/dev/null 2>"$scratch/output"; then
    fail "version 2.0 was found, too"
fi
grep -q "version: $version" "$scratch/output" || fail "version 2.0 was not found for another reason"
echo "and version 2.0, when asked for, is not found"
sed -i 's/ZEKTexComp 2.0/ZEKTexComp 1.0/; s/COMPONENTS ZEKOverwriter/& Orchestra/' CMakeLists.txt
if cmake -S . -B build-component -DCMAKE_PREFIX_PATH="$prefix" >/dev/null 2>"$scratch/output"; then
    fail "a component that there is not was found"
fi
grep -q "no component Orchestra" "$scratch/output" || fail "The error does not name the component."
echo "and a component that there is not, when asked for, is named in the error"

say "A program that builds the libraries by add_subdirectory"
cd "$scratch/examples/consumer-add-subdirectory"
quietly cmake -S . -B build -DZEKTEXCOMP_SOURCE="$source"
quietly cmake --build build --parallel 2
expect "$turned" build/TurnMesh 30 "$mesh_model"
# It may have targets of its own that are named as the libraries are.
names=$(cd "$source/Source" && dirname */*/CMakeLists.txt */CMakeLists.txt | xargs -n 1 basename | sort)
sed -i "/^project/r /dev/stdin" CMakeLists.txt <<<"foreach(NAME IN ITEMS ${names//$'\n'/ })
    add_custom_target(\${NAME})
endforeach()"
quietly cmake -S . -B build-names -DZEKTEXCOMP_SOURCE="$source"
quietly cmake --build build-names --parallel 2
expect "$turned" build-names/TurnMesh 30 "$mesh_model"
echo "also where it has targets named" $names

say "Programs that find the libraries by pkg-config"
cd "$scratch/examples/consumer-pkg-config"
quietly make
./ListMeshes "$mesh_model" >meshes
expect "mesh: vertices 3, triangles 1
$vertices" sed -n 1,4p meshes
expect "texture first.png" grep first meshes

printf '\nWhat is installed works.\n'
