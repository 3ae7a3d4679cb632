#!/bin/sh
# Plays kso from the folder that this lies in. `./kso --help` lists the options.
exec "$(dirname "$(realpath "$0")")/bin/kso" "$@"
