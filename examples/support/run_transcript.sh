#!/bin/sh
# run_transcript.sh PROGRAM TRANSCRIPT
#
# Repeats the commands of a transcript, the lines that begin with "$ ", and compares all that they
# print with what stands behind them. An exit code other than 0 stands as "[1]", and the number of a
# source line as "#".
transcript=$2
PATH=$(dirname "$1"):$PATH
export PATH

grep '^\$ ' "$transcript" | while IFS= read -r line; do
    printf '%s\n' "$line"
    (eval "${line#??}") 2>&1
    status=$?
    if [ $status -ne 0 ]; then
        printf '[%s]\n' $status
    fi
done | sed 's/ : [0-9][0-9]*)$/ : #)/' | diff -u "$transcript" -
