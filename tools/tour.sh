#!/usr/bin/env bash
# tools/tour.sh PROGRAM DEMO_DIR: shows on the terminal what the program does, on the demonstration
# installation, and leaves that as it was. Fails when anything does not go as told.
set -euo pipefail

if [ $# -ne 2 ] || [ ! -x "$1" ] || [ ! -e "$2/kvdesign.db" ]; then
    echo "usage: tools/tour.sh PROGRAM DEMO_DIR" >&2
    exit 2
fi
program=$(realpath "$1")

# The tour works on a copy.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
find "$2/" -maxdepth 1 -type f -exec cp {} "$work" \;
export KVDESIGN_STORE=$work/kvdesign.db

kvdesign() { "$program" --temp "$work" "$@"; }

bold='' plain=''
if [ -t 1 ] && [ -n "${TERM-}" ] && [ "$TERM" != dumb ]; then bold=$'\e[1m' plain=$'\e[0m'; fi

say() { printf '\n%s\n\n' "$*"; }

# show EXPECTED COMMAND: echoes the command line, runs it, and wants its exit code to be EXPECTED.
show() {
    local code=0 output
    printf '%s$ %s%s\n' "$bold" "$2" "$plain"
    output=$(eval "$2" 2>&1) || code=$?
    if [ -n "$output" ]; then printf '%s\n' "$output"; fi
    if [ -z "$output" ] || [ "$code" -ne 0 ]; then echo "(exit code $code)"; fi
    if [ "$code" -ne "$1" ]; then
        echo "tour: exit code $code where $1 was expected" >&2
        exit 1
    fi
}

say "The objects of a small library: class, name, description."
show 0 'kvdesign list'

say "An object is a tree of sections; in brackets the key, whose first word is the section word."
show 0 'kvdesign tree SORT ITALIANO'

say "The text of a section: one parameter a line, lines that begin with ' are comments."
show 0 'kvdesign show FILTER DISPONIBILI PARMS'

say "The second section below PARMS: the weights of the characters, here from 5E on."
show 0 "kvdesign show SORT ITALIANO PARMS 2 | sed -n '/^5E/,/^66/p'"

say "An edit that is accepted is saved, and shows as the server reads it: names of objects in upper case."
show 0 "kvdesign show FILTER DISPONIBILI PARMS | sed 's/AUTOMATIC= FALSE/AUTOMATIC= vero/; s/AIUTOFILTRI/aiuto/' | kvdesign set FILTER DISPONIBILI PARMS"
show 0 'kvdesign show FILTER DISPONIBILI PARMS'

say "An edit that is refused changes nothing; the message names the line."
show 1 "printf 'TABLE= \"STATO\"\nAUTOMATIC= forse\n' | kvdesign set FILTER DISPONIBILI PARMS"

say "Without the strict checks the unknown word is ignored."
show 0 "printf 'TABLE= \"STATO\"\nAUTOMATIC= forse\n' | kvdesign --lax set FILTER DISPONIBILI PARMS"

say "The whole object as exported text."
show 0 "kvdesign export IMPORT ACQUISTI | tr -d '\r'"

say "The fields of a record table stand in groups and bear tags. The tags that are free:"
show 0 "kvdesign tree TABLE NOTIZIE | grep '[123]:' | sed -n '/1:TITOLO  /,/1:EDIZIONE/p; /1:COPIA/,/1:ISBD/p'"
show 0 'kvdesign tags TABLE NOTIZIE | tail -4'

say "The tags as constants, for programs that read the records."
show 0 "kvdesign constants TABLE NOTIZIE --output \$work/notizie.bas; tr -d '\r' < \$work/notizie.bas | sed -n 1,8p"

say "A display profile shows them: a field for each tag, with its labels in several languages."
show 0 "kvdesign tree PROFILE SCHEDA | sed -n '/Campo: 12001/,/Campo: 12002/p'"
show 0 'kvdesign show PROFILE SCHEDA FORMATPARMS 2'

say "What a reader walks through: a field of a query offers values, a browse has filters."
show 0 "kvdesign tree QUERY AVANZATA | sed -n '/Campo: Lingua/,/Valore: ENG/p'"
show 0 'kvdesign show QUERY AVANZATA CONSTANTCAPTION 5 1 2'
show 0 'kvdesign show BROWSE AUTORI FILTER 2'

say "The pages of the web server, and a message of its own in the second of two languages."
show 0 "kvdesign tree WEBSERVER OPAC | grep 'File: .ENG'"
show 0 'kvdesign show WEBSERVER OPAC MESSAGECAPTION 1 2'

say "The messages of a client application, and what a program that shows them is compiled with."
show 0 'kvdesign show VCLIENT LETTORI FIELDCAPTION 2 3'
show 0 "kvdesign constants VCLIENT LETTORI --output \$work/messaggi.bas; grep -a BASE_NON_TROVATA \$work/messaggi.bas | iconv -f CP1252 -t UTF-8 | tr -d '\r'"

say "Every section of every object reads back; a fault would be a line here, and the exit code 1."
show 0 'kvdesign check'

say "The same server without a terminal: JSON-RPC, one request a line."
show 0 "echo '{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"registry/list\",\"params\":{\"Clsid\":\"MEMBER\"}}' | kvdesign rpc"

say "To go on by yourself:"
printf '    export KVDESIGN_STORE=%q\n    %q --help\n' "$2/kvdesign.db" "$1"
