#!/usr/bin/env bash
# A throw-away PostgreSQL server for one test run, on 127.0.0.1 at a free port,
# with its data in a temporary directory.
#
#   pgserver.sh start STATE_DIR MAKEDB SCRIPT   start it, load SCRIPT into the
#                                               database "shop" with MAKEDB, and
#                                               write STATE_DIR/url
#   pgserver.sh stop STATE_DIR                  stop it and remove its data
#
# The server refuses to run as root: as root it runs as the "postgres" user
# that the Debian package creates.
set -euo pipefail

command=${1:?usage: pgserver.sh start|stop STATE_DIR [MAKEDB SCRIPT]}
state=${2:?usage: pgserver.sh start|stop STATE_DIR [MAKEDB SCRIPT]}

bindir=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1 || true)
if [[ -z $bindir || ! -x $bindir/pg_ctl ]]; then
  echo "pgserver: no PostgreSQL server found under /usr/lib/postgresql (install the postgresql package)" >&2
  exit 1
fi

as_server_user() {
  if [[ $(id -u) -eq 0 ]]; then
    runuser -u postgres -- "$@"
  else
    "$@"
  fi
}

stop() {
  [[ -f $state/datadir ]] || return 0
  local dir
  dir=$(cat "$state/datadir")
  if [[ -d $dir/data ]]; then
    as_server_user "$bindir/pg_ctl" -D "$dir/data" -m immediate -w stop >/dev/null 2>&1 || true
  fi
  rm -rf "$dir"
  rm -f "$state/datadir" "$state/url"
}

case $command in
start)
  makedb=${3:?usage: pgserver.sh start STATE_DIR MAKEDB SCRIPT}
  script=${4:?usage: pgserver.sh start STATE_DIR MAKEDB SCRIPT}
  mkdir -p "$state"
  stop   # a server left behind by an interrupted run
  dir=$(mktemp -d "${TMPDIR:-/tmp}/vm20-pg.XXXXXX")
  echo "$dir" >"$state/datadir"
  [[ $(id -u) -eq 0 ]] && chown postgres "$dir"
  if ! as_server_user "$bindir/initdb" -D "$dir/data" -U vm20 --auth=trust -E UTF8 --locale=C.UTF-8 \
      >"$dir/initdb.log" 2>&1; then
    echo "pgserver: initdb failed:" >&2
    cat "$dir/initdb.log" >&2
    stop
    exit 1
  fi
  # A port taken by someone else makes the start fail; try a few.
  started=
  for _ in 1 2 3 4 5 6 7 8; do
    port=$((20000 + RANDOM % 30000))
    if as_server_user "$bindir/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -t 30 \
        -o "-h 127.0.0.1 -p $port -k $dir -c fsync=off -c full_page_writes=off" start >/dev/null 2>&1; then
      started=1
      break
    fi
  done
  if [[ -z $started ]]; then
    echo "pgserver: the server did not start; its log:" >&2
    cat "$dir/server.log" >&2 || true
    stop
    exit 1
  fi
  if ! "$bindir/createdb" -h 127.0.0.1 -p "$port" -U vm20 shop; then
    stop
    exit 1
  fi
  url="postgresql://vm20@127.0.0.1:$port/shop"
  if ! "$makedb" "$script" "$url"; then
    echo "pgserver: loading $script failed" >&2
    stop
    exit 1
  fi
  echo "$url" >"$state/url"
  echo "pgserver: $url"
  ;;
stop)
  stop
  ;;
*)
  echo "usage: pgserver.sh start|stop STATE_DIR [MAKEDB SCRIPT]" >&2
  exit 2
  ;;
esac
