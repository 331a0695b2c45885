#!/bin/bash
# What a build leaves in its stage is what gets installed, and the targets that promise a whole stage make all of it:
# stage.sh BUILD BINDIR LIBDIR DATADIR DOCDIR
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# The installed files, where the stage has them.
installed=$work/installed
as_staged=$work/as-staged
cmake --install "$build" --prefix "$installed" >"$work/log" || fail "$(tail -n 5 "$work/log")"
mkdir -p "$as_staged/sample"
mv "$installed/$2" "$as_staged/bin"
mv "$installed/$3/tavro-print" "$as_staged/lib"
mv "$as_staged"/lib/{plugins,TavroPrint.bundle} "$as_staged"
mv "$installed/lib/cups/filter" "$as_staged/filter"
mv "$installed/$4/ppd/tavro" "$as_staged/ppd"
mv "$installed/$5"/examples/*.pdf "$as_staged/sample"
files() { (cd "$1" && find . -type f | sort); }
diff <(files "$as_staged") <(files "$build/stage") || fail "installed (<) and staged (>) are not the same"

# Each of them comes from a command of these targets; one is written by configuring.
for target in tavro-print staged; do
  ninja -C "$build" -t commands "$target" >"$work/commands"
  while read -r file; do
    [ "$file" = ./plugins/TavroFeatures.plugin/Contents/Info.plist ] ||
      grep --quiet --fixed-strings "stage/${file#./}" "$work/commands" || fail "$target does not make stage/${file#./}"
  done < <(files "$build/stage")
done
