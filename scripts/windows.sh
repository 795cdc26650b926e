#!/usr/bin/env bash
# Cross-builds the Windows programs on Debian 12 with mingw-w64 and a static Qt 6 for Windows, and
# makes their installer with NSIS:
#   build-windows/build/Sparkwright.exe, sparkwright-cli.exe   one file each, no DLLs, with
#       default.cds, hints.cdh, lang_de.qm and the tool's fonts beside them
#   build-windows/build/Sparkwright-VERSION-win64.exe         the installer
# The Qt is SPARKWRIGHT_QT_WINDOWS when set, else ../shared/toolchains/qt-6.4.2-mingw64.tar.xz
# unpacked into build-windows/. The data files come from a small Linux build of sparkwright-cli in
# build-windows/host/ (their bytes are the same everywhere).
#
#   scripts/windows.sh           build
#   scripts/windows.sh --check   build, then check the Windows build under Wine (on Xvfb): the
#                                tool's file verbs give the Linux build's bytes, the program shows
#                                its window, speaks German and writes a PDF, and the installer
#                                installs and uninstalls silently. Screenshots stay in
#                                build-windows/check/.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/deps.sh"

check=0
case "${1:-}" in
    "") ;;
    --check) check=1 ;;
    *)
        echo "usage: $0 [--check]" >&2
        exit 2
        ;;
esac

sparkwright_install_missing g++-mingw-w64-x86-64-posix mingw-w64-tools nsis wine wine64 \
    fonts-wine imagemagick xdotool openbox fonts-dejavu-core

out="$root/build-windows"
mkdir -p "$out"
export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

# The Qt for Windows: the one given, else the shared toolchain unpacked once.
qt="${SPARKWRIGHT_QT_WINDOWS:-}"
if [ -z "$qt" ]; then
    # Beside the project, or beside the repository this one was cloned from (as CI clones it).
    archive="${SPARKWRIGHT_QT_WINDOWS_ARCHIVE:-$root/../shared/toolchains/qt-6.4.2-mingw64.tar.xz}"
    origin="$(git -C "$root" config --get remote.origin.url 2>/dev/null || true)"
    if [ ! -f "$archive" ] && [ -z "${SPARKWRIGHT_QT_WINDOWS_ARCHIVE:-}" ] && [ -d "$origin" ]; then
        archive="$origin/../shared/toolchains/qt-6.4.2-mingw64.tar.xz"
    fi
    qt="$out/qt-6.4.2-mingw64"
    if [ ! -x "$qt/bin/qt-cmake" ] || [ "$archive" -nt "$qt/bin/qt-cmake" ]; then
        [ -f "$archive" ] || { echo "no Qt for Windows: set SPARKWRIGHT_QT_WINDOWS or provide $archive" >&2; exit 1; }
        rm -rf "$qt"
        tar -xJf "$archive" -C "$out"
        touch "$qt/bin/qt-cmake"
    fi
fi

# The tool for this machine, which writes the data files; its drawings are the Linux reference.
host="$out/host"
if [ ! -f "$host/CMakeCache.txt" ]; then
    cmake -S "$root" -B "$host" -G Ninja "${launcher[@]}" -DCMAKE_BUILD_TYPE=Release \
        -DSPARKWRIGHT_QT_MAJOR=6 -DSPARKWRIGHT_TESTS=OFF
fi
cmake --build "$host" --parallel "$(nproc)" --target sparkwright-cli datafiles translations

# The cross build. The host's Qt 6 tools (moc, uic, rcc, lrelease) come from Debian; the header-only
# tl::expected from Debian's libexpected-dev, alone in a folder of its own so that no other Linux
# header reaches the Windows compiler.
mkdir -p "$out/include"
ln -sfn /usr/include/tl "$out/include/tl"
build="$out/build"
if [ ! -f "$build/CMakeCache.txt" ]; then
    "$qt/bin/qt-cmake" -G Ninja -S "$root" -B "$build" "${launcher[@]}" -DCMAKE_BUILD_TYPE=Release \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DSPARKWRIGHT_TESTS=OFF -DSPARKWRIGHT_HOST_CLI="$host/sparkwright-cli" \
        -DCMAKE_CXX_FLAGS="-isystem $out/include"
fi
cmake --build "$build" --parallel "$(nproc)"
(cd "$build" && rm -f Sparkwright-*-win64.exe && cpack -G NSIS >/dev/null)
installer="$(ls -1 "$build"/Sparkwright-*-win64.exe)"
echo "$build/Sparkwright.exe"
echo "$build/sparkwright-cli.exe"
echo "$installer"
[ "$check" -eq 1 ] || exit 0

# ---- The checks under Wine: a 64-bit prefix of its own, made once and reused. -------------------
started=$SECONDS
checkdir="$out/check"
rm -rf "$checkdir"
mkdir -p "$checkdir"
# Debian keeps wine64 and wineserver out of PATH.
export PATH="/usr/lib/wine:$PATH" WINEPREFIX="$out/wine" WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
unset DISPLAY
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    xvfb-run -a wine64 wineboot --init >/dev/null 2>&1
    wineserver -w
fi
failures=0
fail() {
    echo "FAIL: $*" >&2
    failures=$((failures + 1))
}
winpath() { echo "Z:${1//\//\\}"; }
# A Wine server outlives its programs by a few seconds and keeps the desktop it made: one started
# by the tool without a display would leave the program's window nowhere to go. Each stage with
# a display starts on a server of its own.
newServer() {
    wineserver -k 2>/dev/null || true
    wineserver -w
}

# The tool's file verbs give the Linux build's bytes, output files and standard output alike.
samples="$root/tests/fuzz/corpus/profilefile"
linux="$host/sparkwright-cli"
windows="$build/sparkwright-cli.exe"
"$linux" dump "$samples/road.cdi" >"$checkdir/road.json"
verbs=(
    "dump|$samples/road.cdi"
    "dump|$host/default.cds"
    "dump|$host/hints.cdh"
    "pack|$checkdir/road.json|@out.cdi"
    "print|$samples/road.cdi|@out.pdf"
    "print|$samples/road.cdi|@out.pdf|--language|de"
    "graph|$samples/road.cdi|@out.png"
    "graph|$samples/road.cdi|@out.png|--size|400x300|--language|de"
    "diff|$samples/road.cdi|$samples/two-records.cdi"
    "diff|$samples/road.cdi|$samples/version0-oldstrings.cdi|--language|de"
    "diff|$samples/road.cdi|$samples/road.cdi"
)
# Bytes compared as they are. A PDF's pages and text are compared instead: Qt stamps it with the
# time it was made and writes its fonts in an order that varies from run to run under Windows.
same() {
    if [[ "$1" == *.pdf ]]; then
        cmp -s <(pdftotext "$1" -) <(pdftotext "$2" -) || return 1
        pdftoppm -r 96 -png "$1" "$1.page" && pdftoppm -r 96 -png "$2" "$2.page" || return 1
        local page
        for page in "$1".page*.png; do
            cmp -s "$page" "${page/#$1/$2}" || return 1
        done
    else
        cmp -s "$1" "$2"
    fi
}
# The sheet's time is the same on both.
export SOURCE_DATE_EPOCH=1764000000
# Qt on Linux would remark on a missing runtime folder.
mkdir -p -m 0700 "$checkdir/runtime"
export XDG_RUNTIME_DIR="$checkdir/runtime"
n=0
for line in "${verbs[@]}"; do
    n=$((n + 1))
    IFS='|' read -r -a words <<<"$line"
    linuxArgs=() windowsArgs=() outFile=""
    for word in "${words[@]}"; do
        if [[ "$word" == @* ]]; then
            outFile="${word#@}"
            linuxArgs+=("$checkdir/linux-$n-$outFile")
            windowsArgs+=("$(winpath "$checkdir/windows-$n-$outFile")")
        elif [[ "$word" == /* ]]; then
            linuxArgs+=("$word")
            windowsArgs+=("$(winpath "$word")")
        else
            linuxArgs+=("$word")
            windowsArgs+=("$word")
        fi
    done
    linuxStatus=0 windowsStatus=0
    "$linux" "${linuxArgs[@]}" >"$checkdir/linux-$n.out" 2>&1 || linuxStatus=$?
    wine64 "$windows" "${windowsArgs[@]}" >"$checkdir/windows-$n.out" 2>&1 || windowsStatus=$?
    [ "$linuxStatus" -eq "$windowsStatus" ] || fail "${words[*]}: exit $windowsStatus under Wine, $linuxStatus on Linux"
    cmp -s "$checkdir/linux-$n.out" "$checkdir/windows-$n.out" || fail "${words[*]}: the output differs"
    if [ -n "$outFile" ]; then
        same "$checkdir/linux-$n-$outFile" "$checkdir/windows-$n-$outFile" || fail "${words[*]}: $outFile differs"
    fi
done
unset SOURCE_DATE_EPOCH
cmp -s "$host/default.cds" "$build/default.cds" || fail "default.cds differs from the Linux build's"
echo "tool: ${#verbs[@]} runs compared ($((SECONDS - started)) s)"

# The program on Xvfb: its window, in German (the Windows user's language), with a profile
# given on the command line; Print PDF writes the sheet. Nothing is written beside the program.
stage=$SECONDS
appdata="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Roaming/sparkwright.example/Sparkwright"
mkdir -p "$appdata"
printf '\x55\x05\x00\x00\x69\x01\x00\x00\x00' >"$appdata/disclaimer.a"
# A copy killed earlier leaves its single-copy lock behind, and Wine gives the next one its number.
rm -f "$WINEPREFIX/drive_c/users/$(id -un)/Temp/"sparkwright-*.lock
before="$(ls -A "$build")"
newServer
pdf="$checkdir/sheet.pdf"
cat >"$checkdir/window.sh" <<EOF
set -u
openbox >/dev/null 2>&1 &
LC_ALL=de_DE.UTF-8 LANG=de_DE.UTF-8 wine64 "$build/Sparkwright.exe" "$(winpath "$samples/road.cdi")" >/dev/null 2>&1 &
program=\$!
window=""
for _ in \$(seq 120); do
    window=\$(xdotool search --onlyvisible --name "road" 2>/dev/null | head -n 1)
    [ -n "\$window" ] && break
    sleep 0.5
done
[ -n "\$window" ] || { import -window root "$checkdir/no-window.png"; kill \$program; exit 1; }
sleep 2
import -window root "$checkdir/editor-de.png"
xdotool windowactivate --sync "\$window" key --clearmodifiers ctrl+shift+p
sleep 3
import -window root "$checkdir/print-dialog.png"
# The file name field holds the suggested name: replaced by the sheet's path.
xdotool key --clearmodifiers End shift+Home Delete
xdotool type --delay 20 "$(winpath "$pdf")"
xdotool key Return
for _ in \$(seq 60); do [ -s "$pdf" ] && break; sleep 0.5; done
sleep 1
# A second copy started for another file hands it to this one, which shows it.
wine64 "$build/Sparkwright.exe" "$(winpath "$samples/two-records.cdi")" >/dev/null 2>&1
for _ in \$(seq 40); do
    xdotool search --onlyvisible --name "two-records" >/dev/null 2>&1 && { touch "$checkdir/handed-over"; break; }
    sleep 0.5
done
xdotool windowactivate --sync "\$window" key --clearmodifiers alt+F4
for _ in \$(seq 20); do kill -0 \$program 2>/dev/null || break; sleep 0.5; done
kill \$program 2>/dev/null
wineserver -k
exit 0
EOF
xvfb-run -a -s "-screen 0 1280x800x24" bash "$checkdir/window.sh" || fail "the program's window did not show"
if [ -s "$pdf" ]; then
    pdftotext "$pdf" - | grep -q "Zündspannung" || fail "the PDF sheet is not in German"
else
    fail "Print PDF wrote no sheet"
fi
[ -f "$checkdir/handed-over" ] || fail "a second copy's file did not open in the running copy"
[ "$(ls -A "$build")" = "$before" ] || fail "the program wrote beside itself: $(diff <(echo "$before") <(ls -A "$build") | tr '\n' ' ')"
echo "program: window, German, PDF, a second copy's file ($((SECONDS - stage)) s)"

# The installer, silently: the files, the Start-menu entry and the .cdi association come and go.
stage=$SECONDS
programs="$WINEPREFIX/drive_c/Program Files/Sparkwright"
menu="$WINEPREFIX/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Sparkwright"
newServer
# Wine's desktop closes with the installer, inside the display it was made on.
xvfb-run -a bash -c 'wine64 "$1" /S && wineserver -w' - "$installer"
for file in Sparkwright.exe sparkwright-cli.exe default.cds hints.cdh lang_de.qm Uninstall.exe fonts/DejaVuSans.ttf; do
    [ -f "$programs/$file" ] || fail "the installer did not install $file"
done
[ -f "$menu/Sparkwright.lnk" ] || fail "no Start-menu entry"
wine64 reg query 'HKLM\Software\Classes\Sparkwright.Profile\shell\open\command' 2>/dev/null | grep -q 'Sparkwright.exe' \
    || fail ".cdi files are not associated"
wine64 "$programs/sparkwright-cli.exe" dump "$(winpath "$samples/road.cdi")" >"$checkdir/installed.out" 2>&1 \
    && cmp -s "$checkdir/installed.out" "$checkdir/linux-1.out" || fail "the installed tool does not run"
newServer
xvfb-run -a bash -c 'wine64 "$1" /S && wineserver -w' - "$programs/Uninstall.exe"
for _ in $(seq 30); do [ -e "$programs/Sparkwright.exe" ] || break; sleep 1; done
[ ! -e "$programs/Sparkwright.exe" ] || fail "the uninstaller left the program"
[ ! -e "$menu/Sparkwright.lnk" ] || fail "the uninstaller left the Start-menu entry"
if wine64 reg query 'HKLM\Software\Classes\Sparkwright.Profile' >/dev/null 2>&1; then
    fail "the uninstaller left the .cdi association"
fi
echo "installer: install, uninstall ($((SECONDS - stage)) s)"

echo "Wine checks: $failures failures in $((SECONDS - started)) s"
[ "$failures" -eq 0 ]
