#!/usr/bin/env bash
# tools/translations.sh [FILE]: brings the English texts of the desktop window (host/desktop/kvdesign_en.ts, or
# FILE) up to what its sources say. New texts are in it as unfinished, for a translator (say Qt Linguist); the
# build makes the program's catalogue of it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

file=${1:-host/desktop/kvdesign_en.ts}
lupdate=
for each in "$(qmake6 -query QT_HOST_BINS 2>/dev/null || true)/lupdate" /usr/lib/qt6/bin/lupdate lupdate6 lupdate-qt6; do
    if command -v "$each" >/dev/null 2>&1; then lupdate=$each && break; fi
done
if [ -z "$lupdate" ]; then
    echo "translations: there is no lupdate of Qt 6 (Debian: qt6-l10n-tools)" >&2
    exit 77
fi
# Without the headers a text would be filed under its class, not under the namespace that Qt asks for.
"$lupdate" -silent -locations none -no-obsolete -source-language it -target-language en -I . \
    host/desktop -ts "$file"
