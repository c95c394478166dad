#!/usr/bin/env bash
# Packs what is built and looks at the package: what Debian's own checkers say, what lies in it,
# that its pages and lists name one version, that no path of this machine is in it, and that the
# workbench starts out of it and ends. Arguments: folder of the sources, of the build, version.
set -u
source_folder=$1
build_folder=$2
version=$3
failures=0
fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}

# What is missing is a failure: a check that is passed over would say nothing.
for tool in cpack dpkg-deb lintian desktop-file-validate appstreamcli man gzip; do
  command -v "$tool" >/dev/null || fail "$tool is not installed; ./test installs it"
done
[ $failures -eq 0 ] || exit 1

work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
umask 077 # a package must not depend on it

(cd "$build_folder" && cpack -G DEB -B "$work/packed") >"$work/cpack.log" 2>&1 ||
  { cat "$work/cpack.log"; fail "cpack"; exit 1; }
package=$(echo "$work"/packed/morva_"${version}"_*.deb)
[ -f "$package" ] || { fail "no package of version $version"; exit 1; }

# Whatever the checkers say above the level of a hint.
lintian --fail-on error,warning --tag-display-limit 0 "$package" >"$work/lintian.log" 2>&1 ||
  { cat "$work/lintian.log"; fail "lintian"; }
dpkg-deb -x "$package" "$work/root"
chmod 755 "$work" "$work/root"
usr=$work/root/usr
desktop-file-validate "$usr/share/applications/morva.desktop" >"$work/desktop.log" 2>&1 ||
  fail "desktop-file-validate"
[ -s "$work/desktop.log" ] && { cat "$work/desktop.log"; fail "desktop-file-validate has words"; }
appstreamcli validate --pedantic --no-net --no-color "$usr/share/metainfo/morva.metainfo.xml" \
  >"$work/appstream.log" 2>&1 || { cat "$work/appstream.log"; fail "appstreamcli"; }
MANROFFSEQ= LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z \
  "$usr/share/man/man1/MORVA.1.gz" 2>"$work/man.log" >/dev/null || fail "man"
[ -s "$work/man.log" ] && { cat "$work/man.log"; fail "the page of the manual has warnings"; }

# Everything that is installed, and nothing else; the documents are those of the sources.
{
  cat <<'LIST'
./usr/bin/MORVA
./usr/share/applications/morva.desktop
./usr/share/doc/morva/README.md
./usr/share/doc/morva/changelog.gz
./usr/share/doc/morva/copyright
./usr/share/icons/hicolor/scalable/apps/morva.svg
./usr/share/man/man1/MORVA.1.gz
./usr/share/metainfo/morva.metainfo.xml
LIST
  for size in 16 24 32 48 64 128 256; do
    echo "./usr/share/icons/hicolor/${size}x${size}/apps/morva.png"
  done
  (cd "$source_folder" && find docs samples -type f | sed 's|^|./usr/share/doc/morva/|')
} | sort >"$work/wanted"
(cd "$work/root" && find . ! -type d) | sort >"$work/there"
diff "$work/wanted" "$work/there" || fail "other files than wanted"
dpkg-deb -c "$package" | awk '$2 != "root/root" || ($1 !~ /^drwxr-xr-x/ && $1 !~ /^-rw-r--r--/ &&
  !($1 ~ /^-rwxr-xr-x/ && $6 == "./usr/bin/MORVA")) { print; bad = 1 } END { exit bad }' ||
  fail "an owner or a mode"

# One version everywhere.
[ "$(dpkg-deb -f "$package" Version)" = "$version" ] || fail "version of the package"
zcat "$usr/share/doc/morva/changelog.gz" | head -n 1 | grep -qF "($version)" ||
  fail "version of the changelog"
zcat "$usr/share/man/man1/MORVA.1.gz" | grep -qF "\"MORVA $version\"" ||
  fail "version of the page of the manual"
grep -o '<release version="[^"]*"' "$usr/share/metainfo/morva.metainfo.xml" | head -n 1 |
  grep -qF "\"$version\"" || fail "version of the newest release"

# The menu, the metainfo and the package call each other by their names.
grep -qx 'Icon=morva' "$usr/share/applications/morva.desktop" || fail "icon of the menu entry"
grep -qx 'Exec=MORVA %F' "$usr/share/applications/morva.desktop" || fail "call of the menu entry"

# The executable is what was built, without its debugging lines and the paths in them.
dpkg-deb --ctrl-tarfile "$package" | tar -xO --wildcards './*' >"$work/control"
for path in "$source_folder" "$build_folder" "$work"; do
  grep -rlaF -- "$path" "$work/root" "$work/control" && fail "a path of this machine"
done
for packed in "$usr/share/man/man1/MORVA.1.gz" "$usr/share/doc/morva/changelog.gz"; do
  zcat "$packed" | grep -qF -- "$source_folder" && fail "a path of this machine in $packed"
done

# It starts out of a folder that cannot be written, makes its folders in the user's home and ends
# with the system's signal. As somebody who may not write everywhere, also where root runs this.
chmod -R a-w "$usr"
chmod -R a+rX "$usr"
mkdir -m 777 "$work/home"
mkdir -m 777 "$work/home/Documents"
as_user=()
[ "$(id -u)" -eq 0 ] && as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
mkdir -m 1777 "$work/tmp"
env -i PATH="$PATH" HOME="$work/home" TMPDIR="$work/tmp" LC_ALL=C.UTF-8 \
  QT_QPA_PLATFORM=offscreen "${as_user[@]}" "$usr/bin/MORVA" >"$work/run.log" 2>&1 &
process=$!
deadline=$((SECONDS + 30))
until [ -d "$work/home/Documents/MORVA/Recovery" ]; do
  kill -0 $process 2>/dev/null || break
  [ $SECONDS -lt $deadline ] || break
  sleep 0.1
done
[ -d "$work/home/Documents/MORVA/Recovery" ] || { cat "$work/run.log"; fail "it does not start"; }
kill -TERM $process 2>/dev/null
wait $process
status=$?
[ $status -eq 0 ] || { cat "$work/run.log"; fail "it ends with $status"; }
[ -e "$usr/bin/MORVA.ini" ] && fail "settings beside the executable"

[ $failures -eq 0 ] && echo "The package is as it should be: $(basename "$package")"
[ $failures -eq 0 ]
