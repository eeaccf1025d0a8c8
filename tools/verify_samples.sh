#!/usr/bin/env bash
# Has independent programs judge the sample pictures: verify_samples.sh FOLDER
set -euo pipefail
cd "$1"
for file in *.fit; do
  verdict=$(fitsverify -q "$file")
  echo "$verdict"
  [[ $verdict == "verification OK: "* ]]
done
identify -regard-warnings ./*.bmp
