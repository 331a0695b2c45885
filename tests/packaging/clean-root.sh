#!/bin/bash
# The life of the package on a Debian of its own, run there by scripts/test-package.
set -euo pipefail
cd /test
deb=/test/tavro-print.deb

say() { echo "== $*"; }
fail() {
  echo "FAILED: $*" >&2
  exit 1
}
# expect FILE PATTERN: the file has a line like that.
expect() { grep --quiet --text --extended-regexp -e "$2" "$1" || fail "$1 has no line like: $2"; }
get() { apt-get --quiet=2 --yes --no-install-recommends "$@" >apt.log 2>&1 || { cat apt.log; fail "apt-get $*"; }; }
as_guest() { runuser --user guest -- env --ignore-environment PATH=/usr/bin:/bin HOME=/test/home LANG=C.UTF-8 "$@"; }

# All that is installed, with owners and modes, but for what every system's programs write there.
snapshot() {
  find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /run -o -path /tmp -o -path /test -o -path /var/cache \
    -o -path /var/log -o -path /var/lib/apt -o -path /var/lib/dpkg -o -path /var/spool/cups -o -path /etc/cups \) -prune \
    -o -printf '%M %u:%g %p\n' | sort
}

useradd --home-dir /test/home --create-home guest
get update

say "with nothing but what the package needs"
get install "$deb"
dpkg-query --show --showformat='${Package} ${Version}, ${Installed-Size} KiB\n' tavro-print
echo "$(dpkg-query --show | wc -l) packages are installed"
[ "$(as_guest tavro-print --version)" = "tavro-print $(dpkg-query --show --showformat='${Version}' tavro-print | sed 's/-[^-]*$//')" ] ||
  fail "the version"

cd home
as_guest tavro-print --print --job-out print.ps /test/ten-pages.pdf
expect print.ps '^@PJL ENTER LANGUAGE=POSTSCRIPT'
expect print.ps '^%%Pages: 10$'
example=/usr/share/doc/tavro-print/examples/advanced.tavro-script
as_guest tavro-print --script $example --shots shots --ticket-out settings.plist --job-out script.ps /test/ten-pages.pdf
expect script.ps '^@PJL SET TRBANNER=ON'
expect settings.plist 'PMPrintSettingsTicket'
[ -s "$(find shots -name '*.png' | head -n 1)" ] || fail "there are no pictures"
as_guest tavro-print --print --ticket-in settings.plist --job-out again.ps /test/ten-pages.pdf
expect again.ps '^@PJL SET TRBANNER=ON'
as_guest tavro-print --script /usr/share/doc/tavro-print/examples/watermark.tavro-script --shots shots \
  --job-out watermark.ps /test/ten-pages.pdf
expect watermark.ps '^/FontType 42 def|/FontType 42'
as_guest tavro-print --print /nowhere.pdf 2>errors && fail "a document that is not there"
expect errors '^tavro-print: /nowhere.pdf: '
cd ..

say "removed"
get remove tavro-print
[ ! -e /usr/bin/tavro-print ] || fail "the program is still there"
get satisfy "$(dpkg-deb --field $deb Depends), cups, cups-client, man-db, bash-completion"
snapshot >before

# The same package as an older one, to go on from.
older=/test/tavro-print-older.deb
dpkg-deb --raw-extract $deb older
sed -i 's/^Version: .*/Version: 0.0.1-1/' older/DEBIAN/control
dpkg-deb --build older $older >/dev/null

say "with a print server, manual pages and completion"
echo 'FileDevice Yes' >>/etc/cups/cups-files.conf
sed -i '/^Listen localhost/d' /etc/cups/cupsd.conf # by its socket only
/usr/sbin/cupsd
until lpstat -r | grep --quiet 'is running'; do sleep 0.1; done
get install $older
lpinfo -m | grep tavro/ || fail "the server knows no printer of the package"
lpadmin -p office -E -v file:/tmp/office.prn -m lsb/usr/tavro/Tavro-ZR420.ppd -o Option2=LCSS 2>/dev/null
as_guest tavro-print --print --printer office --ticket-in home/settings.plist /test/ten-pages.pdf
for ((tries = 0; tries < 300; tries++)); do
  [ -z "$(lpstat -o)" ] && [ -s /tmp/office.prn ] && break
  sleep 0.1
done
expect /tmp/office.prn '^@PJL SET TRBANNER=ON'
# The package has the service reload its types of documents; this server was started by hand.
kill -HUP "$(cat /run/cups/cupsd.pid)"
until lpstat -r | grep --quiet 'is running'; do sleep 0.1; done
cupstestppd -q /usr/share/ppd/tavro/*.ppd || fail "the printers' PPDs"
printf '%s\n' 'panel Layout' 'choose Tshl:6004 "On"' 'choose Host:13 "Save as Preset…"' 'type Host:100 "Booklet"' \
  'click Host:103' 'click Host:101' 'cancel' >booklet.script
as_guest tavro-print --printer office --script /test/booklet.script /test/ten-pages.pdf || [ $? = 1 ] || fail "a preset"
expect_booklet() {
  rm -f /tmp/office.prn
  as_guest lp -d office/Booklet /test/ten-pages.pdf
  for ((tries = 0; tries < 300; tries++)); do
    [ -z "$(lpstat -o)" ] && [ -s /tmp/office.prn ] && break
    sleep 0.1
  done
  expect /tmp/office.prn '^%%Pages: 6$'
}
expect_booklet
[ "$(bash complete.sh /usr/share/bash-completion/completions/tavro-print '/usr/bin/tavro-print --printer ')" = office ] ||
  fail "the shell offers no queue"
bash -c 'source /usr/share/bash-completion/bash_completion; _completion_loader tavro-print; complete -p tavro-print'
for page in 1/tavro-print 5/tavro-script 8/tavro-pages 8/tavro-portal; do
  as_guest man --warnings "${page%/*}" "${page#*/}" >page 2>warnings || fail "man $page"
  [ ! -s warnings ] || fail "man $page: $(cat warnings)"
  expect page 'SEE ALSO'
done
for language in ar de es fr ja zh_CN; do
  as_guest man --warnings --locale="$language" 1 tavro-print >page 2>warnings || fail "man in $language"
  [ ! -s warnings ] || fail "man in $language: $(cat warnings)"
  ! grep --quiet 'SEE ALSO' page || fail "man speaks English in $language"
done
for file in applications/tavro-print.desktop metainfo/com.tavro.print.metainfo.xml \
  icons/hicolor/scalable/apps/tavro-print.svg doc/tavro-print/copyright xdg-desktop-portal/portals/tavro.portal; do
  [ -s "/usr/share/$file" ] || fail "/usr/share/$file is missing"
done

service=$(sed -n 's/^Exec=//p' /usr/share/dbus-1/services/org.freedesktop.impl.portal.desktop.tavro.service)
as_guest "$service" --version || fail "what the message bus would start"

say "a new version of it brings its PPDs to the queues, and keeps what is the user's"
kept() { find home -type f -not -path 'home/.cache/*' -exec sha256sum {} + | sort; }
kept >before-upgrade
grep --quiet home/.config/tavro before-upgrade || fail "there is nothing to keep"
rm /var/cache/cups/ppd-updates # so that this one counts as another one than that before
get install $deb
grep 'PPD for printer office updated' apt.log || fail "the queue has the old PPD"
lpoptions -p office -l | grep '^Option2/.*\*LCSS' || fail "the queue has lost its installed options"
kept | diff before-upgrade - || fail "the user's files are others"
as_guest tavro-print --printer office --list-presets | grep --quiet Booklet || fail "the preset is gone"
expect_booklet

say "purged"
lpadmin -x office
get purge tavro-print
snapshot >after
diff before after || fail "the package left something, or took something away"
if find / -xdev \( -path /proc -o -path /test -o -path /var/cache/apt \) -prune -o -iname '*tavro*' -print | grep .; then
  fail "the package left files of its name"
fi
[ -z "$(dpkg-query --show tavro-print 2>/dev/null)" ] || fail "dpkg still knows the package"
echo "nothing is left"
