#!/usr/bin/env bash
# Renders the program's images from the drawings in resources/svg into
# resources/images: every icon at 1x and @2x, the app icon at the desktop's
# sizes (and all of them in one .ico for Windows), and the busy animation as a
# looping GIF. The results are committed, so a build never needs these
# renderers; run this after changing a drawing.
#
#   scripts/render-images.sh            render everything
#   scripts/render-images.sh --check    render into a scratch folder and fail
#                                       when the committed files are stale
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
src=$root/resources/svg
out=$root/resources/images

check=0
if [[ ${1:-} == --check ]]; then
    check=1
elif [[ $# -gt 0 ]]; then
    echo "usage: $0 [--check]" >&2
    exit 2
fi

# The renderers are development tools: fetch them from Debian when absent.
ensure_tools()
{
    local missing=()
    command -v rsvg-convert >/dev/null 2>&1 || missing+=(librsvg2-bin)
    if ! convert -version 2>/dev/null | grep -q ImageMagick; then
        missing+=(imagemagick)
    fi
    [[ ${#missing[@]} -eq 0 ]] && return 0
    local sudo=()
    [[ $(id -u) -ne 0 ]] && sudo=(sudo)
    echo "installing ${missing[*]}" >&2
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y "${missing[@]}" >&2
}

# Icons by size in pixels at 1x: menu actions and small tool buttons at 16,
# push buttons and the graph badge at 24, dialog and progress images at 48.
icons16=(new load save unknown exit info usb-read usb-write print sort hint lang0 lang1
    www-program www-tech www-bike www-contact www-faw www-facts)
icons24=(back next continue warning)
icons48=(question ok ok2 fail)
appSizes=(16 24 32 48 64 128 256)
# Below this size the app icon uses its simplified drawing.
appSmallBelow=24
spinnerFrames=12
spinnerDelay=8 # hundredths of a second per frame
# Colour the spinner's anti-aliased edges are blended with before GIF's one-bit
# transparency cuts them: a light window background.
spinnerMatte='#EFF0F1'

render()
{
    local svg=$1 png=$2 w=$3 h=$4
    rsvg-convert --width "$w" --height "$h" --format png "$svg" --output "$png"
}

render_pair()
{
    local name=$1 w=$2 h=$3
    render "$src/$name.svg" "$dest/$name.png" "$w" "$h"
    render "$src/$name.svg" "$dest/$name@2x.png" $((w * 2)) $((h * 2))
}

# The banner fills much of the first window and is decoded at every start: in 256 colours it
# decodes in under half the time of full colour, with no difference to see at its gradients.
render_banner()
{
    local tmp=$1 name=$2 w=$3 h=$4 scale
    for scale in 1 2; do
        local suffix=""
        [[ $scale -eq 2 ]] && suffix="@2x"
        render "$src/$name.svg" "$tmp/$name$suffix.png" $((w * scale)) $((h * scale))
        convert "$tmp/$name$suffix.png" -strip -type palette "PNG8:$dest/$name$suffix.png"
    done
}

render_spinner()
{
    local tmp=$1 frames=() i
    for ((i = 0; i < spinnerFrames; i++)); do
        local angle=$((i * 360 / spinnerFrames))
        sed "s/id=\"spinner\" transform=\"rotate(0 24 24)\"/id=\"spinner\" transform=\"rotate($angle 24 24)\"/" \
            "$src/work.svg" >"$tmp/work-$i.svg"
        grep -q "rotate($angle 24 24)\"" "$tmp/work-$i.svg" || {
            echo "work.svg: spinner group not found" >&2
            exit 1
        }
        render "$tmp/work-$i.svg" "$tmp/work-$i.png" 48 48
        # Opaque where the drawing covers at least half a pixel, clear elsewhere.
        convert "$tmp/work-$i.png" \( +clone -alpha extract -threshold 50% \) \
            -background "$spinnerMatte" \( -clone 0 -alpha remove \) -delete 0 \
            +swap -alpha off -compose CopyOpacity -composite "$tmp/work-$i-cut.png"
        frames+=("$tmp/work-$i-cut.png")
    done
    convert -delay "$spinnerDelay" -dispose Background "${frames[@]}" -loop 0 "$dest/work.gif"
}

ensure_tools

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
if [[ $check -eq 1 ]]; then
    dest=$scratch/images
else
    dest=$out
fi
mkdir -p "$dest"

for name in "${icons16[@]}"; do render_pair "$name" 16 16; done
for name in "${icons24[@]}"; do render_pair "$name" 24 24; done
for name in "${icons48[@]}"; do render_pair "$name" 48 48; done
# The main window's banner; its top left stays light for the version and name
# that the program paints onto it.
render_banner "$scratch" wizflash 220 460
for size in "${appSizes[@]}"; do
    if [[ $size -lt $appSmallBelow ]]; then
        render "$src/app-small.svg" "$dest/app-$size.png" "$size" "$size"
    else
        render "$src/app.svg" "$dest/app-$size.png" "$size" "$size"
    fi
done
# The Windows program's and installer's icon holds every size in one file.
appIcons=()
for size in "${appSizes[@]}"; do appIcons+=("$dest/app-$size.png"); done
convert "${appIcons[@]}" "$dest/app.ico"
render_spinner "$scratch"

if [[ $check -eq 1 ]]; then
    if ! diff -rq "$dest" "$out"; then
        echo "resources/images is stale: run scripts/render-images.sh" >&2
        exit 1
    fi
    echo "resources/images is up to date"
fi
