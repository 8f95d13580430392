#!/bin/sh
# Each verb of the program $1 that writes a file reports a full disk with the file's name, and its status is 2.
set -eu
zlmim=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"
"$zlmim" sample .
mkdir -p "full/assets/bogey y"
for file in full.png full-sheet.png full.glb full.gltf full.bin full.html "full/assets/bogey y/bogey.im"; do
    ln -s /dev/full "$file"
done

# FILE VERB ARGUMENT...
expect_full() {
    file=$1
    shift
    status=0
    message=$("$zlmim" "$@" 2>&1 >printed) || status=$?
    if [ "$status" != 2 ] || [ "$message" != "zlmim $1: $file can't be written: No space left on device" ]; then
        echo "zlmim $*: status $status, $message"
        exit 1
    fi
}
asset="assets/kuid 4711 3001" # the smallest
expect_full full.png picture "$asset" -o full.png
expect_full full-sheet.png picture --sheet "$asset" -o full-sheet.png
expect_full full.glb export "$asset" -o full.glb
expect_full full.bin export "$asset" -o full.gltf
rm full.bin
expect_full full.gltf export "$asset" -o full.gltf
expect_full full.html validate "$asset" --report full.html
expect_full "full/assets/bogey y/bogey.im" sample full
if "$zlmim" help view >printed 2>&1; then
    expect_full full.html view "$asset" -o full.html
fi
