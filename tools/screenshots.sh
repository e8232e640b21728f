#!/usr/bin/env bash
# tools/screenshots.sh [BUILD_DIR]: makes docs/screenshots anew from the real windows, with the tests of the desktop
# window that BUILD_DIR (build/dev) holds. Needs xvfb and fonts-dejavu-core.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

program=${1:-build/dev}/tests/desktop_tests
if [ ! -x "$program" ]; then
    echo "screenshots: no $program; build the target desktop_tests first" >&2
    exit 1
fi
for tool in xvfb-run xauth fc-match; do
    command -v "$tool" >/dev/null 2>&1 || { echo "screenshots: $tool is missing" >&2; exit 1; }
done
case $(fc-match sans) in
    *DejaVu*) ;;
    *) echo "screenshots: the font is to be DejaVu Sans (Debian: fonts-dejavu-core)" >&2; exit 1 ;;
esac

mkdir -p docs/screenshots
rm -f docs/screenshots/*.png
folder=$PWD/docs/screenshots program=$(realpath "$program")
runtime=$(mktemp -d)
trap 'rm -rf "$runtime"' EXIT
cd "$runtime"  # what the program leaves where it runs goes, too
env LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=1 XDG_RUNTIME_DIR="$runtime" \
    KV_SCREENSHOTS="$folder" \
    xvfb-run -a -s "-screen 0 1600x1200x24" "$program" --gtest_brief=1 --gtest_filter='ScreenshotsTest.*'
ls -s --block-size=1 "$folder"
