#!/usr/bin/env bash
# What a small web server bears: how many checks and how many whole updates a second one lighttpd
# serves on the loopback, and what that costs it. Writes the table into docs/many-computers.md.
#
#   bench/server.sh
#
# The update is a made-up one of twenty parts: a list, a script, and of each part a photograph and a
# figure in two sizes. A computer asks each request on a connection of its own, as the catalogue does.
set -euo pipefail
cd "$(dirname "$0")/.."

parts=20
computers=100000
site=$(mktemp -d)
trap 'kill "${server:-}" 2>/dev/null; wait; rm -rf "$site"' EXIT

make_file() {  # name, bytes
    head -c "$2" /dev/urandom >"$site/$1"
}
make_file Versao.txt 3
make_file Versao.sig 144
make_file ListVersao2.txt $((parts * 3 * 110))
make_file ListVersao2.txt.sig 130
make_file versao2.sdb 300000
make_file foto.jpg 40000
make_file figura.png 30000
make_file figura@3x.png 90000

port=$(python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])')
cat >"$site/server.conf" <<CONF
server.document-root = "$site"
server.bind = "127.0.0.1"
server.port = $port
server.max-connections = 1024
CONF
/usr/sbin/lighttpd -D -f "$site/server.conf" 2>"$site/server.log" &
server=$!
until curl -so /dev/null "http://127.0.0.1:$port/Versao.txt"; do sleep 0.1; done

processor_ticks() {
    awk '{ print $14 + $15 }' "/proc/$server/stat"
}

# Requests a second, the server's own processor time of one in microseconds, bytes of its answer's head.
measure() {  # name, requests
    local before
    before=$(processor_ticks)
    ab -q -n "$2" -c 16 "http://127.0.0.1:$port/$1" >"$site/report"
    awk -v t=$(($(processor_ticks) - before)) -v n="$2" -v hz="$(getconf CLK_TCK)" '
        /^Requests per second/ { rate = $4 }
        /^Total transferred/ { total = $3 }
        /^HTML transferred/ { body = $3 }
        END { print rate, t / hz / n * 1e6, (total - body) / n }' "$site/report"
}

{
    echo small $(measure Versao.sig 60000)
    echo list $(measure ListVersao2.txt 40000)
    echo script $(measure versao2.sdb 6000)
    echo photo $(measure foto.jpg 20000)
    echo figure $(measure figura.png 20000)
    echo large $(measure figura@3x.png 12000)
} | LC_ALL=C awk -v parts=$parts -v computers=$computers '
    { rate[$1] = $2; cpu[$1] = $3; head[$1] = $4 }
    # A check asks for a number and its signature; an update asks twice, then fetches.
    END {
        check_s = 2 / rate["small"]
        check_cpu = 2 * cpu["small"]
        check_bytes = 3 + 144 + 2 * head["small"]
        update_s = 2 * check_s + 1 / rate["list"] + 1 / rate["small"] + 1 / rate["script"] \
            + parts * (1 / rate["photo"] + 1 / rate["figure"] + 1 / rate["large"])
        update_cpu = 2 * check_cpu + cpu["list"] + cpu["small"] + cpu["script"] \
            + parts * (cpu["photo"] + cpu["figure"] + cpu["large"])
        requests = 4 + 2 + 1 + parts * 3
        bytes = 2 * check_bytes + parts * 3 * 110 + 130 + 300000 + parts * 160000 \
            + (requests - 4) * head["small"]
        print "| | Requests | Answered bytes | A second | Processor time of one " \
            "| 100,000 computers, one a day each |"
        print "|---|--:|--:|--:|--:|---|"
        printf "| Check | 2 | %d | %.0f | %.3f ms " \
            "| %.1f million requests, %.0f MB, %.0f s of one core |\n", \
            check_bytes, 1 / check_s, check_cpu / 1e3, 2 * computers / 1e6, \
            computers * check_bytes / 1e6, computers * check_cpu / 1e6
        printf "| Whole update | %d | %.1f MB | %.0f | %.1f ms " \
            "| %.1f million requests, %.0f GB, %.0f s of one core |\n", \
            requests, bytes / 1e6, 1 / update_s, update_cpu / 1e3, requests * computers / 1e6, \
            bytes * computers / 1e9, computers * update_cpu / 1e6
    }' >"$site/table"
sed -i -e "/<!-- server: begin -->/,/<!-- server: end -->/{//!d}" \
    -e "/<!-- server: begin -->/r $site/table" docs/many-computers.md
cat "$site/table"
